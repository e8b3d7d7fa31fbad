// Keys into Windows' stream of input.
#pragma once

#include <string>

#include "platform/KeyInjector.h"

namespace tvx {

// Types on the layout of the window that has the focus. Windows takes no keys from a program for the window
// of one that runs with administrator's rights, and does not say so.
class SendInputKeys final : public KeyInjector {
 public:
  bool Inject(std::span<const KeyStroke> keys) override;
  std::string Trouble() const override { return {}; }
};

}  // namespace tvx
