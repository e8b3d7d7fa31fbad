// Digital/analogue altimeter, Gaugetype 101: altitude in feet and the air pressure setting.
#include <algorithm>
#include <charconv>
#include <cmath>

#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr int kCommandAltitude = 4;
constexpr int kCommandPressure = 12;
constexpr int kStepsOfNone = 128;  // of byte 12: the knob was not turned
constexpr float kInchesPerStep = 0.01f;
constexpr Byte kModelInches = 1;  // the option byte: model 1 shows inches, others millibar

// A shown text's number; 0 where the text is none.
double NumberOf(const ShortText& text) {
  double number = 0;
  std::from_chars(text.View().data(), text.View().data() + text.length, number);
  return number;
}

// Altitude and pressure come from the program's own flight values, so that it opens no ports.
class AltimeterDriver final : public GaugeDriver {
 public:
  explicit AltimeterDriver(const Activation& a) : GaugeDriver(a) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    shown_.altitude.QueueRounded(tick, gaugeID_, tick.Flight().ShownAltitude);
    if (record_.GaugeFunction2 != 0 && Settled(tick)) {
      shown_.pressure.QueueIfChanged(tick, gaugeID_, PressureValue(tick.Flight().AirPressureHg));
    }
  }

  // The pressure knob: steps of a hundredth of an inch, or the setting itself in the unit of the face.
  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!HasLetters(reply, 'P', 'P')) return;
    float& setting = world.BarometricSetting();
    if (ReplyByte(reply, 10) == 1) {
      const int steps = ReplyByte(reply, 12) - kStepsOfNone;
      if (steps == 0) return;
      setting += static_cast<float>(steps) * kInchesPerStep;
    } else {
      const auto raw = static_cast<std::int16_t>(ReplyWord(reply, 7));
      const double inches = raw / (ReplyModel(reply) == kModelInches ? 100.0 : kMillibarPerInchHg);
      // A setting that repeats is known to the simulator; writing it again would undo what was set there.
      const bool repeated = reportedSetting_ == raw ||
                            world.WasTold(gaugeID_, kCommandPressure, static_cast<std::int32_t>(raw));
      reportedSetting_ = raw;
      if (repeated && world.Flight().AirPressureHg > 0) return;
      setting = static_cast<float>(inches);
    }
    hold_.Begin(world);
    world.PutAirPressure(setting);
  }

 private:
  // Whole millibar, or hundredths of an inch, of the pressure as the face shows it.
  std::int32_t PressureValue(double inches) const {
    const bool inHg = record_.GaugeSetting1 == kModelInches;
    const double shown = inHg ? NumberOf(FormatNumber(inches, "00.00")) * 100.0
                              : NumberOf(FormatNumber(inches * kMillibarPerInchHg, "0000"));
    constexpr double kLargest = kLargestValue;
    // The shown number is a decimal fraction: 29.92 * 100 must not become 2991.
    return static_cast<std::int32_t>(std::clamp(std::floor(shown + 1e-6), -kLargest, kLargest));
  }

  struct Shown {
    SentValue altitude{kCommandAltitude}, pressure{kCommandPressure};
  } shown_;
  std::optional<std::int16_t> reportedSetting_;  // in the unit of the face
};

class Altimeter final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{101};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Shows the program's own altitude (Function 2), and the air pressure set (Function 8).";
    d.function2 = {"Air pressure",
                   "Any Function here switches the pressure display on; the value is Function 8", true, 0,
                   functions::kAirPressure};
    d.own = {functions::kAltitude};
    d.models = {{kModelInches, "Inches of mercury"}, {2, "Hectopascal"}};
    d.trials = {{"Altitude", kCommandAltitude, -2000, kLargestValue, "ft"},
                {"Air pressure", kCommandPressure, 0, 3200, "hPa, or 0.01 inHg on model 1"}};
    d.readings = {{"Pressure setting", WordText<7>}, {"Knob turned", ByteText<10>}};
    return d;
  }
  bool Polled() const override { return true; }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<AltimeterDriver>(activation);
  }
};

}  // namespace

const Instrument& AltimeterKind() {
  static const Altimeter kind;
  return kind;
}

}  // namespace tvx
