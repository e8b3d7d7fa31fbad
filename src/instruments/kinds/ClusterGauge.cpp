// Cessna engine cluster on the gauge bus, Gaugetype 8: four housings of two needles each, the gauge's mode
// telling which of the eight engine values this housing shows.
#include "config/plates/PlateLookup.h"
#include "instruments/kinds/Kinds.h"

namespace tvx {
namespace {

constexpr std::size_t kValues = 8;
constexpr int kModeMask = 3;  // of the option bits

// First of the two ports that each mode shows: mode 0 the last pair (vacuum, amperes), then fuel left and
// right, oil temperature and pressure, exhaust temperature and fuel flow.
constexpr std::array<std::size_t, 4> kFirstPortOfMode{6, 0, 2, 4};

constexpr int kCommandFirst = 4;
constexpr int kCommandSecond = 5;

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

  // Eight Functions in a row, the first one configured.
  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const int first = gauge.Record->GaugeFunction1;
    if (first == 0) return;
    for (std::size_t i = 0; i < kValues; ++i) {
      OpenInto(gauge, i, sim, first + static_cast<int>(i), gauge.Record->GaugeInstance1);
    }
  }

  // Every tick sends both needles, moved or not: the housing goes to rest when it hears nothing for a second.
  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    const auto mode = static_cast<std::size_t>(gauge.Record->GaugeSetting5 & kModeMask);
    const std::size_t port = kFirstPortOfMode[mode];
    SendNeedle(gauge, tick, port, kCommandFirst, gauge.Record->GaugeSetting3);
    SendNeedle(gauge, tick, port + 1, kCommandSecond, gauge.Record->GaugeSetting4);
  }

 private:
  static void SendNeedle(const ActiveGauge& gauge, GaugeTick& tick, std::size_t slot, int command,
                         int plateNumber) {
    const PlateRecord* plate = tick.Model().PlateOf(plateNumber);
    if (plate == nullptr) return;
    tick.Queue(gauge.GaugeID, command, NeedlePosition(*plate, tick.ValueOf(gauge.Ports[slot])));
  }
};

}  // namespace

const Instrument& ClusterGaugeKind() {
  static const ClusterGauge kind;
  return kind;
}

}  // namespace tvx
