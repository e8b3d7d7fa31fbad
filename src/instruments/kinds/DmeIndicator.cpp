// DME indicators, Gaugetypes 113 and 123: distance, ground speed and time to the station, and a selector.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kKing = 123;

// Slots of Ports: Functions 27..30 of the first receiver, the source (27 with sequence number 4), the second
// receiver where the instrument chooses by itself, and the Function that the selector sets where one is
// configured.
enum : std::size_t { kDistance, kSpeed, kTime, kFrequency, kSource, kDistance2, kSpeed2, kTime2, kSelector };
constexpr int kDistanceFunction = 27;
constexpr int kSpeedFunction = 28;
constexpr int kTimeFunction = 29;
constexpr int kFrequencyFunction = 30;
constexpr int kSourceSequence = 4;

constexpr int kOptionDisplayLocal = 1;
constexpr std::size_t kSelectorInput = 3;

constexpr int kCommandDistance = 4;  // tenths of a nautical mile
constexpr int kCommandSpeed = 5;     // kt
constexpr int kCommandTime = 6;      // min
constexpr int kCommandFlags = 11;    // bit 0: a station is received; bits 4..7: the source, where it is known
constexpr int kCommandFrequency = 12;  // raw: kHz above 100 MHz

constexpr float kSecondReceiver = 2.0f;

// Slots of LastSent beside those of Ports.
constexpr std::size_t kFlags = 9;
// Working values.
constexpr std::size_t kLastFrequency = 0;

class DmeIndicator final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 2> kCodes{113, kKing};
    return kCodes;
  }
  InstrumentDescription Describe(int gaugetype) const override {
    InstrumentDescription d;
    d.purpose = "Shows distance, speed and time to the station: Functions 27 to 30.";
    d.trials = {{"Distance", kCommandDistance, 0, 9999, "0.1 NM"},
                {"Speed", kCommandSpeed, 0, 999, "kt"},
                {"Time", kCommandTime, 0, 999, "min"},
                {"Frequency", kCommandFrequency, 0, 65535, "kHz above 100 MHz"}};
    if (gaugetype == kKing) {
      d.readings = {{"Source", ByteText<24>}};
      return d;
    }
    d.function2 = {"Selector",
                   "The Function that the selector sets, 1 or 2; none: Function 27, sequence number 4"};
    d.options = {{"The selector stays in the instrument",
                  "It shows receiver 1 or 2 by itself, and the simulator hears nothing of it",
                  kOptionDisplayLocal}};
    d.readings = {{"Selector", ByteText<17>}};
    return d;
  }
  bool Polled() const override { return true; }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel& model, SimCom& sim) const override {
    const GaugeRecord& record = *gauge.Record;
    gauge.Work[kLastFrequency] = -1;
    gauge.DMEDisplayLocal = (record.GaugeSetting5 & kOptionDisplayLocal) != 0;
    OpenInto(gauge, kDistance, sim, kDistanceFunction, 1);
    OpenInto(gauge, kSpeed, sim, kSpeedFunction, 1);
    OpenInto(gauge, kTime, sim, kTimeFunction, 1);
    OpenInto(gauge, kFrequency, sim, kFrequencyFunction, 1);
    if (model.Functions[kDistanceFunction].FunctionSetting != 0) {
      OpenInto(gauge, kSource, sim, kDistanceFunction, kSourceSequence);
    }
    if (gauge.DMEDisplayLocal) {
      OpenInto(gauge, kDistance2, sim, kDistanceFunction, 2);
      OpenInto(gauge, kSpeed2, sim, kSpeedFunction, 2);
      OpenInto(gauge, kTime2, sim, kTimeFunction, 2);
    }
    OpenInto(gauge, kSelector, sim, record.GaugeFunction2, record.GaugeInstance2);
    const bool configured = record.GaugeFunction2 != 0;
    ReportThrough(gauge, kSelectorInput, configured ? kSelector : kSource,
                  configured ? record.GaugeFunction2 : kDistanceFunction);
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    const bool second = gauge.DMEDisplayLocal && gauge.LastInputValue == kSecondReceiver;
    const double distance = tick.ValueOf(gauge.Ports[second ? kDistance2 : kDistance]);
    tick.QueueValueIfChanged(gauge, kDistance, kCommandDistance, distance * 10.0);
    tick.QueueValueIfChanged(gauge, kSpeed, kCommandSpeed,
                             tick.ValueOf(gauge.Ports[second ? kSpeed2 : kSpeed]));
    tick.QueueValueIfChanged(gauge, kTime, kCommandTime, tick.ValueOf(gauge.Ports[second ? kTime2 : kTime]));
    const double frequency = tick.ValueOf(gauge.Ports[kFrequency]);
    if (frequency > 10000.0) {
      tick.QueueValueIfChanged(gauge, kFrequency, kCommandFrequency, RawFrequencyOf(frequency));
    }
    const double source = std::clamp(RoundHalfEven(tick.ValueOf(gauge.Ports[kSource])), 0.0, 15.0);
    tick.QueueValueIfChanged(gauge, kFlags, kCommandFlags, (distance > 0 ? 1.0 : 0.0) + 16.0 * source);
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
  }

  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    if (!HasLetters(reply, 'S', 'D')) return;
    if (ReplyGaugetype(reply) == kKing) {
      HandleFrequency(gauge, reply, world);
    } else {
      HandleSelector(gauge, reply, world);
    }
  }

 private:
  static void HandleSelector(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) {
    const int position = ReplyByte(reply, 17);
    if (position != 2 && position != 4) return;
    const float selected = position == 2 ? 1.0f : kSecondReceiver;
    if (gauge.DMEDisplayLocal) {
      gauge.LastInputValue = selected;
    } else {
      world.Report(gauge, kSelectorInput, static_cast<double>(selected));
    }
  }

  static void HandleFrequency(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) {
    const int source = ReplyByte(reply, 24);
    if (ReplyByte(reply, 17) != 3 || source > 3) return;
    const int raw = ReplyByte(reply, 20) * 256 + ReplyByte(reply, 19);  // the low byte first, here
    if (gauge.Work[kLastFrequency] == raw) return;
    gauge.Work[kLastFrequency] = raw;
    const auto frequency = static_cast<float>(raw / 10.0);
    switch (source) {
      case 2:
        world.Special().PutNAV1Frequency(frequency);
        break;
      case 3:
        world.Special().PutNAV2Frequency(frequency);
        break;
      default:
        world.Sim().SendXplaneDREF("sim/cockpit/radios/dme_freq_hz", frequency);
        break;
    }
  }
};

}  // namespace

const Instrument& DmeIndicatorKind() {
  static const DmeIndicator kind;
  return kind;
}

}  // namespace tvx
