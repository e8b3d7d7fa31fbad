// VOR indicators, Gaugetypes 106 (first receiver) and 107 (second): course and glide slope needles, flags,
// course knob.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kVor2 = 107;

// Slots of Ports: Functions 33..36, and the course that the knob sets. LastSent keeps the values as they were
// read.
enum : std::size_t { kCourse, kGlide, kToFrom, kFlags, kKnob };
constexpr std::array<int, 4> kFunctionOfSlot{33, 34, 35, 36};

constexpr int kCommandCourse = 5;
constexpr int kCommandGlide = 6;
constexpr int kCommandFlags = 11;  // to/from + 256 * flags

constexpr double kFullDeflection = 127.0;  // a needle's value
constexpr double kStepsAtFull = 300.0;     // needle steps from the middle
constexpr double kLimit = 472.0;           // mechanical stop, steps from the middle
constexpr float kNeedleAtRun = 127.0f;     // every run starts from these last sent values
constexpr float kFlagsAtRun = 15.0f;

class VorIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 2> kCodes{106, kVor2};
    return kCodes;
  }
  InstrumentDescription Describe(int gaugetype) const override {
    InstrumentDescription d;
    d.purpose = gaugetype == kVor2 ? "Shows the second VOR receiver: Functions 33 to 36, sequence number 2."
                                   : "Shows the first VOR receiver: Functions 33 to 36.";
    d.function1 = {"Course", "The Function that the course knob sets, whole degrees"};
    d.trials = {{"Course needle", kCommandCourse, 0, 944, "steps, 472 in the middle"},
                {"Glide slope needle", kCommandGlide, 0, 944, "steps, 472 in the middle"},
                {"Flags", kCommandFlags, 0, 258, "0 off, 1 to, 2 from; + 256 glide slope"}};
    d.readings = {{"Course knob", KnobText<7>}};
    return d;
  }
  bool Polled() const override { return true; }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const int receiver = gauge.Record->GaugeType == kVor2 ? 2 : 1;
    for (std::size_t slot = 0; slot < kFunctionOfSlot.size(); ++slot) {
      OpenInto(gauge, slot, sim, kFunctionOfSlot[slot], receiver);
    }
    OpenInto(gauge, kKnob, sim, gauge.Record->GaugeFunction1, gauge.Record->GaugeInstance1);
    ReportThrough(gauge, 0, kKnob, gauge.Record->GaugeFunction1);
  }

  void StartRun(ActiveGauge& gauge) const override {
    gauge.LastSent[kCourse] = gauge.LastSent[kGlide] = kNeedleAtRun;
    gauge.LastSent[kToFrom] = gauge.LastSent[kFlags] = kFlagsAtRun;
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
    ServeNeedle(gauge, tick, kCourse, kCommandCourse);
    ServeNeedle(gauge, tick, kGlide, kCommandGlide);

    const auto toFrom = RoundToOrThrow<Byte>(tick.ValueOf(gauge.Ports[kToFrom]));
    const auto flags = RoundToOrThrow<Byte>(tick.ValueOf(gauge.Ports[kFlags]));
    if (gauge.LastSent[kToFrom] == toFrom && gauge.LastSent[kFlags] == flags) return;
    if (!tick.Queue(gauge.GaugeID, kCommandFlags, toFrom + 256 * flags)) return;
    gauge.LastSent[kToFrom] = toFrom;
    gauge.LastSent[kFlags] = flags;
  }

  // The course knob; a report that repeats is ignored.
  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    if (!HasLetters(reply, 'C', 'A')) return;
    const double angle = KnobAngle(ReplyWord(reply, 7));
    if (gauge.LastReported[0] == static_cast<float>(angle)) return;
    world.Report(gauge, 0, angle);
  }

 private:
  static void ServeNeedle(ActiveGauge& gauge, GaugeTick& tick, std::size_t slot, int command) {
    const auto value = static_cast<float>(tick.ValueOf(gauge.Ports[slot]));
    if (value == gauge.LastSent[slot]) return;
    const double d = RoundHalfEven(static_cast<double>(value));
    const double steps = RoundHalfEven(std::clamp(d / kFullDeflection * kStepsAtFull, -kLimit, kLimit));
    if (tick.Queue(gauge.GaugeID, command, static_cast<std::int32_t>(steps + kLimit)))
      gauge.LastSent[slot] = value;
  }
};

}  // namespace

const Instrument& VorIndicatorKind() {
  static const VorIndicator kind;
  return kind;
}

}  // namespace tvx
