#include "platform/windows/FolderLock.h"

#include <algorithm>
#include <chrono>

#include "platform/windows/calls/WinApi.h"

namespace tvx {
namespace {

constexpr DWORD kPauseMs = 10;

// By the folder's number, not by its path: a link to it is the same folder. Empty where there is no such
// folder.
std::wstring NameOf(const std::string& folder) {
  const Handle open(CreateFileW(Wide(folder).c_str(), 0,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION info{};
  if (!open || GetFileInformationByHandle(open.Get(), &info) == 0) return {};
  return L"Local\\torvex-control " + std::to_wstring(info.dwVolumeSerialNumber) + L"-" +
         std::to_wstring(info.nFileIndexHigh) + L"-" + std::to_wstring(info.nFileIndexLow);
}

}  // namespace

struct FolderLock::Names {
  Handle claim;
  Handle show;   // set by a later start
  Handle shown;  // set when it was heard
};

FolderLock::FolderLock() = default;

FolderLock::~FolderLock() {
  if (watcher_) watcher_->Release();
}

bool FolderLock::Take(const std::string& folder) {
  const std::wstring name = NameOf(folder);
  if (name.empty()) return true;
  auto names = std::make_unique<Names>();
  names->claim = Handle(CreateMutexW(nullptr, FALSE, name.c_str()));
  if (names->claim && GetLastError() == ERROR_ALREADY_EXISTS) return false;
  if (!names->claim) return GetLastError() != ERROR_ACCESS_DENIED;
  names->show = Handle(CreateEventW(nullptr, FALSE, FALSE, (name + L" show").c_str()));
  names->shown = Handle(CreateEventW(nullptr, TRUE, FALSE, (name + L" shown").c_str()));
  names_ = std::move(names);
  return true;
}

FolderStart FolderLock::TakeOrAsk(const std::string& folder, int milliseconds) {
  using Steady = std::chrono::steady_clock;
  const auto end = Steady::now() + std::chrono::milliseconds(milliseconds);
  for (;;) {
    if (Take(folder)) return FolderStart::First;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Steady::now()).count();
    if (AskToShow(folder, static_cast<int>(std::max<long long>(left, 1)))) return FolderStart::Shown;
    if (Steady::now() >= end) return FolderStart::NoAnswer;
    Sleep(kPauseMs);
  }
}

void FolderLock::Listen(std::unique_ptr<HandleWatcher> watcher, std::function<void()> asked) {
  if (!names_) return;
  watcher_ = std::move(watcher);
  watcher_->SetCallback([this, asked = std::move(asked)] {
    asked();
    SetEvent(names_->shown.Get());
  });
  watcher_->Attach(names_->show.Get());
}

// Of several that ask at once, the answer to one is an answer to all: the first program was shown.
bool FolderLock::AskToShow(const std::string& folder, int milliseconds) {
  const std::wstring name = NameOf(folder);
  if (name.empty()) return false;
  const Handle show(OpenEventW(EVENT_MODIFY_STATE, FALSE, (name + L" show").c_str()));
  const Handle shown(OpenEventW(EVENT_MODIFY_STATE | SYNCHRONIZE, FALSE, (name + L" shown").c_str()));
  if (!show || !shown) return false;
  AllowSetForegroundWindow(ASFW_ANY);  // this program, which the user started, may let it come to the front
  ResetEvent(shown.Get());
  SetEvent(show.Get());
  return WaitForSingleObject(shown.Get(), static_cast<DWORD>(milliseconds)) == WAIT_OBJECT_0;
}

}  // namespace tvx
