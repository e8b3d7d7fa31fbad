#include <gtest/gtest.h>

#include "core/SimulatorFollower.h"
#include "tests/core/ProgramRig.h"

namespace tvx {
namespace {

class SimulatorFollowerTest : public testing::Test {
 protected:
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
  using Prepare = void (*)(ProgramRig&);
  const auto nothing = [](ProgramRig&) {};
  const struct {
    const char* what;
    Prepare prepare;
    std::vector<std::pair<std::string, std::string>> heard;
    bool mayFollow = true;
  } rows[] = {
      {"the setting is off",
       [](ProgramRig& r) { r.model.General.SetSetting(kFollowSetting, {}); },
       {{"SIM-PC", "10.0.0.8"}}},
      {"the user edits the configuration", nothing, {{"SIM-PC", "10.0.0.8"}}, false},
      {"another host", nothing, {{"OTHER", "10.0.0.8"}}},
      {"it is heard where it was, too", nothing, {{"SIM-PC", "10.0.0.7"}, {"SIM-PC", "10.0.0.8"}}},
      {"somebody else has the address now", nothing, {{"OTHER", "10.0.0.7"}, {"SIM-PC", "10.0.0.8"}}},
      {"two of the name", nothing, {{"SIM-PC", "10.0.0.8"}, {"SIM-PC", "10.0.0.9"}}},
      {"a name in place of the address",
       [](ProgramRig& r) { r.model.General.RemoteIP = "simpc"; },
       {{"SIM-PC", "10.0.0.8"}}},
  };
  for (const auto& row : rows) {
    ProgramRig fresh;
    fresh.model.General.UseSimulator("10.0.0.7", 49000, "SIM-PC");
    fresh.model.General.SetSetting(kFollowSetting, "SIM-PC");
    row.prepare(fresh);
    const std::string before = fresh.model.General.RemoteIP;
    SimulatorFollower another(fresh.model, fresh.sim, fresh.finder, fresh.clock);
    for (int second = 0; second < 10; ++second) {
      for (const auto& [name, address] : row.heard) fresh.beacons.Deliver(BeaconBytes(name), address);
      fresh.clock.Advance(1000);
      fresh.finder.Tick();
      another.Tick(row.mayFollow);
    }
    EXPECT_EQ(fresh.model.General.RemoteIP, before) << row.what;
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

}  // namespace
}  // namespace tvx
