// The program where nobody looks at it: how its windows come up, the tray, notifications.
#include <QSettings>

#include "tests/forms/EveryForm.h"
#include "tests/forms/FakeTray.h"

namespace tvx {
namespace {

struct PresenceTest : EveryFormTest {
  // The next start, and OK pressed as the automatic start does.
  void StartAs(const char* atStart, bool withTray, bool pressed = true) {
    program_.reset();
    QSettings(".torvex-control-windows.ini", QSettings::IniFormat).setValue("atStart", atStart);
    program_ = std::make_unique<Program>(&boxes_, &keys_, nullptr, nullptr, &beacons_);
    auto tray = std::make_unique<FakeTray>();
    tray_ = tray.get();
    tray_->available = withTray;
    program_->Windows().UseTray(std::move(tray));
    program_->Begin();
    Settle();
    if (!pressed) return;
    program_->Start().butOK_Click();
    Settle();
  }
  static std::set<std::string> OnScreen(bool minimised) {
    std::set<std::string> names;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->isMinimized() == minimised)
        names.insert(window->objectName().toStdString());
    }
    return names;
  }

  const std::set<std::string> all_{"frmStatus", "frmStatusIOM", "frmStatusEC", "frmStatusFFB"};
  const std::set<std::string> none_;
  FakeTray* tray_ = nullptr;
};

TEST_F(PresenceTest, TheWindowsComeUpAsTheUserChose) {
  const struct {
    const char* atStart;
    bool withTray;
    std::set<std::string> open, minimised;
  } rows[] = {
      {"front", true, all_, none_},     {"nonsense", true, all_, none_},
      {"minimised", true, none_, all_}, {"hidden", false, none_, all_},  // nobody could get at it otherwise
      {"hidden", true, none_, none_},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.atStart) + (row.withTray ? "" : ", without a tray"));
    StartAs(row.atStart, row.withTray);
    EXPECT_EQ(OnScreen(false), row.open);
    EXPECT_EQ(OnScreen(true), row.minimised);
    ASSERT_NE(Status(), nullptr);
    EXPECT_EQ(Status()->isMinimized(), row.open.empty()) << "keystrokes go out while it is";
    EXPECT_EQ(tray_->shown.state, "Halted");
    tray_->actions.run();
    EXPECT_TRUE(program_->Run().Running());
    // A second start in the folder shows everything.
    program_->ShowItself();
    Settle();
    EXPECT_EQ(OnScreen(false), all_);
    EXPECT_FALSE(Status()->isMinimized());
  }
}

TEST_F(PresenceTest, WindowsAreHiddenAndShownFromTheTray) {
  StartAs("front", true);
  Click(Status(), "cmdMessages");
  tray_->actions.hide();
  EXPECT_EQ(OnScreen(false), none_);
  EXPECT_TRUE(Status()->isMinimized());
  EXPECT_FALSE(tray_->shown.mayHide);
  // Another configuration is taken up meanwhile: its windows stay away, too.
  program_->Run().PutAway();
  program_->Run().TakeUp("Default.cfg", true);
  Settle();
  EXPECT_EQ(OnScreen(false), none_);
  tray_->actions.show();
  Settle();
  std::set<std::string> shown = all_;
  shown.insert("frmMessages");
  EXPECT_EQ(OnScreen(false), shown);
  EXPECT_TRUE(program_->Run().Running());
  tray_->actions.stop();
  EXPECT_FALSE(program_->Run().Running());
  tray_->actions.exit();
  EXPECT_TRUE(program_->Ended());
  EXPECT_FALSE(tray_->up);
}

TEST_F(PresenceTest, WhoIsAwayIsToldOfABox) {
  StartAs("front", true);
  program_->Run().cmdDumpTVX_Click();
  EXPECT_TRUE(tray_->told.empty());
  tray_->actions.hide();
  program_->Run().cmdDumpTVX_Click();
  EXPECT_EQ(tray_->told, Texts{boxes_.shown.back()});
  tray_->actions.show();
  Click(Status(), "cmdMessages");
  const auto* list = Control<QListView>(Shown("frmMessages"), "ListMessages");
  const int last = list->model()->rowCount() - 1;
  EXPECT_TRUE(list->model()->index(last, 0).data().toString().contains("A dump is generated"));
}

// Hidden at the start: the start form does its work unseen, and comes when it is wanted.
TEST_F(PresenceTest, TheStartFormWorksUnseen) {
  StartAs("front", true);
  program_->Exit();
  StartAs("hidden", true, false);
  EXPECT_FALSE(Start()->isVisible());
  EXPECT_TRUE(program_->Timers().WaitForAutostart.Enabled());
  EXPECT_EQ(program_->Model().General.ComPortIOM1, 6) << "the configuration is loaded";
  program_->Start().WaitForAutostart_Tick();
  for (int tick = 0; tick < 20; ++tick) program_->Start().WaitForAutostart_Tick();
  program_->ShowItself();
  Settle();
  EXPECT_TRUE(Start()->isVisible());
  EXPECT_EQ(LabelText(Start(), "BoxAutoStartTime"), "11") << "showing it begins nothing anew";
  auto* choice = Control<QComboBox>(Start(), "ComboAtStart");
  EXPECT_EQ(choice->currentIndex(), 2);
  Press(choice, Qt::Key_Up);
  EXPECT_EQ(QSettings(".torvex-control-windows.ini", QSettings::IniFormat).value("atStart"), "minimised");
}

}  // namespace
}  // namespace tvx
