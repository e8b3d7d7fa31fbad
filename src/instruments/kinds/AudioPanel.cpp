// Audio panel, Gaugetype 125: the marker beacon lamps, and the selector buttons.
#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"
#include "instruments/kinds/ReplyNumbers.h"
#include "instruments/kinds/ReplyTexts.h"

namespace tvx {
namespace {

constexpr int kCommandLamps = 4;
constexpr std::int32_t kLampOuter = 1, kLampMiddle = 2, kLampInner = 4;

// Buttons of the report: byte 7, then byte 8.
constexpr int kCom2 = 0x01, kNav2 = 0x02, kCom1 = 0x20;
constexpr int kNav1 = 0x01, kMarker = 0x02, kAdf = 0x04, kDme = 0x08;

// Which button sets which bit of the selector byte.
struct SelectorBit {
  std::size_t byte;
  int button;
  int selector;
};
constexpr SelectorBit kSelectorBits[] = {
    {7, kCom2, 0x40},   {7, kNav2, 0x08}, {7, kCom1, 0x80}, {8, kNav1, 0x10},
    {8, kMarker, 0x04}, {8, kAdf, 0x01},  {8, kDme, 0x02},
};
constexpr int kCom1Alone = 0x20;  // of the selector byte: COM 1 without COM 2

class AudioPanelDriver final : public GaugeDriver {
 public:
  explicit AudioPanelDriver(const Activation& a)
      : GaugeDriver(a),
        outer_(Open(a, functions::kMarkerBeacon, 1)),
        middle_(Open(a, functions::kMarkerBeacon, 2)),
        inner_(Open(a, functions::kMarkerBeacon, 3)) {}

  void Forget() override { shownLamps_ = SentValue(kCommandLamps); }
  void StartRun() override {
    Forget();
    lastSelector_.reset();
  }

  void Serve(GaugeTick& tick) override {
    const auto lit = [&tick](Port marker, std::int32_t bit) { return tick.ValueOf(marker) >= 0.5 ? bit : 0; };
    const std::int32_t lamps = lit(outer_, kLampOuter) | lit(middle_, kLampMiddle) | lit(inner_, kLampInner);
    shownLamps_.QueueIfChanged(tick, gaugeID_, lamps);
  }

  void HandleReply(ReplyView reply, GaugeReply& world) override {
    int selector = (ReplyByte(reply, 7) & (kCom1 | kCom2)) == kCom1 ? kCom1Alone : 0;
    for (const SelectorBit& bit : kSelectorBits) {
      if ((ReplyByte(reply, bit.byte) & bit.button) != 0) selector |= bit.selector;
    }
    volume_ = ReplyByte(reply, 10);
    if (lastSelector_ == selector) return;
    lastSelector_ = selector;
    world.Special().AudioPanelBits = static_cast<std::int16_t>(selector);
    world.Special().SetSoundSelector();
  }

  std::string KeptText() const override {
    return volume_ ? "Volume " + std::to_string(*volume_) : std::string();
  }

 private:
  const Port outer_, middle_, inner_;  // the marker beacons
  SentValue shownLamps_{kCommandLamps};
  std::optional<int> lastSelector_;  // std::nullopt: none since Run
  std::optional<int> volume_;        // 0..255
};

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
  std::unique_ptr<GaugeDriver> Activate(const Activation& activation) const override {
    return std::make_unique<AudioPanelDriver>(activation);
  }
};

}  // namespace

const Instrument& AudioPanelKind() {
  static const AudioPanel kind;
  return kind;
}

}  // namespace tvx
