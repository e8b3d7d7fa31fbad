// VOR indicators, Gaugetypes 106 (first receiver) and 107 (second): course and glide slope needles, flags,
// course knob.
#include <algorithm>

#include "config/FunctionNumbers.h"
#include "instruments/kinds/ParkOld.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kVor2 = 107;

constexpr int kCommandCourse = 5;
constexpr int kCommandGlide = 6;
constexpr int kCommandFlags = 11;  // to/from + 256 * glide slope received

constexpr double kFullDeflection = 127.0;  // a needle's value
constexpr double kStepsAtFull = 300.0;     // needle steps from the middle
constexpr int kLimit = 472;                // mechanical stop, steps from the middle
constexpr float kNeedleAtRun = 127.0f;     // every run starts from these last sent values
constexpr Byte kFlagAtRun = 15;

class VorDriver final : public GaugeDriver {
 public:
  explicit VorDriver(const Activation& a)
      : GaugeDriver(a),
        receiver_(a.record.GaugeType == kVor2 ? 2 : 1),
        course_{Open(a, functions::kVorCourse, receiver_), kCommandCourse},
        glideSlope_{Open(a, functions::kVorGlideSlope, receiver_), kCommandGlide},
        toFrom_{Open(a, functions::kVorToFrom, receiver_)},
        glideSlopeReceived_{Open(a, functions::kVorGlideSlopeReceived, receiver_)},
        courseKnob_(Open(a, a.record.GaugeFunction1, a.record.GaugeInstance1)) {}

  void Forget() override {
    for (Needle* needle : {&course_, &glideSlope_}) needle->sent.reset();
    for (Flag* flag : {&toFrom_, &glideSlopeReceived_}) flag->sent.reset();
  }
  void StartRun() override {
    for (Needle* needle : {&course_, &glideSlope_}) needle->sent = kNeedleAtRun;
    for (Flag* flag : {&toFrom_, &glideSlopeReceived_}) flag->sent = kFlagAtRun;
  }

  void Serve(GaugeTick& tick) override {
    ServeNeedle(tick, course_);
    ServeNeedle(tick, glideSlope_);

    // A flag that is no byte is not sent.
    const auto toFrom = RoundTo<Byte>(Current(tick, toFrom_.port));
    const auto received = RoundTo<Byte>(Current(tick, glideSlopeReceived_.port));
    if (!toFrom || !received || (toFrom_.sent == toFrom && glideSlopeReceived_.sent == received)) return;
    if (!tick.Queue(gaugeID_, kCommandFlags, *toFrom + 256 * *received)) return;
    toFrom_.sent = toFrom;
    glideSlopeReceived_.sent = received;
  }

  // The course knob; a report that repeats is ignored.
  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!HasLetters(reply, 'C', 'A')) return;
    const double angle = KnobAngle(ReplyWord(reply, 7));
    if (!courseKnob_.WasLast(angle)) courseKnob_.Report(world, hold_, angle);
  }

 private:
  // What was sent last is kept as it was read: a value that moves within a step is sent again.
  struct Needle {
    Port port;
    int command;
    std::optional<float> sent{};
  };
  struct Flag {
    Port port;
    std::optional<Byte> sent{};
  };

  // Where the option says so, a value that is too old counts as 0: needle in the middle, flag not received.
  double Current(GaugeTick& tick, Port port) const {
    return ParksOld(record_.GaugeSetting5, tick.Sim(), port) ? 0 : tick.ValueOf(port);
  }

  void ServeNeedle(GaugeTick& tick, Needle& needle) const {
    const auto value = static_cast<float>(Current(tick, needle.port));
    if (needle.sent == value) return;
    const double d = RoundHalfEven(static_cast<double>(value));
    const double steps =
        RoundHalfEven(std::clamp<double>(d / kFullDeflection * kStepsAtFull, -kLimit, kLimit));
    if (tick.Queue(gaugeID_, needle.command, static_cast<std::int32_t>(steps + kLimit))) needle.sent = value;
  }

  const int receiver_;  // 1 or 2
  Needle course_, glideSlope_;
  Flag toFrom_, glideSlopeReceived_;
  ReportedValue courseKnob_;
};

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
    d.options = {{"Park without values",
                  "A needle whose value has not come for 5 s goes to the middle, a flag shows no reception",
                  kOptionParkOld}};
    d.trials = {{"Course needle", kCommandCourse, 0, 2 * kLimit, "steps, 472 in the middle"},
                {"Glide slope needle", kCommandGlide, 0, 2 * kLimit, "steps, 472 in the middle"},
                {"Flags", kCommandFlags, 0, 258, "0 off, 1 to, 2 from; + 256 glide slope"}};
    d.readings = {{"Course knob", KnobText<7>}};
    return d;
  }
  bool Polled() const override { return true; }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<VorDriver>(activation);
  }
};

}  // namespace

const Instrument& VorIndicatorKind() {
  static const VorIndicator kind;
  return kind;
}

}  // namespace tvx
