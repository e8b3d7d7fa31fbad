// ADF indicator, Gaugetype 108: the pointer, the card, and the knob that turns the card.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

// Slots of Ports: Functions 31 and 32, and the Function that the knob sets where one is configured.
enum : std::size_t { kPointer, kCard, kKnob };
constexpr int kBearingFunction = 31;  // relative bearing, degrees
constexpr int kCardFunction = 32;     // heading under the card's index, degrees

constexpr int kCommandPointer = 5;  // steps, 0..4319
constexpr int kCommandCard = 6;     // steps, 0..4319
constexpr std::size_t kSecondInput = 1;

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
    d.trials = {{"Pointer", kCommandPointer, 0, 4319, "steps, 12 to a degree"},
                {"Card", kCommandCard, 0, 4319, "steps, 12 to a degree"}};
    d.readings = {{"Card knob", KnobText<7>}};
    return d;
  }
  bool Polled() const override { return true; }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const GaugeRecord& record = *gauge.Record;
    OpenInto(gauge, kPointer, sim, kBearingFunction, 1);
    OpenInto(gauge, kCard, sim, kCardFunction, 1);
    OpenInto(gauge, kKnob, sim, record.GaugeFunction2, record.GaugeInstance2);
    const bool configured = record.GaugeFunction2 != 0;
    ReportThrough(gauge, kSecondInput, configured ? kKnob : kCard,
                  configured ? record.GaugeFunction2 : kCardFunction);
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    tick.QueueValueIfChanged(gauge, kPointer, kCommandPointer,
                             DialStepsOf(tick.ValueOf(gauge.Ports[kPointer])));
    if (tick.Settled(gauge)) {
      tick.QueueValueIfChanged(gauge, kCard, kCommandCard, DialStepsOf(tick.ValueOf(gauge.Ports[kCard])));
    }
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
  }

  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    if (HasLetters(reply, 'C', 'A')) world.Report(gauge, kSecondInput, KnobAngle(ReplyWord(reply, 7)));
  }
};

}  // namespace

const Instrument& AdfIndicatorKind() {
  static const AdfIndicator kind;
  return kind;
}

}  // namespace tvx
