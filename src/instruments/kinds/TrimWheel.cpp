// Motorized trim wheel, Gaugetype 140: follows the simulator's trim, and trims when it is turned by hand.
#include <algorithm>
#include <cstdlib>

#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr int kCommandPosition = 5;  // 0 full nose down .. 10000 full nose up
constexpr int kCommandFlags = 11;
constexpr int kFlagAutopilot = 1;  // the autopilot flies: the wheel resists the hand
constexpr double kFullWheel = 10000.0;
constexpr int kDeadBand = 3;  // a report that moves less is jitter

class TrimWheelDriver final : public GaugeDriver {
 public:
  explicit TrimWheelDriver(const Activation& a)
      : GaugeDriver(a),
        trim_(Open(a, functions::kElevatorTrim, 1)),
        autopilot_(Open(a, functions::kAutopilotFlies, 1)),
        wheel_(trim_) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    const auto [lowest, span] = RangeOf(tick.Model());
    if (span > 0 && Settled(tick)) {
      const double part = std::clamp((tick.ValueOf(trim_) - lowest) / span, 0.0, 1.0);
      shown_.position.QueueRounded(tick, gaugeID_, part * kFullWheel);
    }
    shown_.flags.QueueIfChanged(tick, gaugeID_, tick.ValueOf(autopilot_) >= 0.5 ? kFlagAutopilot : 0);
  }

  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!HasLetters(reply, 'P', 'T')) return;
    const int position = ReplyWord(reply, 7);
    if (storedPosition_ && std::abs(position - *storedPosition_) < kDeadBand) return;
    storedPosition_ = position;
    // Byte 13 tells whether the hand or the motor moved it; what the motor did, the simulator knows already.
    if (ReplyByte(reply, 13) == 0) return;
    const auto [lowest, span] = RangeOf(world.Model());
    wheel_.Report(world, hold_, lowest + std::min(position / kFullWheel, 1.0) * span,
                  {&shown_.position, gaugeID_, position});
  }

 private:
  struct Range {
    double lowest, span;
  };
  static Range RangeOf(const ConfigModel& model) {
    const FunctionRecord& trim = model.Functions[functions::kElevatorTrim];
    return {static_cast<double>(trim.boxMinimumValue),
            static_cast<double>(trim.boxMaximumValue) - static_cast<double>(trim.boxMinimumValue)};
  }

  const Port trim_, autopilot_;
  ReportedValue wheel_;
  std::optional<int> storedPosition_;  // 0..10000, of the last report that was no jitter
  struct Shown {
    SentValue position{kCommandPosition}, flags{kCommandFlags};
  } shown_;
};

class TrimWheel final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{140};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Follows and sets the elevator trim (Function 281); resists while the autopilot flies (280).";
    d.trials = {{"Wheel", kCommandPosition, 0, 10000, "0 full nose down, 10000 full nose up"},
                {"Resistance", kCommandFlags, 0, 1, "1 on"}};
    d.readings = {{"Wheel", WordText<7>}, {"Moved by", [](ReplyView reply) {
                                             return std::string(ReplyByte(reply, 13) == 1 ? "hand" : "motor");
                                           }}};
    return d;
  }
  bool Polled() const override { return true; }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<TrimWheelDriver>(activation);
  }
};

}  // namespace

const Instrument& TrimWheelKind() {
  static const TrimWheel kind;
  return kind;
}

}  // namespace tvx
