// The clocks: 104, and 109 with outside temperature and voltage.
#pragma once

#include <optional>

#include "drawn/Device.h"
#include "drawn/Gaugetypes.h"

namespace tvx::drawn {

class ClockDevice : public Device {
 public:
  using Device::Device;
  static constexpr int kDaySeconds = 86400;

  bool HasTemperature() const { return Id().type == gaugetype::kClockWithTemperature; }
  // Seconds of the day; std::nullopt before the first command. What the hand has set is added.
  std::optional<int> Utc() const { return Shown(utc_); }
  std::optional<int> Local() const { return Shown(local_); }
  int Year() const { return 2000 + year_; }
  int Month() const { return monthDay_ / 100; }
  int Day() const { return monthDay_ % 100; }
  const std::optional<std::int32_t>& Temperature() const { return temperature_; }  // 0.1 degrees Celsius
  const std::optional<std::int32_t>& Voltage() const { return voltage_; }          // 0.1 V
  // Sets the clock by hand, by minutes. When the simulator's time jumps, that setting is forgotten.
  void TurnMinutes(int minutes);

 protected:
  void StartAnew() override;
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  std::optional<int> Shown(const std::optional<int>& seconds) const;

  std::optional<int> utc_, local_;
  int offset_ = 0;  // s, what the hand has added
  int year_ = 0, monthDay_ = 101;
  std::optional<std::int32_t> temperature_, voltage_;
};

}  // namespace tvx::drawn
