// Motorized trim wheel, Gaugetype 140: follows the simulator's trim, and trims when it is turned by hand.
#include <cstdlib>

#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

// Slots of Ports: the elevator trim and whether the autopilot flies.
enum : std::size_t { kTrim, kAutopilot };
constexpr int kTrimFunction = 281;
constexpr int kAutopilotFunction = 280;

// Slots of LastSent.
enum : std::size_t { kPositionSent, kFlagsSent };

constexpr int kCommandPosition = 5;  // 0 full nose down .. 10000 full nose up
constexpr int kCommandFlags = 11;    // bit 0: the autopilot flies, the wheel resists the hand
constexpr double kFullWheel = 10000.0;
constexpr int kDeadBand = 3;  // a report that moves less is jitter

class TrimWheel final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{140};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Follows and sets the elevator trim (Function 281); resists while the autopilot flies (280).";
    d.trials = {{"Wheel", kCommandPosition, 0, 10000, "0 full nose down, 10000 full nose up"},
                {"Resistance", kCommandFlags, 0, 1, "1 on"}};
    d.readings = {{"Wheel", WordText<7>}, {"Moved by", [](ReplyView reply) {
                                             return std::string(ReplyByte(reply, 13) == 1 ? "hand" : "motor");
                                           }}};
    return d;
  }
  bool Polled() const override { return true; }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    OpenInto(gauge, kTrim, sim, kTrimFunction, 1);
    OpenInto(gauge, kAutopilot, sim, kAutopilotFunction, 1);
    ReportThrough(gauge, 0, kTrim, kTrimFunction);
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    const auto [lowest, span] = RangeOf(tick.Model());
    if (span > 0 && tick.Settled(gauge)) {
      const double part = std::clamp((tick.ValueOf(gauge.Ports[kTrim]) - lowest) / span, 0.0, 1.0);
      tick.QueueValueIfChanged(gauge, kPositionSent, kCommandPosition, part * kFullWheel);
    }
    tick.QueueIfChanged(gauge, kFlagsSent, kCommandFlags,
                        tick.ValueOf(gauge.Ports[kAutopilot]) >= 0.5 ? 1 : 0);
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
  }

  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    if (!HasLetters(reply, 'P', 'T')) return;
    gauge.TrimReportByte = static_cast<std::int16_t>(ReplyByte(reply, 13));
    const int position = ReplyWord(reply, 7);
    if (std::abs(position - gauge.StoredPosition) < kDeadBand) return;
    gauge.StoredPosition = position;
    // Byte 13 tells whether the hand or the motor moved it; what the motor did, the simulator knows already.
    if (gauge.TrimReportByte == 0) return;
    const auto [lowest, span] = RangeOf(world.Model());
    world.Report(gauge, 0, lowest + std::min(position / kFullWheel, 1.0) * span);
  }

 private:
  struct Range {
    double lowest, span;
  };
  static Range RangeOf(const ConfigModel& model) {
    const FunctionRecord& trim = model.Functions[kTrimFunction];
    return {static_cast<double>(trim.boxMinimumValue),
            static_cast<double>(trim.boxMaximumValue) - static_cast<double>(trim.boxMinimumValue)};
  }
};

}  // namespace

const Instrument& TrimWheelKind() {
  static const TrimWheel kind;
  return kind;
}

}  // namespace tvx
