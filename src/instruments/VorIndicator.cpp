// VOR indicator, Gaugetype 106: course deviation and glide slope needles, and their flags.
#include "instruments/Kinds.h"

namespace tvx {
namespace {

// Slots of Ports: Functions 33..36. LastSent keeps the values of the first two as they were read.
enum : std::size_t { kCourse, kGlide, kToFrom, kFlags };
constexpr std::array<int, 4> kFunctionOfSlot{33, 34, 35, 36};

constexpr int kCommandCourse = 5;
constexpr int kCommandGlide = 6;
constexpr int kCommandFlags = 11;

constexpr double kFullDeflection = 127.0;  // a needle's value
constexpr double kStepsAtFull = 300.0;     // needle steps from the middle
constexpr double kLimit = 472.0;           // mechanical stop, steps from the middle
constexpr float kNeedleAtRun = 127.0f;     // every run starts from these last sent values
constexpr float kFlagsAtRun = 15.0f;

class VorIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{106};
    return kCodes;
  }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    for (std::size_t slot = 0; slot < kFunctionOfSlot.size(); ++slot) {
      OpenInto(gauge, slot, sim, kFunctionOfSlot[slot], 1);
    }
  }

  void StartRun(ActiveGauge& gauge) const override {
    gauge.LastSent[kCourse] = gauge.LastSent[kGlide] = kNeedleAtRun;
    gauge.LastSent[kToFrom] = gauge.LastSent[kFlags] = kFlagsAtRun;
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    ServeNeedle(gauge, tick, kCourse, kCommandCourse);
    ServeNeedle(gauge, tick, kGlide, kCommandGlide);

    const auto toFrom = RoundToOrThrow<Byte>(tick.ValueOf(gauge.Ports[kToFrom]));
    const auto flags = RoundToOrThrow<Byte>(tick.ValueOf(gauge.Ports[kFlags]));
    if (gauge.LastSent[kToFrom] == toFrom && gauge.LastSent[kFlags] == flags) return;
    if (!tick.Queue(gauge.GaugeID, kCommandFlags, toFrom + 256 * flags)) return;
    gauge.LastSent[kToFrom] = toFrom;
    gauge.LastSent[kFlags] = flags;
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
