// An instrument of a kind that the virtual cockpit cannot draw yet: it keeps the last value of every command.
#pragma once

#include <array>
#include <optional>

#include "drawn/Device.h"

namespace tvx::drawn {

class PlainDevice : public Device {
 public:
  using Device::Device;
  const std::optional<std::int32_t>& Value(int command) const {
    return values_[static_cast<std::size_t>(command % kCommands)];
  }

 protected:
  void StartAnew() override { values_ = {}; }
  void OnCommand(int command, std::int32_t value) override {
    values_[static_cast<std::size_t>(command % kCommands)] = value;
  }

 private:
  std::array<std::optional<std::int32_t>, kCommands> values_{};
};

}  // namespace tvx::drawn
