// Which way of typing works on this desktop.
#pragma once

#include <functional>
#include <memory>

#include "platform/KeyInjector.h"

namespace tvx {

// Tries the ways in order: under Wayland the kernel's, which reaches every window, then the X server's;
// elsewhere the X server's, then the kernel's. Gives the first that works; where none does, one that types
// nothing and whose Trouble() says why, for each. Never fails.
std::unique_ptr<KeyInjector> MakeKeyInjector();

// The same choice among ways given: pairs of a name and a maker.
struct KeyInjectorWay {
  const char* name;
  std::function<std::unique_ptr<KeyInjector>()> make;
};
std::unique_ptr<KeyInjector> FirstThatWorks(std::span<const KeyInjectorWay> ways);

}  // namespace tvx
