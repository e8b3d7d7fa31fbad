// Transponders, Gaugetypes 112, 114 and 122: code, mode and identification.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kKing = 122;

// Slots of Ports.
enum : std::size_t { kCode, kSecondCode, kMode, kReporting, kIdent };
constexpr int kCodeFunction = 26;
constexpr int kIdentFunction = 46;
constexpr int kModeFunction = 47;  // sequence number 1 the mode, 2 whether it reports the altitude

// Options.
constexpr int kOptionMode = 1;
constexpr int kOptionReporting = 2;
constexpr int kOptionIdent = 4;
constexpr int kOptionSecond = 8;  // a second transponder shows its code beside

// Input numbers.
enum : std::size_t { kCodeInput, kModeInput, kReportingInput, kIdentInput };

constexpr int kCommandCode = 4;         // 0..7777
constexpr int kCommandFlightLevel = 5;  // hundreds of feet
constexpr int kCommandMode = 6;         // the simulator's mode
constexpr int kCommandSecondCode = 12;
constexpr int kModeWithoutReporting = 3;  // the stored mode at which the altitude is not reported

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

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    const int options = gauge.Record->GaugeSetting5;
    const bool king = gauge.Record->GaugeType == kKing;
    OpenInto(gauge, kCode, sim, kCodeFunction, 1);
    if (options & kOptionSecond) OpenInto(gauge, kSecondCode, sim, kCodeFunction, 2);
    if (king || (options & kOptionMode)) OpenInto(gauge, kMode, sim, kModeFunction, 1);
    if (options & kOptionReporting) OpenInto(gauge, kReporting, sim, kModeFunction, 2);
    if (options & kOptionIdent) OpenInto(gauge, kIdent, sim, kIdentFunction, 1);
    ReportThrough(gauge, kCodeInput, kCode, kCodeFunction);
    ReportThrough(gauge, kModeInput, kMode, kModeFunction);
    ReportThrough(gauge, kReportingInput, kReporting, kModeFunction);
    ReportThrough(gauge, kIdentInput, kIdent, kIdentFunction);
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    if (tick.Settled(gauge)) {
      tick.QueueValueIfChanged(gauge, kCode, kCommandCode, tick.ValueOf(gauge.Ports[kCode]));
      if (gauge.Ports[kSecondCode] != kNoPort) {
        tick.QueueValueIfChanged(gauge, kSecondCode, kCommandSecondCode,
                                 tick.ValueOf(gauge.Ports[kSecondCode]));
      }
      if (gauge.Ports[kMode] != kNoPort) {
        tick.QueueValueIfChanged(gauge, kMode, kCommandMode, tick.ValueOf(gauge.Ports[kMode]));
      }
    }
    if (!tick.PollTurn(gauge)) return;
    if (gauge.Record->GaugeType == kKing) {
      // It answers with its report to the flight level that it shows.
      const double hundreds = std::floor(tick.Flight().ShownAltitude / 100.0);
      if (const auto level = RoundTo<std::int32_t>(hundreds)) {
        tick.PrepareSide(gauge.GaugeID, kCommandFlightLevel, *level);
      }
    } else {
      tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
    }
  }

  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    const int position = ReplyByte(reply, 17);
    if (ReplyGaugetype(reply) == kKing) {
      if (!HasLetters(reply, 'X', 'F')) return;
      world.Report(gauge, kCodeInput, SquawkOf(ReplyByte(reply, 7), ReplyByte(reply, 8)));
      if (const int mode = ModeOfKing(position); mode >= 0) {
        world.Report(gauge, kModeInput, mode);
        ReportReporting(gauge, mode, world);
      }
    } else {
      if (!HasLetters(reply, 'X', 'Y')) return;
      const std::size_t at = ReplyByte(reply, 15) == 1 ? 7 : 10;
      world.Report(gauge, kCodeInput, SquawkOf(ReplyByte(reply, at), ReplyByte(reply, at + 1)));
      world.Report(gauge, kModeInput, position - 1);
      ReportReporting(gauge, position, world);
    }
    world.Report(gauge, kIdentInput, ReplyByte(reply, 13));
  }

 private:
  static void ReportReporting(ActiveGauge& gauge, int position, GaugeReply& world) {
    const auto stored = static_cast<float>(position);
    if (gauge.InputFunction[kReportingInput] == -1 || gauge.LastInputValue == stored) return;
    gauge.LastInputValue = stored;
    world.Report(gauge, kReportingInput, position == kModeWithoutReporting ? 0.0 : 1.0);
  }

  // The knob's positions off, standby, test, on, altitude as the simulator counts them: 0 off, 1 standby, 2
  // on, 3 altitude, 4 test. -1 for a position that the knob does not have.
  static int ModeOfKing(int position) {
    constexpr std::array<int, 6> kModes{-1, 0, 1, 4, 2, 3};
    return position > 0 && position < 6 ? kModes[static_cast<std::size_t>(position)] : -1;
  }
};

}  // namespace

const Instrument& TransponderKind() {
  static const Transponder kind;
  return kind;
}

}  // namespace tvx
