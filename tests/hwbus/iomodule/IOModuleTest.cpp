
#include "base/Rounding.h"
#include "hwbus/iomodule/IOModule.h"
#include "tests/hwbus/iomodule/IOModuleRig.h"

namespace tvx {
namespace {

using Groups = std::array<Byte, 6>;
using Commands = std::vector<std::pair<int, int>>;

// Both modules, one class.
struct IOModuleTest : testing::TestWithParam<int>, IOModuleRig {
  IOModuleTest() : IOModuleRig(GetParam() == 1 ? kIOModule1Parameters : kIOModule2Parameters) {}
};
INSTANTIATE_TEST_SUITE_P(Both, IOModuleTest, testing::Values(1, 2));

TEST_P(IOModuleTest, FirstSwitchIsTheTopBitOfGroupAAndTheLastTheLowBitOfF) {
  Define(IOModuleKind::Switch, 0, 60).OffOnValue = 40;
  Define(IOModuleKind::Switch, 47, 61).OffOnValue = 50;
  Start();
  EXPECT_EQ(SentAfter(Groups{0x80, 0, 0, 0, 0, 0}), Texts{"60=40.00"});
  EXPECT_EQ(SentAfter(Groups{0x80, 0, 0, 0, 0, 0x01}), Texts{"61=50.00"});
  EXPECT_EQ(SentAfter(Groups{0, 0, 0, 0, 0, 0x01}), Texts{"60=0.000"});
}

TEST_P(IOModuleTest, DeadBandIsTheLargestChangeThatIsIgnored) {
  Define(IOModuleKind::Analogue, 0, 60).DeadBand = 8;
  Start();
  EXPECT_EQ(SentAfter({}, {8}), Texts{});
  EXPECT_EQ(SentAfter({}, {17}), Texts{"60=0.425"});
  // An axis that creeps never leaves the dead band: each place is remembered.
  for (int raw = 18; raw < 200; raw += 8) Report({}, {raw});
  EXPECT_EQ(Sent(), Texts{});
}

// An encoder at B1 and B2, and a plain switch at B3 that steps the same Function.
struct EncoderTest : IOModuleTest {
  EncoderTest() {
    for (const int index : {8, 9, 10}) {
      IOModuleRecord& d = Define(IOModuleKind::Switch, index, 60);
      d.SwitchType = static_cast<std::int16_t>(index == 10 ? 0 : index - 7);
      d.IncrementFlags = kIOModuleStepOffOn;
      d.OffOnValue = index == 9 ? -5.0f : 5.0f;
    }
    Start();
  }
  Texts Click(int bit) {
    clock.Advance(10);
    Report(Groups{0, static_cast<Byte>(0x80 >> bit), 0, 0, 0, 0});
    return SentAfter(Groups{});
  }
};
INSTANTIATE_TEST_SUITE_P(Both, EncoderTest, testing::Values(1, 2));

TEST_P(EncoderTest, LosesNoClickWhileTheSimulatorIsBehind) {
  EXPECT_EQ(Click(0), Texts{}) << "the Function's value never came";
  Set(60, 50);
  EXPECT_EQ(Click(0), Texts{"60=55.00"});
  EXPECT_EQ(Click(0), Texts{"60=60.00"});
  Set(60, 55);  // the first click comes back
  EXPECT_EQ(Click(0), Texts{"60=65.00"});
  EXPECT_EQ(Click(1), Texts{"60=60.00"}) << "the other half goes on from there";
  for (int i = 0; i < 8; ++i) Click(0);
  EXPECT_EQ(Click(0), Texts{"60=100.0"}) << "the limit holds";
  EXPECT_EQ(Click(2), Texts{"60=60.00"}) << "a plain switch reads the simulator";
  clock.Advance(501);
  EXPECT_EQ(Click(0), Texts{"60=60.00"}) << "after half a second the simulator counts again";
}

TEST_P(IOModuleTest, ADefinitionThatIsStoredActsAtOnceAndInterruptsNoOther) {
  Define(IOModuleKind::Switch, 0, 60).OffOnValue = 40;
  Define(IOModuleKind::Lamp, 0, 61).IncrementFlags = kIOModuleLitAtMaximum;
  Start();
  Set(61, 100);
  Tick();
  EXPECT_EQ(module.Lamps(), 1u);
  module.TakeDefinitions();  // as opening the set-up does
  EXPECT_EQ(Tick(), Commands{}) << "the lamp stays lit";
  EXPECT_EQ(SentAfter(Groups{0x80, 0, 0, 0, 0, 0}), Texts{"60=40.00"});
  Define(IOModuleKind::Switch, 1, 62).OffOnValue = 30;
  module.TakeDefinitions();
  EXPECT_EQ(SentAfter(Groups{0xC0, 0, 0, 0, 0, 0}), Texts{"62=30.00"});
  EXPECT_EQ(sim.PortCount(), 3) << "those that were open are used again";
  module.cmdStop_Click();
  Define(IOModuleKind::Switch, 2, 63).OffOnValue = 20;
  module.TakeDefinitions();
  module.cmdRun_Click();
  EXPECT_EQ(SentAfter(Groups{0xE0, 0, 0, 0, 0, 0}), Texts{"63=20.00"}) << "stored while halted";
}

TEST_P(IOModuleTest, HaltedTakesTheReportButDoesNothing) {
  Define(IOModuleKind::Switch, 0, 60).OffOnValue = 40;
  Start();
  module.cmdStop_Click();
  int seen = 0;
  const Registration observer =
      module.SetReportObserver([&](const IOModuleReport& report) { seen += report.On(0) ? 1 : 0; });
  Report(Groups{0x80, 0, 0, 0, 0, 0});
  EXPECT_EQ(seen, 1);
  EXPECT_EQ(Sent(), Texts{});
  model.General.TransferInterval = 5;
  module.cmdRun_Click();
  EXPECT_TRUE(boxes.shown.empty()) << "its port is open already";
  EXPECT_EQ(process.interval, 10) << "the shortest";
  EXPECT_EQ(SentAfter(Groups{0x80, 0, 0, 0, 0, 0}), Texts{"60=40.00"})
      << "the switch stands differently than when it was last acted upon";
}

TEST_P(IOModuleTest, SwitchesRunCommandsAndTypeKeys) {
  IOModuleRecord& command = Define(IOModuleKind::Switch, 0, 60);
  command.ActionKind = 'c';
  command.OffOnValue = 2;
  Define(IOModuleKind::Switch, 1, 0).ActionKind = 'c';
  Start();
  EXPECT_EQ(process.interval, model.General.TransferInterval);
  EXPECT_EQ(SentAfter(Groups{0xC0, 0, 0, 0, 0, 0}), Texts{"CMND0sim/b"});
}

TEST_P(IOModuleTest, ADefinitionOfTheOtherModuleIsNotOurs) {
  IOModuleRecord& d = Define(IOModuleKind::Switch, 0, 60);
  d.Input = static_cast<std::int16_t>((3 - parameters.Number) * 1000);
  d.ActionKind = 'c';
  d.OffOnValue = 1;
  Start();
  EXPECT_EQ(SentAfter(Groups{0x80, 0, 0, 0, 0, 0}), Texts{});
}

TEST_P(IOModuleTest, PortsAreOpenedUnderTheModulesCode) {
  Define(IOModuleKind::Switch, 0, 60);
  Define(IOModuleKind::Lamp, 0, 61);
  Start();
  ASSERT_EQ(sim.PortCount(), 2);
  EXPECT_EQ(sim.PortAt(0).OpenedBy, parameters.Number * 1000);
  EXPECT_EQ(sim.PortAt(0).ReadEnabled, 0) << "an absolute switch only writes";
  EXPECT_EQ(sim.PortAt(1).ReadEnabled, 1);
}

TEST_P(IOModuleTest, BadInputIsDiscarded) {
  Define(IOModuleKind::Switch, 0, 60).OffOnValue = 40;
  Start();
  auto frame = Frame(Groups{0x80, 0, 0, 0, 0, 0});
  for (const std::size_t end : {0u, 24u}) {
    auto bad = frame;
    bad[end] ^= 1;
    const std::size_t before = Port().CountOf("discard input");
    Port().Arrive(bad);
    EXPECT_EQ(Port().CountOf("discard input"), before + 1);
  }
  Port().Arrive(ByteView(frame).first(10));
  Port().Raise(SerialEvent::Break);
  EXPECT_EQ(Port().Waiting(), 0u);
  EXPECT_EQ(Sent(), Texts{});
  // A report in two halves is whole in the end: nothing was thrown away between.
  Port().Arrive(ByteView(frame).first(10));
  Port().Arrive(ByteView(frame).subspan(10));
  EXPECT_EQ(Sent(), Texts{"60=40.00"});
}

TEST_P(IOModuleTest, LampsFollowAndOnlyChangesAreSent) {
  Define(IOModuleKind::Lamp, 0, 60).IncrementFlags = kIOModuleLitAtMaximum;
  Define(IOModuleKind::Lamp, 31, 61).IncrementFlags = kIOModuleLitAtMinimum;
  module.SetLighting(0xB7);
  Start();
  Set(60, 1);
  Set(61, 1);
  EXPECT_EQ(Tick(), (Commands{{7, 0}, {4, 0}, {5, 0}, {6, 11}, {8, 0xB7}}))
      << "the first tick tells everything";
  EXPECT_EQ(Tick(), Commands{});
  Set(60, 100);
  EXPECT_EQ(Tick(), (Commands{{4, 1}}));
  Set(61, 0);
  module.SetLighting(0x27);
  EXPECT_EQ(Tick(), (Commands{{5, 0x8000}, {6, 2}, {8, 0x27}}));
  EXPECT_EQ(module.Lamps(), 0x80000001u);
}

TEST_P(IOModuleTest, WhatTheLineDidNotTakeIsSentAgain) {
  Start();
  Tick();
  module.SetLighting(0x30);
  Port().RefuseWrites = true;
  module.ProcessTimer_Tick();
  Port().RefuseWrites = false;
  EXPECT_EQ(Tick(), (Commands{{4, 0}, {5, 0}, {6, 3}, {8, 0x30}}));
}

TEST_P(IOModuleTest, AModuleThatComesBackIsToldEverything) {
  Start();
  Report(Groups{});
  Tick();
  for (int i = 0; i < IOModule::kSilentSeconds; ++i) module.TimerSeconds_Tick();
  EXPECT_EQ(module.StatusText(), "Running; the module does not answer");
  Tick();
  Report(Groups{});
  EXPECT_EQ(Tick(), (Commands{{4, 0}, {5, 0}, {6, 0}, {8, 0}}));
}

TEST_P(IOModuleTest, CommandsQueueInOrderAndWaitForNobody) {
  module.OpenCommPort();
  module.ComposeCmd(0, 11, 300);
  EXPECT_EQ(TakeCommands(), Commands{});
  module.WriteCmdDuringConfig_Tick();
  EXPECT_EQ(TakeCommands(), (Commands{{11, 300}}));
  module.WriteCmdDuringConfig_Tick();
  EXPECT_EQ(TakeCommands(), Commands{});

  EXPECT_THROW(module.ComposeCmd(0, 11, 65536), RangeError);
  // No timer runs that would make room, as when the set-up was closed: no command waits for it.
  for (std::size_t i = 0; i < FrameQueue::kRoom; ++i)
    EXPECT_TRUE(module.ComposeCmd(0, 11, static_cast<int>(i)));
  EXPECT_FALSE(module.ComposeCmd(0, 11, 99));
  module.WriteCmdDuringConfig_Tick();
  EXPECT_EQ(TakeCommands(), (Commands{{11, 0}}));
  module.cmdRun_Click();
  EXPECT_EQ(Tick().front(), (std::pair{11, 1}));
}

TEST_P(IOModuleTest, APortThatCannotBeOpenedIsToldWithTheModulesNumber) {
  Port().OpenResult = SerialState::Opening;
  module.cmdRun_Click();
  module.ProcessTimer_Tick();
  EXPECT_TRUE(boxes.shown.empty()) << "not known yet";
  Port().Answer(SerialState::NotFound);
  for (int i = 0; i < 3; ++i) module.ProcessTimer_Tick();
  EXPECT_EQ(boxes.shown, Texts{"Error opening Com Port for IO Module #" + std::to_string(GetParam()) + "."});
  EXPECT_TRUE(process.enabled);
  EXPECT_TRUE(Holds(module.StatusText(), "Running; COM "));
}

}  // namespace
}  // namespace tvx
