// What holds for every form of the program: a name and a state for those who do not see it, and its place on
// the screen that there is. Run on several screens.
#include <QAccessible>
#include <QScreen>
#include <QScrollArea>

#include "tests/forms/EveryForm.h"
#include "ui/Indicators.h"

namespace tvx {
namespace {

std::string NameSeen(QWidget* widget) {
  const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
  return seen == nullptr ? std::string() : seen->text(QAccessible::Name).toStdString();
}

void ExpectNames(QWidget* form) {
  EXPECT_FALSE(form->windowTitle().isEmpty()) << "the window has no name";
  for (QWidget* control : form->findChildren<QWidget*>()) {
    const QString name = control->objectName();
    if (!control->isVisible() || control->window() != form || name.startsWith("qt_")) continue;
    const bool state = dynamic_cast<StateLamp*>(control) || dynamic_cast<Indicator*>(control);
    EXPECT_EQ(state, state && !control->accessibleDescription().isEmpty()) << name.toStdString();
    if (!state && (control->focusPolicy() == Qt::NoFocus || name.isEmpty())) continue;
    EXPECT_FALSE(NameSeen(control).empty()) << "no accessible name: " << name.toStdString();
  }
}

// Within the screen: what has no room scrolls.
void ExpectFits(QWidget* form) {
  const QSize room = form->screen()->availableGeometry().size();
  if (const auto* area = form->findChild<QScrollArea*>("ScrollForm", Qt::FindDirectChildrenOnly)) {
    const int wanted = std::min(room.width(), area->widget()->minimumSizeHint().width());
    EXPECT_GE(form->width(), wanted) << "it scrolls sideways beside free room";
  }
  EXPECT_LE(form->width(), room.width());
  EXPECT_LE(form->height(), room.height());
}

// Whoever goes round with Tab sees where he is, also where the form scrolls.
void ExpectFocusInSight(QWidget* form) {
  form->activateWindow();
  Settle();
  if (!form->isActiveWindow()) return;  // a form above it takes the keys
  for (int i = 0; i < 200 && form->focusWidget() != nullptr; ++i) {
    const QWidget* before = form->focusWidget();
    Press(form->focusWidget(), Qt::Key_Tab);
    if (form->focusWidget() == before) break;
    EXPECT_FALSE(form->focusWidget()->visibleRegion().isEmpty()) << Called(form->focusWidget());
  }
}

// The manual comes up by F1, without a network, at what it tells of each of these forms.
void ExpectHelp(Program& program, const std::set<QString>& forms) {
  PressHelp(EveryFormTest::Shown("frmMain"));
  HelpForm* help = program.Beside().Help();
  ASSERT_NE(help, nullptr);
  EXPECT_EQ(help->Headline(), "The start form");
  for (const QString& form : forms) {
    SCOPED_TRACE(form.toStdString());
    const auto [file, headline] = HelpForm::PlaceOf(form);
    EXPECT_FALSE(file.isEmpty()) << "HelpForm.cpp does not say where the manual tells of it";
    help->Open(file, headline);
    EXPECT_EQ(help->Headline(), headline);
    EXPECT_EQ(help->File(), file);
  }
}

TEST_F(EveryFormTest, HasNamesIsSeenWholeAndHelps) {
  std::set<QString> forms;
  for (const Row& row : kEveryForm) {
    program_ = std::make_unique<Program>(&boxes_, &keys_, nullptr, nullptr, &beacons_);
    program_->Begin();
    Settle();
    for (const Step& step : row.steps) {
      PressStep(step);
      Settle();
    }
    Settle();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible() || qobject_cast<Form*>(window) == nullptr) continue;
      SCOPED_TRACE(std::string(row.what) + ", " + window->objectName().toStdString());
      ExpectNames(window);
      ExpectFits(window);
      ExpectWholeAtAnySize(window);
      ExpectRoomForMoreWords(window);
      ExpectFocusInSight(window);
      forms.insert(window->objectName());
    }
    program_.reset();
  }
  ExpectHelp(Begin(), forms);
}

TEST_F(EveryFormTest, ComesBackWhereItWasLeft) {
  const auto openPlates = [this] {
    program_ = std::make_unique<Program>(&boxes_, &keys_, nullptr, nullptr, &beacons_);
    program_->Begin();
    Settle();
    for (const Step& step : kFiles) PressStep(step);
    Settle();
    return Shown("SaveConfig");
  };
  look::Apply(*qApp, look::Theme::Dark);
  QWidget* form = openPlates();
  const int room = form->screen()->availableGeometry().width();
  const QSize first = form->size();
  form->resize(std::min(form->width() + 20, room - 40), form->height() + 30);
  const QSize left = form->size();  // it may not be made that small
  EXPECT_NE(left, first);
  Control<QPushButton>(Shown("frmMain"), "cmdTheme")->click();
  program_.reset();
  look::Apply(*qApp, look::Theme::Dark);
  form = openPlates();
  EXPECT_EQ(form->size(), left);
  EXPECT_EQ(look::CurrentTheme(), look::Theme::Light);
  program_.reset();
  look::Apply(*qApp, look::Theme::Dark);
}

}  // namespace
}  // namespace tvx
