// The guide's steps that find what there is and give switches their uses, and what is left to do.

#include "config/StartFile.h"
#include "guide/Guide.h"
#include "tests/fakes/FakeMulticastListener.h"
#include "tests/fakes/ScratchFolder.h"
#include "tests/guide/FakeGuideHardware.h"
#include "tests/hwbus/iomodule/IOModuleRig.h"

namespace tvx::stepstest {

std::size_t UseNamed(std::string_view name) {
  const auto use = std::ranges::find(UsualUses(), name, &UsualUse::name);
  EXPECT_NE(use, UsualUses().end()) << name;
  return static_cast<std::size_t>(use - UsualUses().begin());
}

struct GuideTest : testing::Test {
  const ScratchFolder folder;
  IOModuleRig rig{kIOModule1Parameters};
  FakeGuideHardware hardware;
  FakeMulticastListener beacons;
  SimulatorFinder finder{beacons, rig.clock};
  bool saved = true;
  Guide guide{
      {rig.model, hardware, finder, rig.boxes, rig.clock, {&rig.module, nullptr}, [this] { return saved; }}};
  SwitchStep& step = guide.Switches();

  // A switch goes on; the others are off.
  void Move(int index) {
    std::array<Byte, 6> groups{};
    groups[static_cast<std::size_t>(index / 8)] = static_cast<Byte>(0x80 >> index % 8);
    rig.Report(groups);
    rig.Report({});
  }
  std::string UsesNow() {
    std::string kinds;
    for (const std::size_t use : step.Uses()) {
      const char kind = "SBEA"[static_cast<int>(UsualUses()[use].kind)];
      if (kinds.find(kind) == std::string::npos) kinds += kind;
    }
    return kinds;
  }
};

TEST_F(GuideTest, SearchAsksEveryAdapterThenTheBusAndTakesTheOnlySimulator) {
  struct Heard {
    const char *name, *address;
    Byte role = 1;
  };
  // Who is heard, and then: the address in use, and the first line of the words.
  const std::tuple<const char*, std::vector<Heard>, const char*, const char*> rows[] = {
      {"none", {}, "127.0.0.1", "No simulator is heard. It is looked for at 127.0.0.1, port 49000."},
      {"one elsewhere",
       {{"SIM", "10.0.0.7"}},
       "10.0.0.7",
       "X-Plane 12.1.1 on host SIM at 10.0.0.7: in use. It is used from now on."},
      {"the one in use",
       {{"SIM", "127.0.0.1"}},
       "127.0.0.1",
       "X-Plane 12.1.1 on host SIM at 127.0.0.1: in use."},
      {"two: which one?",
       {{"A", "10.0.0.7"}, {"B", "10.0.0.8"}},
       "127.0.0.1",
       "X-Plane 12.1.1 on host A at 10.0.0.7."},
      {"one, and one that shows its flight",
       {{"A", "10.0.0.7"}, {"B", "10.0.0.8", 2}},
       "10.0.0.7",
       "X-Plane 12.1.1 on host A at 10.0.0.7: in use."},
  };
  hardware.adapters.resize(2);
  hardware.adapters[0].path = "/dev/a";
  hardware.adapters[1].path = "/dev/b";
  for (const auto& [what, heard, address, words] : rows) {
    SCOPED_TRACE(what);
    rig.model.General.UseSimulator("127.0.0.1", 49000, "");
    rig.model.General.ComPortGS = 5;
    rig.model.ConfigChanged = false;
    hardware.askedRoles.clear();
    hardware.searched = 0;
    guide.Begin();
    for (const Heard& one : heard) beacons.Deliver(BeaconBytes(one.name, one.role), one.address);
    SetUpSearch& search = guide.Search();
    EXPECT_EQ(search.Percent(), 0);
    guide.Tick();
    EXPECT_EQ(hardware.askedRoles.size(), 1u) << "one after the other";
    hardware.asking = false;
    guide.Tick();
    EXPECT_EQ(hardware.askedRoles, (Texts{"/dev/a", "/dev/b"}));
    EXPECT_EQ(search.Percent(), 15);
    hardware.asking = false;
    guide.Tick();
    hardware.searched = 128;
    EXPECT_EQ(search.Percent(), 65);
    EXPECT_TRUE(Holds(search.Words(), "/dev/b is something."));
    EXPECT_EQ(guide.StateOf(GuideStep::Find), "");
    hardware.searching = false;
    guide.Tick();
    EXPECT_FALSE(search.Running());
    EXPECT_EQ(search.Percent(), 100);
    EXPECT_EQ(rig.model.General.RemoteIP, address);
    EXPECT_EQ(rig.model.ConfigChanged, address != std::string("127.0.0.1"));
    EXPECT_TRUE(Begins(search.Words(), words + std::string("\n")));
    guide.End();
    for (int second = 0; second < 8; ++second, rig.clock.Advance(1000)) finder.Tick();
  }
  EXPECT_EQ(hardware.searches, 5);
}

TEST_F(GuideTest, WhatIsMovedIsChosenAndGetsItsUse) {
  rig.Start();
  rig.module.cmdStop_Click();
  rig.module.WriteCmdDuringConfig_Tick();  // what the run has left
  rig.TakeCommands();
  EXPECT_TRUE(step.AnyModule());
  guide.Begin();
  guide.Enter(GuideStep::Switches);
  EXPECT_EQ(step.Words(), "Move a switch, turn an encoder both ways, or move an axis.");
  EXPECT_EQ(UsesNow(), "SBEA") << "nothing is chosen";
  for (int i = 0; i < 5; ++i) guide.Tick();
  EXPECT_EQ(rig.TakeCommands(), (std::vector<std::pair<int, int>>{{kCommandReportState, 0}}));
  rig.Report({});
  EXPECT_FALSE(step.Chosen());

  Move(2);
  EXPECT_EQ(step.Words(), "Switch A3 of IO module 1 moved. What is it for?");
  EXPECT_EQ(UsesNow(), "SB");
  ASSERT_TRUE(step.Take(UseNamed("Gear lever")));
  EXPECT_EQ(step.Words(), "Switch A3 of IO module 1 moved: Gear lever.");
  EXPECT_EQ(guide.StateOf(GuideStep::Switches), "1 assigned");

  // Two neighbours within three seconds are an encoder; a click of either goes on with it.
  rig.clock.Advance(5000);
  Move(17);
  rig.clock.Advance(2999);
  Move(16);
  EXPECT_EQ(step.Words(), "An encoder on two switches from C1 of IO module 1 moved. What is it for?");
  EXPECT_EQ(UsesNow(), "E");
  rig.clock.Advance(500);
  Move(17);
  EXPECT_TRUE(step.IsEncoder());
  ASSERT_TRUE(step.Take(UseNamed("Heading bug")));
  EXPECT_EQ(step.Defined(), 3);
  const auto& inputs = rig.model.IOModuleInputs;
  EXPECT_EQ((std::array{inputs[1].Input, inputs[1].SwitchType, inputs[2].Input, inputs[2].SwitchType}),
            (std::array<std::int16_t, 4>{1016, 1, 1017, 2}));
  EXPECT_EQ((std::pair{inputs[1].OffOnValue, inputs[2].OffOnValue}), (std::pair{1.0f, 2.0f}));

  // Not neighbours, or of two groups, or later: switches of their own.
  for (const auto& [first, second, afterMs] :
       {std::array{30, 28, 100}, std::array{31, 32, 100}, std::array{40, 41, 3000}}) {
    rig.clock.Advance(5000);
    Move(first);
    rig.clock.Advance(afterMs);
    Move(second);
    EXPECT_FALSE(step.IsEncoder()) << first;
    EXPECT_EQ(step.Chosen()->Index, second);
  }
  rig.Report({}, {0, 0, 900});
  EXPECT_EQ(step.Words(), "Axis 3 of IO module 1 moved. What is it for?");
  EXPECT_EQ(UsesNow(), "A");
  ASSERT_TRUE(step.Take(UseNamed("Throttle")));
  EXPECT_EQ(inputs[3].Input, 1102);
  EXPECT_EQ(inputs[3].RawMaximum, 4095);

  // What was given acts at the next run.
  guide.End();
  rig.module.cmdRun_Click();
  rig.Sent();
  const auto sent = rig.SentAfter({0x20});
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_TRUE(sent[0].find("sim/flight_controls/landing_gear_down") != std::string::npos) << sent[0];
  Move(5);
  EXPECT_NE(step.Chosen()->Index, 5) << "the guide is closed";
}

TEST_F(GuideTest, AUseTakesAFunctionThatIsThereOrANewOne) {
  const UsualUse& throttle = UsualUses()[UseNamed("Throttle")];
  const int number = FunctionForUse(rig.model, throttle);
  ASSERT_GT(number, 0);
  EXPECT_EQ(FunctionForUse(rig.model, throttle), number);
  rig.model.Functions[static_cast<std::size_t>(number)].Devider = 2;
  const int plain = FunctionForUse(rig.model, throttle);
  EXPECT_NE(plain, number) << "that one is scaled";
  EXPECT_EQ(rig.model.FunctionOf(plain)->XPVal1, 5) << "read, so that it can be followed";
  for (FunctionRecord& function : rig.model.Functions) function.ShortName = "taken";
  EXPECT_EQ(FunctionForUse(rig.model, UsualUses()[UseNamed("Battery")]), 0);
  EXPECT_TRUE(DefinitionsFor(rig.model, UsualUses()[UseNamed("Battery")], {}).empty());
}

TEST_F(GuideTest, SaysWhatIsLeftToDo) {
  for (const auto& [id, type] : {std::array<Byte, 2>{12, 101}, {32, 110}, {33, 111}, {10, 4}})
    rig.model.Gauges[id].GaugeType = type;
  int changes = 0;
  const Registration watching = guide.SetChanged([&] { ++changes; });
  EXPECT_EQ(guide.StateOf(GuideStep::Flight), "");
  guide.Begin();
  EXPECT_EQ(hardware.searches, 0) << "something is configured already";
  EXPECT_EQ((Texts{guide.StateOf(GuideStep::Radios), guide.StateOf(GuideStep::Needles),
                   guide.StateOf(GuideStep::Switches), guide.FixedWords()}),
            (Texts{"2 to do", "1 to do", "", "1 instrument works as it is."}));

  guide.Enter(GuideStep::Radios);
  guide.Tick();
  EXPECT_FALSE(guide.GiveRole(0)) << "none has moved";
  changes = 0;
  for (const Byte low : {Byte{0}, Byte{25}}) {
    std::array<Byte, kReplySize> report{};
    report[1] = 32, report[2] = 110, report[6] = 72, report[7] = low, report.back() = 0xFF;
    guide.OnReply(report);
    for (int i = 0; i < 3; ++i) guide.Tick();
  }
  EXPECT_EQ(changes, 1) << "when it moved, and only then";
  EXPECT_TRUE(guide.GiveRole(0));
  EXPECT_EQ(guide.StateOf(GuideStep::Radios), "1 to do");

  guide.Enter(GuideStep::Flight);
  guide.Flight().Start();
  EXPECT_FALSE(guide.Flight().Done());
  for (int i = 0; i < 1000 && !guide.Flight().Done(); ++i) guide.Tick();
  EXPECT_EQ(guide.StateOf(GuideStep::Flight), "done");
  guide.Flight().Start();
  EXPECT_EQ(guide.StateOf(GuideStep::Flight), "") << "anew";

  rig.model.ConfigFileName = "Mine.cfg";
  saved = false;
  EXPECT_FALSE(guide.SaveAndSetAsStartup());
  EXPECT_FALSE(std::filesystem::exists(kStartFileName));
  saved = true;
  EXPECT_TRUE(guide.SaveAndSetAsStartup());
  EXPECT_EQ(ReadStartFile(rig.model), "Mine.cfg");
}

}  // namespace tvx::stepstest
