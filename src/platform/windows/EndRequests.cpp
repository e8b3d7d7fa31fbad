#include "platform/windows/EndRequests.h"

#include <atomic>
#include <utility>

#include "platform/windows/calls/WinApi.h"

namespace tvx {
namespace {

constexpr UINT kConsoleEvent = WM_APP + 1;
constexpr DWORD kTurnMs = 10;
constexpr const wchar_t* kClass = L"torvex-control end requests";

// Read by the system's thread for console events.
std::atomic<HWND> consoleWindow = nullptr;

// Windows ends the program by force as soon as this has returned, but for Ctrl+C and Ctrl+Break.
BOOL WINAPI OnConsole(DWORD event) {
  const HWND window = consoleWindow;
  if (window == nullptr) return FALSE;
  PostMessageW(window, kConsoleEvent, 0, 0);
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(EndRequests::kLongestMs);
  return TRUE;
}

}  // namespace

struct EndRequests::Parts {
  std::function<void()> ended;
  std::function<bool()> gone;
  HWND window = nullptr;

  // After a log-off the program has no more time than the handling of its message takes, so the event loop is
  // turned from here until the simulator has been told.
  void EndNow() const {
    ended();
    const ULONGLONG start = GetTickCount64();
    while (!gone() && GetTickCount64() - start < static_cast<ULONGLONG>(kLongestMs)) {
      MsgWaitForMultipleObjects(0, nullptr, FALSE, kTurnMs, QS_ALLINPUT);
      MSG message{};
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
      }
    }
  }

  static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM first, LPARAM second) {
    const auto* parts = reinterpret_cast<const Parts*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (parts == nullptr) return DefWindowProcW(window, message, first, second);
    switch (message) {
      case WM_QUERYENDSESSION:
        return TRUE;  // unsaved work is kept without a question
      case WM_ENDSESSION:
        if (first != 0) parts->EndNow();
        return 0;
      case WM_CLOSE:
      case kConsoleEvent:
        parts->ended();
        return 0;
      default:
        return DefWindowProcW(window, message, first, second);
    }
  }
};

EndRequests::EndRequests(std::function<void()> ended, std::function<bool()> gone)
    : parts_(std::make_unique<Parts>()) {
  parts_->ended = std::move(ended);
  parts_->gone = std::move(gone);
  WNDCLASSW kind{};
  kind.lpfnWndProc = Parts::Handle;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.lpszClassName = kClass;
  RegisterClassW(&kind);
  // A window of its own among those of the desktop, though it is never shown: only such ones are told.
  parts_->window =
      CreateWindowExW(0, kClass, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, kind.hInstance, nullptr);
  if (parts_->window == nullptr) return;
  SetWindowLongPtrW(parts_->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(parts_.get()));
  consoleWindow = parts_->window;
  SetConsoleCtrlHandler(OnConsole, TRUE);
}

EndRequests::~EndRequests() {
  if (parts_->window == nullptr) return;
  SetConsoleCtrlHandler(OnConsole, FALSE);
  consoleWindow = nullptr;
  DestroyWindow(parts_->window);
}

void* EndRequests::Window() const {
  return parts_->window;
}

}  // namespace tvx
