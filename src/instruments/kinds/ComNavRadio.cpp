// COM/NAV radio, Gaugetype 120: two radios in one housing, with their active and standby frequencies.
#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr int kOptionSecondRadio = 4;
constexpr int kInvalid = 0x20;  // in byte 23: the report is not valid

// It keeps its own frequencies: the cycle only asks it.
class ComNavDriver final : public GaugeDriver {
 public:
  // The gauge's first sequence number tells which unit of a stack it is. The second radio's standby frequency
  // is opened even where its active one is not.
  explicit ComNavDriver(const Activation& a)
      : GaugeDriver(a),
        sendStandby_((a.record.GaugeSetting5 & kOptionSecondRadio) != 0),
        active1_(Open(a, functions::kRadio1Active, a.record.GaugeInstance1)),
        standby1_(Open(a, functions::kRadio1Standby, a.record.GaugeInstance1)),
        active2_(sendStandby_ ? Open(a, functions::kRadio2Active, a.record.GaugeInstance1) : kNoPort),
        standby2_(Open(a, functions::kRadio2Standby, a.record.GaugeInstance1, sendStandby_)) {}

  void Forget() override {}
  void Serve(GaugeTick&) override {}

  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!HasLetters(reply, 'C', 'S') || (ReplyByte(reply, 23) & kInvalid) != 0) return;
    const auto report = [&](ReportedValue& frequency, std::size_t byte) {
      frequency.Report(world, hold_, FrequencyOf(ReplyWord(reply, byte)));
    };
    report(active1_, 7);
    report(standby1_, 13);
    if (!sendStandby_) return;
    report(active2_, 10);
    report(standby2_, 16);
  }

 private:
  const bool sendStandby_;  // the second radio
  ReportedValue active1_, standby1_, active2_, standby2_;
};

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
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<ComNavDriver>(activation);
  }
};

}  // namespace

const Instrument& ComNavRadioKind() {
  static const ComNavRadio kind;
  return kind;
}

}  // namespace tvx
