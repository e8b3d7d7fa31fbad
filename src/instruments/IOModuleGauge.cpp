// Input/output module on the gauge bus, Gaugetype 10: sixteen lamps and a number, refreshed one module at a
// time.
#include "instruments/Kinds.h"

namespace tvx {
namespace {

enum : std::size_t { kLamps, kNumber };

constexpr int kCommandNumber = 4;
constexpr int kCommandBrightness = 5;
constexpr int kCommandLamps = 6;

// Working values of a module.
enum : std::size_t { kPending, kNumberValue, kBrightness };
enum : std::int32_t { kNumberPending = 1, kBrightnessPending = 2 };

class IOModuleGauge final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{10};
    return kCodes;
  }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const GaugeRecord& record = *gauge.Record;
    OpenInto(gauge, kLamps, sim, record.GaugeFunction1, record.GaugeInstance1);
    OpenInto(gauge, kNumber, sim, record.GaugeFunction2, record.GaugeInstance2);
  }

  void Forget(ActiveGauge& gauge) const override {
    gauge.LastSent.fill(ActiveGauge::kUnknown);
    gauge.Work.fill(0);
    gauge.Work[kBrightness] = -1;
  }

  // Nothing goes out here: it only notes what the module's next turn has to send.
  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    if (gauge.Ports[kNumber] != kNoPort) {
      const std::int32_t number = Limited(tick.ValueOf(gauge.Ports[kNumber]), -kLargestValue);
      if (static_cast<float>(number) != gauge.LastSent[kNumber]) {
        gauge.LastSent[kNumber] = static_cast<float>(number);
        gauge.Work[kNumberValue] = number;
        gauge.Work[kPending] |= kNumberPending;
      }
    }
    const int step = static_cast<int>(std::clamp(tick.Flight().InstrumentLights / 64.0, 0.0, 15.0));
    if (step != gauge.Work[kBrightness]) {
      gauge.Work[kBrightness] = step;
      gauge.Work[kPending] |= kBrightnessPending;
    }
  }

  void ServeModuleTurn(ActiveGauge& gauge, GaugeTick& tick) const override {
    tick.Queue(gauge.GaugeID, kCommandLamps, Limited(tick.ValueOf(gauge.Ports[kLamps]), 0));
    if (gauge.Work[kPending] & kNumberPending)
      tick.Queue(gauge.GaugeID, kCommandNumber, gauge.Work[kNumberValue]);
    if (gauge.Work[kPending] & kBrightnessPending) {
      tick.Queue(gauge.GaugeID, kCommandBrightness, gauge.Work[kBrightness]);
    }
    gauge.Work[kPending] = 0;
  }

 private:
  static std::int32_t Limited(double value, std::int32_t lowest) {
    return static_cast<std::int32_t>(
        RoundHalfEven(std::clamp(value, static_cast<double>(lowest), static_cast<double>(kLargestValue))));
  }
};

}  // namespace

const Instrument& IOModuleGaugeKind() {
  static const IOModuleGauge kind;
  return kind;
}

}  // namespace tvx
