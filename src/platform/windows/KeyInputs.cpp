#include "platform/windows/KeyInputs.h"

#include <algorithm>
#include <array>

namespace tvx {
namespace {

// Windows' numbers of virtual keys, by the key-name index.
constexpr std::uint16_t kShift = 0x10, kControl = 0x11, kLeftAlt = 0xA4, kRightAlt = 0xA5;
constexpr std::array<std::uint16_t, kNamedKeys> kVirtualKeys = {
    0,    0,                                          // none, a character
    0x08, 0x03, 0x14, 0x2E, 0x28,                     // Backspace, Break, Caps Lock, Delete, Down
    0x23, 0x0D, 0x1B, 0x2F, 0x24,                     // End, Enter, Esc, Help, Home
    0x2D, 0x25, 0x90, 0x22, 0x21,                     // Insert, Left, Num Lock, Page Down, Page Up
    0x2C, 0x27, 0x91, 0x09, 0x26,                     // Print Screen, Right, Scroll Lock, Tab, Up
    0x70, 0x71, 0x72, 0x73, 0x74, 0x75, 0x76, 0x77,   // F1 to F8
    0x78, 0x79, 0x7A, 0x7B, 0x7C, 0x7D, 0x7E, 0x7F};  // F9 to F16

// Break is Ctrl with the Pause key, which reports itself so.
constexpr std::array kExtended = {std::uint16_t{0x03}, std::uint16_t{0x21},
                                  std::uint16_t{0x22}, std::uint16_t{0x23},
                                  std::uint16_t{0x24}, std::uint16_t{0x25},
                                  std::uint16_t{0x26}, std::uint16_t{0x27},
                                  std::uint16_t{0x28}, std::uint16_t{0x2C},
                                  std::uint16_t{0x2D}, std::uint16_t{0x2E},
                                  std::uint16_t{0x90}, kRightAlt};

}  // namespace

std::uint16_t VirtualKeyOf(NamedKey key) {
  const auto index = static_cast<std::size_t>(key);
  return index < kVirtualKeys.size() ? kVirtualKeys[index] : 0;
}

std::optional<std::vector<KeyEvent>> KeyEventsFor(const KeyStroke& key, const KeyboardLayout& layout) {
  KeyboardLayout::Place place{VirtualKeyOf(key.Key), false, false, false};
  if (key.Key == NamedKey::Character) {
    const auto found = layout.Find(key.Character);
    if (found) place = *found;
    // Its own character is a single unit: those that can be asked for end at U+00FF.
    if (!found && !key.Ctrl && key.Character != 0) {
      const auto unit = static_cast<std::uint16_t>(key.Character);
      return std::vector<KeyEvent>{{0, unit, false, false}, {0, unit, false, true}};
    }
  }
  if (place.VirtualKey == 0) return std::nullopt;

  std::vector<std::uint16_t> keys;
  if (key.Ctrl || place.Ctrl) keys.push_back(kControl);
  if (key.Shift || place.Shift) keys.push_back(kShift);
  if (place.Alt) keys.push_back(place.Ctrl ? kRightAlt : kLeftAlt);
  keys.push_back(place.VirtualKey);
  std::vector<KeyEvent> events;
  const auto add = [&](std::uint16_t virtualKey, bool up) {
    const bool extended = std::find(kExtended.begin(), kExtended.end(), virtualKey) != kExtended.end();
    events.push_back({virtualKey, layout.ScanCode(virtualKey), extended, up});
  };
  for (const std::uint16_t down : keys) add(down, false);
  std::for_each(keys.rbegin(), keys.rend(), [&](std::uint16_t up) { add(up, true); });
  return events;
}

}  // namespace tvx
