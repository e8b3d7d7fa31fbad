// Autopilot panel, Gaugetype 124: status lamps, altitude preselect, vertical speed and trim; eight buttons,
// two knobs.
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr int kFunctionOffset = 90;  // the panel's configured Function numbers count from here

constexpr std::size_t kCommandList = 1;  // of the block of Functions: what the buttons run
constexpr int kButtons = 8;

constexpr int kCommandStatus = 4;         // the status bits
constexpr int kCommandAltitude = 5;       // ft
constexpr int kCommandVerticalSpeed = 6;  // ft/min
constexpr int kCommandTrim = 12;          // -16000..16000

constexpr int kAutopilotGroup = 118;  // of the simulator's data groups
constexpr int kVerticalSpeedValue = 2;

class AutopilotDriver final : public GaugeDriver {
 public:
  explicit AutopilotDriver(const Activation& a) : GaugeDriver(a) {
    block_.fill(kNoPort);
    const GaugeRecord& record = a.record;
    if (record.GaugeFunction1 != 0) {
      const int function = record.GaugeFunction1 + kFunctionOffset;
      for (std::size_t i = 0; i < block_.size(); ++i) {
        const bool used = i == kCommandList || SpecialValues::ReadsAutopilotPort(i);
        block_[i] = Open(a, function + static_cast<int>(i), record.GaugeInstance1, used);
      }
    }
    if (record.GaugeFunction2 != 0) {
      preselect_ = ReportedValue(Open(a, record.GaugeFunction2 + kFunctionOffset, record.GaugeInstance2));
    }
  }

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    SpecialValues& special = tick.Special();
    special.SetAutopilotPorts(block_);
    special.GetAPvaluesFX();
    shown_.status.QueueIfChanged(tick, gaugeID_, special.APStatusBits);
    if (Settled(tick)) {
      shown_.altitude.QueueRounded(tick, gaugeID_, static_cast<double>(special.APValue16));
      shown_.verticalSpeed.QueueRounded(tick, gaugeID_, static_cast<double>(special.APValue18));
    }
    shown_.trim.QueueIfChanged(tick, gaugeID_, special.APTrim);
  }

  // Byte 7: buttons pressed since the last report, bit 0 the first entry of the command list. Bytes 10, 11:
  // altitude preselect in ft, where byte 12 is 1. Bytes 13, 14: vertical speed in ft/min, signed, where byte
  // 15 is 1.
  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!HasLetters(reply, 'A', 'V')) return;
    for (int button = 0; button < kButtons; ++button) {
      if ((ReplyByte(reply, 7) & (1 << button)) == 0) continue;
      auto entry = static_cast<float>(button + 1);
      world.Sim().PutPort(block_[kCommandList], entry);
    }
    if (ReplyByte(reply, 12) == 1) {
      const int altitude = ReplyWord(reply, 10);
      preselect_.Report(world, hold_, altitude, {&shown_.altitude, gaugeID_, altitude});
    }
    if (ReplyByte(reply, 15) == 1) {
      const auto speed = static_cast<std::int16_t>(ReplyWord(reply, 13));
      world.Sim().SendDataFloat(kAutopilotGroup, kVerticalSpeedValue, static_cast<float>(speed));
      hold_.Begin(world);
      shown_.verticalSpeed.NoteShown(world, gaugeID_, speed);
    }
  }

 private:
  SpecialValues::AutopilotPortTable block_;
  ReportedValue preselect_;  // altitude, ft
  struct Shown {
    SentValue status{kCommandStatus}, altitude{kCommandAltitude}, verticalSpeed{kCommandVerticalSpeed},
        trim{kCommandTrim};
  } shown_;
};

class Autopilot final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{124};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Shows the autopilot's state and sets it with its buttons and knobs.";
    d.function1 = {"Block of the autopilot",
                   "The first of its 21 Functions, less 90: 1 stands for Function 91", true, kFunctionOffset};
    d.function2 = {"Altitude preselect", "The Function that its knob sets, less 90", true, kFunctionOffset};
    d.trials = {{"Lamps", kCommandStatus, 0, 255, "bits: 1 AP, 2 HDG, 8 NAV, 16 APR, 32 ALT"},
                {"Altitude", kCommandAltitude, 0, 65535, "ft"},
                {"Vertical speed", kCommandVerticalSpeed, -9900, 9900, "ft/min"},
                {"Trim", kCommandTrim, -16000, 16000, ""}};
    d.readings = {{"Buttons pressed", ByteText<7>}, {"Altitude preselect, ft", WordText<10>}};
    return d;
  }
  bool Polled() const override { return true; }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<AutopilotDriver>(activation);
  }
};

}  // namespace

const Instrument& AutopilotKind() {
  static const Autopilot kind;
  return kind;
}

}  // namespace tvx
