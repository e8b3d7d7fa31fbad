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
    const std::string open = name + " open " + std::to_string(port.com);
    for (const std::string& entry :
         {name + " threshold " + std::to_string(port.threshold), open, name + " close", open,
          name + " discard output", name + " discard input"}) {
      expected.push_back(entry);
    }
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
  hardware.OpenAll();
  log.clear();
  EXPECT_FALSE(hardware.ReopenLost());
  EXPECT_TRUE(log.empty());

  Gauges().Unplug();
  Yoke1().Unplug();
  EXPECT_FALSE(hardware.ReopenLost());
  Yoke1().OpenResult = SerialState::Open;
  EXPECT_FALSE(hardware.ReopenLost()) << "not the gauge bus";
  EXPECT_TRUE(Yoke1().IsOpen());
  Gauges().OpenResult = SerialState::Open;
  Gauges().Log.clear();
  EXPECT_TRUE(hardware.ReopenLost());
  EXPECT_EQ(Gauges().CountOf("open 5"), 1u);
  EXPECT_FALSE(hardware.ReopenLost());
}

}  // namespace
}  // namespace tvx
