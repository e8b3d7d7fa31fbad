// Power that goes and comes, instruments that die, answers that break off, and forces that come back.
#include "drawn/devices/AltimeterDevice.h"
#include "drawn/devices/AudioDevice.h"
#include "drawn/devices/ClockDevice.h"
#include "drawn/devices/DiscDevices.h"
#include "drawn/devices/NeedleDevice.h"
#include "drawn/devices/RadioDevice.h"
#include "drawn/devices/TransponderDevice.h"
#include "drawn/devices/VorDevice.h"
#include "tests/Test.h"
#include "tests/virtualcockpit/Bytes.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/bus/GaugeBus.h"
#include "virtualcockpit/lines/ClusterUnit.h"
#include "virtualcockpit/lines/IOModuleUnit.h"
#include "virtualcockpit/yokes/YokeDevice.h"

namespace tvx::vc {
namespace {

using test::As;

struct PowerTest : testing::Test {
  void Command(int gaugeID, int command, int value = 0) {
    bus_.OnBytes(test::Command(gaugeID, command, value), now_);
  }
  void Pass(std::int64_t ms) { bus_.Tick(now_ += ms); }

  std::int64_t now_ = 100000;
  std::vector<Bytes> written_;
  GaugeBus bus_{[this](ByteView bytes) { written_.emplace_back(bytes.begin(), bytes.end()); }};
};

// What an instrument was told is gone, and it shows zero; knobs and pressed buttons stand where they stood.
TEST_F(PowerTest, AnInstrumentThatWasWithoutPowerShowsZeroUntilItIsTold) {
  const struct {
    Byte type;
    int command, value;
    int (*shown)(Device&);
    int (*hand)(Device&);  // its hand's setting, turned before; must stay
  } cases[] = {
      {4, 5, 700, [](Device& d) { return As<NeedleDevice>(d).First().value_or(-1); }, nullptr},
      {101, 4, 1500, [](Device& d) { return static_cast<int>(As<AltimeterDevice>(d).Feet().value_or(-1)); },
       nullptr},
      {104, 4, 3600, [](Device& d) { return As<ClockDevice>(d).Utc().value_or(-1); }, nullptr},
      {105, 6, 1200, [](Device& d) { return As<HeadingDevice>(d).Bug(); }, nullptr},
      {106, 5, 400, [](Device& d) { return As<VorDevice>(d).Course(); },
       [](Device& d) { return As<VorDevice>(d).KnobDegrees() - 240 - 25; }},
      {111, 4, 20500, [](Device& d) { return As<RadioDevice>(d).Frequencies().active; }, nullptr},
      {112, 4, 4321, [](Device& d) { return As<TransponderDevice>(d).Code(); },
       [](Device& d) { return static_cast<int>(As<TransponderDevice>(d).Knob()) - 2; }},
      {125, 4, 4, [](Device& d) { return As<AudioDevice>(d).Inner() ? 1 : 0; },
       [](Device& d) { return As<AudioDevice>(d).Selected(AudioDevice::Selector::Adf) ? 0 : 1; }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.type);
    Device& device = bus_.Add(MakeDevice({c.type, c.type, 1, 1}));
    if (c.type == 106) As<VorDevice>(device).TurnKnob(25);
    if (c.type == 112) As<TransponderDevice>(device).TurnMode(1);
    if (c.type == 125) As<AudioDevice>(device).Toggle(AudioDevice::Selector::Adf);
    Command(c.type, c.command, c.value);
    Command(c.type, 8, 0xF1);
    EXPECT_NE(c.shown(device), 0);
    device.SetFault(DeviceFault::Dead);
    Pass(500);
    device.SetFault(DeviceFault::None);
    EXPECT_EQ(c.shown(device), 0);
    EXPECT_FALSE(device.Light().lit);
    EXPECT_TRUE(c.hand == nullptr || c.hand(device) == 0);
    Pass(900);
    Command(c.type, c.command, c.value);
    EXPECT_EQ(c.shown(device), 0) << "it is still starting";
    Pass(200);
    Command(c.type, c.command, c.value);
    EXPECT_NE(c.shown(device), 0);
  }
}

TEST_F(PowerTest, ThePowerOfAllAndOneThatDiesInFlight) {
  for (const Byte id : {Byte{10}, Byte{11}, Byte{12}}) bus_.Add(MakeDevice({id, 4, 1, 1}));
  bus_.Find(12)->SetFault(DeviceFault::Dead);
  bus_.SetPower(false);
  for (const int id : {10, 11, 12}) Command(id, 7);
  EXPECT_TRUE(written_.empty());
  bus_.SetPower(true);
  Pass(1100);
  for (const int id : {10, 11, 12}) Command(id, 7);
  EXPECT_EQ(written_.size(), 2u) << "the dead one stays dead";
  bus_.Find(11)->DieIn(2000);
  for (const auto& [wait, answers] : {std::pair{1900, 2u}, {200, 1u}}) {
    Pass(wait);
    written_.clear();
    for (const int id : {10, 11}) Command(id, 7);
    EXPECT_EQ(written_.size(), answers);
  }
  bus_.Find(10)->SetFault(DeviceFault::Half);
  written_.clear();
  Command(10, 7);
  EXPECT_EQ(written_, (std::vector<Bytes>{{0, 10, 4, 1, 1, 0, 0, 0, 0, 0, 0, 0}})) << "the first half";
}

TEST_F(PowerTest, ModulesAndClusterComeBackDarkAndAtZero) {
  IOModuleUnit module;
  std::vector<Bytes> reports;
  module.SetWrite([&](ByteView bytes) { reports.emplace_back(bytes.begin(), bytes.end()); });
  module.SetSwitch(3, true);
  module.Receive(test::Command(10, 4, 5), now_);
  EXPECT_TRUE(module.Lamp(0));
  module.SetPower(false);
  reports.clear();
  module.SetSwitch(4, true);
  module.Receive(test::Command(10, 7), now_);
  EXPECT_TRUE(reports.empty());
  module.SetPower(true);
  EXPECT_FALSE(module.Lamp(0));
  module.Receive(test::Command(10, 7), now_);
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_EQ(reports[0][5], 0x18) << "switches stand where the hand put them";

  ClusterUnit cluster;
  Bytes frame(40, 0);
  frame[0] = 'F';
  frame[1] = 2;
  frame[39] = 0xAA;
  cluster.Receive(frame, now_);
  EXPECT_EQ(cluster.Needle(0), 512);
  cluster.SetFault(DeviceFault::Dead);
  cluster.SetFault(DeviceFault::None);
  EXPECT_EQ(cluster.Needle(0), 0);
}

// A command of a yoke: parameters in seven bits each, the highest bit set.
Bytes YokeCommand(int number, std::array<int, 4> parameters) {
  Bytes frame{0, 1, static_cast<Byte>(number | 0x80)};
  for (const int p : parameters) {
    frame.push_back(static_cast<Byte>(p % 128 | 0x80));
    frame.push_back(static_cast<Byte>(p / 128 | 0x80));
  }
  frame.insert(frame.end(), {0xFF, 0xFF});
  return frame;
}

// A frame without one of its bytes is none, and the next one is read from its own start.
TEST(Yoke, AFrameThatLostAByteIsDropped) {
  const Bytes bias = YokeCommand(2, {8192, 8192, 300, 16383}), report = YokeCommand(7, {});
  for (std::size_t lost = 0; lost < bias.size(); ++lost) {
    int answers = 0;
    YokeDevice yoke(1, [&](ByteView) { ++answers; });
    yoke.SetTraits({.riseSeconds = 0});
    Bytes rest = bias;
    rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(lost));
    yoke.OnBytes(rest);
    yoke.OnBytes(report);
    EXPECT_EQ(yoke.Limit(), 0) << lost;
    EXPECT_EQ(answers, 1) << lost;
    yoke.OnBytes(bias);
    EXPECT_NEAR(yoke.Limit(), 300 / 16383.0, 1e-9) << lost;
  }
}

// The hold time runs out: half a second to slack. Commands come again: two seconds to the whole force.
TEST(Yoke, FadesByItselfAndComesBackSlowly) {
  std::vector<Bytes> answers;
  YokeDevice yoke(1, [&](ByteView bytes) { answers.emplace_back(bytes.begin(), bytes.end()); });
  const auto fly = [&](double seconds) {
    for (double t = 0; t < seconds - 1e-6; t += 0.04) {
      yoke.OnBytes(YokeCommand(1, {7750, 7750, 400, 400}));
      yoke.OnBytes(YokeCommand(2, {8192, 8192, 16383, 300}));
      yoke.OnBytes(YokeCommand(7, {}));
      yoke.Advance(0.04);
    }
  };
  const auto fades = [&] { return (answers.back()[3] & 8) != 0; };
  fly(1.0);
  EXPECT_NEAR(yoke.Limit(), 0.5, 0.03) << "also at the start";
  fly(1.2);
  EXPECT_EQ(yoke.Limit(), 1);
  EXPECT_FALSE(fades());
  yoke.Advance(0.25);
  EXPECT_EQ(yoke.Limit(), 1) << "the hold time is kept to the end";
  yoke.Advance(0.26);  // half of the half second
  EXPECT_NEAR(yoke.Limit(), 0.5, 0.06);
  yoke.Advance(0.3);
  EXPECT_TRUE(yoke.Slack());
  fly(0.04);
  EXPECT_TRUE(fades()) << "the first answer afterwards tells";
  fly(0.04);
  EXPECT_FALSE(fades());
  fly(0.92);
  EXPECT_NEAR(yoke.Limit(), 0.5, 0.03);
  fly(1.1);
  EXPECT_EQ(yoke.Limit(), 1);
}

}  // namespace
}  // namespace tvx::vc
