#include "base/Rounding.h"
#include "hwbus/iomodule/IOModule.h"
#include "tests/hwbus/iomodule/IOModuleRig.h"

namespace tvx::iomoduletest {

// Both modules, one class.
struct IOModuleTest : testing::TestWithParam<int>, IOModuleRig {
  IOModuleTest() : IOModuleRig(GetParam() == 1 ? kIOModule1Parameters : kIOModule2Parameters) {}
};
INSTANTIATE_TEST_SUITE_P(Both, IOModuleTest, testing::Values(1, 2));

TEST_P(IOModuleTest, FirstSwitchIsTheTopBitOfGroupAAndTheLastTheLowBitOfF) {
  Define(IOModuleKind::Switch, 0, 60).OffOnValue = 40;
  Define(IOModuleKind::Switch, 47, 61).OffOnValue = 50;
  Play("start; switches A1 = 60=40.00; switches A1 F8 = 61=50.00; switches F8 = 60=0.000");
}

TEST_P(IOModuleTest, DeadBandIsTheLargestChangeThatIsIgnored) {
  Define(IOModuleKind::Analogue, 0, 60).DeadBand = 8;
  Play("start; axis 8 =; axis 17 = 60=0.425");
  // An axis that creeps never leaves the dead band: each place is remembered.
  for (int raw = 18; raw < 200; raw += 8) Report({}, {raw});
  Play("sent =");
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
    verbs.emplace("click", [this](const std::string& button) {
      clock.Advance(10);
      Report(Groups(button));
      return SentAfter({});
    });
    verbs.emplace("pass", [this](int milliseconds) { clock.Advance(milliseconds); });
    Start();
  }
};
INSTANTIATE_TEST_SUITE_P(Both, EncoderTest, testing::Values(1, 2));

TEST_P(EncoderTest, LosesNoClickWhileTheSimulatorIsBehind) {
  Play(
      "click B1 =; (the Function's value never came); set 60 50; click B1 = 60=55.00; "
      "click B1 = 60=60.00; set 60 55; (the first click comes back); click B1 = 60=65.00; "
      "click B2 = 60=60.00; (the other half goes on from there)");
  for (int i = 0; i < 8; ++i) verbs.at("click").Do("B1");
  Play(
      "click B1 = 60=100.0; (the limit holds); click B3 = 60=60.00; "
      "(a plain switch reads the simulator); pass 501; click B1 = 60=60.00; "
      "(after half a second the simulator counts again)");
}

TEST_P(IOModuleTest, ADefinitionThatIsStoredActsAtOnceAndInterruptsNoOther) {
  Define(IOModuleKind::Switch, 0, 60).OffOnValue = 40;
  Define(IOModuleKind::Lamp, 0, 61).IncrementFlags = kIOModuleLitAtMaximum;
  Play(
      "start; set 61 100; tick = 7 0, 4 1, 5 0, 6 0, 8 0; define; (as opening the set-up does); tick =; "
      "switches A1 = 60=40.00");
  Define(IOModuleKind::Switch, 1, 62).OffOnValue = 30;
  Play("define; switches A1 A2 = 62=30.00; stop");
  EXPECT_EQ(sim.PortCount(), 3) << "those that were open are used again";
  Define(IOModuleKind::Switch, 2, 63).OffOnValue = 20;
  Play("define; run; switches A1 A2 A3 = 63=20.00; (stored while halted)");
}

TEST_P(IOModuleTest, HaltedTakesTheReportButDoesNothing) {
  Define(IOModuleKind::Switch, 0, 60).OffOnValue = 40;
  int seen = 0;
  const Registration observer =
      module.SetReportObserver([&](const IOModuleReport& report) { seen += report.On(0) ? 1 : 0; });
  Play("start; stop; switches A1 =");
  EXPECT_EQ(seen, 1);
  model.General.TransferInterval = 5;
  // The switch stands differently than when it was last acted upon.
  Play("run; switches A1 = 60=40.00");
  EXPECT_TRUE(boxes.shown.empty()) << "its port is open already";
  EXPECT_EQ(process.interval, 10) << "the shortest";
}

TEST_P(IOModuleTest, SwitchesRunCommandsAndTypeKeys) {
  IOModuleRecord& command = Define(IOModuleKind::Switch, 0, 60);
  command.ActionKind = 'c';
  command.OffOnValue = 2;
  Define(IOModuleKind::Switch, 1, 0).ActionKind = 'c';
  Play("start; switches A1 A2 = CMND0sim/b");
  EXPECT_EQ(process.interval, model.General.TransferInterval);
}

TEST_P(IOModuleTest, ADefinitionOfTheOtherModuleIsNotOurs) {
  IOModuleRecord& d = Define(IOModuleKind::Switch, 0, 60);
  d.Input = static_cast<std::int16_t>((3 - parameters.Number) * 1000);
  d.ActionKind = 'c';
  d.OffOnValue = 1;
  Play("start; switches A1 =");
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
  auto frame = Frame(Groups("A1"));
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
  // Lighting: the level in the upper half; the first tick tells everything.
  Play(
      "lighting 183; start; set 60 1; set 61 1; tick = 7 0, 4 0, 5 0, 6 11, 8 183; tick =; set 60 100; "
      "tick = 4 1; set 61 0; lighting 39; tick = 5 32768, 6 2, 8 39");
  EXPECT_EQ(module.Lamps(), 0x80000001u);
}

TEST_P(IOModuleTest, WhatTheLineDidNotTakeIsSentAgain) {
  Play(
      "start; tick = 7 0, 4 0, 5 0, 6 0, 8 0; lighting 48; refuse 1; tick =; refuse 0; "
      "tick = 4 0, 5 0, 6 3, 8 48");
}

TEST_P(IOModuleTest, AModuleThatComesBackIsToldEverything) {
  Play("start; switches =; tick = 7 0, 4 0, 5 0, 6 0, 8 0");
  for (int i = 0; i < IOModule::kSilentSeconds; ++i) module.TimerSeconds_Tick();
  EXPECT_EQ(module.StatusText(), "Running; the module does not answer");
  Tick();
  Play("switches =; tick = 4 0, 5 0, 6 0, 8 0");
}

TEST_P(IOModuleTest, CommandsQueueInOrderAndWaitForNobody) {
  module.OpenCommPort();
  module.ComposeCmd(0, 11, 300);
  EXPECT_EQ(TakeCommands().size(), 0u);
  Play("slot = 11 300; slot =");
  EXPECT_THROW(module.ComposeCmd(0, 11, 65536), RangeError);
  // No timer runs that would make room, as when the set-up was closed: no command waits for it.
  for (int i = 0; i <= static_cast<int>(FrameQueue::kRoom); ++i)
    EXPECT_EQ(module.ComposeCmd(0, 11, i), i < static_cast<int>(FrameQueue::kRoom));
  Play("slot = 11 0; run");
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

}  // namespace tvx::iomoduletest
