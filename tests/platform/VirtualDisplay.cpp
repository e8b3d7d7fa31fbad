#include "tests/platform/VirtualDisplay.h"

#include <X11/Xutil.h>
#include <poll.h>
#include <signal.h>

#include <array>
#include <chrono>
#include <cstdlib>

namespace tvx {
namespace {

using SteadyClock = std::chrono::steady_clock;
constexpr auto kDeadline = std::chrono::seconds(10);

int MillisecondsLeft(SteadyClock::time_point end) {
  return static_cast<int>(std::max<std::int64_t>(
      0, std::chrono::duration_cast<std::chrono::milliseconds>(end - SteadyClock::now()).count()));
}

}  // namespace

VirtualDisplay::VirtualDisplay() {
  if (!StartServer() || !OpenWindow()) Kill();
}

VirtualDisplay::~VirtualDisplay() {
  Kill();
}

// Its own connection goes first: without its server it could not be closed any more.
void VirtualDisplay::Kill() {
  if (display_ != nullptr) XCloseDisplay(display_);
  display_ = nullptr;
  if (server_ <= 0) return;
  kill(server_, SIGKILL);
  said_.reset();
  server_ = -1;
}

bool VirtualDisplay::StartServer() {
  // It says its process and, once it is ready, its number.
  std::FILE* said =
      popen("echo $$; exec Xvfb -displayfd 1 -screen 0 320x200x24 -noreset -nolisten tcp 2>/dev/null", "r");
  int number = 0;
  const bool started = said != nullptr && std::fscanf(said, "%d %d", &server_, &number) == 2;
  if (!started) trouble_ = "Xvfb is not installed, or does not start";
  said_.reset(said);
  name_ = ":" + std::to_string(number);
  return started;
}

bool VirtualDisplay::OpenWindow() {
  display_ = XOpenDisplay(name_.c_str());
  if (display_ == nullptr) {
    trouble_ = "Xvfb does not answer";
    return false;
  }
  const Window window = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, 100, 100, 0, 0, 0);
  XSelectInput(display_, window, KeyPressMask | KeyReleaseMask | StructureNotifyMask);
  XMapWindow(display_, window);
  XEvent event;
  do {
    if (!NextEvent(event)) return false;
  } while (event.type != MapNotify);
  XSetInputFocus(display_, window, RevertToNone, CurrentTime);
  XSync(display_, False);
  return true;
}

bool VirtualDisplay::SetLayout(const std::string& layout) {
  const std::string command = "setxkbmap -display " + name_ + " -layout " + layout + " >/dev/null 2>&1";
  return std::system(command.c_str()) == 0;
}

int VirtualDisplay::SpareKeys() {
  int first = 0, last = 0, width = 0, spare = 0;
  XDisplayKeycodes(display_, &first, &last);
  KeySym* symbols = XGetKeyboardMapping(display_, static_cast<KeyCode>(first), last - first + 1, &width);
  for (int key = 0; key <= last - first; ++key) spare += symbols[key * width] == NoSymbol ? 1 : 0;
  XFree(symbols);
  return spare;
}

bool VirtualDisplay::NextEvent(XEvent& event) {
  const auto end = SteadyClock::now() + kDeadline;
  while (XPending(display_) == 0) {
    pollfd wait{ConnectionNumber(display_), POLLIN, 0};
    if (poll(&wait, 1, MillisecondsLeft(end)) <= 0) return false;
  }
  XNextEvent(display_, &event);
  if (event.type == MappingNotify) XRefreshKeyboardMapping(&event.xmapping);
  return true;
}

ReadKey VirtualDisplay::NextKey() {
  ReadKey key;
  XEvent event;
  unsigned code = 0;
  while (NextEvent(event)) {
    if (event.type == KeyPress) {
      std::array<char, 8> text{};
      KeySym symbol = NoSymbol;
      const int count = XLookupString(&event.xkey, text.data(), text.size(), &symbol, nullptr);
      // Shift, Ctrl and Level 3 are held, not typed; the locks are typed.
      const bool lock = symbol == XK_Caps_Lock || symbol == XK_Num_Lock;
      if (IsModifierKey(symbol) && !lock) continue;
      code = event.xkey.keycode;
      key.symbol = symbol;
      key.text.assign(text.data(), static_cast<std::size_t>(count));
      key.ctrl = (event.xkey.state & ControlMask) != 0;
      key.shift = (event.xkey.state & ShiftMask) != 0;
    } else if (event.type == KeyRelease && code != 0 && event.xkey.keycode == code) {
      XSync(display_,
            False);  // as a program does that waits for events; it is told of keyboard changes only then
      return key;
    }
  }
  return {};
}

}  // namespace tvx
