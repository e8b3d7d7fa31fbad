// Clocks: Gaugetypes 104 (UTC, local time and date) and 109 (outside temperature and voltage as well).
#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kBoeingClock = 104;
constexpr Byte kCessnaClock = 109;

constexpr int kCommandUtc = 4;    // seconds of the day; above 65535 as 65535 less the seconds
constexpr int kCommandLocal = 5;  // the same, local time
constexpr int kCommandDate = 6;   // month * 100 + day
constexpr int kCommandFlags = 11;
constexpr int kFlagTimeJumped = 1;       // set the hands at once
constexpr int kCommandYear = 12;         // less 2000
constexpr int kCommandTemperature = 13;  // tenths of a degree C
constexpr int kCommandVoltage = 14;      // tenths of a volt

class ClockDriver final : public GaugeDriver {
 public:
  explicit ClockDriver(const Activation& a)
      : GaugeDriver(a), hasTemperature_(a.record.GaugeType == kCessnaClock) {
    const bool timeIsDataref = IsDataref(a, functions::kTimeOfDay);
    const Port utc = Open(a, functions::kTimeOfDay, 1);
    if (timeIsDataref) {
      utc_ = utc;
      local_ = Open(a, functions::kTimeOfDay, 2);
    }
    if (!hasTemperature_) return;
    const Port temperature = Open(a, functions::kOutsideTemperature, 1);
    if (IsDataref(a, functions::kOutsideTemperature)) temperature_ = temperature;
  }

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    SpecialValues& now = tick.Special();
    if (utc_ != kNoPort && local_ != kNoPort) now.UseTimePorts(utc_, local_);
    if (temperature_ != kNoPort) now.UseTemperaturePort(temperature_);
    if (now.TimeJumped()) tick.Queue(gaugeID_, kCommandFlags, kFlagTimeJumped);
    shown_.utc.QueueIfChanged(tick, gaugeID_, now.ZuluSeconds);
    shown_.local.QueueIfChanged(tick, gaugeID_, now.LocalSeconds);
    shown_.date.QueueIfChanged(tick, gaugeID_, now.DateMonth * 100 + now.DateDay);
    shown_.year.QueueIfChanged(tick, gaugeID_, now.DateYear);
    if (!hasTemperature_) return;
    shown_.temperature.QueueRounded(tick, gaugeID_, static_cast<double>(now.OutsideTemperature) * 10.0);
    shown_.voltage.QueueRounded(tick, gaugeID_, tick.Flight().Voltage * 10.0);
  }

  // The time that was set by hand on the clock.
  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (ReplyGaugetype(reply) != kBoeingClock) return;
    const auto number = [reply](std::size_t byte) {
      return static_cast<std::int16_t>(ReplyByte(reply, byte));
    };
    world.Special().PutTimeAndDate({static_cast<std::int16_t>(number(7) + 2000), number(8), number(9),
                                    number(11), number(12), number(13)});
  }

 private:
  static bool IsDataref(const Activation& a, int function) {
    return a.model.Functions[static_cast<std::size_t>(function)].Is(DataType::XplaneDataref);
  }

  // The ports that hold the values. A Function that reads a data group needs none: its open port makes the
  // simulator send the group, and that is where the value is taken from.
  Port utc_ = kNoPort, local_ = kNoPort, temperature_ = kNoPort;
  const bool hasTemperature_;  // and the voltage
  struct Shown {
    SentValue utc{kCommandUtc}, local{kCommandLocal}, date{kCommandDate}, year{kCommandYear},
        temperature{kCommandTemperature}, voltage{kCommandVoltage};
  } shown_;
};

class ClockGauge final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 2> kCodes{kBoeingClock, kCessnaClock};
    return kCodes;
  }
  InstrumentDescription Describe(int gaugetype) const override {
    InstrumentDescription d;
    d.purpose = "Shows the simulator's time and date (Function 10).";
    d.trials = {{"UTC", kCommandUtc, 0, 65535, "seconds of the day"},
                {"Local time", kCommandLocal, 0, 65535, "seconds of the day"},
                {"Date", kCommandDate, 101, 1231, "month x 100 + day"}};
    if (gaugetype == kCessnaClock) {
      d.purpose =
          "Shows the simulator's time and date (Function 10), outside temperature (13) and voltage (9).";
      d.own = {functions::kVoltage};
      d.trials.push_back({"Outside temperature", kCommandTemperature, -900, 900, "0.1 °C"});
      d.trials.push_back({"Voltage", kCommandVoltage, 0, 400, "0.1 V"});
    }
    d.readings = {{"Date set by hand",
                   [](ReplyView reply) {
                     return std::to_string(2000 + ReplyByte(reply, 7)) + '-' +
                            std::to_string(ReplyByte(reply, 8)) + '-' + std::to_string(ReplyByte(reply, 9));
                   }},
                  {"Time set by hand", [](ReplyView reply) {
                     return std::to_string(ReplyByte(reply, 11)) + ':' +
                            FormatNumberText(ReplyByte(reply, 12), "00") + ':' +
                            FormatNumberText(ReplyByte(reply, 13), "00");
                   }}};
    return d;
  }
  bool Polled() const override { return true; }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<ClockDriver>(activation);
  }
};

}  // namespace

const Instrument& ClockKind() {
  static const ClockGauge kind;
  return kind;
}

}  // namespace tvx
