#include "platform/linux/UinputKeys.h"

#include <fcntl.h>
#include <linux/uinput.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <cerrno>
#include <cstring>

namespace tvx {
namespace {

constexpr int kLastKey = 248;  // what an X keyboard can name

std::string WordsOf(int error, const std::string& device) {
  switch (error) {
    case EACCES:
    case EPERM:
      return "no permission for " + device +
             ". Install the Debian package or its rule 70-torvex-cockpit.rules; it lets whoever sits at the "
             "computer "
             "type";
    case ENOENT:
    case ENODEV:
    case ENXIO:
      return device + " is not there. Load the kernel's module for it (sudo modprobe uinput)";
    default:
      return device + ": " + std::strerror(error);
  }
}

KeySymbol DeadKeyOf(KeySymbol symbol) {
  switch (symbol) {
    case XKB_KEY_asciicircum:
      return XKB_KEY_dead_circumflex;
    case XKB_KEY_grave:
      return XKB_KEY_dead_grave;
    case XKB_KEY_acute:
      return XKB_KEY_dead_acute;
    case XKB_KEY_asciitilde:
      return XKB_KEY_dead_tilde;
    case XKB_KEY_diaeresis:
      return XKB_KEY_dead_diaeresis;
    default:
      return 0;
  }
}

void AppendEvent(std::vector<input_event>& events, int code, int value) {
  input_event event{};
  event.type = EV_KEY;
  event.code = static_cast<unsigned short>(code);
  event.value = value;
  events.push_back(event);
  event.type = EV_SYN;
  event.code = SYN_REPORT;
  event.value = 0;
  events.push_back(event);
}

// What is held goes down first and comes up last.
void AppendKey(std::vector<input_event>& events, const KeyStroke& key, const KeyPlace& place) {
  std::vector<int> codes;
  if (key.Ctrl) codes.push_back(KEY_LEFTCTRL);
  if (key.Shift || place.Shift) codes.push_back(KEY_LEFTSHIFT);
  if (place.Level3) codes.push_back(KEY_RIGHTALT);
  codes.push_back(place.Code);
  for (const int code : codes) AppendEvent(events, code, 1);
  for (auto code = codes.rbegin(); code != codes.rend(); ++code) AppendEvent(events, *code, 0);
}

}  // namespace

std::optional<std::vector<input_event>> KernelEvents(const KeyStroke& key, const KeyLayout& layout) {
  std::vector<input_event> events;
  if (key.Key != NamedKey::Character) {
    if (KernelKeyOf(key.Key) == 0) return std::nullopt;
    AppendKey(events, key, {KernelKeyOf(key.Key), false, false});
    return events;
  }
  const KeySymbol symbol = KeySymbolOf(key);
  if (const auto place = layout.Find(symbol)) {
    AppendKey(events, key, *place);
    return events;
  }
  // An accent that is a dead key here is typed as it and a blank.
  const auto dead = layout.Find(DeadKeyOf(symbol));
  const auto blank = layout.Find(XKB_KEY_space);
  if (DeadKeyOf(symbol) == 0 || !dead || !blank) return std::nullopt;
  AppendKey(events, key, *dead);
  AppendKey(events, {}, *blank);
  return events;
}

UinputKeys::UinputKeys(const LayoutNames& names, const std::string& device) : layout_(names) {
  Open(device);
}

UinputKeys::~UinputKeys() {
  if (fd_ < 0) return;
  ioctl(fd_, UI_DEV_DESTROY);
  close(fd_);
}

void UinputKeys::Open(const std::string& device) {
  fd_ = open(device.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd_ >= 0 && MakeKeyboard()) return;
  trouble_ = WordsOf(errno, device);
  if (fd_ >= 0) close(fd_);
  fd_ = -1;
}

bool UinputKeys::MakeKeyboard() {
  if (ioctl(fd_, UI_SET_EVBIT, EV_KEY) < 0) return false;
  for (int key = 1; key <= kLastKey; ++key) {
    if (ioctl(fd_, UI_SET_KEYBIT, key) < 0) return false;
  }
  uinput_setup setup{};
  setup.id.bustype = BUS_VIRTUAL;
  std::strncpy(setup.name, "Torvex cockpit switches", sizeof setup.name - 1);
  return ioctl(fd_, UI_DEV_SETUP, &setup) >= 0 && ioctl(fd_, UI_DEV_CREATE) >= 0;
}

bool UinputKeys::Inject(std::span<const KeyStroke> keys) {
  if (fd_ < 0) return false;
  for (const KeyStroke& key : keys) {
    const auto events = KernelEvents(key, layout_);
    if (!events) return false;
    const std::size_t size = events->size() * sizeof(input_event);
    if (write(fd_, events->data(), size) != static_cast<ssize_t>(size)) return false;
  }
  return true;
}

}  // namespace tvx
