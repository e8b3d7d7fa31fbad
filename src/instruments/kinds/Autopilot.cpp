// Autopilot panel, Gaugetype 124: status lamps, altitude preselect, vertical speed and trim; eight buttons,
// two knobs.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr int kFunctionOffset = 90;  // the panel's configured Function numbers count from here

// Slots of Ports: the block of Functions from the first configured one on, then the second configured one.
constexpr std::size_t kBlock = SpecialValues::kAutopilotPorts;
constexpr std::size_t kButtons = 1;  // of the block: the command list that the buttons run
constexpr std::size_t kPreselect = kBlock;

// Slots of LastSent.
enum : std::size_t { kStatus, kAltitude, kVerticalSpeed, kTrim };

constexpr int kCommandStatus = 4;         // the status bits
constexpr int kCommandAltitude = 5;       // ft
constexpr int kCommandVerticalSpeed = 6;  // ft/min
constexpr int kCommandTrim = 12;          // -16000..16000

constexpr int kAutopilotGroup = 118;  // of the simulator's data groups
constexpr int kVerticalSpeedValue = 2;

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

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const GaugeRecord& record = *gauge.Record;
    if (record.GaugeFunction1 != 0) {
      const int first = record.GaugeFunction1 + kFunctionOffset;
      for (std::size_t i = 0; i < kBlock; ++i) {
        OpenInto(gauge, i, sim, first + static_cast<int>(i), record.GaugeInstance1);
      }
    }
    if (record.GaugeFunction2 != 0) {
      OpenInto(gauge, kPreselect, sim, record.GaugeFunction2 + kFunctionOffset, record.GaugeInstance2);
      ReportThrough(gauge, 1, kPreselect, record.GaugeFunction2 + kFunctionOffset);
    }
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    SpecialValues::AutopilotPortTable ports;
    std::copy_n(gauge.Ports.begin(), kBlock, ports.begin());
    SpecialValues& special = tick.Special();
    special.SetAutopilotPorts(ports);
    special.GetAPvaluesFX();
    tick.QueueIfChanged(gauge, kStatus, kCommandStatus, special.APStatusBits);
    if (tick.Settled(gauge)) {
      tick.QueueValueIfChanged(gauge, kAltitude, kCommandAltitude, static_cast<double>(special.APValue16));
      tick.QueueValueIfChanged(gauge, kVerticalSpeed, kCommandVerticalSpeed,
                               static_cast<double>(special.APValue18));
    }
    tick.QueueIfChanged(gauge, kTrim, kCommandTrim, special.APTrim);
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
  }

  // Byte 7: buttons pressed since the last report, bit 0 the first entry of the command list. Bytes 10, 11:
  // altitude preselect in ft, where byte 12 is 1. Bytes 13, 14: vertical speed in ft/min, signed, where byte
  // 15 is 1.
  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    if (!HasLetters(reply, 'A', 'V')) return;
    for (int button = 0; button < 8; ++button) {
      if ((ReplyByte(reply, 7) & (1 << button)) == 0) continue;
      auto entry = static_cast<float>(button + 1);
      world.Sim().PutPort(gauge.Ports[kButtons], entry);
    }
    if (ReplyByte(reply, 12) == 1) world.Report(gauge, 1, ReplyWord(reply, 10));
    if (ReplyByte(reply, 15) == 1) {
      const auto speed = static_cast<std::int16_t>(ReplyWord(reply, 13));
      world.Sim().SendDataFloat(kAutopilotGroup, kVerticalSpeedValue, static_cast<float>(speed));
      gauge.QuietUntil = world.TickNumber() + world.TicksPerSecond();
    }
  }
};

}  // namespace

const Instrument& AutopilotKind() {
  static const Autopilot kind;
  return kind;
}

}  // namespace tvx
