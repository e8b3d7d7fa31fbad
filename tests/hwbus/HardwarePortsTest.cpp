#include "hwbus/HardwarePorts.h"
#include "tests/Test.h"
#include "tests/fakes/FakeSerialPort.h"

namespace tvx::hardwareportstest {

struct HardwarePortsTest : testing::Test {
  HardwarePortsTest() {
    const char* names[] = {"gauges", "engines", "iom1", "iom2", "yoke1", "yoke2"};
    for (std::size_t i = 0; i < kHardwareGroups; ++i) {
      ports[i].Name = names[i];
      ports[i].SharedLog = &log;
    }
    using G = GeneralRecord;
    std::int16_t com = 5;
    for (const auto field :
         {&G::ComPortGS, &G::ComPortEC, &G::ComPortIOM1, &G::ComPortIOM2, &G::ComPortYoke1, &G::ComPortYoke2})
      model.General.*field = com++;
  }
  FakeSerialPort& Gauges() { return ports[0]; }
  FakeSerialPort& Yoke1() { return ports[4]; }

  ConfigModel model;
  Texts log;
  std::array<FakeSerialPort, kHardwareGroups> ports;
  HardwarePorts hardware{model, PointersTo(ports)};
};

TEST_F(HardwarePortsTest, OpensEveryPortTwiceInOrderWithItsThreshold) {
  hardware.OpenAll();
  const Texts expected{"gauges threshold 25",  "gauges open 5 twice", "engines threshold 16",
                       "engines open 6 twice", "iom1 threshold 25",   "iom1 open 7 twice",
                       "iom2 threshold 25",    "iom2 open 8 twice",   "yoke1 threshold 25",
                       "yoke1 open 9 twice",   "yoke2 threshold 25",  "yoke2 open 10 twice"};
  EXPECT_EQ(log, expected);
  hardware.CloseAll();
  hardware.CloseAll();
  EXPECT_EQ(log.size(), expected.size() + 6);  // closed ports are left alone
}

TEST_F(HardwarePortsTest, APortThatFailsOrIsNotUsedHoldsNoOtherUp) {
  Gauges().OpenResult = SerialState::NoPermission;
  model.General.ComPortEC = 0;
  hardware.OpenAll();
  EXPECT_TRUE(hardware.PortOf(HardwareGroup::Yoke2).IsOpen());
  EXPECT_TRUE(hardware.InTrouble(HardwareGroup::GaugeBus));
  EXPECT_FALSE(hardware.InTrouble(HardwareGroup::EngineCluster));
  EXPECT_TRUE(ports[1].Log.empty());
  EXPECT_EQ(hardware.WordsOf(HardwareGroup::Yoke2), "COM 10 open (/dev/fake10)");
}

TEST_F(HardwarePortsTest, LostPortsComeBackOpenedOnceAndOthersAreNotTouched) {
  std::vector<HardwareGroup> told;
  hardware.OpenAll();
  const Registration changed = hardware.SetChanged([&](HardwareGroup group) { told.push_back(group); });
  log.clear();
  hardware.WatchLines();
  EXPECT_TRUE(log.empty());

  Gauges().Unplug();
  Yoke1().Unplug();
  hardware.WatchLines();
  EXPECT_EQ(hardware.WordsOf(HardwareGroup::GaugeBus),
            "COM 5 unplugged: /dev/fake5 went away; waiting for it to come back")
      << "it was looked for meanwhile, and not found";
  Yoke1().OpenResult = Gauges().OpenResult = SerialState::Open;
  log.clear();
  told.clear();
  hardware.WatchLines();
  hardware.WatchLines();
  EXPECT_EQ(log, (Texts{"gauges threshold 25", "gauges open 5", "yoke1 threshold 25", "yoke1 open 9"}));
  EXPECT_EQ(told, (std::vector{HardwareGroup::GaugeBus, HardwareGroup::Yoke1}));
}

TEST_F(HardwarePortsTest, AnAdapterThatDoesNotAnswerIsWaitedForAndSaidAfterAWhile) {
  Gauges().OpenResult = SerialState::Opening;
  hardware.OpenAll();
  EXPECT_TRUE(Yoke1().IsOpen());
  EXPECT_TRUE(Holds(hardware.WordsOf(HardwareGroup::GaugeBus), "waiting for /dev/fake5"));
  EXPECT_FALSE(hardware.InTrouble(HardwareGroup::GaugeBus));
  for (int second = 0; second < 3; ++second) hardware.WatchLines();
  EXPECT_TRUE(hardware.InTrouble(HardwareGroup::GaugeBus));
  EXPECT_EQ(Gauges().CountOf("open 5"), 0u) << "it is asked for already";
  Gauges().Answer(SerialState::Open);
  EXPECT_FALSE(hardware.InTrouble(HardwareGroup::GaugeBus));

  Gauges().Unplug();
  Gauges().OpenResult = SerialState::Opening;
  hardware.WatchLines();
  EXPECT_TRUE(Holds(hardware.WordsOf(HardwareGroup::GaugeBus), "unplugged"))
      << "asking for it once a second must not flicker";
}

TEST_F(HardwarePortsTest, ANumberThatMayChangeIsSaid) {
  Gauges().IsAssigned = false;
  hardware.OpenAll();
  EXPECT_TRUE(
      Holds(hardware.WordsOf(HardwareGroup::GaugeBus), "another adapter may have this number next time"));
}

}  // namespace tvx::hardwareportstest
