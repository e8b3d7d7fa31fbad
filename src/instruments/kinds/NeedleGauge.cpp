// Needle gauges: Gaugetypes 1..6, one or two needles through Plates; type 2 shows digits as well.
#include "config/plates/PlateLookup.h"
#include "instruments/kinds/Kinds.h"

namespace tvx {
namespace {

constexpr Byte kWithDisplay = 2;

// Slots of Ports and LastSent.
enum : std::size_t { kFirst, kSecond, kDisplay, kDisplayControl };

constexpr int kCommandFirstNeedle = 5;
constexpr int kCommandSecondNeedle = 6;  // the digits, on a gauge with a display
constexpr int kCommandDisplayControl = 11;

// Bits of the display control byte.
constexpr int kWholeNumbers = 11;  // 1000 and more: no decimal
constexpr int kOneDecimal = 160;   // below: one decimal

constexpr bool HasSecondNeedle(int gaugetype) {
  return gaugetype == 3 || gaugetype == 5 || gaugetype == 6;
}

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

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const GaugeRecord& record = *gauge.Record;
    OpenInto(gauge, kFirst, sim, record.GaugeFunction1, record.GaugeInstance1);
    OpenInto(gauge, kSecond, sim, record.GaugeFunction2, record.GaugeInstance2);
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    const GaugeRecord& record = *gauge.Record;
    if (record.GaugeFunction1 != 0) {
      const double value = tick.ValueOf(gauge.Ports[kFirst]);
      ServeNeedle(gauge, tick, kFirst, kCommandFirstNeedle, record.GaugeSetting3, value);
      if (record.GaugeType == kWithDisplay) ServeDisplay(gauge, tick, value);
    }
    // A gauge with a display has no second needle: its command 6 carries the digits.
    if (record.GaugeFunction2 != 0 && record.GaugeType != kWithDisplay) {
      ServeNeedle(gauge, tick, kSecond, kCommandSecondNeedle, record.GaugeSetting4,
                  tick.ValueOf(gauge.Ports[kSecond]));
    }
  }

 private:
  // A gauge whose Plate does not exist stays where it is.
  static void ServeNeedle(ActiveGauge& gauge, GaugeTick& tick, std::size_t slot, int command, int plateNumber,
                          double value) {
    const PlateRecord* plate = tick.Model().PlateOf(plateNumber);
    if (plate == nullptr) return;
    tick.QueueIfChanged(gauge, slot, command, NeedlePosition(*plate, value));
  }

  // The digits show tenths; what five digits cannot hold is shown as the largest number that they can.
  static void ServeDisplay(ActiveGauge& gauge, GaugeTick& tick, double value) {
    const auto digits =
        RoundTo<std::int32_t>(value * 10.0).value_or(value < 0 ? -kLargestValue : kLargestValue);
    const std::int32_t shown = std::clamp(digits, -kLargestValue, kLargestValue);
    tick.QueueIfChanged(gauge, kDisplay, kCommandSecondNeedle, shown);
    const int control = value >= 1000.0 ? kWholeNumbers : kOneDecimal;
    tick.QueueIfChanged(gauge, kDisplayControl, kCommandDisplayControl, control);
  }
};

}  // namespace

const Instrument& NeedleGaugeKind() {
  static const NeedleGauge kind;
  return kind;
}

}  // namespace tvx
