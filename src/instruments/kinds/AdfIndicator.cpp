// ADF indicator, Gaugetype 108: the pointer, the card, and the knob that turns the card.
#include "config/FunctionNumbers.h"
#include "instruments/kinds/ParkOld.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr int kCommandPointer = 5;  // steps, 0..4319
constexpr int kCommandCard = 6;     // steps, 0..4319
constexpr double kParkedAt = 90;  // degrees: where the pointer of such an instrument stands without a station

class AdfDriver final : public GaugeDriver {
 public:
  explicit AdfDriver(const Activation& a)
      : GaugeDriver(a),
        bearing_(Open(a, functions::kAdfBearing, 1)),
        card_(Open(a, functions::kAdfCard, 1)),
        knob_(a.record.GaugeFunction2 == 0 ? card_
                                           : Open(a, a.record.GaugeFunction2, a.record.GaugeInstance2)) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    const bool old = ParksOld(record_.GaugeSetting5, tick.Sim(), bearing_);
    shown_.pointer.QueueRounded(tick, gaugeID_, DialStepsOf(old ? kParkedAt : tick.ValueOf(bearing_)));
    if (Settled(tick)) shown_.card.QueueRounded(tick, gaugeID_, DialStepsOf(tick.ValueOf(card_)));
  }

  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!HasLetters(reply, 'C', 'A')) return;
    const double angle = KnobAngle(ReplyWord(reply, 7));
    knob_.Report(world, hold_, angle,
                 {&shown_.card, gaugeID_, static_cast<std::int32_t>(DialStepsOf(angle))});
  }

 private:
  const Port bearing_;  // relative bearing, degrees
  const Port card_;     // heading under the card's index, degrees
  ReportedValue knob_;
  struct Shown {
    SentValue pointer{kCommandPointer}, card{kCommandCard};
  } shown_;
};

class AdfIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{108};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Shows the relative bearing of the ADF (Function 31) and its card (Function 32).";
    d.function2 = {"Card knob", "The Function that the knob sets, degrees; none: Function 32"};
    d.options = {{"Park without values",
                  "A pointer whose bearing has not come for 5 s goes to 90°, to the right", kOptionParkOld}};
    d.trials = {{"Pointer", kCommandPointer, 0, kDialSteps - 1, "steps, 12 to a degree"},
                {"Card", kCommandCard, 0, kDialSteps - 1, "steps, 12 to a degree"}};
    d.readings = {{"Card knob", KnobText<7>}};
    return d;
  }
  bool Polled() const override { return true; }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<AdfDriver>(activation);
  }
};

}  // namespace

const Instrument& AdfIndicatorKind() {
  static const AdfIndicator kind;
  return kind;
}

}  // namespace tvx
