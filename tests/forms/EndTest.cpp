// The end of the program: from every form, with every box, question and file chooser open, by a signal.
#include <QElapsedTimer>
#include <QTimer>
#include <csignal>

#include "app/TerminationSignals.h"
#include "tests/fakes/FakeKeyInjector.h"
#include "tests/forms/FormsRig.h"
#include "tests/platform/Pty.h"

namespace tvx {
namespace {

constexpr int kLongestMs = 3000;
constexpr int kTooLate = 99;

struct Step {
  const char *form, *button;
};
using Steps = std::vector<Step>;

struct Row {
  const char* what;
  Steps steps;
};

Steps operator+(Steps first, const Steps& then) {
  first.insert(first.end(), then.begin(), then.end());
  return first;
}

class EndTest : public FormsTest {
 protected:
  EndTest() {
    ConfigModel model = SmallModel();
    model.General.ComPortIOM1 = 6;
    model.General.ComPortEC = 7;
    model.General.ComPortYoke1 = 9;
    model.EngineCluster[0] = {1, 1, 0};
    WriteConfig("Default.cfg", model);
    QDir().mkdir("comports");
    ScratchFolder::Link(6, module_.Device());
    ScratchFolder::Link(7, cluster_.Device());
  }

  static QByteArray FileText() {
    QFile file("Default.cfg");
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
  }
  static QWidget* Shown(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->objectName() == name) return window;
    }
    return nullptr;
  }
  // Presses the buttons one after the other, and raises the signal. The last press may stand in a question:
  // what follows it is called from the event loop of that question.
  void Walk(const Steps& steps, std::size_t at) {
    if (at == steps.size()) {
      std::raise(SIGTERM);
      return;
    }
    QTimer::singleShot(0, qApp, [this, &steps, at] { Walk(steps, at + 1); });
    QWidget* form = Shown(steps[at].form);
    auto* button = form == nullptr ? nullptr : form->findChild<QAbstractButton*>(steps[at].button);
    if (button == nullptr) {
      ADD_FAILURE() << "no " << steps[at].form << '/' << steps[at].button;
      return;
    }
    button->click();
  }
  void EndsFrom(const Steps& steps) {
    const QByteArray before = FileText();
    program_ = std::make_unique<Program>(nullptr, &keys_, nullptr, nullptr, &beacons_);  // with real boxes
    const TerminationSignals termination([this] { program_->Exit(); });
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, [] { QCoreApplication::exit(kTooLate); });
    guard.start(kLongestMs);
    program_->Begin();
    // The file is loaded from the event loop, and may raise a question of its own.
    QMetaObject::invokeMethod(
        qApp, [&] { Walk(steps, 0); }, Qt::QueuedConnection);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(program_->Ended());
    program_.reset();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      EXPECT_FALSE(window->isVisible()) << window->objectName().toStdString();
    }
    EXPECT_EQ(FileText(), before);
  }

  Pty module_, cluster_;
  FakeKeyInjector keys_;
};

const Steps kHalted{{"frmMain", "butOK"}};
const Steps kRunning = kHalted + Steps{{"frmStatus", "cmdRun"}};
const Steps kConfiguring{{"frmMain", "CmdConfigure"}};
const Steps kFromRun = kRunning + Steps{{"frmStatus", "CmdConfig"}};
const Steps kUnsaved = kConfiguring + Steps{{"FrmMainConfigure", "CmdSet250"}};
const Steps kFiles = kConfiguring + Steps{{"FrmMainConfigure", "cmdSaveConfig"}};
const Steps kFunctions = kConfiguring + Steps{{"FrmMainConfigure", "cmdGetOffset"}};
const Steps kConsole = kConfiguring + Steps{{"FrmMainConfigure", "cmdTestXplaneInterface"}};
const Steps kSetUp = Steps{{"frmStatusIOM", "cmdConfigIOM"}};

