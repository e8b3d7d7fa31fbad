// How a yoke stands, and what its motors do.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace tvx::drawn {

// Rudder pedals with brakes: -1 left .. 1 right, 0 released .. 1 pressed.
struct PedalState {
  double rudder = 0, leftBrake = 0, rightBrake = 0;
  bool operator==(const PedalState&) const = default;
};

struct YokeState {
  enum class Motors { Slack, Spring, Servo };

  // Roll and pitch, -1..1, right and back positive.
  std::array<double, 2> position{};
  // Of all that the motors can give, -1..1; only 0..1 where `directed` is false: the direction is not known.
  std::array<double, 2> force{};
  bool directed = true;
  std::array<double, 2> shake{};  // the vibration's part now, -1..1
  Motors motors = Motors::Slack;
  bool gripped = false;
  std::uint16_t buttons = 0;  // bit n: button n + 1 is down
  std::optional<PedalState> pedals{};
  bool operator==(const YokeState&) const = default;
};

}  // namespace tvx::drawn
