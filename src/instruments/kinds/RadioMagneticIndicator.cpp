// Radio magnetic indicator, Gaugetype 130: a compass card, two pointers, and a distance window.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"

namespace tvx {
namespace {

// Slots of Ports: the distance, the bearings to two VORs and to two ADF stations, degrees.
enum : std::size_t { kDistance, kVor1, kVor2, kAdf1, kAdf2 };
constexpr int kDistanceFunction = 27;
constexpr int kVorFunction = 143;
constexpr int kAdfFunction = 144;

// Slots of LastSent.
enum : std::size_t { kCardSent, kPointer1Sent, kPointer2Sent, kDistanceSent };

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

class RadioMagneticIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{130};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Shows the heading on its card and two bearings: Functions 143 (VOR) and 144 (ADF).";
    d.options = {
        {"First pointer", "What it points to", kOptionPointer1Adf, {{0, "VOR"}, {kOptionPointer1Adf, "ADF"}}},
        {"Second pointer",
         "What it points to",
         kOptionPointer2Adf,
         {{0, "VOR"}, {kOptionPointer2Adf, "ADF"}}},
        {"Second VOR receiver", "The second pointer shows Function 143, sequence number 2", kOptionSecondVor},
        {"Second ADF receiver", "The second pointer shows Function 144, sequence number 2",
         kOptionSecondAdf}};
    d.trials = {{"Card", kCommandCard, 0, 4319, "steps, 12 to a degree"},
                {"First pointer", kCommandPointer1, 0, 5000, "steps, 12 to a degree; 5000 parks it"},
                {"Second pointer", kCommandPointer2, 0, 5000, "steps, 12 to a degree; 5000 parks it"},
                {"Distance", kCommandDistance, 0, 9999, "0.1 NM"}};
    return d;
  }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const int options = gauge.Record->GaugeSetting5;
    OpenInto(gauge, kDistance, sim, kDistanceFunction, 1);
    OpenInto(gauge, kVor1, sim, kVorFunction, 1);
    OpenInto(gauge, kAdf1, sim, kAdfFunction, 1);
    if (options & kOptionSecondVor) OpenInto(gauge, kVor2, sim, kVorFunction, 2);
    if (options & kOptionSecondAdf) OpenInto(gauge, kAdf2, sim, kAdfFunction, 2);
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    const int options = gauge.Record->GaugeSetting5;
    SpecialValues& rmi = tick.Special();
    rmi.RmiValid = 0;
    rmi.RmiHasSecond = (options & kOptionSecondVor) != 0;
    rmi.RmiHasFourth = (options & kOptionSecondAdf) != 0;
    rmi.RmiBearing1 = Bearing(gauge, tick, kVor1, kValidVor1);
    rmi.RmiBearing2 = Bearing(gauge, tick, kVor2, kValidVor2);
    rmi.RmiAngle3 = TurnOf(Bearing(gauge, tick, kAdf1, kValidAdf1));
    rmi.RmiAngle4 = TurnOf(Bearing(gauge, tick, kAdf2, kValidAdf2));
    rmi.getRMIData();
    tick.QueueValueIfChanged(gauge, kCardSent, kCommandCard, DialStepsOf(tick.Flight().Heading));
    tick.QueueIfChanged(gauge, kPointer1Sent, kCommandPointer1,
                        OnDial(options & kOptionPointer1Adf ? rmi.RmiPos3 : rmi.RmiPos1));
    tick.QueueIfChanged(gauge, kPointer2Sent, kCommandPointer2,
                        OnDial(options & kOptionPointer2Adf ? rmi.RmiPos4 : rmi.RmiPos2));
    tick.QueueValueIfChanged(gauge, kDistanceSent, kCommandDistance,
                             tick.ValueOf(gauge.Ports[kDistance]) * 10.0);
  }

 private:
  // The bearing as 0..360 degrees; marks it valid when the simulator has one.
  static float Bearing(const ActiveGauge& gauge, GaugeTick& tick, std::size_t slot, int valid) {
    float degrees = 0;
    if (!tick.Sim().GetPort(gauge.Ports[slot], degrees) || !(std::fabs(degrees) <= 360.0f)) return 0;
    SpecialValues& rmi = tick.Special();
    rmi.RmiValid = static_cast<std::int16_t>(rmi.RmiValid | valid);
    return degrees < 0 ? degrees + 360.0f : degrees;
  }
  static std::int16_t TurnOf(float degrees) {
    const double turns = RoundHalfEven(static_cast<double>(degrees) / 360.0 * 65536.0);
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(static_cast<std::int32_t>(turns)));
  }
  // A full turn is position 0.
  static std::int32_t OnDial(std::int16_t position) { return position == kDialSteps ? 0 : position; }
};

}  // namespace

const Instrument& RadioMagneticIndicatorKind() {
  static const RadioMagneticIndicator kind;
  return kind;
}

}  // namespace tvx
