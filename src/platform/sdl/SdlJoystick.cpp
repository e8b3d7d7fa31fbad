#include "platform/sdl/SdlJoystick.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace tvx {
namespace {

constexpr std::uint32_t kCentred = 65535;
constexpr std::chrono::seconds kTroubleLasts{2};

SDL_Joystick* Of(void* joystick) {
  return static_cast<SDL_Joystick*>(joystick);
}

std::uint32_t Axis(SDL_Joystick* joystick, int axis) {
  return axis < SDL_JoystickNumAxes(joystick) ? JoystickAxis(SDL_JoystickGetAxis(joystick, axis)) : 0;
}

// The GUID is that of a kind of device; a serial number tells two of a kind apart, where the driver gives it.
JoystickInfo InfoOf(SDL_Joystick* joystick) {
  JoystickInfo info;
  if (const char* name = SDL_JoystickName(joystick)) info.name = name;
  std::array<char, 33> guid{};
  SDL_JoystickGetGUIDString(SDL_JoystickGetGUID(joystick), guid.data(), static_cast<int>(guid.size()));
  info.identity = guid.data();
  const char* serial = SDL_JoystickGetSerial(joystick);
  for (; serial != nullptr && *serial != 0; ++serial) {
    if (info.identity.size() == guid.size() - 1) info.identity += '-';
    info.identity += *serial > ' ' ? *serial : '_';
  }
  info.axes = SDL_JoystickNumAxes(joystick);
  return info;
}

std::uint32_t Buttons(SDL_Joystick* joystick) {
  std::uint32_t bits = 0;
  const int count = std::min(SDL_JoystickNumButtons(joystick), 32);
  for (int i = 0; i < count; ++i) {
    if (SDL_JoystickGetButton(joystick, i) != 0) bits |= 1u << i;
  }
  return bits;
}

}  // namespace

std::uint32_t JoystickHat(std::uint8_t bits) {
  switch (bits) {
    case SDL_HAT_UP:
      return 0;
    case SDL_HAT_RIGHTUP:
      return 4500;
    case SDL_HAT_RIGHT:
      return 9000;
    case SDL_HAT_RIGHTDOWN:
      return 13500;
    case SDL_HAT_DOWN:
      return 18000;
    case SDL_HAT_LEFTDOWN:
      return 22500;
    case SDL_HAT_LEFT:
      return 27000;
    case SDL_HAT_LEFTUP:
      return 31500;
    default:
      return kCentred;
  }
}

SdlJoystick::~SdlJoystick() {
  for (Slot& slot : slots_) {
    if (slot.joystick != nullptr) SDL_JoystickClose(Of(slot.joystick));
  }
  if (started_) SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
}

bool SdlJoystick::Start() {
  if (started_ || failed_) return started_;
  // Signals stay the program's own; positions come though no window of SDL's has the focus.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
  started_ = SDL_InitSubSystem(SDL_INIT_JOYSTICK) == 0;
  failed_ = !started_;
  // Nobody takes events out of SDL's queue.
  if (started_) SDL_JoystickEventState(SDL_IGNORE);
  return started_;
}

SdlJoystick::Slot& SdlJoystick::SlotFor(const std::string& identity) {
  for (Slot& slot : slots_) {
    if (slot.joystick == nullptr && slot.info.identity == identity) return slot;
  }
  return slots_.emplace_back();
}

// Lets go of devices that were pulled out, and takes those that are new or back again.
void SdlJoystick::Refresh() {
  SDL_JoystickUpdate();
  for (Slot& slot : slots_) {
    if (slot.joystick == nullptr || SDL_JoystickGetAttached(Of(slot.joystick)) == SDL_TRUE) continue;
    SDL_JoystickClose(Of(slot.joystick));
    slot.joystick = nullptr;
  }
  const int count = SDL_NumJoysticks();
  for (int index = 0; index < count; ++index) {
    const SDL_JoystickID id = SDL_JoystickGetDeviceInstanceID(index);
    if (id < 0 || SDL_JoystickFromInstanceID(id) != nullptr) continue;  // open already
    SDL_Joystick* joystick = SDL_JoystickOpen(index);
    if (joystick == nullptr) continue;
    JoystickInfo info = InfoOf(joystick);
    Slot& slot = SlotFor(info.identity);
    slot.info = std::move(info);
    slot.joystick = joystick;
  }
}

const SdlJoystick::Slot* SdlJoystick::SlotOf(std::int32_t number) {
  if (!Start()) return nullptr;
  Refresh();
  if (number < 0 || static_cast<std::size_t>(number) >= slots_.size()) return nullptr;
  const Slot& slot = slots_[static_cast<std::size_t>(number)];
  return slot.joystick != nullptr ? &slot : nullptr;
}

const JoystickInfo* SdlJoystick::Describe(std::int32_t number) {
  const Slot* slot = SlotOf(number);
  return slot != nullptr ? &slot->info : nullptr;
}

// Asked for as often as a form is painted, so the answer is kept for a while.
std::string SdlJoystick::Trouble() {
  if (failed_) return std::string("Game controllers cannot be read: ") + SDL_GetError();
  const auto now = std::chrono::steady_clock::now();
  if (now - troubleAt_ < kTroubleLasts) return trouble_;
  troubleAt_ = now;
  trouble_ = unreadable_ ? unreadable_() : std::string();
  return trouble_;
}

bool SdlJoystick::joyGetPosEx(std::int32_t number, JoyInfoEx& record) {
  const Slot* slot = SlotOf(number);
  if (slot == nullptr) return false;
  SDL_Joystick* joystick = Of(slot->joystick);
  record.XPos = Axis(joystick, 0);
  record.YPos = Axis(joystick, 1);
  record.ZPos = Axis(joystick, 2);
  record.RPos = Axis(joystick, 3);
  record.UPos = Axis(joystick, 4);
  record.VPos = Axis(joystick, 5);
  record.Buttons = Buttons(joystick);
  record.ButtonNumber = static_cast<std::uint32_t>(std::popcount(record.Buttons));
  record.Pov = SDL_JoystickNumHats(joystick) > 0 ? JoystickHat(SDL_JoystickGetHat(joystick, 0)) : kCentred;
  return true;
}

}  // namespace tvx
