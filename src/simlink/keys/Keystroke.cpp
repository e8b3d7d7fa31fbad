#include "simlink/keys/Keystroke.h"

#include "simlink/keys/KeystrokeSequence.h"

namespace tvx {
namespace {

constexpr std::uint16_t kCtrl = 0x8000;
constexpr std::uint16_t kShift = 0x4000;
constexpr int kNameShift = 8;
constexpr int kNameMask = 0x3F;
constexpr std::string_view kWithMeaning = "+^%~()[]{}";

// Message boxes take UTF-8.
std::string FromLatin1(std::string_view text) {
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      out += c;
    } else {
      out += static_cast<char>(0xC0 | byte >> 6);
      out += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return out;
}

}  // namespace

const std::array<std::string_view, kNamedKeys> KeyNames = {
    "NONE", "KEYSTROKE", "BACKSPACE", "BREAK", "CAPSLOCK", "DELETE", "DOWN", "END",   "ENTER", "ESC",
    "HELP", "HOME",      "INSERT",    "LEFT",  "NUMLOCK",  "PGDN",   "PGUP", "PRTSC", "RIGHT", "SCROLLLOCK",
    "TAB",  "UP",        "F1",        "F2",    "F3",       "F4",     "F5",   "F6",    "F7",    "F8",
    "F9",   "F10",       "F11",       "F12",   "F13",      "F14",    "F15",  "F16"};

KeystrokeCode SplitKeystroke(std::int16_t code) {
  const auto bits = static_cast<std::uint16_t>(code);
  return {(bits & kCtrl) != 0, (bits & kShift) != 0, bits >> kNameShift & kNameMask,
          static_cast<unsigned char>(bits & 0xFF)};
}

std::int16_t JoinKeystroke(const KeystrokeCode& parts) {
  return static_cast<std::int16_t>((parts.Ctrl ? kCtrl : 0) | (parts.Shift ? kShift : 0) |
                                   (parts.KeyName & kNameMask) << kNameShift | parts.Character);
}

std::string KeySequence(std::int16_t code) {
  const KeystrokeCode parts = SplitKeystroke(code);
  const auto key = static_cast<NamedKey>(parts.KeyName);
  if (key == NamedKey::None || parts.KeyName >= kNamedKeys) return {};
  std::string sequence;
  if (parts.Ctrl) sequence += '^';
  if (parts.Shift) sequence += '+';
  if (key != NamedKey::Character) {
    return sequence.append("{").append(KeyNames[static_cast<std::size_t>(parts.KeyName)]).append("}");
  }
  const char character = static_cast<char>(parts.Character);
  if (kWithMeaning.find(character) == std::string_view::npos) return sequence + character;
  return sequence + '{' + character + '}';
}

void Keystrokes::SendKeystroke(std::int16_t code) {
  const std::string sequence = KeySequence(code);
  if (sequence.empty()) return;
  if (!minimized_()) {
    boxes_.Show("Keystroke received from IO module: " + FromLatin1(sequence) +
                "\r\nTo send to FS this window must be minimized");
    return;
  }
  if (const auto keys = ParseKeySequence(sequence)) injector_.Inject(*keys);
}

void Keystrokes::ConvertKeytoName(std::int16_t) {
  actionLabel_ = "KB Stroke";
}

}  // namespace tvx
