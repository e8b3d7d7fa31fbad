#include "config/StartFile.h"
#include "core/StartPresenter.h"
#include "tests/core/ProgramRig.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx::startpresentertest {

// In a folder of its own that holds a start-up file and a configuration whose Function 300 is the version.
struct StartPresenterTest : testing::Test, Story {
  StartPresenterTest() {
    verbs = {
        {"begin", [this](int delay, const std::string& version) { Begin(delay, version != "blind"); }},
        {"ticks", [this](int count) { CountdownTicks(count); }},
        {"seconds",
         [this](int count) {
           for (int i = 0; i < count; ++i) rig.start.TimerWaitForFS_Tick();
         }},
        {"pass", [this](int milliseconds) { rig.clock.Advance(milliseconds); }},
        {"answers", [this](float version) { rig.Set(300, version); }},
        {"refuse", [this](const std::string& why) { rig.socket.SetUpError = why; }},
        {"ok", [this] { rig.start.butOK_Click(); }},
        {"configure", [this] { rig.start.CmdConfigure_Click(); }},
        {"show", [this] { rig.start.Activate(); }},
        {"copy", [](const std::string& name) { std::filesystem::copy_file("Test.cfg", name); }},
        {"choose", [this](const std::string& name) { rig.start.FileBox_Click(name); }},
        {"type", [this](const std::string& name) { rig.start.FileName_Change(name); }},
        {"hear", [this] { rig.beacons.Deliver(BeaconBytes("SIM-PC", 1, 49100), "10.0.0.7"); }},
        {"take", [this] { rig.start.TakeSimulator(FoundSimulator(rig.finder.Found().at(0))); }},
        {"taken", [this] { return rig.start.IsInUse(rig.finder.Found().at(0)); }},
        {"counts",
         [this] { return (view.CountdownVisible ? "" : "hidden ") + std::to_string(view.BoxAutoStartTime); }},
        {"timers",
         [this] { return rig.autostart.enabled   ? "countdown"
                         : rig.waitForFS.enabled ? "waiting"
                                                 : "none"; }},
        {"run", [this] { return !rig.run.Activated() ? "not begun"
                                : rig.run.Running()  ? "on"
                                                     : "halted"; }},
        {"file", [this] { return view.FileName; }},
        {"current", [this] { return rig.run.View().BoxCurrentConfig; }},
        {"words", [this] { return view.SimulatorWords; }},
        {"trouble", [this] { return view.SimulatorTrouble; }},
        {"found", [this] { return view.SimulatorName + ' ' + view.LabelXplaneVersion; }},
        {"ports", [this] { return rig.sim.PortCount(); }},
        {"link", [this] { return rig.sim.UdpOpen(); }},
        {"address",
         [this] { return rig.model.General.RemoteIP + (rig.model.ConfigChanged ? " changed" : ""); }},
        {"said", [this] { return std::exchange(rig.boxes.shown, {}); }},
        {"shell", [this] { return rig.shell.log; }},
    };
  }
  // Starts with Test.cfg, with or without a version Function, and a start-up file that names it.
  void Begin(int delay, bool withVersion) {
    CockpitRig writer;
    writer.model.ConfigFileName = "Test.cfg";
    writer.model.General.ConfigHeader = BuildConfigHeader("", "", "today");
    writer.AddPlate(0, 1, 1);
    if (withVersion) writer.Define(300);
    ConfigFile(writer.model, writer.boxes).SaveConfigFile();
    writer.model.StartDelay = static_cast<std::int16_t>(delay);
    WriteStartFile(writer.model, "Test.cfg");
    rig.start.Activate();
  }
  void CountdownTicks(int count) {
    for (int i = 0; i < count && rig.autostart.enabled; ++i) rig.start.WaitForAutostart_Tick();
  }

  const ScratchFolder folder;
  ProgramRig rig;
  const StartView& view = rig.start.View();
};

TEST(SimulatorVersionText, CutsTheDigitsTwoByTwo) {
  EXPECT_EQ(SimulatorVersionText(115501), "11.55.01");
  EXPECT_EQ(SimulatorVersionText(9700), "97.00.");
}

TEST_F(StartPresenterTest, CountsDownAndStartsOnlyAtZeroWhenTheSimulatorWasFound) {
  rig.silence.enabled = true;
  Play(
      "begin 2; file = Test.cfg; counts = 2; said =; ticks 3; answers 115501; ticks 1; "
      "found = X-Plane 11.55.01; ticks 35; counts = 1; run = not begun; ports = 0; ticks 1; run = on; "
      "current = Test.cfg; shell = show status, unload configuration, unload start");
  EXPECT_FALSE(rig.silence.enabled);
}

TEST_F(StartPresenterTest, ADelayOfZeroStartsAfterTwentyTicks) {
  Play("begin 0; ticks 3; answers 121100; ticks 16; run = not begun; ticks 1; run = on");
}

