// A VOR indicator with its course knob.
#pragma once

#include "virtualcockpit/bus/Device.h"

namespace tvx::vc {

class VorDevice : public Device {
 public:
  static constexpr int kNeedleSpan = 944;  // needle 0..944, 472 in the middle
  static constexpr int kKnobSteps = 1084;  // of one turn; the knob counts down
  enum class ToFrom { Off = 0, To = 1, From = 2 };

  using Device::Device;
  int Course() const { return course_; }  // needle positions
  int Glide() const { return glide_; }
  ToFrom Flag() const { return flag_; }
  // True while the glide path flag covers the needle.
  bool GlideFlag() const { return glideFlag_; }
  // The course under the lubber line, degrees 0..359.
  int KnobDegrees() const { return knob_; }
  // Turns the knob by degrees, right positive.
  void TurnKnob(int degrees);

 protected:
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  int course_ = kNeedleSpan / 2, glide_ = kNeedleSpan / 2;
  ToFrom flag_ = ToFrom::Off;
  bool glideFlag_ = true;
  int knob_ = 240;
};

}  // namespace tvx::vc
