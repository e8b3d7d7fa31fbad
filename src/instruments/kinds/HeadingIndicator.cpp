// Heading indicator / directional gyro, Gaugetype 105: the heading disc, a bug, and two knobs that report.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

// Slots of Ports: the heading bug and the gyro's correction, as configured. LastSent: disc and bug.
enum : std::size_t { kBug, kCorrection, kDisc };

constexpr int kCommandDisc = 5;  // steps of the disc, 0..4319
constexpr int kCommandBug = 6;   // steps of the bug, 0..4319
constexpr int kOptionKnobs = 1;  // the knobs report
constexpr double kFirstLimit = 179.0;
constexpr double kSecondLimit = 179.5;

// Input numbers.
enum : std::size_t { kFirst, kSecond };

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
    d.options = {
        {"The knobs report", "What the knobs are turned to goes to the two Functions", kOptionKnobs}};
    d.trials = {{"Disc", kCommandDisc, 0, 4319, "steps, 12 to a degree"},
                {"Bug", kCommandBug, 0, 4319, "steps, 12 to a degree"}};
    d.readings = {{"Bug knob", WordText<10>}, {"Gyro knob", WordText<7>}};
    return d;
  }
  bool Polled() const override { return true; }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const GaugeRecord& record = *gauge.Record;
    OpenInto(gauge, kBug, sim, record.GaugeFunction1, record.GaugeInstance1);
    OpenInto(gauge, kCorrection, sim, record.GaugeFunction2, record.GaugeInstance2);
    ReportThrough(gauge, kFirst, kBug, record.GaugeFunction1);
    ReportThrough(gauge, kSecond, kCorrection, record.GaugeFunction2);
    gauge.InputEnabled = (record.GaugeSetting5 & kOptionKnobs) != 0;
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    tick.QueueValueIfChanged(gauge, kDisc, kCommandDisc, DialStepsOf(tick.Flight().Heading));
    if (gauge.Ports[kBug] != kNoPort && tick.Settled(gauge)) {
      tick.QueueValueIfChanged(gauge, kBug, kCommandBug, DialStepsOf(tick.ValueOf(gauge.Ports[kBug])));
    }
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
  }

  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    if (!gauge.InputEnabled) return;
    world.Report(gauge, kFirst, CountAngle(ReplyWord(reply, 10), kFirstLimit));
    const double second = CountAngle(ReplyWord(reply, 7), kSecondLimit);
    if (gauge.InputFunction[kSecond] >= 0 && gauge.LastReported[kSecond] != static_cast<float>(second)) {
      world.Report(gauge, kSecond, second);
    }
  }
};

}  // namespace

const Instrument& HeadingIndicatorKind() {
  static const HeadingIndicator kind;
  return kind;
}

}  // namespace tvx