TEST_F(EndTest, ComesFromEveryForm) {
  const Row rows[] = {
      {"start", {}},
      {"halted", kHalted},
      {"running", kRunning},
      {"ports", kRunning + Steps{{"frmStatus", "cmdShowPorts"}}},
      {"module", kRunning + Steps{{"frmStatus", "cmdShowIOM"}}},
      {"set-up of a module", kRunning + kSetUp},
      {"definition of an input", kHalted + kSetUp + Steps{{"ConfigIOM", "cmdEdit"}}},
      {"cluster", kRunning + Steps{{"frmStatusEC", "cmdTestEC"}}},
      {"set-up of the cluster", kHalted + Steps{{"frmStatusEC", "cmdConfigEC"}}},
      {"Plates over it", kHalted + Steps{{"frmStatusEC", "cmdConfigEC"}, {"frmConfigEC", "cmdCalibrate0"}}},
      {"yoke", kRunning + Steps{{"frmStatusFFB", "cmdConfigY1"}}},
      {"configuration", kConfiguring},
      {"configuration after a run", kFromRun},
      {"files", kFiles},
      {"Functions", kFunctions},
      {"list of Functions", kFunctions + Steps{{"frmFunctionEditor", "cmdListFunctions"}}},
      {"test of a Function", kFunctions + Steps{{"frmFunctionEditor", "cmdTestFunction"}}},
      {"console", kConsole},
      {"console, receiving", kConsole + Steps{{"frmTestXplaneInterface", "cmdStartUDP"}}},
      {"Plates", kConfiguring + Steps{{"FrmMainConfigure", "cmdPlates"}}},
      {"gauge test", kConfiguring + Steps{{"FrmMainConfigure", "cmdTestGauges"}}},
      {"adapters", kConfiguring + Steps{{"FrmMainConfigure", "cmdAdapters"}}},
      {"module from the configuration", kConfiguring + Steps{{"FrmMainConfigure", "cmdGotoIOM"}} + kSetUp},
      {"cluster from the configuration", kConfiguring + Steps{{"FrmMainConfigure", "cmdGotoEC"}}},
      {"yokes from the configuration", kConfiguring + Steps{{"FrmMainConfigure", "cmdGotoFFB"}}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    EndsFrom(row.steps);
  }
}

TEST_F(EndTest, AsksNobody) {
  const Row rows[] = {
      {"a message",
       kConfiguring + Steps{{"FrmMainConfigure", "cmdTestGauges"}, {"frmTestGauges", "cmdPollGauge"}}},
      {"unsaved edits", kUnsaved},
      {"the question about them", kUnsaved + Steps{{"FrmMainConfigure", "CmdClose"}}},
      {"clear all gauges", kConfiguring + Steps{{"FrmMainConfigure", "cmdClearConfig"}}},
      {"load a file", kFiles + Steps{{"SaveConfig", "cmdLoad"}}},
      {"delete a file", kFiles + Steps{{"SaveConfig", "cmdDelete"}}},
      {"a number for the start-up", kFiles + Steps{{"SaveConfig", "cmdSetAsStartup"}}},
      {"import", kFiles + Steps{{"SaveConfig", "cmdImportPartial"}}},
      {"where to save the log", kConsole + Steps{{"frmTestXplaneInterface", "cmdSaveLog"}}},
      {"the simulator's folder", kConsole + Steps{{"frmTestXplaneInterface", "cmdImportLists"}}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    EndsFrom(row.steps);
  }
}

// The work of whoever is told to end is offered again, and the file itself stays as it was.
TEST_F(EndTest, UnsavedWorkIsOfferedAtTheNextStart) {
  EndsFrom(kUnsaved);
  EXPECT_TRUE(QFile::exists("Default.cfg.unsaved"));
  Begin();
  EXPECT_TRUE(program_->Timers().WaitForAutostart.Enabled()) << "an automatic start goes on";
  EXPECT_EQ(program_->Model().General.TransferInterval, SmallModel().General.TransferInterval);
  auto* panel = Control<QWidget>(Start(), "PanelUnsaved");
  EXPECT_TRUE(panel->isVisible());
  Control<QPushButton>(panel, "cmdTakeUnsaved")->click();
  ASSERT_NE(Configuration(), nullptr);
  EXPECT_EQ(program_->Model().General.TransferInterval, 250);
  Control<QPushButton>(Configuration(), "cmdSaveConfig")->click();
  Control<QPushButton>(Shown("SaveConfig"), "cmdSave")->click();
  Shown("SaveConfig")->close();
  Configuration()->close();
  Settle();
  EXPECT_TRUE(boxes_.asked.empty());
  EXPECT_FALSE(QFile::exists("Default.cfg.unsaved"));
  EXPECT_FALSE(panel->isVisible());
}

TEST_F(EndTest, ComesWhileTheFirstFileIsAskedAbout) {
  ConfigModel foreign = SmallModel();
  foreign.General.ConfigHeader = "made by something else";
  WriteConfig("Default.cfg", foreign);
  EndsFrom({});
}

}  // namespace
}  // namespace tvx
