// Heading indicator / directional gyro, Gaugetype 105: the heading disc, a bug, and two knobs that report.
#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr int kCommandDisc = 5;  // steps of the disc, 0..4319
constexpr int kCommandBug = 6;   // steps of the bug, 0..4319
constexpr int kOptionKnobs = 1;  // the knobs report
// Knob angles above these count from the other side, degrees.
constexpr double kBugLimit = 179.0;
constexpr double kCorrectionLimit = 179.5;

class HeadingDriver final : public GaugeDriver {
 public:
  explicit HeadingDriver(const Activation& a)
      : GaugeDriver(a),
        inputEnabled_((a.record.GaugeSetting5 & kOptionKnobs) != 0),
        bug_(Open(a, a.record.GaugeFunction1, a.record.GaugeInstance1)),
        bugKnob_(bug_),
        correctionKnob_(Open(a, a.record.GaugeFunction2, a.record.GaugeInstance2, inputEnabled_)) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    shown_.disc.QueueRounded(tick, gaugeID_, DialStepsOf(tick.Flight().Heading));
    if (bug_ != kNoPort && Settled(tick)) {
      shown_.bug.QueueRounded(tick, gaugeID_, DialStepsOf(tick.ValueOf(bug_)));
    }
  }

  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!inputEnabled_) return;
    const int bug = ReplyWord(reply, 10);
    bugKnob_.Report(world, hold_, CountAngle(bug, kBugLimit), {&shown_.bug, gaugeID_, bug});
    const double correction = CountAngle(ReplyWord(reply, 7), kCorrectionLimit);
    if (!correctionKnob_.WasLast(correction)) correctionKnob_.Report(world, hold_, correction);
  }

 private:
  const bool inputEnabled_;
  const Port bug_;
  ReportedValue bugKnob_, correctionKnob_;
  struct Shown {
    SentValue disc{kCommandDisc}, bug{kCommandBug};
  } shown_;
};

class HeadingIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{105};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Shows the program's own heading (Function 3) on its disc, and a heading bug.";
    d.function1 = {"Heading bug", "The Function that the bug shows and its knob sets, degrees"};
    d.function2 = {"Gyro correction", "The Function that the correction knob sets, degrees"};
    d.own = {functions::kHeading};
    d.options = {
        {"The knobs report", "What the knobs are turned to goes to the two Functions", kOptionKnobs}};
    d.trials = {{"Disc", kCommandDisc, 0, kDialSteps - 1, "steps, 12 to a degree"},
                {"Bug", kCommandBug, 0, kDialSteps - 1, "steps, 12 to a degree"}};
    d.readings = {{"Bug knob", WordText<10>}, {"Gyro knob", WordText<7>}};
    return d;
  }
  bool Polled() const override { return true; }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<HeadingDriver>(activation);
  }
};

}  // namespace

const Instrument& HeadingIndicatorKind() {
  static const HeadingIndicator kind;
  return kind;
}

}  // namespace tvx
