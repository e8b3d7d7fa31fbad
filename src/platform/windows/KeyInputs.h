// Keystrokes as the key events that Windows is given.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/KeyInjector.h"

namespace tvx {

// One key going down or up. A key is named by its virtual key; a character that no key of the layout gives
// goes by itself, with virtual key 0.
struct KeyEvent {
  std::uint16_t VirtualKey = 0;
  std::uint16_t Scan = 0;  // the key's scan code; without a virtual key the character
  bool Extended = false;   // one of the keys beside the main block that share a scan code with the number pad
  bool Up = false;
  bool operator==(const KeyEvent&) const = default;
};

// The keyboard layout of the window that has the focus.
class KeyboardLayout {
 public:
  virtual ~KeyboardLayout() = default;
  struct Place {
    std::uint16_t VirtualKey = 0;
    bool Shift = false, Ctrl = false, Alt = false;  // what has to be held; Ctrl and Alt together are AltGr
  };
  // Where a character stands; std::nullopt where no key gives it.
  virtual std::optional<Place> Find(char32_t character) const = 0;
  virtual std::uint16_t ScanCode(std::uint16_t virtualKey) const = 0;
};

// The virtual key of a named key; 0 for None and Character.
std::uint16_t VirtualKeyOf(NamedKey key);

// What types a keystroke: what is held goes down, the key goes down and up, what was held comes up again in
// the other order. std::nullopt for what cannot be typed: no key, or Ctrl with a character that no key gives.
std::optional<std::vector<KeyEvent>> KeyEventsFor(const KeyStroke& key, const KeyboardLayout& layout);

}  // namespace tvx
