#include "tools/monkey/Life.h"

#include <signal.h>
#include <unistd.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QScrollArea>
#include <QTimer>

#include "tools/monkey/Options.h"

namespace tvx::monkey {
namespace {

constexpr int kFaultStatus = 96;
constexpr int kStepsForAGoal = 20, kPatience = 80;
constexpr const char* kRunning = "running";  // a goal that is no form
constexpr std::int64_t kStallMs = 1500, kInoperableMs = 4000;

// Exit and window are the program's own way out, on the form that is its uppermost.
QWidget* MainWindowOf(const std::vector<QWidget*>& usable) {
  for (QWidget* window : usable) {
    if (window->objectName() == "frmMain" || window->objectName() == "frmStatus") return window;
  }
  return nullptr;
}

QWidget* Named(const std::vector<QWidget*>& windows, const QString& name) {
  for (QWidget* window : windows) {
    if (NameOf(*window) == name) return window;
  }
  return nullptr;
}

// Where the form scrolls, it is scrolled there.
QWidget* ControlOf(QWidget* window, const char* name) {
  auto* control = window == nullptr ? nullptr : window->findChild<QWidget*>(name);
  auto* area = window == nullptr ? nullptr : window->findChild<QScrollArea*>("ScrollForm");
  if (control != nullptr && area != nullptr && area->isAncestorOf(control))
    area->ensureWidgetVisible(control);
  return control != nullptr && Usable(*control, *window) ? control : nullptr;
}

void ClickLine(const QPointer<QWidget>& list, int row, Hands& hands) {
  const QPointer<QAbstractItemView> view = qobject_cast<QAbstractItemView*>(list.data());
  if (!view || view->model() == nullptr || row >= view->model()->rowCount()) return;
  const QModelIndex index = view->model()->index(row, 0);
  view->scrollTo(index);
  hands.Click(view->viewport(), view->visualRect(index).center());
}

}  // namespace

Life::Life(std::uint64_t seed, Surroundings surroundings) : seed_(seed), around_(surroundings) {
  const Dice dice(seed_, 0);
  ending_ = dice.Chance(0.4, "by signal") ? Ending::Signal
            : dice.Chance(0.5, "by Exit") ? Ending::Exit
                                          : Ending::Window;
  const double length = dice.Of("length");
  length_ = length < 0.1 ? dice.Below(15, "short") : 40 + dice.Below(length < 0.8 ? 160 : 320, "long");
  patience_ = length_ + kPatience;
  shownAtEnd_ = dice.OneOf(FormNames(), "shown at the end");
  operable_ = due_ = Watchdog::CountedMs();
  QTimer::singleShot(0, this, &Life::Step);
}

QString Life::Goal() const {
  if (step_ > length_) return shownAtEnd_;
  const Dice dice(seed_, static_cast<std::uint64_t>(step_ / kStepsForAGoal));
  return dice.Chance(0.35, "run") ? kRunning : dice.OneOf(FormNames(), "goal");
}

// Mostly faster than anybody, and now and then slow enough for the program's own clocks.
int Life::DelayMs(const Dice& dice) const {
  const double kind = dice.Of("pause");
  if (kind < 0.70) return dice.Below(4, "short pause");
  if (kind < 0.92) return 10 + dice.Below(40, "pause of a blink");
  if (kind < 0.99) return 100 + dice.Below(250, "pause of a breath");
  return 1100;
}

void Life::Step() {
  hands_.NextStep();
  if (around_.watchdog.EndExpected()) return;
  around_.watchdog.Alive();
  const std::int64_t late = Watchdog::CountedMs() - due_;
  if (late > kStallMs) around_.journal.Write("stall", std::to_string(late) + " ms after: " + last_);
  ++step_;
  const Dice dice(seed_, static_cast<std::uint64_t>(step_));
  const int delay = DelayMs(dice);
  due_ = Watchdog::CountedMs() + delay;
  QTimer::singleShot(delay, this, &Life::Step);
  Look();
  if (step_ > length_) {
    End(dice);
  } else {
    Live(dice);
  }
}

void Life::Do(const std::string& words, const std::function<void()>& act) {
  last_ = words;
  lastMayEnd_ = words.ends_with(" on frmMain") || words.ends_with(" on frmStatus");
  around_.journal.Write("do", std::to_string(step_) + " " + std::to_string(OwnMs()) + " ms: " + words);
  const int step = step_;
  act();
  if (step != step_)
    around_.journal.Write("back", "from " + std::to_string(step) + ", which had to wait: " + words);
  if (!around_.program.Ended() || around_.watchdog.EndExpected()) return;
  around_.watchdog.ExpectEnd();
  if (!lastMayEnd_) Fail("the program ends by itself");
}

void Life::Fail(const std::string& words) {
  around_.journal.Fault(words);
  _exit(kFaultStatus);
}

void Life::Look() {
  int visible = 0;
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || window->windowType() == Qt::ToolTip) continue;
    ++visible;
    const QString name = NameOf(*window);
    if (seen_.contains(name)) continue;
    seen_.insert(name);
    around_.journal.Write("form", name.toStdString());
  }
  LookForFaults(static_cast<int>(UsableWindows().size()), visible);
}

void Life::LookForFaults(int usable, int visible) {
  const std::int64_t now = Watchdog::CountedMs();
  if (usable > 0 || around_.program.Ended()) operable_ = now;
  if (now - operable_ < kInoperableMs) return;
  Fail(visible == 0 ? "the program lives without a window" : "no window takes input");
}

