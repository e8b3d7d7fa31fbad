#include "simlink/keys/KeystrokeSequence.h"

#include <algorithm>

#include "simlink/keys/Keystroke.h"

namespace tvx {
namespace {

constexpr std::size_t kFirstName = 2;  // NONE and KEYSTROKE are no keys

std::optional<KeyStroke> Named(std::string_view name) {
  const auto found = std::find(KeyNames.begin() + kFirstName, KeyNames.end(), name);
  if (found == KeyNames.end()) return std::nullopt;
  return KeyStroke{static_cast<NamedKey>(found - KeyNames.begin())};
}

std::optional<KeyStroke> Typed(char character) {
  const auto byte = static_cast<unsigned char>(character);
  switch (byte) {
    case '\b':
      return KeyStroke{NamedKey::Backspace};
    case '\t':
      return KeyStroke{NamedKey::Tab};
    case '\r':
      return KeyStroke{NamedKey::Enter};
    case 0x1B:
      return KeyStroke{NamedKey::Esc};
    default:
      break;
  }
  if (byte < 0x20 || (byte >= 0x7F && byte < 0xA0)) return std::nullopt;
  return KeyStroke{NamedKey::Character, byte};
}

// Takes one key off the front of `left`, which is not empty.
std::optional<KeyStroke> TakeKey(std::string_view& left) {
  constexpr std::string_view kBare = "%~()[]}";
  if (left[0] != '{') {
    const char character = left[0];
    left.remove_prefix(1);
    return kBare.find(character) == std::string_view::npos ? Typed(character) : std::nullopt;
  }
  // The character between the braces may itself be a closing brace.
  const std::size_t end = left.size() < 2 ? left.npos : left.find('}', 2);
  if (end == left.npos) return std::nullopt;
  const std::string_view inner = left.substr(1, end - 1);
  left.remove_prefix(end + 1);
  return inner.size() == 1 ? Typed(inner[0]) : Named(inner);
}

}  // namespace

std::optional<std::vector<KeyStroke>> ParseKeySequence(std::string_view sequence) {
  std::vector<KeyStroke> keys;
  while (!sequence.empty()) {
    bool ctrl = false, shift = false;
    while (!sequence.empty() && (sequence[0] == '^' || sequence[0] == '+')) {
      (sequence[0] == '^' ? ctrl : shift) = true;
      sequence.remove_prefix(1);
    }
    if (sequence.empty()) return std::nullopt;
    auto key = TakeKey(sequence);
    if (!key) return std::nullopt;
    key->Ctrl = ctrl;
    key->Shift = shift;
    keys.push_back(*key);
  }
  return keys;
}

}  // namespace tvx
