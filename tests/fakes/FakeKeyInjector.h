// A desktop that only remembers the keys.
#pragma once

#include <string>
#include <vector>

#include "platform/KeyInjector.h"

namespace tvx {

class FakeKeyInjector final : public KeyInjector {
 public:
  std::vector<KeyStroke> keys;
  std::string trouble;

  bool Inject(std::span<const KeyStroke> more) override {
    if (!trouble.empty()) return false;
    keys.insert(keys.end(), more.begin(), more.end());
    return true;
  }
  std::string Trouble() const override { return trouble; }
};

}  // namespace tvx
