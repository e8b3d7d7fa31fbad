// The end of the program: from every form, with every box, question and file chooser open, by a signal.
#include <QElapsedTimer>
#include <QTimer>
#include <csignal>

#include "platform/linux/TerminationSignals.h"
#include "platform/qt/QtFdWatcher.h"
#include "tests/forms/EveryForm.h"
#include "tests/forms/FakeTray.h"

namespace tvx {
namespace {

constexpr int kLongestMs = 3000;       // from the signal
constexpr int kLongestWalkMs = 60000;  // until it is raised
constexpr int kTooLate = 99;

struct EndTest : EveryFormTest {
  EndTest() {
    guard_.setSingleShot(true);
    QObject::connect(&guard_, &QTimer::timeout, [] { QCoreApplication::exit(kTooLate); });
  }
  static QByteArray FileText() {
    QFile file("Default.cfg");
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
  }
  // Presses the buttons one after the other, and raises the signal. The last press may stand in a question:
  // what follows it is called from the event loop of that question.
  void Walk(const Steps& steps, std::size_t at) {
    if (at == steps.size()) {
      if (hidden_) program_->Windows().HideWindows();
      guard_.start(kLongestMs);
      std::raise(hidden_ ? SIGINT : SIGTERM);
      return;
    }
    QTimer::singleShot(0, qApp, [this, &steps, at] { Walk(steps, at + 1); });
    PressStep(steps[at]);
  }
  // `hidden`: with every window behind the tray's icon.
  void EndsFrom(const Steps& steps, bool hidden = false) {
    const QByteArray before = FileText();
    program_ = std::make_unique<Program>(nullptr, &keys_, nullptr, nullptr, &beacons_);  // with real boxes
    const TerminationSignals termination(std::make_unique<QtFdWatcher>(), [this] { program_->Exit(); });
    guard_.start(kLongestWalkMs);
    program_->Windows().UseTray(std::make_unique<FakeTray>());
    program_->Begin();
    hidden_ = hidden;
    // The file is loaded from the event loop, and may raise a question of its own.
    QMetaObject::invokeMethod(
        qApp, [&] { Walk(steps, 0); }, Qt::QueuedConnection);
    EXPECT_EQ(QApplication::exec(), 0);
    guard_.stop();
    EXPECT_TRUE(program_->Ended());
    program_.reset();
    for (QWidget* window : QApplication::topLevelWidgets())
      EXPECT_FALSE(window->isVisible()) << window->objectName().toStdString();
    EXPECT_EQ(FileText(), before);
  }

  QTimer guard_;
  bool hidden_ = false;
};

TEST_F(EndTest, ComesFromEveryForm) {
  for (const Row& row : kEveryForm) {
    SCOPED_TRACE(row.what);
    EndsFrom(row.steps);
  }
}

TEST_F(EndTest, ComesWhileEverythingIsHidden) {
  for (const Steps& steps : {Steps{}, kRunning, kUnsaved}) EndsFrom(steps, true);
}

TEST_F(EndTest, AsksNobody) {
  const Row rows[] = {
      {"a message",
       kConfiguring + Steps{{"FrmMainConfigure", "cmdTestGauges"}, {"frmTestGauges", "cmdPollGauge"}}},
      {"what happened, in a file", kRunning + Steps{{"frmStatus", "cmdCockpit"}, {"frmCockpit", "cmdTrace"}}},
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
  Click(panel, "cmdTakeUnsaved");
  ASSERT_NE(Configuration(), nullptr);
  EXPECT_EQ(program_->Model().General.TransferInterval, 250);
  Click(Configuration(), "cmdSaveConfig");
  Click(Shown("SaveConfig"), "cmdSave");
  Shown("SaveConfig")->close();
  Configuration()->close();
  Settle();
  EXPECT_TRUE(boxes_.asked.empty());
  EXPECT_FALSE(QFile::exists("Default.cfg.unsaved"));
  EXPECT_FALSE(panel->isVisible());
}

TEST_F(EndTest, ComesWhileTheFirstFileIsAskedAbout) {
  Configured([](ConfigModel& foreign) { foreign.General.ConfigHeader = "made by something else"; });
  EndsFrom({});
}

}  // namespace
}  // namespace tvx
