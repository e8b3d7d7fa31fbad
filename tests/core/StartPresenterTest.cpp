#include "config/StartFile.h"
#include "core/StartPresenter.h"
#include "tests/Test.h"
#include "tests/core/ProgramRig.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx {
namespace {

// Works in a folder of its own that holds a start-up file and a configuration whose Function 300 is the
// version.
struct StartPresenterTest : testing::Test {
  // Starts with Test.cfg, with or without a version Function, and a start-up file that names it.
  void Begin(int delay, bool withVersion = true) {
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
};

TEST(SimulatorVersionText, CutsTheDigitsTwoByTwo) {
  EXPECT_EQ(SimulatorVersionText(115501), "11.55.01");
  EXPECT_EQ(SimulatorVersionText(9700), "97.00.");
}

TEST_F(StartPresenterTest, CountsDownAndStartsOnlyAtZeroWhenTheSimulatorWasFound) {
  Begin(2);
  const StartView& view = rig.start.View();
  EXPECT_EQ(view.FileName, "Test.cfg");
  EXPECT_TRUE(view.CountdownVisible);
  EXPECT_EQ(view.BoxAutoStartTime, 2);
  EXPECT_EQ(rig.boxes.shown, Texts{});
  CountdownTicks(3);
  rig.Set(300, 115501);
  CountdownTicks(1);
  EXPECT_EQ(view.SimulatorName + ' ' + view.LabelXplaneVersion, "X-Plane 11.55.01");
  CountdownTicks(35);
  rig.silence.enabled = true;
  EXPECT_EQ(view.BoxAutoStartTime, 1);
  EXPECT_FALSE(rig.run.Running());
  EXPECT_EQ(rig.sim.PortCount(), 0) << "nothing of the probe stays open";
  CountdownTicks(1);
  EXPECT_TRUE(rig.run.Running() && !rig.silence.enabled);
  EXPECT_EQ(rig.shell.log, (Texts{"show status", "unload configuration", "unload start"}));
  EXPECT_EQ(rig.run.View().BoxCurrentConfig, "Test.cfg");
}

TEST_F(StartPresenterTest, ADelayOfZeroStartsAfterTwentyTicks) {
  Begin(0);
  CountdownTicks(3);
  rig.Set(300, 121100);
  CountdownTicks(16);
  EXPECT_FALSE(rig.run.Running());
  CountdownTicks(1);
  EXPECT_TRUE(rig.run.Running());
}

TEST_F(StartPresenterTest, WaitsForASilentSimulatorAndStartsWhenItAnswers) {
  Begin(1);
  CountdownTicks(20);
  EXPECT_TRUE(rig.waitForFS.enabled);
  EXPECT_EQ(rig.start.View().BoxAutoStartTime, 0);
  for (int second = 1; second <= 7; ++second) {
    rig.start.TimerWaitForFS_Tick();
    EXPECT_EQ(rig.start.View().BoxAutoStartTime, second);
  }
  EXPECT_FALSE(rig.run.Running());
  rig.start.TimerWaitForFS_Tick();  // opens the port again
  rig.Set(300, 121100);
  rig.start.TimerWaitForFS_Tick();
  EXPECT_TRUE(rig.run.Running());
  EXPECT_FALSE(rig.waitForFS.enabled);
}

TEST_F(StartPresenterTest, WithoutAVersionFunctionTheWaitingEndsWithAMessage) {
  Begin(1, false);
  CountdownTicks(20);
  rig.start.TimerWaitForFS_Tick();
  rig.start.TimerWaitForFS_Tick();
  EXPECT_EQ(rig.boxes.shown, (Texts{"Cannot detect X-Plane status."}));
  EXPECT_FALSE(rig.waitForFS.enabled);
  rig.start.butOK_Click();
  EXPECT_TRUE(rig.run.Activated());
  EXPECT_FALSE(rig.run.Running()) << "a start by OK leaves the status form halted";
  EXPECT_FALSE(rig.start.View().CountdownVisible);
  EXPECT_FALSE(rig.sim.UdpOpen() && !rig.run.Activated()) << "the probe's link is closed";
  EXPECT_EQ(rig.shell.log.back(), "unload start");
}

// The words of the status form, second by second, and on by itself once it is mended.
TEST_F(StartPresenterTest, SaysWhyItWaitsAndGoesOnWhenThatIsMended) {
  const std::string& words = rig.start.View().SimulatorWords;
  rig.socket.SetUpError = "local port 49003 is used by another program: other (77)";
  Begin(1);
  CountdownTicks(20);
  EXPECT_EQ(words, "X-Plane link closed: " + rig.socket.SetUpError);
  EXPECT_TRUE(rig.start.View().SimulatorTrouble);
  for (int second = 0; second < 6; ++second) rig.start.TimerWaitForFS_Tick();
  EXPECT_EQ(words, "X-Plane link closed: " + rig.socket.SetUpError) << "at each step of the probe";
  rig.socket.SetUpError.clear();
  rig.clock.Advance(5000);
  rig.start.TimerWaitForFS_Tick();
  rig.start.TimerWaitForFS_Tick();
  EXPECT_EQ(
      words,
      "X-Plane silent for 5 s. Nothing has come from 127.0.0.1 port 49000 to port 49003: is X-Plane running, "
      "and does it accept incoming connections?");
  rig.Set(300, 121100);
  rig.start.TimerWaitForFS_Tick();
  EXPECT_TRUE(rig.run.Running());
}

TEST_F(StartPresenterTest, APortThatGetsFreeDuringTheCountdownIsTaken) {
  rig.socket.SetUpError = "local port 49003 is used by another program";
  Begin(3);
  CountdownTicks(25);
  EXPECT_EQ(rig.start.View().SimulatorWords,
            "X-Plane link closed: local port 49003 is used by another program");
  rig.socket.SetUpError.clear();
  CountdownTicks(18);
  EXPECT_EQ(rig.sim.PortCount(), 1) << "the probe's first try left nothing open";
  rig.Set(300, 121100);
  CountdownTicks(1);
  EXPECT_EQ(rig.start.View().LabelXplaneVersion, "12.11.00");
  rig.start.CmdConfigure_Click();
  rig.start.Activate();
  EXPECT_FALSE(rig.start.View().SimulatorTrouble);
}

// The file is loaded once more for the start; what was taken over stays, and is not saved by itself.
TEST_F(StartPresenterTest, ASimulatorThatIsTakenIsAskedAndStaysForTheStart) {
  Begin(1);
  const Registration listening = rig.start.WatchSimulators({});
  rig.beacons.Deliver(BeaconBytes("SIM-PC", 1, 49100), "10.0.0.7");
  CountdownTicks(5);
  const FoundSimulator found = rig.finder.Found().at(0);
  EXPECT_FALSE(rig.start.IsInUse(found));
  EXPECT_TRUE(rig.sim.UdpOpen());
  rig.start.TakeSimulator(found);
  EXPECT_FALSE(rig.sim.UdpOpen()) << "what the other one answers now is nobody's";
  EXPECT_TRUE(rig.start.IsInUse(found));
  CountdownTicks(3);
  EXPECT_EQ(rig.socket.SetUps.back(), (UdpEndpoints{"10.0.0.7", 49100, 49003}));
  rig.Set(300, 121100);
  CountdownTicks(12);
  EXPECT_TRUE(rig.run.Running());
  EXPECT_EQ(rig.model.General.RemoteIP, "10.0.0.7");
  EXPECT_TRUE(rig.model.ConfigChanged) << "so that closing the configuration asks";
}

TEST_F(StartPresenterTest, ATakenSimulatorHoldsForItsFileOnly) {
  Begin(9);
  std::filesystem::copy_file("Test.cfg", "Other.cfg");
  const Registration listening = rig.start.WatchSimulators({});
  rig.beacons.Deliver(BeaconBytes("SIM-PC"), "10.0.0.7");
  rig.start.TakeSimulator(FoundSimulator(rig.finder.Found().at(0)));
  rig.start.FileBox_Click("Other.cfg");
  EXPECT_EQ(rig.model.General.RemoteIP, "127.0.0.1");
  rig.start.TakeSimulator(FoundSimulator(rig.finder.Found().at(0)));
  rig.start.CmdConfigure_Click();
  rig.model.General.RemoteIP = "10.0.0.99";  // by hand, in the configuration
  rig.start.Activate();
  rig.start.butOK_Click();
  EXPECT_NE(rig.model.General.RemoteIP, "10.0.0.7");
}

TEST_F(StartPresenterTest, ChoosingAnotherFileHidesTheCountdownButNotTheStart) {
  Begin(1);
  std::filesystem::copy_file("Test.cfg", "Other.cfg");
  rig.start.FileBox_Click("Other.cfg");
  EXPECT_FALSE(rig.start.View().CountdownVisible);
  CountdownTicks(3);
  rig.Set(300, 121100);
  CountdownTicks(17);
  EXPECT_TRUE(rig.run.Running());
  EXPECT_EQ(rig.model.ConfigFileName, "Other.cfg");
  EXPECT_EQ(rig.run.View().BoxCurrentConfig, "Other.cfg");
}

TEST_F(StartPresenterTest, LaterActivationsCountNothingDown) {
  Begin(9);
  rig.start.WaitForAutostart_Tick();
  EXPECT_TRUE(rig.sim.UdpOpen());
  rig.start.CmdConfigure_Click();
  EXPECT_FALSE(rig.autostart.enabled);
  EXPECT_FALSE(rig.sim.UdpOpen()) << "the configuration may give the link another address";
  rig.start.Activate();
  EXPECT_FALSE(rig.start.View().CountdownVisible);
  EXPECT_FALSE(rig.autostart.enabled);
  EXPECT_EQ(rig.start.View().FileName, "Test.cfg");
}

TEST_F(StartPresenterTest, SaysWhatIsMissing) {
  rig.start.Activate();  // neither start-up file nor configuration
  EXPECT_EQ(rig.start.View().FileName, "Default.cfg");
  EXPECT_EQ(rig.start.View().BoxAutoStartTime, 10);
  ASSERT_EQ(rig.boxes.shown.size(), 1u);
  EXPECT_TRUE(Begins(rig.boxes.shown[0], "Error Configuration file. "));
  rig.start.butOK_Click();
  EXPECT_FALSE(rig.run.Activated());
  rig.start.FileName_Change("");
  rig.start.butOK_Click();
  EXPECT_EQ(rig.boxes.shown.back(), "No Configuration file selected ");
}

TEST_F(StartPresenterTest, AnUnreadableFileStopsTheAutomaticStart) {
  Begin(1);
  CountdownTicks(3);
  rig.Set(300, 121100);
  std::filesystem::remove("Test.cfg");
  CountdownTicks(17);
  EXPECT_FALSE(rig.run.Activated());
  EXPECT_EQ(rig.boxes.shown.back(), "No or incorrect Start-Up file.File name is Case sensitive");
  EXPECT_FALSE(rig.autostart.enabled);
}

TEST_F(StartPresenterTest, AQuestionAboutTheFileHoldsTheCountdown) {
  Begin(1);
  CockpitRig writer;
  writer.model.ConfigFileName = "Old.cfg";
  writer.model.General.ConfigHeader = "another program";
  ConfigFile(writer.model, writer.boxes).SaveConfigFile();
  CountdownTicks(19);
  rig.boxes.whileAsking = [this] { CountdownTicks(100); };
  rig.start.FileBox_Click("Old.cfg");
  EXPECT_EQ(rig.start.View().BoxAutoStartTime, 1);
  EXPECT_EQ(rig.boxes.asked.size(), 1u);
}

}  // namespace
}  // namespace tvx
