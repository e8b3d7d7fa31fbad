// Radio magnetic indicator, Gaugetype 130: a compass card, two pointers, and a distance window.
#include "config/FunctionNumbers.h"
#include "instruments/kinds/ParkOld.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"

namespace tvx {
namespace {

// Options: which source each pointer shows.
constexpr int kOptionPointer1Adf = 1;
constexpr int kOptionPointer2Adf = 2;
constexpr int kOptionSecondVor = 4;  // the second pointer's VOR is the second receiver
constexpr int kOptionSecondAdf = 8;

constexpr int kCommandCard = 4;      // steps, 0..4319
constexpr int kCommandPointer1 = 5;  // steps, 0..4319; 5000 parks it
constexpr int kCommandPointer2 = 6;
constexpr int kCommandDistance = 12;  // tenths of a nautical mile

constexpr int kValidVor1 = 0x02, kValidVor2 = 0x04, kValidAdf1 = 0x08, kValidAdf2 = 0x800;

class RmiDriver final : public GaugeDriver {
 public:
  explicit RmiDriver(const Activation& a)
      : GaugeDriver(a),
        distance_(Open(a, functions::kDmeDistance, 1)),
        vor1_(Open(a, functions::kRmiVor, 1, Shows(a, false, 1))),
        adf1_(Open(a, functions::kRmiAdf, 1, Shows(a, true, 1))),
        vor2_(Has(a, kOptionSecondVor) ? Open(a, functions::kRmiVor, 2, Shows(a, false, 2)) : kNoPort),
        adf2_(Has(a, kOptionSecondAdf) ? Open(a, functions::kRmiAdf, 2, Shows(a, true, 2)) : kNoPort) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    const int options = record_.GaugeSetting5;
    SpecialValues& rmi = tick.Special();
    rmi.RmiValid = 0;
    rmi.RmiHasSecond = (options & kOptionSecondVor) != 0;
    rmi.RmiHasFourth = (options & kOptionSecondAdf) != 0;
    rmi.RmiBearing1 = Bearing(tick, vor1_, kValidVor1);
    rmi.RmiBearing2 = Bearing(tick, vor2_, kValidVor2);
    rmi.RmiAngle3 = TurnOf(Bearing(tick, adf1_, kValidAdf1));
    rmi.RmiAngle4 = TurnOf(Bearing(tick, adf2_, kValidAdf2));
    rmi.getRMIData();
    shown_.card.QueueRounded(tick, gaugeID_, DialStepsOf(tick.Flight().Heading));
    shown_.pointer1.QueueIfChanged(tick, gaugeID_,
                                   OnDial(options & kOptionPointer1Adf ? rmi.RmiPos3 : rmi.RmiPos1));
    shown_.pointer2.QueueIfChanged(tick, gaugeID_,
                                   OnDial(options & kOptionPointer2Adf ? rmi.RmiPos4 : rmi.RmiPos2));
    shown_.distance.QueueRounded(tick, gaugeID_, tick.ValueOf(distance_) * 10.0);
  }

 private:
  static bool Has(const Activation& a, int option) { return (a.record.GaugeSetting5 & option) != 0; }
  // Whether one of the pointers shows this receiver, 1 or 2, of the ADF or of the VOR.
  static bool Shows(const Activation& a, bool adf, int receiver) {
    const bool second = Has(a, adf ? kOptionSecondAdf : kOptionSecondVor);
    if (Has(a, kOptionPointer2Adf) == adf && (second ? 2 : 1) == receiver) return true;
    return receiver == 1 && Has(a, kOptionPointer1Adf) == adf;
  }
  // The bearing, 0..360 degrees; marks it valid when the simulator has one. It has none before the first
  // value came, and says so itself by a negative number. One that is too old counts as none where the option
  // says so.
  float Bearing(GaugeTick& tick, Port port, int valid) const {
    float degrees = 0;
    if (!tick.Sim().HasArrived(port) || !tick.Sim().GetPort(port, degrees)) return 0;
    if (ParksOld(record_.GaugeSetting5, tick.Sim(), port)) return 0;
    if (!(degrees >= 0 && degrees <= 360.0f)) return 0;
    SpecialValues& rmi = tick.Special();
    rmi.RmiValid = static_cast<std::int16_t>(rmi.RmiValid | valid);
    return degrees;
  }
  static std::int16_t TurnOf(float degrees) {
    const double turns = RoundHalfEven(static_cast<double>(degrees) / 360.0 * 65536.0);
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(static_cast<std::int32_t>(turns)));
  }
  // A full turn is position 0.
  static std::int32_t OnDial(std::int16_t position) { return position == kDialSteps ? 0 : position; }

  const Port distance_;
  const Port vor1_, adf1_, vor2_, adf2_;  // bearings, degrees
  struct Shown {
    SentValue card{kCommandCard}, pointer1{kCommandPointer1}, pointer2{kCommandPointer2},
        distance{kCommandDistance};
  } shown_;
};

class RadioMagneticIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{130};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Shows the heading on its card and two bearings: Functions 143 (VOR) and 144 (ADF).";
    d.own = {functions::kHeading};
    d.options = {
        {"First pointer", "What it points to", kOptionPointer1Adf, {{0, "VOR"}, {kOptionPointer1Adf, "ADF"}}},
        {"Second pointer",
         "What it points to",
         kOptionPointer2Adf,
         {{0, "VOR"}, {kOptionPointer2Adf, "ADF"}}},
        {"Second VOR receiver", "The second pointer shows Function 143, sequence number 2", kOptionSecondVor},
        {"Second ADF receiver", "The second pointer shows Function 144, sequence number 2", kOptionSecondAdf},
        {"Park without values", "A pointer whose bearing has not come for 5 s is parked", kOptionParkOld}};
    d.trials = {
        {"Card", kCommandCard, 0, kDialSteps - 1, "steps, 12 to a degree"},
        {"First pointer", kCommandPointer1, 0, kParkedNeedle, "steps, 12 to a degree; 5000 parks it"},
        {"Second pointer", kCommandPointer2, 0, kParkedNeedle, "steps, 12 to a degree; 5000 parks it"},
        {"Distance", kCommandDistance, 0, 9999, "0.1 NM"}};
    return d;
  }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<RmiDriver>(activation);
  }
};

}  // namespace

const Instrument& RadioMagneticIndicatorKind() {
  static const RadioMagneticIndicator kind;
  return kind;
}

}  // namespace tvx
