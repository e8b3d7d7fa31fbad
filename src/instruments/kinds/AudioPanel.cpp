// Audio panel, Gaugetype 125: the marker beacon lamps, and the selector buttons.
#include "instruments/kinds/Kinds.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

// Slots of Ports: Function 38 with sequence numbers 1..3, the outer, middle and inner marker.
constexpr int kMarkerFunction = 38;
constexpr std::size_t kMarkers = 3;

constexpr std::size_t kLamps = 0;  // of LastSent
constexpr int kCommandLamps = 4;   // bit 0 outer, bit 1 middle, bit 2 inner marker

// Working values.
enum : std::size_t { kLastSelector, kKeptByte };

// Which bit of the report sets which bit of the selector byte.
struct SelectorBit {
  std::size_t byte;
  int bit;
  int selector;
};
constexpr SelectorBit kSelectorBits[] = {
    {7, 0x01, 0x40}, {7, 0x02, 0x08}, {7, 0x20, 0x80}, {8, 0x01, 0x10},
    {8, 0x02, 0x04}, {8, 0x04, 0x01}, {8, 0x08, 0x02},
};
constexpr int kBothOnFirst = 0x20;  // byte 7 bit 5 set with bit 0 clear

class AudioPanel final : public Instrument {
 public:
  std::span<const Byte> Gaugetypes() const override {
    static constexpr std::array<Byte, 1> kCodes{125};
    return kCodes;
  }
  InstrumentDescription Describe(int) const override {
    InstrumentDescription d;
    d.purpose = "Marker lamps (Function 38), and buttons that select what is heard.";
    d.trials = {{"Marker lamps", kCommandLamps, 0, 7, "bits: 1 outer, 2 middle, 4 inner"}};
    d.readings = {{"Buttons, first byte", ByteText<7>},
                  {"Buttons, second byte", ByteText<8>},
                  {"Volume", ByteText<10>}};
    return d;
  }
  bool Polled() const override { return true; }

  void OpenPorts(ActiveGauge& gauge, const ConfigModel&, SimCom& sim) const override {
    for (std::size_t i = 0; i < kMarkers; ++i)
      OpenInto(gauge, i, sim, kMarkerFunction, static_cast<int>(i) + 1);
  }

  void StartRun(ActiveGauge& gauge) const override {
    Forget(gauge);
    gauge.Work[kLastSelector] = -1;
  }

  void Serve(ActiveGauge& gauge, GaugeTick& tick) const override {
    std::int32_t lamps = 0;
    for (std::size_t i = 0; i < kMarkers; ++i) {
      if (tick.ValueOf(gauge.Ports[i]) >= 0.5) lamps |= 1 << i;
    }
    tick.QueueIfChanged(gauge, kLamps, kCommandLamps, lamps);
    if (tick.PollTurn(gauge)) tick.PrepareSide(gauge.GaugeID, kCommandReportState, 0);
  }

  void HandleReply(ActiveGauge& gauge, ReplyView reply, GaugeReply& world) const override {
    int selector = (ReplyByte(reply, 7) & 0x21) == 0x20 ? kBothOnFirst : 0;
    for (const SelectorBit& bit : kSelectorBits) {
      if ((ReplyByte(reply, bit.byte) & bit.bit) != 0) selector |= bit.selector;
    }
    gauge.Work[kKeptByte] = ReplyByte(reply, 10);
    if (gauge.Work[kLastSelector] == selector) return;
    gauge.Work[kLastSelector] = selector;
    world.Special().AudioPanelBits = static_cast<std::int16_t>(selector);
    world.Special().SetSoundSelector();
  }
};

}  // namespace

const Instrument& AudioPanelKind() {
  static const AudioPanel kind;
  return kind;
}

}  // namespace tvx