void Life::Live(const Dice& dice) {
  if (dice.Chance(0.06, "the world")) {
    return Do("the world", [&] { around_.journal.Write("world", around_.world.Happen(dice)); });
  }
  if (dice.Chance(step_ > length_ ? 0.6 : 0.35, "towards the goal") && StepTowardsGoal(dice)) return;
  std::vector<Option> options;
  for (QWidget* window : UsableWindows()) {
    const std::size_t from = options.size();
    AddOptionsOf(*window, hands_, dice, options);
    // Who works on a form mostly goes on with it.
    const double weight = (NameOf(*window) == Goal() ? 3 : 1) * (last_.ends_with(OnForm(*window)) ? 3 : 1);
    for (std::size_t i = from; i < options.size(); ++i) options[i].weight *= weight;
  }
  if (const Option* option = Choose(options, dice)) Do(option->words, option->act);
}

bool Life::StepTowardsGoal(const Dice& dice) {
  const std::vector<QWidget*> usable = UsableWindows();
  if (Named(usable, Goal()) != nullptr || (Goal() == kRunning && around_.program.Run().Running()))
    return false;
  const auto ways = WaysTowards(
      Goal(), [&](const Way& way) { return ControlOf(Named(usable, way.from), way.control) != nullptr; });
  if (!ways.empty()) {
    Go(dice.OneOf(ways, "which way"), dice);
    return true;
  }
  // Something stands in the way.
  if (usable.empty() || usable[0]->objectName() == "frmMain" || dice.Chance(0.5, "wait")) return false;
  ClearTheWay(dice);
  return true;
}

void Life::Go(const Way& way, const Dice& dice) {
  QWidget* window = Named(UsableWindows(), way.from);
  const QPointer<QWidget> control = ControlOf(window, way.control);
  const QPointer<QWidget> list = way.list == nullptr ? nullptr : ControlOf(window, way.list);
  Do(std::string("go by ") + way.control + " on " + way.from, [&] {
    if (list) ClickLine(list, way.first + dice.Below(way.last - way.first + 1, "line"), hands_);
    if (!control) return;
    if (const auto* view = qobject_cast<QAbstractItemView*>(control.data())) {
      ClickLine(control, dice.Below(view->model()->rowCount(), "line of the list"), hands_);
    } else {
      hands_.Click(control, control->rect().center());
    }
  });
}

// A signal comes from whatever form; the program's own ways out stand on two.
void Life::End(const Dice& dice) {
  const bool shown = Named(UsableWindows(), shownAtEnd_) != nullptr;
  if (ending_ == Ending::Signal && !shown && step_ <= patience_) return Live(dice);
  if (ending_ == Ending::Signal || step_ > patience_) {
    around_.journal.Write("ending", "SIGTERM");
    around_.watchdog.ExpectEnd();
    kill(getpid(), SIGTERM);
    return;
  }
  // What is held down may be Run or Configure: letting it go may lead to another form.
  if (QWidget* held = hands_.HeldOn()) return Do("let go" + OnForm(*held->window()), [&] { hands_.LetGo(); });
  if (QWidget* form = MainWindowOf(UsableWindows())) {
    EndByForm(*form);
  } else {
    ClearTheWay(dice);
  }
}

void Life::EndByForm(QWidget& form) {
  const bool start = form.objectName() == "frmMain";
  const QPointer<QWidget> button = ControlOf(&form, start ? "Exit" : "CmdExit");
  const std::string on = OnForm(form);
  if (ending_ == Ending::Exit && !button) Fail("there is no Exit" + on);
  around_.journal.Write("ending", (ending_ == Ending::Exit ? "Exit" : "window") + on);
  around_.watchdog.ExpectEnd();
  if (ending_ == Ending::Exit) {
    hands_.Click(button, button->rect().center());
  } else {
    hands_.Close(&form);
  }
}

// Takes away what keeps the user from the rest. A question may have to be answered with yes.
void Life::ClearTheWay(const Dice& dice) {
  const std::vector<QWidget*> usable = UsableWindows();
  if (usable.empty()) return;
  const auto modal =
      std::find_if(usable.begin(), usable.end(), [](const QWidget* w) { return w->isModal(); });
  const bool choose = modal == usable.end() || dice.Chance(0.3, "another");
  const QPointer<QWidget> window = choose ? dice.OneOf(usable, "which is in the way") : *modal;
  const std::string on = OnForm(*window);
  if (qobject_cast<QDialog*>(window.data()) != nullptr && dice.Chance(0.5, "accept")) {
    Do("press Enter" + on, [&] { hands_.Key(window, Qt::Key_Return, Qt::NoModifier, "\r"); });
  } else if (window->windowType() == Qt::Popup || dice.Chance(0.4, "by Escape")) {
    Do("press Escape" + on, [&] { hands_.Key(window, Qt::Key_Escape); });
  } else {
    Do("close" + on, [&] { hands_.Close(window); });
  }
}

void Life::Ended(int status) {
  around_.journal.Write("steps", std::to_string(step_));
  if (!around_.watchdog.EndExpected()) around_.journal.Fault("the program ends by itself, after: " + last_);
  if (status != 0) around_.journal.Fault("it ends with status " + std::to_string(status));
  if (!around_.program.Ended())
    around_.journal.Fault("the event loop is left, but the program has not ended");
}

}  // namespace tvx::monkey
