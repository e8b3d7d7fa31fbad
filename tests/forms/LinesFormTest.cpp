// The windows on lines that are stuck, pulled, shared or not known yet; over real pseudo-terminals.
#include <signal.h>
#include <sys/file.h>

#include <QComboBox>
#include <QElapsedTimer>
#include <QTreeWidget>
#include <memory>

#include "platform/linux/TerminationSignals.h"
#include "platform/linux/serial/LinuxSerialDevices.h"
#include "platform/qt/QtFdWatcher.h"
#include "tests/forms/FormsRig.h"
#include "tests/platform/Pty.h"
#include "tests/platform/StoppedProcess.h"
#include "tests/platform/WaitUntil.h"

namespace tvx {
namespace {

// Adapters as a test wants them; assigning makes the real link.
struct Plugged final : SerialDevices {
  std::vector<SerialDevice> devices;
  std::vector<SerialDevice> List() const override { return devices; }
  bool Assign(int number, const SerialDevice& device, std::string& error) override {
    return LinuxSerialDevices().Assign(number, device, error);
  }
};

struct LinesFormTest : FormsTest {
  LinesFormTest() {
    SetBus(6);
    ScratchFolder::Link(6, line.Device());
    plugged.devices.resize(1);
    plugged.devices[0].path = line.Device();
    plugged.devices[0].mayOpen = plugged.devices[0].allUsersSeen = true;
    devices_ = &plugged;
  }
  static void SetBus(std::int16_t number) {
    ConfigModel model = SmallModel();
    model.General.ComPortGS = number;
    WriteConfig("Default.cfg", model);
  }
  bool BusOpens() {
    return WaitUntil([this] { return program_->HardwareBus().Line().IsOpen(); });
  }
  void Configure() {
    Begin();
    Control<QPushButton>(Start(), "CmdConfigure")->click();
    Settle();
  }
  QWidget* Adapters() {
    Control<QPushButton>(Configuration(), "cmdAdapters")->click();
    return Control<QWidget>(Configuration(), "frmAdapters");
  }
  bool Shows(QWidget* form, const char* label, const std::string& words) {
    return WaitUntil([=] { return LabelText(form, label).find(words) != std::string::npos; });
  }
  Pty line;
  Plugged plugged;
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
      Control<QPushButton>(Status(), what.c_str())->click();
      Settle();
    }
    if (what == "CmdConfig" && hang != Hang::Nothing) {
      EXPECT_TRUE(Shows(Configuration(), "LabelBus", "waiting for " + line.Device()));
    }
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
  Control<QPushButton>(Configuration(), "cmdPlates")->click();
  Control<QPushButton>(Configuration(), "cmdTestGauges")->click();
  line.Unplug();
  ScratchFolder::Link(6, "/dev/no-such-adapter");
  EXPECT_TRUE(Shows(Configuration(), "LabelBus", "unplugged"));
  EXPECT_TRUE(Shows(Configuration(), "LabelComAdvice", "waiting for it to come back"));
  for (const char* name : names)
    EXPECT_TRUE(Shows(Control<QWidget>(Configuration(), name), "LabelFormNotice", "unplugged")) << name;
  EXPECT_TRUE(Shows(Control<QWidget>(Configuration(), "frmTestGauges"), "LabelBus", "unplugged"));
  const Pty again;
  ScratchFolder::Link(6, again.Device());
  EXPECT_TRUE(Shows(Configuration(), "LabelBus", "COM 6 open"));
  EXPECT_TRUE(Shows(Control<QWidget>(Configuration(), "frmTestGauges"), "LabelBus", "COM 6 open"));
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
    auto* ports = Control<QComboBox>(Configuration(), "ComboComGS");
    ports->setCurrentIndex(ports->findData(5));
    Control<QPushButton>(Configuration(), "cmdSetCommport")->click();
    EXPECT_EQ(std::filesystem::read_symlink("comports/com5"), each.after);
    const bool said = LabelText(Adapters(), "LabelAdvice").find("known by its socket") != std::string::npos;
    EXPECT_EQ(said, each.twin);
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
  Control<QPushButton>(Adapters(), "CmdClose")->click();
  program_->Configuration().Refresh();
  EXPECT_TRUE(Shows(Configuration(), "LabelComAdvice", "is open for minicom (4711) too; bytes get lost"));
  program_.reset();

  plugged.devices[0].users.clear();
  const int other = open(line.Device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_TRUE(WaitUntil([=] { return flock(other, LOCK_EX | LOCK_NB) == 0; }));
  Configure();
  ASSERT_TRUE(Shows(Configuration(), "LabelComAdvice", "COM 6 busy: another program uses"));
  program_->Configuration().Refresh();
  EXPECT_NE(offered().find("busy: a program of another user has it"), std::string::npos) << offered();
  plugged.devices[0].users = {"minicom (4711)"};
  program_->Configuration().Refresh();
  EXPECT_TRUE(Shows(Configuration(), "LabelComAdvice", "COM 6 busy: minicom (4711) has " + line.Device()));
  close(other);
}

TEST_F(LinesFormTest, AnAdapterThatAnswersIsOfferedForItsGroup) {
  SetBus(0);
  Configure();
  QWidget* form = Adapters();
  Control<QPushButton>(form, "cmdAskRole")->click();
  ASSERT_TRUE(WaitUntil([this] { return line.Collect().size() >= 6; }));
  EXPECT_EQ(line.Got[1], 10) << "an IO module is asked first";
  std::array<Byte, 25> report{0, 10, 10};
  report[24] = 0xFF;
  line.Send(report);
  ASSERT_TRUE(Shows(form, "LabelAdvice", "answers as an IO module"));
  auto* take = Control<QPushButton>(form, "cmdTakeRole");
  EXPECT_EQ(take->text(), "&Use for: IO module 1");
  ExpectNothingClipped(form);
  take->click();
  EXPECT_EQ(program_->Model().General.ComPortIOM1, 6) << "the number that leads to it already";
  EXPECT_TRUE(WaitUntil(
      [this] { return program_->HardwareBus().Ports().PortOf(HardwareGroup::IOModule1).IsOpen(); }));
  line.Collect();
  line.Got.clear();
  Control<QPushButton>(form, "cmdAskRole")->click();
  ASSERT_TRUE(WaitUntil([this] { return line.Collect().size() >= 6; }));
  line.Send(report);
  EXPECT_TRUE(Shows(form, "LabelAdvice", "in use for that already"));
  EXPECT_FALSE(take->isVisible());
}

}  // namespace
}  // namespace tvx
