// Keystroke codes: what the configuration stores for a switch that types, and how it is typed.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/Host.h"
#include "platform/KeyInjector.h"

namespace tvx {

// The names of the keys, by key-name index; the same words that a key sequence puts between braces.
extern const std::array<std::string_view, kNamedKeys> KeyNames;

// A keystroke code: bit 15 Ctrl, bit 14 Shift, bits 8..13 the key-name index, bits 0..7 the character (index
// 1).
struct KeystrokeCode {
  bool Ctrl = false, Shift = false;
  int KeyName = 0;              // 0 no key, 1 a character, above as in KeyNames; 38..63 are no keys
  unsigned char Character = 0;  // Latin-1
};
KeystrokeCode SplitKeystroke(std::int16_t code);
std::int16_t JoinKeystroke(const KeystrokeCode& parts);

// The key sequence of a code: "^" Ctrl, "+" Shift, then {NAME} or the character, escaped where it has a
// meaning of its own. Empty for a code without a key. Characters above 127 stand as one Latin-1 byte.
std::string KeySequence(std::int16_t code);

class Keystrokes {
 public:
  // `minimized` tells whether the status form is minimized.
  Keystrokes(KeyInjector& injector, MessageBoxes& boxes, std::function<bool()> minimized)
      : injector_(injector), boxes_(boxes), minimized_(std::move(minimized)) {}

  // Types one keystroke into the window that has the focus. While the status form is not minimized it shows
  // the sequence in a message instead. A code without a key does nothing; one that cannot be typed is
  // dropped.
  void SendKeystroke(std::int16_t code);
  // Sets the label under which keystroke actions are listed; the code is not looked at.
  void ConvertKeytoName(std::int16_t code);
  const std::string& ActionLabel() const { return actionLabel_; }

 private:
  KeyInjector& injector_;
  MessageBoxes& boxes_;
  std::function<bool()> minimized_;
  std::string actionLabel_;
};

}  // namespace tvx
