// Keys as X and the kernel name them.
#pragma once

#include <cstdint>

#include "platform/KeyInjector.h"

namespace tvx {

using KeySymbol = std::uint32_t;  // an X keysym

// The keysym of a key, or of a character U+0020..U+00FF; 0 where there is none.
KeySymbol KeySymbolOf(const KeyStroke& key);

// The kernel's code of a named key, wherever it stands on the layout; 0 for characters.
int KernelKeyOf(NamedKey key);

// What has to be held for a symbol, beside Ctrl and the Shift that the user's key asks for.
struct KeyPlace {
  int Code = 0;  // the kernel's key code; X counts 8 more
  bool Shift = false, Level3 = false;
};
inline constexpr int kXCodeOffset = 8;

// Whether a key stands in the main block of a keyboard, where a symbol is looked for first.
constexpr bool InMainBlock(int kernelCode) {
  return kernelCode >= 2 && kernelCode <= 57;
}

}  // namespace tvx
