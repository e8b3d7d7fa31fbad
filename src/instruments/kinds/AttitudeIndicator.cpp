// Attitude indicator, Gaugetype 103: pitch and bank of the program's own flight values.
#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kCommandPitch = 4;  // tenths of a degree, up positive
constexpr int kCommandBank = 5;   // tenths of a degree, right positive
constexpr double kTenths = 10.0;

class AttitudeDriver final : public GaugeDriver {
 public:
  explicit AttitudeDriver(const Activation& a) : GaugeDriver(a) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    shown_.pitch.QueueRounded(tick, gaugeID_, tick.Flight().Pitch * kTenths);
    shown_.bank.QueueRounded(tick, gaugeID_, tick.Flight().Bank * kTenths);
  }

 private:
  struct Shown {
    SentValue pitch{kCommandPitch}, bank{kCommandBank};
  } shown_;
};

class AttitudeIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{103};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Shows the program's own pitch (Function 5) and bank (Function 4).";
    d.own = {functions::kPitch, functions::kBank};
    d.trials = {{"Pitch", kCommandPitch, -900, 900, "0.1°, up positive"},
                {"Bank", kCommandBank, -1800, 1800, "0.1°, right positive"}};
    return d;
  }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<AttitudeDriver>(activation);
  }
};

}  // namespace

const Instrument& AttitudeIndicatorKind() {
  static const AttitudeIndicator kind;
  return kind;
}

}  // namespace tvx
