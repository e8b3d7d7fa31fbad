#include "core/SimulatorFollower.h"
#include "tests/core/ProgramRig.h"

namespace tvx::simulatorfollowertest {

struct SimulatorFollowerTest : testing::Test {
  SimulatorFollowerTest() {
    rig.model.General.UseSimulator("10.0.0.7", 49000, "SIM-PC");
    rig.model.General.SetSetting(kFollowSetting, "SIM-PC");
  }
  // A second, in which these tell of themselves.
  void Second(const std::vector<std::pair<std::string, std::string>>& heard, bool mayFollow = true) {
    for (const auto& [name, address] : heard) rig.beacons.Deliver(BeaconBytes(name), address);
    rig.clock.Advance(1000);
    rig.finder.Tick();
    follower.Tick(mayFollow);
  }
  const std::string& Address() const { return rig.model.General.RemoteIP; }

  ProgramRig rig;
  SimulatorFollower follower{rig.model, rig.sim, rig.finder, rig.clock};
};

TEST_F(SimulatorFollowerTest, FollowsItsHostToAnotherAddressOnceTheOldOneIsSilent) {
  rig.sim.OpenUDP();
  Second({});
  Second({{"SIM-PC", "10.0.0.7"}});
  for (int second = 0; second < 3; ++second) {
    Second({{"SIM-PC", "10.0.0.8"}});
    EXPECT_EQ(Address(), "10.0.0.7") << "heard there a moment ago";
  }
  Second({{"SIM-PC", "10.0.0.8"}});
  EXPECT_EQ(Address(), "10.0.0.8");
  EXPECT_TRUE(rig.model.ConfigChanged);
  EXPECT_EQ(rig.socket.SetUps.back().remoteHost, "10.0.0.8") << "the link is led there";
  EXPECT_EQ(rig.model.General.Setting(kFollowSetting), "SIM-PC");
}

TEST_F(SimulatorFollowerTest, WhatIsNotFollowed) {
  const struct {
    const char* what;
    std::vector<std::pair<std::string, std::string>> heard;
    const char *setting = "SIM-PC", *address = "10.0.0.7";
    bool mayFollow = true;
  } rows[] = {
      {"the setting is off", {{"SIM-PC", "10.0.0.8"}}, ""},
      {"the user edits the configuration", {{"SIM-PC", "10.0.0.8"}}, "SIM-PC", "10.0.0.7", false},
      {"another host", {{"OTHER", "10.0.0.8"}}},
      {"it is heard where it was, too", {{"SIM-PC", "10.0.0.7"}, {"SIM-PC", "10.0.0.8"}}},
      {"somebody else has the address now", {{"OTHER", "10.0.0.7"}, {"SIM-PC", "10.0.0.8"}}},
      {"two of the name", {{"SIM-PC", "10.0.0.8"}, {"SIM-PC", "10.0.0.9"}}},
      {"a name in place of the address", {{"SIM-PC", "10.0.0.8"}}, "SIM-PC", "simpc"},
  };
  for (const auto& row : rows) {
    rig.clock.Advance(60000);
    Second({});  // none is known any more
    rig.model.General.UseSimulator(row.address, 49000, "SIM-PC");
    rig.model.General.SetSetting(kFollowSetting, row.setting);
    for (int second = 0; second < 10; ++second) Second(row.heard, row.mayFollow);
    EXPECT_EQ(Address(), row.address) << row.what;
  }
}

TEST_F(SimulatorFollowerTest, ALinkThatAnswersIsLeftAlone) {
  rig.sim.OpenUDP();
  for (int second = 0; second < 10; ++second) {
    rig.socket.Deliver("DATA*");
    Second({{"SIM-PC", "10.0.0.8"}});
  }
  EXPECT_EQ(Address(), "10.0.0.7");
}

TEST_F(SimulatorFollowerTest, ListensOnlyWhileTheSettingIsOn) {
  Second({});
  EXPECT_TRUE(rig.beacons.open);
  rig.model.General.SetSetting(kFollowSetting, {});
  Second({});
  EXPECT_FALSE(rig.beacons.open);
}

}  // namespace tvx::simulatorfollowertest
