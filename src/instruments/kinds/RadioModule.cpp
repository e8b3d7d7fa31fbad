// Radio modules, Gaugetypes 110, 111 (COM, NAV or ADF by their options) and 121 (ADF): an active and a
// standby frequency.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kAdfRadio = 121;

enum : std::size_t { kActive, kStandby };

constexpr int kCommandActive = 4;  // raw: kHz above 100 MHz; an ADF: tenths of a kHz
constexpr int kCommandStandby = 5;

constexpr int kOptionKind = 3;  // 0 COM, 1 NAV, 2 and 3 ADF
constexpr int kOptionSendStandby = 4;
constexpr std::int16_t kAdf = 2;  // and above

class RadioModule final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 3> kCodes{110, 111, kAdfRadio};
    return kCodes;
  }
  InstrumentDescription Describe(int gaugetype) const override {
    InstrumentDescription d;
    d.purpose = "Shows an active and a standby frequency, and sets them with its knobs.";
    d.function1 = {"Active frequency", "10 kHz (11850 is 118.50 MHz); an ADF: kHz"};
    d.function2 = {"Standby frequency", "10 kHz (11850 is 118.50 MHz); an ADF: kHz"};
    if (gaugetype != kAdfRadio) {
      d.options = {{"Kind of radio",
                    "What it tunes",
                    kOptionKind,
                    {{0, "COM"}, {1, "NAV"}, {2, "ADF"}, {3, "ADF (second kind)"}}}};
    }
    d.options.push_back({"Send the standby frequency too",
                         "Its knob changes the simulator's standby frequency", kOptionSendStandby});
    d.trials = {{"Active", kCommandActive, 0, 65535, "kHz above 100 MHz; an ADF: 0.1 kHz"},
                {"Standby", kCommandStandby, 0, 65535, "kHz above 100 MHz; an ADF: 0.1 kHz"}};
    if (gaugetype == kAdfRadio) {
      d.readings = {{"Active, 0.1 kHz", WordText<7>}, {"Standby, 0.1 kHz", WordText<10>}};
    } else {
      d.readings = {{"Active", MegahertzText<7>}, {"Standby", MegahertzText<10>}};
    }
    return d;
  }
  bool Polled() const override { return true; }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const GaugeRecord& record = *gauge.Record;
    OpenInto(gauge, kActive, sim, record.GaugeFunction1, record.GaugeInstance1);
    OpenInto(gauge, kStandby, sim, record.GaugeFunction2, record.GaugeInstance2);
    ReportThrough(gauge, kActive, kActive, record.GaugeFunction1);
    ReportThrough(gauge, kStandby, kStandby, record.GaugeFunction2);
    gauge.RadioKind =
        record.GaugeType == kAdfRadio ? kAdf : static_cast<std::int16_t>(record.GaugeSetting5 & kOptionKind);
    gauge.SendStandby = (record.GaugeSetting5 & kOptionSendStandby) != 0;
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    if (tick.Settled(gauge)) {
      Show(gauge, tick, kActive, kCommandActive);
      Show(gauge, tick, kStandby, kCommandStandby);
    }
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
  }

  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    if (!HasLetters(reply, 'A', 'S')) return;
    const int active = ReplyWord(reply, 7);
    const int standby = ReplyWord(reply, 10);
    if (gauge.RadioKind >= kAdf) {
      ReportAdf(gauge, kActive, active, world);
      if (gauge.SendStandby) ReportAdf(gauge, kStandby, standby, world);
      return;
    }
    world.Report(gauge, kActive, FrequencyOf(active));
    if (gauge.SendStandby) world.Report(gauge, kStandby, FrequencyOf(standby));
  }

 private:
  // A frequency of 0 is none: the simulator has not told it yet.
  static void Show(ActiveGauge& gauge, GaugeTick& tick, std::size_t slot, int command) {
    const double frequency = tick.ValueOf(gauge.Ports[slot]);
    if (frequency <= 0) return;
    const double raw = gauge.RadioKind >= kAdf ? frequency * 10.0 : RawFrequencyOf(frequency);
    if (raw > 0) tick.QueueValueIfChanged(gauge, slot, command, raw);
  }

  // An ADF's frequency goes to its dataref by name.
  static void ReportAdf(ActiveGauge& gauge, std::size_t n, int raw, GaugeReply& world) {
    if (!world.IsNews(gauge, n, raw / 10.0, gauge.Ports[n])) return;
    const auto digits = FiveDigits(raw);
    world.Special().PutADF({digits.data(), digits.size()}, n == kStandby);
  }
};

}  // namespace

const Instrument& RadioModuleKind() {
  static const RadioModule kind;
  return kind;
}

}  // namespace tvx
