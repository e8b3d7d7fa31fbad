// Needle gauges: one or two needles, and for one kind a digit display.
#pragma once

#include <optional>

#include "drawn/Device.h"
#include "drawn/Gaugetypes.h"

namespace tvx::drawn {

inline constexpr int kNeedlePositions = 1080;  // 0..1079, three to a degree, clockwise; 540 is twelve o'clock

class NeedleDevice : public Device {
 public:
  using Device::Device;
  // Where the bus put the needles, 0..1079; std::nullopt before the first command.
  const std::optional<int>& First() const { return first_; }
  const std::optional<int>& Second() const { return second_; }
  // Type 2: the digit display's value (ten times what is shown) and its control byte.
  const std::optional<std::int32_t>& Display() const { return display_; }
  int DisplayControl() const { return displayControl_; }
  bool HasDisplay() const { return Id().type == gaugetype::kNeedleAndDisplay; }
  bool IsCluster() const { return Id().type == gaugetype::kClusterHousing; }
  // A cluster's housing shows two of eight values that follow each other: the place of its first one, 0..6.
  int ClusterOffset() const {
    const int mode = Id().options & kClusterModeMask;
    return mode == 0 ? kLastHousing : (mode - 1) * 2;
  }

 protected:
  void StartAnew() override;
  void OnCommand(int command, std::int32_t value) override;

 private:
  static constexpr int kClusterModeMask = 3, kLastHousing = 6;
  std::optional<int> first_, second_;
  std::optional<std::int32_t> display_;
  int displayControl_ = 0;
};

}  // namespace tvx::drawn
