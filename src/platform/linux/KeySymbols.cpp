#include "platform/linux/KeySymbols.h"

#include <X11/keysym.h>
#include <linux/input-event-codes.h>

#include <array>
#include <cstddef>

namespace tvx {
namespace {

struct Names {
  KeySymbol symbol;
  int kernelKey;
};

// By key-name index.
constexpr std::array<Names, kNamedKeys> kNames = {{
    {0, 0},
    {0, 0},
    {XK_BackSpace, KEY_BACKSPACE},
    {XK_Pause, KEY_PAUSE},  // one key is both Pause and Break
    {XK_Caps_Lock, KEY_CAPSLOCK},
    {XK_Delete, KEY_DELETE},
    {XK_Down, KEY_DOWN},
    {XK_End, KEY_END},
    {XK_Return, KEY_ENTER},
    {XK_Escape, KEY_ESC},
    {XK_Help, KEY_HELP},
    {XK_Home, KEY_HOME},
    {XK_Insert, KEY_INSERT},
    {XK_Left, KEY_LEFT},
    {XK_Num_Lock, KEY_NUMLOCK},
    {XK_Page_Down, KEY_PAGEDOWN},
    {XK_Page_Up, KEY_PAGEUP},
    {XK_Print, KEY_SYSRQ},
    {XK_Right, KEY_RIGHT},
    {XK_Scroll_Lock, KEY_SCROLLLOCK},
    {XK_Tab, KEY_TAB},
    {XK_Up, KEY_UP},
    {XK_F1, KEY_F1},
    {XK_F2, KEY_F2},
    {XK_F3, KEY_F3},
    {XK_F4, KEY_F4},
    {XK_F5, KEY_F5},
    {XK_F6, KEY_F6},
    {XK_F7, KEY_F7},
    {XK_F8, KEY_F8},
    {XK_F9, KEY_F9},
    {XK_F10, KEY_F10},
    {XK_F11, KEY_F11},
    {XK_F12, KEY_F12},
    {XK_F13, KEY_F13},
    {XK_F14, KEY_F14},
    {XK_F15, KEY_F15},
    {XK_F16, KEY_F16},
}};

const Names& NamesOf(NamedKey key) {
  const auto index = static_cast<std::size_t>(key);
  return index < kNames.size() ? kNames[index] : kNames[0];
}

}  // namespace

KeySymbol KeySymbolOf(const KeyStroke& key) {
  if (key.Key != NamedKey::Character) return NamesOf(key.Key).symbol;
  const auto code = static_cast<KeySymbol>(key.Character);
  const bool isCharacter = (code >= 0x20 && code < 0x7F) || (code >= 0xA0 && code <= 0xFF);
  return isCharacter ? code : 0;  // the keysyms of Latin-1 are its codes
}

int KernelKeyOf(NamedKey key) {
  return NamesOf(key).kernelKey;
}

}  // namespace tvx
