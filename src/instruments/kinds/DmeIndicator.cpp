// DME indicators, Gaugetypes 113 and 123: distance, ground speed and time to the station, and a selector.
#include <algorithm>

#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr Byte kKing = 123;

constexpr int kSourceSequence = 4;  // of the distance's Function: which receiver is the source

constexpr int kOptionDisplayLocal = 1;
constexpr int kOptionFrom100MHz = 2;  // Gaugetype 123

constexpr int kCommandDistance = 4;  // tenths of a nautical mile
constexpr int kCommandSpeed = 5;     // kt
constexpr int kCommandTime = 6;      // min
constexpr int kCommandFlags = 11;    // bit 0: a station is received; bits 4..7: the source, where it is known
constexpr int kCommandFrequency = 12;  // raw: kHz above 100 MHz

constexpr double kLowestFrequency = 10000.0;  // 10 kHz; what is not above it is no frequency

constexpr int kFirstReceiver = 1, kSecondReceiver = 2;
constexpr int kSelectorFirst = 2, kSelectorSecond = 4;  // byte 17, Gaugetype 113
constexpr int kFrequencySet = 3;                        // byte 17, Gaugetype 123
constexpr int kSourceNav1 = 2, kSourceNav2 = 3;         // byte 24; 0 and 1: the DME receiver

class DmeDriver final : public GaugeDriver {
 public:
  explicit DmeDriver(const Activation& a)
      : GaugeDriver(a),
        dmeDisplayLocal_((a.record.GaugeSetting5 & kOptionDisplayLocal) != 0),
        from100MHz_((a.record.GaugeSetting5 & kOptionFrom100MHz) != 0) {
    OpenReceiver(a, first_, 1);
    frequency_ = Open(a, functions::kDmeFrequency, 1);
    if (a.model.Functions[functions::kDmeDistance].FunctionSetting != 0) {
      source_ = Open(a, functions::kDmeDistance, kSourceSequence);
    }
    if (dmeDisplayLocal_) OpenReceiver(a, second_, 2);
    const GaugeRecord& record = a.record;
    selector_ =
        ReportedValue(record.GaugeFunction2 == 0 ? source_
                                                 : Open(a, record.GaugeFunction2, record.GaugeInstance2,
                                                        record.GaugeType != kKing && !dmeDisplayLocal_));
  }

  void Forget() override { shown_ = {}; }

  void Serve(GaugeTick& tick) override {
    const Receiver& shown = dmeDisplayLocal_ && selected_ == kSecondReceiver ? second_ : first_;
    const double distance = tick.ValueOf(shown.distance);
    shown_.distance.QueueRounded(tick, gaugeID_, distance * 10.0);
    shown_.speed.QueueRounded(tick, gaugeID_, tick.ValueOf(shown.speed));
    shown_.time.QueueRounded(tick, gaugeID_, tick.ValueOf(shown.time));
    const double frequency = tick.ValueOf(frequency_);
    if (frequency > kLowestFrequency && Settled(tick)) {
      shown_.frequency.QueueRounded(tick, gaugeID_, RawFrequencyOf(frequency));
    }
    const double source = std::clamp(RoundHalfEven(tick.ValueOf(source_)), 0.0, 15.0);
    shown_.flags.QueueRounded(tick, gaugeID_, (distance > 0 ? 1.0 : 0.0) + 16.0 * source);
  }

  void HandleReply(ReplyView reply, GaugeReply& world) override {
    if (!HasLetters(reply, 'S', 'D')) return;
    if (ReplyGaugetype(reply) == kKing) {
      HandleFrequency(reply, world);
    } else {
      HandleSelector(reply, world);
    }
  }

 private:
  struct Receiver {
    Port distance = kNoPort, speed = kNoPort, time = kNoPort;
  };

  void OpenReceiver(const Activation& a, Receiver& receiver, int sequenceNr) {
    receiver.distance = Open(a, functions::kDmeDistance, sequenceNr);
    receiver.speed = Open(a, functions::kDmeSpeed, sequenceNr);
    receiver.time = Open(a, functions::kDmeTime, sequenceNr);
  }

  void HandleSelector(ReplyView reply, GaugeReply& world) {
    const int position = ReplyByte(reply, 17);
    if (position != kSelectorFirst && position != kSelectorSecond) return;
    const int selected = position == kSelectorFirst ? kFirstReceiver : kSecondReceiver;
    if (dmeDisplayLocal_) {
      selected_ = selected;
    } else {
      selector_.Report(world, hold_, selected);
    }
  }

  void HandleFrequency(ReplyView reply, GaugeReply& world) {
    const int source = ReplyByte(reply, 24);
    if (ReplyByte(reply, 17) != kFrequencySet || source > kSourceNav2) return;
    const int raw = ReplyByte(reply, 20) * 256 + ReplyByte(reply, 19);  // the low byte first, here
    if (lastFrequency_ == raw) return;
    lastFrequency_ = raw;
    if (world.Sim().HasArrived(frequency_) && world.WasTold(gaugeID_, kCommandFrequency, raw)) return;
    hold_.Begin(world);
    shown_.frequency.NoteShown(world, gaugeID_, raw);
    const auto frequency = static_cast<float>((from100MHz_ ? kLowestFrequency : 0.0) + raw / 10.0);
    if (source == kSourceNav1) {
      world.Special().PutNAV1Frequency(frequency);
    } else if (source == kSourceNav2) {
      world.Special().PutNAV2Frequency(frequency);
    } else {
      world.Sim().SendXplaneDREF("sim/cockpit/radios/dme_freq_hz", frequency);
    }
  }

  const bool dmeDisplayLocal_;  // the display selector stays in the instrument
  const bool from100MHz_;       // the frequencies that its knobs set
  Receiver first_, second_;     // the second only where the instrument chooses by itself
  Port frequency_ = kNoPort;
  Port source_ = kNoPort;
  ReportedValue selector_;
  int selected_ = kFirstReceiver;     // by the instrument itself
  std::optional<int> lastFrequency_;  // as it was reported
  struct Shown {
    SentValue distance{kCommandDistance}, speed{kCommandSpeed}, time{kCommandTime},
        frequency{kCommandFrequency}, flags{kCommandFlags};
  } shown_;
};

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
      d.options = {
          {"Counts from 100 MHz",
           "Its knobs report kHz above 100 MHz: 10300 tunes 110.30 MHz. Without it X-Plane is sent a tenth "
           "of the number as it is",
           kOptionFrom100MHz}};
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
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<DmeDriver>(activation);
  }
};

}  // namespace

const Instrument& DmeIndicatorKind() {
  static const DmeIndicator kind;
  return kind;
}

}  // namespace tvx