TEST_F(StartPresenterTest, WaitsForASilentSimulatorAndStartsWhenItAnswers) {
  Play(
      "begin 1; ticks 20; timers = waiting; counts = 0; seconds 1; counts = 1; seconds 6; counts = 7; "
      "run = not begun; seconds 1; answers 121100; seconds 1; run = on; timers = none");
}

TEST_F(StartPresenterTest, WithoutAVersionFunctionTheWaitingEndsWithAMessage) {
  Play(
      "begin 1 blind; ticks 20; seconds 2; said = Cannot detect X-Plane status.; timers = none; ok; "
      "run = halted; counts = hidden 2; shell = show status, unload start");
}

// The words of the status form, second by second, and on by itself once it is mended.
TEST_F(StartPresenterTest, SaysWhyItWaitsAndGoesOnWhenThatIsMended) {
  Play(
      "refuse port 49003 is used; begin 1; ticks 20; words = X-Plane link closed: port 49003 is used; "
      "trouble = true; seconds 6; words = X-Plane link closed: port 49003 is used; refuse; pass 5000; "
      "seconds 2; words = X-Plane silent for 5 s. Nothing has come from 127.0.0.1 port 49000 to port "
      "49003: is X-Plane running, and does it accept incoming connections?; answers 121100; seconds 1; "
      "run = on");
}

TEST_F(StartPresenterTest, APortThatGetsFreeDuringTheCountdownIsTaken) {
  Play(
      "refuse port 49003 is used; begin 3; ticks 25; words = X-Plane link closed: port 49003 is used; "
      "refuse; ticks 18; ports = 1; answers 121100; ticks 1; found = X-Plane 12.11.00; configure; show; "
      "trouble = false");
}

// The file is loaded once more for the start; what was taken over stays, and is not saved by itself.
TEST_F(StartPresenterTest, ASimulatorThatIsTakenIsAskedAndStaysForTheStart) {
  const Registration listening = rig.start.WatchSimulators({});
  Play("begin 1; hear; ticks 5; taken = false; link = true; take; link = false; taken = true; ticks 3");
  EXPECT_EQ(rig.socket.SetUps.back(), (UdpEndpoints{"10.0.0.7", 49100, 49003}));
  Play("answers 121100; ticks 12; run = on; address = 10.0.0.7 changed");
}

TEST_F(StartPresenterTest, ATakenSimulatorHoldsForItsFileOnly) {
  const Registration listening = rig.start.WatchSimulators({});
  Play("begin 9; copy Other.cfg; hear; take; choose Other.cfg; address = 127.0.0.1; take; configure");
  rig.model.General.RemoteIP = "10.0.0.99";  // by hand, in the configuration
  Play("show; ok");
  EXPECT_NE(rig.model.General.RemoteIP, "10.0.0.7");
}

TEST_F(StartPresenterTest, ChoosingAnotherFileHidesTheCountdownButNotTheStart) {
  Play(
      "begin 1; copy Other.cfg; choose Other.cfg; counts = hidden 1; ticks 3; answers 121100; ticks 17; "
      "run = on; current = Other.cfg");
  EXPECT_EQ(rig.model.ConfigFileName, "Other.cfg");
}

// While it is configured the link is closed: it may get another address.
TEST_F(StartPresenterTest, LaterActivationsCountNothingDown) {
  Play(
      "begin 9; ticks 1; link = true; configure; timers = none; link = false; show; counts = hidden 9; "
      "timers = none; file = Test.cfg");
}

TEST_F(StartPresenterTest, SaysWhatIsMissing) {
  Play("show; file = Default.cfg; counts = 10");  // neither start-up file nor configuration
  ASSERT_EQ(rig.boxes.shown.size(), 1u);
  EXPECT_TRUE(Begins(rig.boxes.shown[0], "Error Configuration file. "));
  Play("ok; run = not begun; type; ok");
  EXPECT_EQ(rig.boxes.shown.back(), "No Configuration file selected ");
}

TEST_F(StartPresenterTest, AnUnreadableFileStopsTheAutomaticStart) {
  Play("begin 1; ticks 3; answers 121100");
  std::filesystem::remove("Test.cfg");
  Play("ticks 17; run = not begun; timers = none");
  EXPECT_EQ(rig.boxes.shown.back(), "No or incorrect Start-Up file.File name is Case sensitive");
}

TEST_F(StartPresenterTest, AQuestionAboutTheFileHoldsTheCountdown) {
  Play("begin 1");
  CockpitRig writer;
  writer.model.ConfigFileName = "Old.cfg";
  writer.model.General.ConfigHeader = "another program";
  ConfigFile(writer.model, writer.boxes).SaveConfigFile();
  rig.boxes.whileAsking = [this] { CountdownTicks(100); };
  Play("ticks 19; choose Old.cfg");
  EXPECT_EQ(view.BoxAutoStartTime, 1);
  EXPECT_EQ(rig.boxes.asked.size(), 1u);
}

}  // namespace tvx::startpresentertest
