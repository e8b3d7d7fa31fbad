// Transponders, Gaugetypes 112, 114 and 122: code, mode and identification.
#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kKing = 122;

// Options.
constexpr int kOptionMode = 1;
constexpr int kOptionReporting = 2;
constexpr int kOptionIdent = 4;
constexpr int kOptionSecond = 8;  // a second transponder shows its code beside

constexpr int kCommandCode = 4;         // 0..7777
constexpr int kCommandFlightLevel = 5;  // hundreds of feet
constexpr int kCommandMode = 6;         // the simulator's mode
constexpr int kCommandSecondCode = 12;
constexpr int kPositionWithoutReporting = 3;  // "on": the altitude is not reported

class TransponderDriver final : public GaugeDriver {
 public:
  explicit TransponderDriver(const Activation& a)
      : GaugeDriver(a),
        king_(a.record.GaugeType == kKing),
        code_(Open(a, functions::kTransponderCode, 1)),
        secondCode_(OpenIf(kOptionSecond, a, functions::kTransponderCode, 2)),
        mode_(king_ ? Open(a, functions::kTransponderMode, 1)
                    : OpenIf(kOptionMode, a, functions::kTransponderMode, 1)),
        codeKnob_(code_),
        modeKnob_(mode_),
        reporting_(OpenIf(kOptionReporting, a, functions::kTransponderMode, 2)),
        ident_(OpenIf(kOptionIdent, a, functions::kTransponderIdent, 1)) {}

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    if (!Settled(tick)) return;
    shown_.code.QueueRounded(tick, gaugeID_, tick.ValueOf(code_));
    if (secondCode_ != kNoPort) shown_.secondCode.QueueRounded(tick, gaugeID_, tick.ValueOf(secondCode_));
    if (mode_ != kNoPort) shown_.mode.QueueRounded(tick, gaugeID_, tick.ValueOf(mode_));
  }

  // Gaugetype 122 answers with its report to the flight level that it shows.
  void Poll(GaugeTick& tick) override {
    if (!king_) {
      GaugeDriver::Poll(tick);
      return;
    }
    const double hundreds = std::floor(tick.Flight().ShownAltitude / 100.0);
    if (const auto level = RoundTo<std::int32_t>(hundreds)) {
      tick.PrepareSide(gaugeID_, kCommandFlightLevel, *level);
    }
  }

  void HandleReply(ReplyView reply, GaugeReply& world) override {
    const int position = ReplyByte(reply, 17);
    if (ReplyGaugetype(reply) == kKing) {
      if (!HasLetters(reply, 'X', 'F')) return;
      ReportCode(SquawkOf(ReplyByte(reply, 7), ReplyByte(reply, 8)), world);
      if (const int mode = ModeOfKing(position); mode >= 0) {
        ReportMode(mode, world);
        ReportReporting(mode + 1, world);
      }
    } else {
      if (!HasLetters(reply, 'X', 'Y')) return;
      const std::size_t at = ReplyByte(reply, 15) == 1 ? 7 : 10;
      ReportCode(SquawkOf(ReplyByte(reply, at), ReplyByte(reply, at + 1)), world);
      ReportMode(position - 1, world);
      ReportReporting(position, world);
    }
    ident_.Report(world, hold_, ReplyByte(reply, 13));
  }

 private:
  Port OpenIf(int option, const Activation& a, int function, int sequenceNr) {
    return (a.record.GaugeSetting5 & option) != 0 ? Open(a, function, sequenceNr) : kNoPort;
  }

  void ReportCode(double code, GaugeReply& world) {
    codeKnob_.Report(world, hold_, code, {&shown_.code, gaugeID_, static_cast<std::int32_t>(code)});
  }
  void ReportMode(int mode, GaugeReply& world) {
    modeKnob_.Report(world, hold_, mode, {&shown_.mode, gaugeID_, mode});
  }
  // `position`: the simulator's mode and one.
  void ReportReporting(int position, GaugeReply& world) {
    if (!reporting_.Sends() || lastInputValue_ == position) return;
    lastInputValue_ = position;
    reporting_.Report(world, hold_, position == kPositionWithoutReporting ? 0.0 : 1.0);
  }

  // The knob's positions off, standby, test, on, altitude as the simulator counts them: 0 off, 1 standby, 2
  // on, 3 altitude, 4 test. -1 for a position that the knob does not have.
  static int ModeOfKing(int position) {
    constexpr std::array<int, 6> kModes{-1, 0, 1, 4, 2, 3};
    return position > 0 && position < 6 ? kModes[static_cast<std::size_t>(position)] : -1;
  }

  const bool king_;
  const Port code_, secondCode_, mode_;
  ReportedValue codeKnob_, modeKnob_, reporting_, ident_;
  std::optional<int> lastInputValue_;  // the knob's position when reporting_ was told of it
  struct Shown {
    SentValue code{kCommandCode}, secondCode{kCommandSecondCode}, mode{kCommandMode};
  } shown_;
};

class Transponder final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 3> kCodes{112, 114, kKing};
    return kCodes;
  }
  InstrumentDescription Describe(int gaugetype) const override {
    InstrumentDescription d;
    d.purpose = "Shows and sets the transponder code (Function 26) and its mode (47).";
    d.options = {
        {"Altitude reporting", "Whether it reports the altitude goes to Function 47, sequence number 2",
         kOptionReporting},
        {"Identification button", "It presses Function 46", kOptionIdent},
        {"A second transponder", "Shows the code of Function 26, sequence number 2, as well", kOptionSecond}};
    d.trials = {{"Code", kCommandCode, 0, 7777, ""},
                {"Mode", kCommandMode, 0, 4, "off, standby, on, altitude, test"}};
    if (gaugetype == kKing) {
      d.trials.push_back({"Flight level", kCommandFlightLevel, -20, 600, "100 ft"});
      d.readings = {{"Code", SquawkText<7>}, {"Knob", ByteText<17>}};
      return d;
    }
    d.options.insert(d.options.begin(),
                     {"Mode knob", "It sets the simulator's mode, Function 47", kOptionMode});
    d.readings = {{"Code, first display", SquawkText<7>},
                  {"Code, second display", SquawkText<10>},
                  {"Mode knob", ByteText<17>}};
    return d;
  }
  bool Polled() const override { return true; }
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<TransponderDriver>(activation);
  }
};

}  // namespace

const Instrument& TransponderKind() {
  static const Transponder kind;
  return kind;
}

}  // namespace tvx
