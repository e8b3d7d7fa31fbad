// Cessna engine cluster on the gauge bus, Gaugetype 8: four housings of two needles each, the gauge's mode
// telling which of the eight engine values this housing shows.
#include "config/plates/PlateLookup.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr std::size_t kValues = 8;
constexpr int kModeMask = 3;  // of the option bits

// First of the two values that each mode shows: mode 0 the last pair (vacuum, amperes), then fuel left and
// right, oil temperature and pressure, exhaust temperature and fuel flow.
constexpr std::array<std::size_t, 4> kFirstValueOfMode{6, 0, 2, 4};

std::size_t FirstValueOf(const GaugeRecord& gauge) {
  return kFirstValueOfMode[static_cast<std::size_t>(gauge.GaugeSetting5 & kModeMask)];
}

constexpr int kCommandFirst = 4;
constexpr int kCommandSecond = 5;

class ClusterDriver final : public GaugeDriver {
 public:
  explicit ClusterDriver(const Activation& a) : GaugeDriver(a) {
    values_.fill(kNoPort);
    const int function = a.record.GaugeFunction1;
    if (function == 0) return;
    const std::size_t first = FirstValueOf(a.record);
    for (std::size_t i = 0; i < kValues; ++i) {
      const bool shown = i == first || i == first + 1;
      values_[i] = Open(a, function + static_cast<int>(i), a.record.GaugeInstance1, shown);
    }
  }

  // Every tick sends both needles, moved or not: the housing goes to rest when it hears nothing for a second.
  void Forget() override {}
  void Serve(GaugeTick& tick) override {
    const std::size_t first = FirstValueOf(record_);
    SendNeedle(tick, kCommandFirst, record_.GaugeSetting3, values_[first]);
    SendNeedle(tick, kCommandSecond, record_.GaugeSetting4, values_[first + 1]);
  }

 private:
  void SendNeedle(GaugeTick& tick, int command, int plateNumber, Port port) const {
    const PlateRecord* plate = tick.Model().PlateOf(plateNumber);
    if (plate != nullptr) tick.Queue(gaugeID_, command, NeedlePosition(*plate, tick.ValueOf(port)));
  }

  std::array<Port, kValues> values_;  // of eight Functions in a row, the first one configured
};

class ClusterGauge final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{8};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "A housing of the engine cluster: two of eight Functions in a row.";
    d.function1 = {"First of eight Functions",
                   "Fuel left; the next seven are fuel right, oil temperature, oil pressure, exhaust "
                   "temperature, fuel flow, vacuum, amperes"};
    d.plates = {{"first needle", kCommandFirst}, {"second needle", kCommandSecond}};
    d.options = {{"Housing",
                  "Which two values it shows",
                  kModeMask,
                  {{0, "Vacuum and amperes"},
                   {1, "Fuel left and right"},
                   {2, "Oil temperature and pressure"},
                   {3, "Exhaust temperature and fuel flow"}}}};
    d.trials = {{"First needle", kCommandFirst, 0, kNeedlePositions - 1, "steps, 3 to a degree"},
                {"Second needle", kCommandSecond, 0, kNeedlePositions - 1, "steps, 3 to a degree"}};
    return d;
  }
  ShownFunction NeedleShows(const GaugeRecord& gauge, std::size_t needle) const override {
    if (gauge.GaugeFunction1 == 0) return {};
    return {gauge.GaugeFunction1 + static_cast<int>(FirstValueOf(gauge) + needle), gauge.GaugeInstance1};
  }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<ClusterDriver>(activation);
  }
};

}  // namespace

const Instrument& ClusterGaugeKind() {
  static const ClusterGauge kind;
  return kind;
}

}  // namespace tvx
