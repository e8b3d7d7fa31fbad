#include <gtest/gtest.h>

#include "hwbus/HardwarePorts.h"
#include "tests/fakes/FakeSerialPort.h"

namespace tvx {
namespace {

using Texts = std::vector<std::string>;

class HardwarePortsTest : public testing::Test {
 protected:
  HardwarePortsTest() {
    const char* names[] = {"gauges", "engines", "iom1", "iom2", "yoke1", "yoke2"};
    for (std::size_t i = 0; i < kHardwareGroups; ++i) {
      ports[i].Name = names[i];
      ports[i].SharedLog = &log;
    }
    GeneralRecord& general = model.General;
    general.ComPortGS = 5;
    general.ComPortEC = 6;
    general.ComPortIOM1 = 7;
    general.ComPortIOM2 = 8;
    general.ComPortYoke1 = 9;
    general.ComPortYoke2 = 10;
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
  const struct {
    const char* name;
    int com, threshold;
  } order[] = {{"gauges", 5, 25}, {"engines", 6, 16}, {"iom1", 7, 25},
               {"iom2", 8, 25},   {"yoke1", 9, 25},   {"yoke2", 10, 25}};
  Texts expected;
  for (const auto& port : order) {
    const std::string name = port.name;
    expected.push_back(name + " threshold " + std::to_string(port.threshold));
    expected.push_back(name + " open " + std::to_string(port.com) + " twice");
  }
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
  EXPECT_NE(hardware.WordsOf(HardwareGroup::GaugeBus).find("waiting for /dev/fake5"), std::string::npos);
  EXPECT_FALSE(hardware.InTrouble(HardwareGroup::GaugeBus));
  for (int second = 0; second < 3; ++second) hardware.WatchLines();
  EXPECT_TRUE(hardware.InTrouble(HardwareGroup::GaugeBus));
  EXPECT_EQ(Gauges().CountOf("open 5"), 0u) << "it is asked for already";
  Gauges().Answer(SerialState::Open);
  EXPECT_FALSE(hardware.InTrouble(HardwareGroup::GaugeBus));

  Gauges().Unplug();
  Gauges().OpenResult = SerialState::Opening;
  hardware.WatchLines();
  EXPECT_NE(hardware.WordsOf(HardwareGroup::GaugeBus).find("unplugged"), std::string::npos)
      << "asking for it once a second must not flicker";
}

TEST_F(HardwarePortsTest, ANumberThatMayChangeIsSaid) {
  Gauges().IsAssigned = false;
  hardware.OpenAll();
  EXPECT_NE(hardware.WordsOf(HardwareGroup::GaugeBus).find("another adapter may have this number next time"),
            std::string::npos);
}

}  // namespace
}  // namespace tvx
