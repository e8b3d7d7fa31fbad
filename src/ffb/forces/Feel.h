// What one aircraft's flight feels like at its yoke, from cycle to cycle.
#pragma once

#include <array>
#include <cstdint>

#include "ffb/forces/FfbVariables.h"
#include "ffb/forces/ForceShaper.h"
#include "ffb/forces/Forces.h"

namespace tvx {

// A servo's part of the greatest force: a pilot must be able to overpower it.
inline constexpr double kServoForce = 0.6;

// What of a load is gusts: what changes faster than a manoeuvre can, about 1 Hz.
class GustFilter {
 public:
  // The gusts' part of a load, g, `seconds` after the last.
  double Next(double g, double seconds);

 private:
  struct Stage {
    double in = 0, out = 0;
  };
  std::array<Stage, 4> stages_{};
  bool started_ = false;
};

// The flight's part of the forces, the same for both yokes; it remembers when the wheels touched, the loads,
// and the gusts.
class Feel {
 public:
  // Goes on by `seconds` with the values as they are now.
  void Advance(const FfbVariables& values, const ForceSettings& settings, double seconds);
  // The forces of FFB Mode. `effects`: buffet, vibration, gusts, shocks and rumble; `trim`: the centre goes
  // with the trim.
  ForceCommand Wanted(const FfbVariables& values, const ForceSettings& settings, bool effects,
                      bool trim) const;
  // The forces of Center Mode: a spring about the middle, as strong as on the ground, whatever is flown.
  static ForceCommand Centred(const ForceSettings& settings);
  // The forces of Servo Mode and Follow AP mode: to a place, in counts.
  static ForceCommand Held(const ForceSettings& settings, const std::array<double, kAxes>& place);
  // Where trim puts the centre, counts.
  static double TrimCentre(const FfbVariables& values, const ForceSettings& settings, Axis axis);

  bool Grounded() const { return ground_ >= 0.5; }

 private:
  double Noise();
  void AddVibrations(const FfbVariables& values, const ForceSettings& settings, ForceCommand& command) const;

  double ground_ = -1;  // 0 in the air, 1 on the ground, between while the change is being felt; -1 not known
  GustFilter gustFilter_;
  double gustStrength_ = 0;            // 0..1
  std::array<double, kAxes> gusts_{};  // -1..1
  double touchG_ = 1;                  // load when the wheels touched
  double sinceTouch_ = 1e9;            // s
  std::uint32_t random_ = 0x2545F491;
};

}  // namespace tvx
