// Needle gauges: one or two needles, and for one kind a digit display.
#pragma once

#include <optional>

#include "virtualcockpit/bus/Device.h"

namespace tvx::vc {

inline constexpr int kNeedlePositions = 1080;  // 0..1079, three to a degree, clockwise; 540 is twelve o'clock

class NeedleDevice : public Device {
 public:
  using Device::Device;
  // Where the bus put the needles, 0..1079; nothing before the first command.
  const std::optional<int>& First() const { return first_; }
  const std::optional<int>& Second() const { return second_; }
  // Type 2: the digit display's value (ten times what is shown) and its control byte.
  const std::optional<std::int32_t>& Display() const { return display_; }
  int DisplayControl() const { return displayControl_; }
  bool HasDisplay() const { return Id().type == 2; }
  bool IsCluster() const { return Id().type == 8; }
  // A cluster's housing shows two of its eight values: by how much the first one's place is above the first
  // Function.
  int ClusterOffset() const { return (Id().options & 3) == 0 ? 6 : ((Id().options & 3) - 1) * 2; }

 protected:
  void OnCommand(int command, std::int32_t value) override;

 private:
  std::optional<int> first_, second_;
  std::optional<std::int32_t> display_;
  int displayControl_ = 0;
};

}  // namespace tvx::vc
