// Keystrokes into the window that has the keyboard focus.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace tvx {

// The keys that have a name. The numbers are the key-name index of a keystroke code.
enum class NamedKey : std::uint8_t {
  None = 0,
  Character = 1,
  Backspace,
  Break,
  CapsLock,
  Delete,
  Down,
  End,
  Enter,
  Esc,
  Help,
  Home,
  Insert,
  Left,
  NumLock,
  PageDown,
  PageUp,
  PrintScreen,
  Right,
  ScrollLock,
  Tab,
  Up,
  F1,
  F2,
  F3,
  F4,
  F5,
  F6,
  F7,
  F8,
  F9,
  F10,
  F11,
  F12,
  F13,
  F14,
  F15,
  F16,
};
inline constexpr int kNamedKeys = 38;

// One key pressed and released, with what is held meanwhile.
struct KeyStroke {
  NamedKey Key = NamedKey::None;
  char32_t Character = 0;  // of NamedKey::Character: U+0020..U+007E, U+00A0..U+00FF
  bool Ctrl = false, Shift = false;
  bool operator==(const KeyStroke&) const = default;
};

class KeyInjector {
 public:
  virtual ~KeyInjector() = default;
  // Hands the keys to the desktop and returns at once. False when they could not be handed over, or when no
  // key of the keyboard gives one of them; those before it have been sent then.
  virtual bool Inject(std::span<const KeyStroke> keys) = 0;
  // Why keys cannot be sent here, and what to do about it, in words for the user; empty when they can.
  virtual std::string Trouble() const = 0;
};

}  // namespace tvx
