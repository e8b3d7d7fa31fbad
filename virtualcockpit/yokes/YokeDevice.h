// A yoke with motors, as far as a program and a hand can tell: it decodes commands, moves, and answers.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "base/Bytes.h"

namespace tvx::vc {

inline constexpr std::size_t kYokeAxes = 2;  // roll, pitch

// Raw positions of an axis at its ends and between them; all 0: the device's own.
struct YokeTravel {
  int low = 0, centre = 0, high = 0;
};

// What can be wrong with a yoke.
enum class YokeFault {
  None,
  Silent,   // moves, but never answers
  Garbled,  // its answers come damaged
  Half,     // its answers break off in the middle
  Noisy,    // bytes are lost now and then
  NoPower,  // answers, but its motors do nothing
  Dead,     // neither moves nor answers
};
inline constexpr YokeFault kYokeFaults[] = {YokeFault::None, YokeFault::Silent, YokeFault::Garbled,
                                            YokeFault::Half, YokeFault::Noisy,  YokeFault::NoPower,
                                            YokeFault::Dead};
std::string_view FaultText(YokeFault fault);

struct YokeTraits {
  // Its line is as slow as 38400 baud, both ways. False: every byte arrives at once.
  bool paced = true;
  // How long the forces take to come back, from none to all, once commands come again. 0: at once.
  double riseSeconds = 2;
  bool operator==(const YokeTraits&) const = default;
};

class YokeDevice {
 public:
  using Send = std::function<void(ByteView)>;
  YokeDevice(Byte address, Send send) : address_(address), send_(std::move(send)) {}

  void SetTraits(const YokeTraits& traits) { traits_ = traits; }
  // Bytes from the program.
  void OnBytes(ByteView bytes);
  // Time goes on by `seconds`, in steps no longer than kStep: forces act, the axes move. Without commands for
  // the hold time the forces fade by themselves; with commands they rise again.
  void Advance(double seconds);

  // For one that stands for another yoke: takes over where that one's answers say that it is, in pieces as
  // they come. From then on nothing else moves its axes.
  void TakeAnswers(ByteView bytes, const std::array<YokeTravel, kYokeAxes>& travel);

  // A hand that pulls an axis towards a place (-1..1), as strongly as kHand; Let takes it off.
  void Grip(std::size_t axis, double place);
  void Let();
  bool Gripped() const { return gripped_[0] || gripped_[1]; }
  // Puts it there, as a test does. -1..1.
  void Place(std::size_t axis, double place);
  void SetButton(int button, bool down);  // 1..16
  void SetStopButton(bool down) { stop_ = down; }
  bool StopButton() const { return stop_; }
  void SetFault(YokeFault fault) { fault_ = fault; }
  YokeFault Fault() const { return fault_; }

  double Position(std::size_t axis) const { return axes_[axis].position; }  // -1..1
  // The motors' force now, without vibration, -1..1; and the vibration's part of it.
  double Force(std::size_t axis) const { return axes_[axis].force; }
  double Vibration(std::size_t axis) const { return axes_[axis].vibration; }
  double Amplitude(std::size_t axis) const { return axes_[axis].amplitude; }
  double Limit() const { return limit_ * fade_; }
  // All that the motors may give on an axis now: within the limit, and the vibration on top.
  double Most(std::size_t axis) const { return fade_ * (limit_ + axes_[axis].amplitude); }
  bool Slack() const { return fade_ <= 0 || (limit_ <= 0 && axes_[0].amplitude + axes_[1].amplitude <= 0); }
  bool Servo() const { return servo_; }
  int RawPosition(std::size_t axis) const;  // as its answers say
  std::uint16_t Buttons() const { return buttons_; }
  std::uint64_t Commands() const { return commands_; }
  std::uint64_t Answers() const { return answers_; }
  std::uint64_t Discarded() const { return discarded_; }  // bytes that made no frame

  static constexpr double kStep = 0.002;    // s
  static constexpr double kHand = 1.2;      // a hand is stronger than the motors
  static constexpr int kRawCentre = 31000;  // not the middle: a yoke has to be calibrated
  static constexpr int kRawTravel = 24000;

 private:
  struct Motion {
    double position = 0, speed = 0;  // -1..1, a second
    double force = 0, vibration = 0, phase = 0;
    double place = 0;     // of the spring's centre, or where the servo goes
    double gradient = 0;  // force a unit
    double bias = 0;
    double frequency = 0, amplitude = 0;
    double hand = 0;
  };
  void OnFrame();
  void TakeAnswer(ByteView answer, const std::array<YokeTravel, kYokeAxes>& travel);
  void Answer();
  void Step(double seconds);
  double Wanted(Motion& axis, double seconds) const;

  Byte address_;
  Send send_;
  YokeTraits traits_;
  std::vector<Byte> frame_;
  std::array<Motion, kYokeAxes> axes_{};
  std::array<bool, kYokeAxes> gripped_{};
  std::vector<Byte> answered_;  // the beginning of an answer that is taken over
  bool led_ = false;            // by answers of another yoke
  bool servo_ = false, stop_ = false;
  double servoSpeed_ = 0, servoForce_ = 0;
  double limit_ = 0, friction_ = 0, damping_ = 0;
  double holdLeft_ = 0, fadeTime_ = 0.5, fade_ = 0;  // s, s, 0..1
  bool released_ = true;                             // until the first Bias, and from Release to the next one
  bool fadedSince_ = false;                          // the hold time has run out since the last answer
  YokeFault fault_ = YokeFault::None;
  std::uint16_t buttons_ = 0;
  std::uint64_t commands_ = 0, answers_ = 0, discarded_ = 0;
};

}  // namespace tvx::vc
