#include "tools/monkey/Options.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <cmath>
#include <limits>

#include "tools/monkey/Texts.h"

namespace tvx::monkey {
namespace {

// The program ends with these: Escape and the close button do as their Exit.
bool EndsWith(const QWidget& window) {
  const QString name = window.objectName();
  return name == "frmMain" || name == "frmStatus";
}

void AddKeys(QWidget& window, const std::string& on, Hands& hands, const Dice& dice,
             std::vector<Option>& options) {
  const QPointer<QWidget> in(&window);
  struct Stroke {
    const char* name;
    int key;
    Qt::KeyboardModifiers modifiers;
    double weight;
  };
  static const Stroke strokes[] = {{"Tab", Qt::Key_Tab, Qt::NoModifier, 0.3},
                                   {"Backtab", Qt::Key_Backtab, Qt::ShiftModifier, 0.1},
                                   {"Enter", Qt::Key_Return, Qt::NoModifier, 0.3},
                                   {"Space", Qt::Key_Space, Qt::NoModifier, 0.2},
                                   {"Down", Qt::Key_Down, Qt::NoModifier, 0.15},
                                   {"Up", Qt::Key_Up, Qt::NoModifier, 0.15},
                                   {"Home", Qt::Key_Home, Qt::NoModifier, 0.05},
                                   {"End", Qt::Key_End, Qt::NoModifier, 0.05},
                                   {"Page Down", Qt::Key_PageDown, Qt::NoModifier, 0.05},
                                   {"Ctrl+Z", Qt::Key_Z, Qt::ControlModifier, 0.03},
                                   {"Ctrl+C", Qt::Key_C, Qt::ControlModifier, 0.03}};
  for (const Stroke& stroke : strokes) {
    options.push_back({"press " + std::string(stroke.name) + on, stroke.weight, [&hands, in, stroke] {
                         const QString text = stroke.key == Qt::Key_Return  ? "\r"
                                              : stroke.key == Qt::Key_Space ? " "
                                              : stroke.key == Qt::Key_Tab   ? "\t"
                                                                            : QString();
                         hands.Key(in, stroke.key, stroke.modifiers, text);
                       }});
  }
  const QString letter = RandomLetter(dice);
  options.push_back({"press a letter" + on, 0.1, [&hands, in, letter] { hands.Type(in, letter); }});
  options.push_back({"press Alt and a letter" + on, 0.1, [&hands, in, letter] {
                       hands.Key(in, letter.toUpper().front().unicode(), Qt::AltModifier, letter);
                     }});
}

void AddFrame(QWidget& window, const std::string& on, Hands& hands, const Dice& dice,
              std::vector<Option>& options) {
  const QPointer<QWidget> in(&window);
  const bool box = qobject_cast<QDialog*>(&window) != nullptr;
  const double leaving = EndsWith(window) ? 0.01 : box ? 0.5 : 0.25;
  options.push_back({"close" + on, leaving, [&hands, in] { hands.Close(in); }});
  options.push_back({"press Escape" + on, leaving, [&hands, in] { hands.Key(in, Qt::Key_Escape); }});
  const QSize size(200 + dice.Below(1200, "width"), 150 + dice.Below(900, "height"));
  if (!box) options.push_back({"size" + on, 0.05, [in, size] { in->resize(size); }});
  const QPoint at(dice.Below(window.width(), "anywhere x"), dice.Below(window.height(), "anywhere y"));
  // Not where files could be moved, renamed or deleted.
  if (!box) options.push_back({"click anywhere" + on, 0.1, [&hands, in, at] { hands.Click(in, at); }});
}

// Only what leads to a choice or away: here a hand could reach files that are none of the life's.
void AddFileDialog(QFileDialog& dialog, const std::string& on, Hands& hands, const Dice& dice,
                   std::vector<Option>& options) {
  const QPointer<QWidget> in(&dialog);
  for (auto* button : dialog.findChildren<QPushButton*>()) {
    if (Usable(*button, dialog)) AddOptionsOf(*button, on, hands, dice, options);
  }
  const QPointer<QLineEdit> name = dialog.findChild<QLineEdit*>("fileNameEdit");
  const QString text = FileChoice(dice);
  if (name) options.push_back({"type " + text.toStdString() + on, 2, [name, text] { name->setText(text); }});
  for (const bool close : {false, true}) {
    options.push_back({(close ? "close" : "press Escape") + on, 0.3, [&hands, in, close] {
                         if (close) {
                           hands.Close(in);
                         } else {
                           hands.Key(in, Qt::Key_Escape);
                         }
                       }});
  }
}

void Normalise(std::vector<Option>& options, std::size_t from) {
  double sum = 0;
  for (std::size_t i = from; i < options.size(); ++i) sum += options[i].weight;
  for (std::size_t i = from; i < options.size(); ++i) options[i].weight /= sum;
}

}  // namespace

QString NameOf(const QWidget& window) {
  if (qobject_cast<const QFileDialog*>(&window) != nullptr) return "QFileDialog";
  return window.objectName().isEmpty() ? QString::fromLatin1(window.metaObject()->className())
                                       : window.objectName();
}

std::string OnForm(const QWidget& window) {
  return " on " + NameOf(window).toStdString();
}

std::vector<QWidget*> UsableWindows() {
  if (QWidget* popup = QApplication::activePopupWidget()) return {popup};
  std::vector<QWidget*> windows;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || window->windowHandle() == nullptr || Hands::Blocked(*window)) continue;
    if (window->windowType() == Qt::ToolTip || window->windowType() == Qt::Popup) continue;
    windows.push_back(window);
  }
  return windows;
}

bool Usable(const QWidget& control, const QWidget& window) {
  return control.window() == &window && control.isVisible() && control.isEnabled() &&
         !control.visibleRegion().isEmpty();
}

void AddOptionsOf(QWidget& window, Hands& hands, const Dice& dice, std::vector<Option>& options) {
  const std::size_t from = options.size();
  const std::string on = OnForm(window);
  if (auto* files = qobject_cast<QFileDialog*>(&window)) {
    AddFileDialog(*files, on, hands, dice, options);
  } else {
    AddOptionsOf(window, on, hands, dice, options);  // a menu, a list that pops up
    for (QWidget* control : window.findChildren<QWidget*>()) {
      if (Usable(*control, window)) AddOptionsOf(*control, on, hands, dice, options);
    }
    AddKeys(window, on, hands, dice, options);
    AddFrame(window, on, hands, dice, options);
  }
  Normalise(options, from);
}

const Option* Choose(const std::vector<Option>& options, const Dice& dice) {
  const Option* best = nullptr;
  double earliest = std::numeric_limits<double>::infinity();
  // Each has a time of its own to come up, the shorter the greater its weight; the first one is it. So what
  // comes and goes among the others changes the choice only where it is chosen itself.
  for (const Option& option : options) {
    if (option.weight <= 0) continue;
    const double time = -std::log(1 - dice.Of(option.words)) / option.weight;
    if (time >= earliest) continue;
    earliest = time;
    best = &option;
  }
  return best;
}

}  // namespace tvx::monkey
