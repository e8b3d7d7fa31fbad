// Needle gauges: Gaugetypes 1..6, one or two needles through Plates; type 2 shows digits as well.
#include <algorithm>

#include "config/plates/PlateLookup.h"
#include "instruments/kinds/ParkOld.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr Byte kWithDisplay = 2;

constexpr std::size_t kLowestPoint = 2;  // of a Plate

constexpr int kCommandFirstNeedle = 5;
constexpr int kCommandSecondNeedle = 6;  // the digits, on a gauge with a display
constexpr int kCommandDisplayControl = 11;

// Bits of the display control byte.
constexpr int kWholeNumbers = 11;  // 1000 and more: no decimal
constexpr int kOneDecimal = 160;   // below: one decimal

constexpr bool HasSecondNeedle(int gaugetype) {
  return gaugetype == 3 || gaugetype == 5 || gaugetype == 6;
}

class NeedleDriver final : public GaugeDriver {
 public:
  explicit NeedleDriver(const Activation& a)
      : GaugeDriver(a),
        first_(Open(a, a.record.GaugeFunction1, a.record.GaugeInstance1)),
        second_(
            Open(a, a.record.GaugeFunction2, a.record.GaugeInstance2, a.record.GaugeType != kWithDisplay)) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    const bool withDisplay = record_.GaugeType == kWithDisplay;
    if (record_.GaugeFunction1 != 0) {
      const double value = tick.ValueOf(first_);
      ServeNeedle(tick, shown_.first, record_.GaugeSetting3, first_, value);
      if (withDisplay) ServeDisplay(tick, value);
    }
    // A gauge with a display has no second needle: its command 6 carries the digits.
    if (record_.GaugeFunction2 != 0 && !withDisplay) {
      ServeNeedle(tick, shown_.second, record_.GaugeSetting4, second_, tick.ValueOf(second_));
    }
  }

 private:
  // A gauge whose Plate does not exist stays where it is.
  void ServeNeedle(GaugeTick& tick, SentValue& needle, int plateNumber, Port port, double value) {
    const PlateRecord* plate = tick.Model().PlateOf(plateNumber);
    if (plate == nullptr) return;
    const bool old = ParksOld(record_.GaugeSetting5, tick.Sim(), port);
    needle.QueueIfChanged(tick, gaugeID_, NeedlePosition(*plate, old ? plate->Value[kLowestPoint] : value));
  }

  // The digits show tenths; what five digits cannot hold is shown as the largest number that they can.
  void ServeDisplay(GaugeTick& tick, double value) {
    const auto digits =
        RoundTo<std::int32_t>(value * 10.0).value_or(value < 0 ? -kLargestValue : kLargestValue);
    shown_.digits.QueueIfChanged(tick, gaugeID_, std::clamp(digits, -kLargestValue, kLargestValue));
    shown_.displayControl.QueueIfChanged(tick, gaugeID_, value >= 1000.0 ? kWholeNumbers : kOneDecimal);
  }

  const Port first_, second_;
  struct Shown {
    SentValue first{kCommandFirstNeedle}, second{kCommandSecondNeedle};
    SentValue digits{kCommandSecondNeedle}, displayControl{kCommandDisplayControl};
  } shown_;
};

class NeedleGauge final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 6> kCodes{1, 2, 3, 4, 5, 6};
    return kCodes;
  }
  InstrumentDescription Describe(int gaugetype) const override {
    InstrumentDescription d;
    d.purpose = "Shows the value of each Function with a needle, by the Plate of its face.";
    d.function1 = {"First needle", "The Function that the first needle shows"};
    d.plates = {{"first needle", kCommandFirstNeedle}};
    d.options = {{"Park without values",
                  "A needle whose value has not come for 5 s goes to the lowest position of its Plate",
                  kOptionParkOld}};
    d.trials = {{"First needle", kCommandFirstNeedle, 0, kNeedlePositions - 1, "steps, 3 to a degree"}};
    if (gaugetype == kWithDisplay) {
      d.purpose = "Shows the value of its Function with a needle, by the Plate of its face, and in digits.";
      d.trials.push_back({"Digits", kCommandSecondNeedle, -kLargestValue, kLargestValue, "tenths"});
    } else if (HasSecondNeedle(gaugetype)) {
      d.function2 = {"Second needle", "The Function that the second needle shows"};
      d.plates.push_back({"second needle", kCommandSecondNeedle});
      d.trials.push_back(
          {"Second needle", kCommandSecondNeedle, 0, kNeedlePositions - 1, "steps, 3 to a degree"});
    }
    return d;
  }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<NeedleDriver>(activation);
  }
};

}  // namespace

const Instrument& NeedleGaugeKind() {
  static const NeedleGauge kind;
  return kind;
}

}  // namespace tvx
