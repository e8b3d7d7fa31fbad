// A VOR indicator with its course knob.
#pragma once

#include "drawn/Device.h"
#include "drawn/Gaugetypes.h"

namespace tvx::drawn {

class VorDevice : public Device {
 public:
  static constexpr int kNeedleSpan = 944;  // needle 0..944, 472 in the middle
  enum class ToFrom { Off = 0, To = 1, From = 2 };

  explicit VorDevice(const Identity& identity);
  int Course() const { return course_; }  // needle positions
  int Glide() const { return glide_; }
  ToFrom Flag() const { return flag_; }
  // True while no glide slope is received: its flag shows.
  bool GlideFlag() const { return glideFlag_; }
  // 106 shows receiver 1, 107 receiver 2.
  int Receiver() const { return Id().type == gaugetype::kVor2 ? 2 : 1; }
  // The course under the lubber line, degrees 0..359.
  int KnobDegrees() const { return knob_; }
  // Turns the knob by degrees, right positive.
  void TurnKnob(int degrees);

 protected:
  void StartAnew() override;
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;
  void ReadReply(const Reply& reply) override;

 private:
  int course_ = kNeedleSpan / 2, glide_ = kNeedleSpan / 2;
  ToFrom flag_ = ToFrom::Off;
  bool glideFlag_ = true;
  int knob_;
};

}  // namespace tvx::drawn
