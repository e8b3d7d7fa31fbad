// COM/NAV radio, Gaugetype 120: two radios in one housing, with their active and standby frequencies.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

// Slots of Ports, and input numbers: active and standby of the first radio, active and standby of the second.
enum : std::size_t { kActive1, kStandby1, kActive2, kStandby2 };
constexpr std::array<int, 4> kFunctionOfSlot{20, 22, 21, 23};

constexpr int kOptionSecondRadio = 4;
constexpr int kInvalid = 0x20;  // in byte 23: the report is not valid

class ComNavRadio final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{120};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Keeps its own frequencies and sends them: Functions 20 and 22, the second radio 21 and 23.";
    d.function1 = {"Unit of the stack", "Sequence number of its Functions; 0 counts as 1", false};
    d.options = {{"The second radio too", "Sends Functions 21 and 23 as well", kOptionSecondRadio}};
    d.readings = {{"Radio 1 active", MegahertzText<7>},
                  {"Radio 1 standby", MegahertzText<13>},
                  {"Radio 2 active", MegahertzText<10>},
                  {"Radio 2 standby", MegahertzText<16>}};
    return d;
  }
  bool Polled() const override { return true; }

  // The gauge's first sequence number tells which unit of a stack it is; none is the first.
  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    gauge.SendStandby = (gauge.Record->GaugeSetting5 & kOptionSecondRadio) != 0;
    for (const std::size_t slot : {kActive1, kStandby1, kActive2, kStandby2}) {
      if (slot == kActive2 && !gauge.SendStandby) continue;
      OpenInto(gauge, slot, sim, kFunctionOfSlot[slot], gauge.Record->GaugeInstance1);
      ReportThrough(gauge, slot, slot, kFunctionOfSlot[slot]);
    }
  }

  // It keeps its own frequencies: the cycle only asks it.
  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
  }

  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    if (!HasLetters(reply, 'C', 'S') || (ReplyByte(reply, 23) & kInvalid) != 0) return;
    const auto report = [&](std::size_t input, std::size_t byte) {
      world.Report(gauge, input, FrequencyOf(ReplyWord(reply, byte)));
    };
    report(kActive1, 7);
    report(kStandby1, 13);
    if (!gauge.SendStandby) return;
    report(kActive2, 10);
    report(kStandby2, 16);
  }
};

}  // namespace

const Instrument& ComNavRadioKind() {
  static const ComNavRadio kind;
  return kind;
}

}  // namespace tvx
