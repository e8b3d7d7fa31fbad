#include "follow/UnitMirror.h"
#include "tests/follow/FollowRig.h"

namespace tvx::unitmirrortest {

constexpr UnitName kCluster{UnitName::Kind::Cluster, 1}, kModule{UnitName::Kind::Module, 1},
    kYoke2{UnitName::Kind::Yoke, 2};

struct UnitMirrorTest : testing::Test, FollowRig {
  UnitMirrorTest() { model.General.ComPortYoke2 = 9; }
  UnitMirror mirror{follower.Parts()};
};

TEST_F(UnitMirrorTest, HasWhatIsConfiguredAndKnowsWhatHasSpoken) {
  EXPECT_EQ(mirror.Configured(), (std::vector<UnitName>{kCluster, kModule, kYoke2}));
  ports[1].RefuseWrites = ports[2].RefuseWrites = true;
  moduleReports = false;
  Fly();
  Pass(2000);
  for (const UnitName& unit : mirror.Configured()) EXPECT_FALSE(mirror.Known(unit)) << "nothing left";
  for (FakeSerialPort& port : ports) port.RefuseWrites = false;
  Pass(200);
  mirror.Refresh();
  EXPECT_TRUE(mirror.Known(kCluster) && mirror.Known(kModule));
  EXPECT_FALSE(mirror.Known(kYoke2)) << "it has not answered";
}

// A panel that is opened later, or looks more seldom than frames go out, still sees the sweep to its end.
TEST_F(UnitMirrorTest, ASweepIsSeenThoughItsFrameIsCovered) {
  Fly();
  SendSpeed(120);
  Pass(500);
  mirror.Refresh();
  EXPECT_EQ(mirror.ClusterNow().Needle(0), cluster.Position(0));
  EXPECT_GT(cluster.Position(0), 100);
  cluster.Recalibrate();
  Pass(1000);
  mirror.Refresh();
  EXPECT_TRUE(mirror.ClusterNow().Sweeping());
  EXPECT_GT(mirror.ClusterNow().Needle(0), 900) << "half way: at the top";
  Pass(1500);
  mirror.Refresh();
  EXPECT_FALSE(mirror.ClusterNow().Sweeping());
  EXPECT_EQ(mirror.ClusterNow().Needle(0), cluster.Position(0));
}

// What left counts, whoever sent it: the lamps of the flight, and a lamp test that was asked for while
// halted.
TEST_F(UnitMirrorTest, LampsAreThoseThatLeft) {
  Fly();
  module1.SetLighting(15 << 4);
  Set(60, 100);  // lights the lamp at its maximum
  Pass(300);
  mirror.Refresh();
  EXPECT_TRUE(mirror.ModuleNow(1).Lamp(4));
  EXPECT_EQ(mirror.ModuleNow(1).brightness, 15);
  module1.cmdStop_Click();
  module1.ComposeCmd(0, 12, 3);
  ports[2].RefuseWrites = true;
  module1.WriteCmdDuringConfig_Tick();
  mirror.Refresh();
  EXPECT_FALSE(mirror.ModuleNow(1).Lamp(2)) << "the line did not take it";
  ports[2].RefuseWrites = false;
  module1.ComposeCmd(0, 12, 3);
  module1.WriteCmdDuringConfig_Tick();
  mirror.Refresh();
  EXPECT_TRUE(mirror.ModuleNow(1).Lamp(2));
  EXPECT_TRUE(mirror.ModuleNow(1).Lamp(4)) << "it stays as it is when halted";
}

}  // namespace tvx::unitmirrortest
