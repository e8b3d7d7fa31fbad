// Input/output module on the gauge bus, Gaugetype 10: sixteen lamps and a number, refreshed one module at a
// time.
#include <algorithm>
#include <cstdlib>

#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"

namespace tvx {
namespace {

constexpr std::size_t kAnalogueInputs = 8;
constexpr int kAnalogueDeadBand = 4;  // of 4095
constexpr float kFullAnalogue = 4095.0f;

constexpr int kCommandNumber = 4;
constexpr int kCommandBrightness = 5;
constexpr int kCommandLamps = 6;

// A value that waits for the module's turn, wherever it changed.
class WaitingValue {
 public:
  explicit WaitingValue(int command) : command_(command) {}
  void Note(std::int32_t value) {
    if (value_ == value) return;
    value_ = value;
    waiting_ = true;
  }
  void QueueIfWaiting(GaugeTick& tick, int gaugeID) {
    if (waiting_ && tick.Queue(gaugeID, command_, *value_)) waiting_ = false;
  }

 private:
  int command_;
  std::optional<std::int32_t> value_;
  bool waiting_ = false;
};

class IOModuleDriver final : public GaugeDriver {
 public:
  explicit IOModuleDriver(const Activation& a)
      : GaugeDriver(a),
        lamps_(Open(a, a.record.GaugeFunction1, a.record.GaugeInstance1)),
        number_(Open(a, a.record.GaugeFunction2, a.record.GaugeInstance2)) {
    int function = a.record.GaugeSetting6;
    if (function <= 0) return;
    for (AnalogueInput& input : inputs_) {
      if (function < kFunctions) input.port = Open(a, function, 1);
      ++function;
    }
  }

  void Forget() override { shown_ = {}; }

  // No frame goes out here: it only notes what the module's next turn has to send.
  void Serve(GaugeTick& tick) override {
    if (number_ != kNoPort) shown_.number.Note(Limited(tick.ValueOf(number_), -kLargestValue));
    shown_.brightness.Note(tick.Flight().BrightnessStep);
  }

  void ServeModuleTurn(GaugeTick& tick) override {
    tick.Queue(gaugeID_, kCommandLamps, Limited(tick.ValueOf(lamps_), 0));
    shown_.number.QueueIfWaiting(tick, gaugeID_);
    shown_.brightness.QueueIfWaiting(tick, gaugeID_);
  }

  // Bytes 6..11 are the module's text, bytes 13..24 its eight analogue inputs of 12 bits.
  void HandleReply(ReplyView reply, GaugeReply& world) override {
    std::copy_n(reply.begin() + 5, moduleText_.size(), moduleText_.begin());
    for (std::size_t k = 0; k < inputs_.size() / 2; ++k) {
      const int high = ReplyByte(reply, 13 + k);
      Take(inputs_[2 * k], (high & 0xF0) * 16 + ReplyByte(reply, 17 + 2 * k), world);
      Take(inputs_[2 * k + 1], (high & 0x0F) * 256 + ReplyByte(reply, 18 + 2 * k), world);
    }
  }

  std::string KeptText() const override {
    std::string text;
    for (const Byte c : moduleText_) {
      if (c != 0) text += static_cast<char>(c);
    }
    return text;
  }

 private:
  struct AnalogueInput {
    Port port = kNoPort;       // of its own Function: the configured one is the first input's
    std::optional<int> value;  // 0..4095
  };

  // An input that moved is written to its Function, spread over that Function's minimum to maximum.
  static void Take(AnalogueInput& input, int value, GaugeReply& world) {
    if (input.value && std::abs(value - *input.value) < kAnalogueDeadBand) return;
    input.value = value;
    if (input.port == kNoPort) return;
    const FunctionRecord& function =
        world.Model().Functions[static_cast<std::size_t>(world.Sim().PortAt(input.port).FunctionNr)];
    const float span = function.boxMaximumValue - function.boxMinimumValue;
    float sent = function.boxMinimumValue + static_cast<float>(value) / kFullAnalogue * span;
    world.Sim().PutPort(input.port, sent);
  }
  static std::int32_t Limited(double value, std::int32_t lowest) {
    return static_cast<std::int32_t>(
        RoundHalfEven(std::clamp(value, static_cast<double>(lowest), static_cast<double>(kLargestValue))));
  }

  const Port lamps_, number_;
  std::array<AnalogueInput, kAnalogueInputs> inputs_;
  std::array<Byte, 6> moduleText_{};
  struct Shown {
    WaitingValue number{kCommandNumber}, brightness{kCommandBrightness};
  } shown_;
};

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
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<IOModuleDriver>(activation);
  }
};

}  // namespace

const Instrument& IOModuleGaugeKind() {
  static const IOModuleGauge kind;
  return kind;
}

}  // namespace tvx
