// Attitude indicator, Gaugetype 103: pitch and bank of the program's own flight values.
#include "instruments/kinds/Kinds.h"

namespace tvx {
namespace {

enum : std::size_t { kPitch, kBank };

constexpr int kCommandPitch = 4;  // tenths of a degree, up positive
constexpr int kCommandBank = 5;   // tenths of a degree, right positive
constexpr double kTenths = 10.0;

class AttitudeIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{103};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Shows the program's own pitch (Function 5) and bank (Function 4).";
    d.trials = {{"Pitch", kCommandPitch, -900, 900, "0.1°, up positive"},
                {"Bank", kCommandBank, -1800, 1800, "0.1°, right positive"}};
    return d;
  }
  void OpenPorts(ActiveGauge&, const ConfigModel&, SimCom&) const override {}

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    tick.QueueValueIfChanged(gauge, kPitch, kCommandPitch, tick.Flight().Pitch * kTenths);
    tick.QueueValueIfChanged(gauge, kBank, kCommandBank, tick.Flight().Bank * kTenths);
  }
};

}  // namespace

const Instrument& AttitudeIndicatorKind() {
  static const AttitudeIndicator kind;
  return kind;
}

}  // namespace tvx
