// The windows on lines that are stuck, pulled, shared or not known yet; over real pseudo-terminals.
#include <signal.h>
#include <sys/file.h>

#include <QElapsedTimer>

#include "platform/linux/TerminationSignals.h"
#include "platform/qt/QtFdWatcher.h"
#include "tests/forms/FormsRig.h"
#include "tests/platform/PluggedIn.h"
#include "tests/platform/Pty.h"
#include "tests/platform/StoppedProcess.h"
#include "tests/platform/WaitUntil.h"

namespace tvx {
namespace {

struct LinesFormTest : FormsTest {
  LinesFormTest() {
    Configured([](ConfigModel& model) { model.General.ComPortGS = 6; });
    ScratchFolder::Link(6, line.Device());
    plugged.Add(line.Device()).allUsersSeen = true;
    devices_ = &plugged;
  }
  bool BusOpens() {
    return WaitUntil([this] { return program_->HardwareBus().Line().IsOpen(); });
  }
  QWidget* Adapters() {
    Click(Configuration(), "cmdAdapters");
    return Control<QWidget>(Configuration(), "frmAdapters");
  }
  bool Shows(QWidget* form, const char* label, const std::string& words) {
    return WaitUntil([=] { return Holds(LabelText(form, label), words); });
  }
  Pty line;
  PluggedIn plugged;
};

enum class Hang { Nothing, Opening, Everything };

TEST_F(LinesFormTest, NoButtonAndNoSignalWaitsForALine) {
  // How long it takes to press it in flight, and to end the program afterwards.
  const auto milliseconds = [this](const std::string& what, Hang hang) {
    BeginHalted();
    program_->Run().cmdRun_Click();
    EXPECT_TRUE(BusOpens());
    const TerminationSignals termination(std::make_unique<QtFdWatcher>(), [this] { program_->Exit(); });
    const pid_t keeper = StoppedProcess::KeeperOf(line.Device());
    EXPECT_GT(keeper, 0);
    std::unique_ptr<StoppedProcess> stuck;
    if (hang == Hang::Opening) stuck = std::make_unique<StoppedProcess>(StoppedProcess::ServerOf(keeper));
    if (hang == Hang::Everything) stuck = std::make_unique<StoppedProcess>(keeper);
    QElapsedTimer timer;
    timer.start();
    if (what == "SIGTERM") {
      raise(SIGTERM);
      EXPECT_TRUE(WaitUntil([this] { return program_->Ended(); }));
    } else {
      Click(Status(), what.c_str());
    }
    EXPECT_TRUE(what != "CmdConfig" || hang == Hang::Nothing ||
                Shows(Configuration(), "LabelBus", "waiting for " + line.Device()));
    program_.reset();
    const auto took = timer.elapsed();
    stuck.reset();
    EXPECT_TRUE(WaitUntil([this] { return StoppedProcess::KeeperOf(line.Device()) < 0; })) << what;
    return took;
  };
  for (const char* what : {"cmdStop", "CmdConfig", "CmdExit", "SIGTERM"}) {
    const auto usual = milliseconds(what, Hang::Nothing);
    for (const Hang hang : {Hang::Opening, Hang::Everything})
      EXPECT_LT(milliseconds(what, hang), usual + 1000) << what << ", " << static_cast<int>(hang);
  }
}

TEST_F(LinesFormTest, APulledCableAndItsReturnShowInEveryFormOfTheBus) {
  Configure();
  ASSERT_TRUE(Shows(Configuration(), "LabelBus", "COM 6 open"));
  const char* const names[] = {"frmInstrument", "frmCalibrate"};
  program_->Configuration().OpenGauge(7);
  Play(Configuration(), {{"cmdPlates"}, {"cmdTestGauges"}});
  line.Unplug();
  ScratchFolder::Link(6, "/dev/no-such-adapter");
  EXPECT_TRUE(Shows(Configuration(), "LabelBus", "unplugged"));
  EXPECT_TRUE(Shows(Configuration(), "LabelComAdvice", "waiting for it to come back"));
  for (const char* name : names)
    EXPECT_TRUE(Shows(Control<QWidget>(Configuration(), name), "LabelFormNotice", "unplugged")) << name;
  QWidget* console = Control<QWidget>(Configuration(), "frmTestGauges");
  EXPECT_TRUE(Shows(console, "LabelBus", "unplugged"));
  const Pty again;
  ScratchFolder::Link(6, again.Device());
  EXPECT_TRUE(Shows(Configuration(), "LabelBus", "COM 6 open"));
  EXPECT_TRUE(Shows(console, "LabelBus", "COM 6 open"));
  for (const char* name : names)
    EXPECT_FALSE(Control<QLabel>(Control<QWidget>(Configuration(), name), "LabelFormNotice")->isVisible());
}

TEST_F(LinesFormTest, SetKeepsTheAdapterThatTheNumberLeadsTo) {
  const std::string byName = "/dev/serial/by-id/usb-x", bySocket = "/dev/serial/by-path/usb-1";
  const struct {
    bool twin;
    std::string before, after;
  } cases[] = {{false, "", byName}, {true, "", bySocket}, {false, "/dev/elsewhere", "/dev/elsewhere"}};
  SerialDevice& adapter = plugged.devices[0];
  adapter.path = "/dev/ttyUSB0";  // what COM 5 means by itself
  adapter.byName = byName;
  adapter.bySocket = bySocket;
  for (const auto& each : cases) {
    std::filesystem::remove("comports/com5");
    if (!each.before.empty()) ScratchFolder::Link(5, each.before);
    adapter.twin = each.twin;
    Configure();
    Play(Configuration(), {{"ComboComGS", "5"}, {"cmdSetCommport"}});
    EXPECT_EQ(std::filesystem::read_symlink("comports/com5"), each.after);
    EXPECT_EQ(bool(Holds(LabelText(Adapters(), "LabelAdvice"), "known by its socket")), each.twin);
    program_.reset();
  }
}

TEST_F(LinesFormTest, BusyAndFreeNeverContradictEachOther) {
  const auto offered = [this] {
    auto* ports = Control<QComboBox>(Configuration(), "ComboComGS");
    return ports->itemText(ports->findData(6)).toStdString();
  };
  Configure();
  ASSERT_TRUE(BusOpens());
  plugged.devices[0].users = {"minicom (4711)", "this program"};
  Click(Adapters(), "CmdClose");
  program_->Configuration().Refresh();
  EXPECT_TRUE(Shows(Configuration(), "LabelComAdvice", "is open for minicom (4711) too; bytes get lost"));
  program_.reset();

  plugged.devices[0].users.clear();
  const int other = open(line.Device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_TRUE(WaitUntil([=] { return flock(other, LOCK_EX | LOCK_NB) == 0; }));
  Configure();
  ASSERT_TRUE(Shows(Configuration(), "LabelComAdvice", "COM 6 busy: another program uses"));
  program_->Configuration().Refresh();
  EXPECT_TRUE(Holds(offered(), "busy: a program of another user has it"));
  plugged.devices[0].users = {"minicom (4711)"};
  program_->Configuration().Refresh();
  EXPECT_TRUE(Shows(Configuration(), "LabelComAdvice", "COM 6 busy: minicom (4711) has " + line.Device()));
  close(other);
}

TEST_F(LinesFormTest, AnAdapterThatAnswersIsOfferedForItsGroup) {
  WriteConfig("Default.cfg", SmallModel());
  Configure();
  QWidget* form = Adapters();
  const auto ask = [&] {
    line.Collect();
    line.Got.clear();
    Click(form, "cmdAskRole");
    ASSERT_TRUE(WaitUntil([this] { return line.Collect().size() >= 6; }));
    EXPECT_EQ(line.Got[1], 10) << "an IO module is asked first";
    std::array<Byte, 25> report{0, 10, 10};
    report[24] = 0xFF;
    line.Send(report);
  };
  ask();
  ASSERT_TRUE(Shows(form, "LabelAdvice", "answers as an IO module"));
  auto* take = Control<QPushButton>(form, "cmdTakeRole");
  EXPECT_EQ(take->text(), "&Use for: IO module 1");
  ExpectWholeAtAnySize(form);
  take->click();
  EXPECT_EQ(program_->Model().General.ComPortIOM1, 6) << "the number that leads to it already";
  EXPECT_TRUE(WaitUntil(
      [this] { return program_->HardwareBus().Ports().PortOf(HardwareGroup::IOModule1).IsOpen(); }));
  ask();
  EXPECT_TRUE(Shows(form, "LabelAdvice", "in use for that already"));
  EXPECT_FALSE(take->isVisible());
}

}  // namespace
}  // namespace tvx
