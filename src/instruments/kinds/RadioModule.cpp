// Radio modules, Gaugetypes 110, 111 (COM, NAV or ADF by their options) and 121 (ADF): an active and a
// standby frequency.
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kAdfRadio = 121;

constexpr int kCommandActive = 4;  // raw: kHz above 100 MHz; an ADF: tenths of a kHz
constexpr int kCommandStandby = 5;

constexpr int kOptionKind = 3;  // 0 COM, 1 NAV, 2 and 3 ADF
constexpr int kOptionSendStandby = 4;
constexpr int kAdf = 2;  // and above

class RadioDriver final : public GaugeDriver {
 public:
  explicit RadioDriver(const Activation& a)
      : GaugeDriver(a),
        radioKind_(a.record.GaugeType == kAdfRadio ? kAdf : a.record.GaugeSetting5 & kOptionKind),
        sendStandby_((a.record.GaugeSetting5 & kOptionSendStandby) != 0),
        active_(Open(a, a.record.GaugeFunction1, a.record.GaugeInstance1)),
        standby_(Open(a, a.record.GaugeFunction2, a.record.GaugeInstance2)),
        activeKnob_(active_),
        standbyKnob_(standby_) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    if (!Settled(tick)) return;
    Show(tick, shown_.active, active_);
    Show(tick, shown_.standby, standby_);
  }

  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!HasLetters(reply, 'A', 'S')) return;
    const int active = ReplyWord(reply, 7);
    const int standby = ReplyWord(reply, 10);
    const ShownOn activeFace{&shown_.active, gaugeID_, active},
        standbyFace{&shown_.standby, gaugeID_, standby};
    if (radioKind_ >= kAdf) {
      ReportAdf(activeKnob_, activeFace, false, world);
      if (sendStandby_) ReportAdf(standbyKnob_, standbyFace, true, world);
      return;
    }
    activeKnob_.Report(world, hold_, FrequencyOf(active), activeFace);
    if (sendStandby_) standbyKnob_.Report(world, hold_, FrequencyOf(standby), standbyFace);
  }

 private:
  // A frequency of 0 is none: the simulator has not told it yet.
  void Show(GaugeTick& tick, SentValue& shown, Port port) {
    const double frequency = tick.ValueOf(port);
    if (frequency <= 0) return;
    const double raw = radioKind_ >= kAdf ? frequency * 10.0 : RawFrequencyOf(frequency);
    if (raw > 0) shown.QueueRounded(tick, gaugeID_, raw);
  }

  // An ADF's frequency goes to its dataref by name, not through its port.
  void ReportAdf(ReportedValue& knob, const ShownOn& shown, bool standby, GaugeReply& world) {
    if (!knob.IsNews(world, hold_, shown.value / 10.0, shown)) return;
    const auto digits = FiveDigits(shown.value);
    world.Special().PutADF({digits.data(), digits.size()}, standby);
  }

  const int radioKind_;  // 0 COM, 1 NAV, 2 and 3 ADF
  const bool sendStandby_;
  const Port active_, standby_;
  ReportedValue activeKnob_, standbyKnob_;
  struct Shown {
    SentValue active{kCommandActive}, standby{kCommandStandby};
  } shown_;
};

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
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<RadioDriver>(activation);
  }
};

}  // namespace

const Instrument& RadioModuleKind() {
  static const RadioModule kind;
  return kind;
}

}  // namespace tvx
