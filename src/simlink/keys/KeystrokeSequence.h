// The syntax of key sequences: "^" Ctrl, "+" Shift, {NAME} a named key, {c} a character that has a meaning of
// its own otherwise, anything else a character.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/KeyInjector.h"

namespace tvx {

// Takes a sequence apart into keys. "^" and "+" hold for the next key only. std::nullopt for a text that
// breaks the syntax: an unknown name, an open brace, a bare one of % ~ ( ) [ ] }, a modifier without a key, a
// character that no key types (control characters other than backspace, tab, carriage return and escape).
std::optional<std::vector<KeyStroke>> ParseKeySequence(std::string_view sequence);

}  // namespace tvx
