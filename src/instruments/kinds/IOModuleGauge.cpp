// Input/output module on the gauge bus, Gaugetype 10: sixteen lamps and a number, refreshed one module at a
// time.
#include <cstdlib>

#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"

namespace tvx {
namespace {

// Slots of Ports: what is shown, then what the eight analogue inputs set.
enum : std::size_t { kLamps, kNumber, kFirstAnalogue };
constexpr int kAnalogueInputs = 8;
constexpr int kAnalogueDeadBand = 4;  // of 4095
constexpr float kFullAnalogue = 4095.0f;

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
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Lamps and a number for its display; eight analogue inputs come back.";
    d.function1 = {"Lamps", "The Function whose whole number sets the lamps, bit by bit"};
    d.function2 = {"Number", "The Function that the display shows, rounded"};
    d.setting6 = "First Function of the eight analogue inputs (0: none is written)";
    d.trials = {{"Lamps", kCommandLamps, 0, 65535, "one bit a lamp"},
                {"Number", kCommandNumber, -kLargestValue, kLargestValue, ""},
                {"Brightness", kCommandBrightness, 0, 15, "steps"}};
    return d;
  }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const GaugeRecord& record = *gauge.Record;
    OpenInto(gauge, kLamps, sim, record.GaugeFunction1, record.GaugeInstance1);
    OpenInto(gauge, kNumber, sim, record.GaugeFunction2, record.GaugeInstance2);
    if (record.GaugeSetting6 <= 0) return;
    for (int i = 0; i < kAnalogueInputs; ++i) {
      const int function = record.GaugeSetting6 + i;
      if (function < kFunctions)
        OpenInto(gauge, kFirstAnalogue + static_cast<std::size_t>(i), sim, function, 1);
    }
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

  // Bytes 6..11 are the module's text, bytes 13..24 its eight analogue inputs of 12 bits. Each input that
  // moved is written to a Function: the spare setting names the first one, input 0 goes there, input 1 to the
  // next, and so on.
  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    std::copy_n(reply.begin() + 5, gauge.ModuleText.size(), gauge.ModuleText.begin());
    for (std::size_t k = 0; k < 4; ++k) {
      const int high = ReplyByte(reply, 13 + k);
      TakeAnalogue(gauge, 2 * k, (high & 0xF0) * 16 + ReplyByte(reply, 17 + 2 * k), world);
      TakeAnalogue(gauge, 2 * k + 1, (high & 0x0F) * 256 + ReplyByte(reply, 18 + 2 * k), world);
    }
  }

 private:
  static void TakeAnalogue(ActiveGauge& gauge, std::size_t input, int value, GaugeReply& world) {
    const int before = gauge.AnalogueValue[input];
    if (before >= 0 && std::abs(value - before) < kAnalogueDeadBand) return;
    gauge.AnalogueValue[input] = static_cast<std::int16_t>(value);
    const Port port = gauge.Ports[kFirstAnalogue + input];
    if (port == kNoPort) return;
    const FunctionRecord& function =
        world.Model().Functions[static_cast<std::size_t>(world.Sim().PortAt(port).FunctionNr)];
    const float span = function.boxMaximumValue - function.boxMinimumValue;
    float sent = function.boxMinimumValue + static_cast<float>(value) / kFullAnalogue * span;
    world.Sim().PutPort(port, sent);
  }
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
