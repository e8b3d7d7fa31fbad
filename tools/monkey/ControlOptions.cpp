#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QTabBar>

#include "tools/monkey/Options.h"
#include "tools/monkey/Texts.h"

namespace tvx::monkey {
namespace {

struct Adding {
  const std::string& name;  // of the control
  const std::string& on;    // " on frmStatus"
  Hands& hands;
  const Dice& dice;
  std::vector<Option>& options;

  void Add(const char* verb, double weight, std::function<void()> act) const {
    options.push_back({std::string(verb) + " " + name + on, weight, std::move(act)});
  }
  // A draw of this control's own.
  int Below(int count, const char* draw) const { return dice.Below(count, name + on + draw); }
  QPoint Anywhere(const QWidget& widget, const char* draw) const {
    return {Below(widget.width(), draw), Below(widget.height(), (std::string(draw) + " y").c_str())};
  }
};

void AddButton(QAbstractButton& button, const Adding& to) {
  const QPointer<QWidget> it(&button);
  const QString name = button.objectName();
  const bool ends = name == "Exit" || name == "CmdExit";
  const QPoint middle = button.rect().center();
  Hands& hands = to.hands;
  to.Add("click", ends ? 0.01 : 1, [&hands, it, middle] { hands.Click(it, middle); });
  if (ends) return;
  to.Add("click twice", 0.1, [&hands, it, middle] { hands.DoubleClick(it, middle); });
  // It stays down until something else is clicked.
  to.Add("hold down", 0.05, [&hands, it, middle] { hands.Press(it, middle); });
}

// Clicks into a field, mostly in place of what it holds, and leaves it somehow.
void AddText(QWidget& field, const Adding& to) {
  const QPointer<QWidget> it(&field);
  const QString text = TextFor(field.objectName(), to.dice);
  const QPoint middle = field.rect().center();
  const bool all = field.objectName().contains("IP") || to.dice.Chance(0.8, "all of it");
  const int leave = to.Below(10, " leave");
  Hands& hands = to.hands;
  to.Add(("type \"" + text.left(40).toStdString() + "\" into").c_str(), 0.7, [=, &hands] {
    if (!hands.Click(it, middle)) return;
    if (all && !hands.Key(it, Qt::Key_A, Qt::ControlModifier)) return;
    if (text.isEmpty() && !hands.Key(it, Qt::Key_Delete)) return;
    if (!hands.Type(it, text)) return;
    if (leave < 3) hands.Key(it, Qt::Key_Return, Qt::NoModifier, "\r");
    if (leave >= 3 && leave < 6) hands.Key(it, Qt::Key_Tab, Qt::NoModifier, "\t");
  });
  to.Add("click with the right button", 0.02, [=, &hands] { hands.Click(it, middle, Qt::RightButton); });
}

void AddCombo(QComboBox& combo, const Adding& to) {
  const QPointer<QWidget> it(&combo);
  const QPoint arrow(combo.width() - 6, combo.height() / 2);
  const int steps = to.Below(7, " steps") - 3;
  Hands& hands = to.hands;
  to.Add("open", 0.5, [=, &hands] { hands.Click(it, arrow); });
  to.Add("choose with keys in", 0.4, [=, &hands] {
    it->setFocus();
    for (int i = std::abs(steps); i >= 0; --i) {
      if (!hands.Key(it, steps < 0 ? Qt::Key_Up : Qt::Key_Down)) return;
    }
    hands.Key(it, Qt::Key_Return, Qt::NoModifier, "\r");
  });
  to.Add("turn the wheel over", 0.1, [=, &hands] { hands.Wheel(it, arrow, steps); });
}

void AddView(QAbstractItemView& view, const Adding& to) {
  const QPointer<QAbstractItemView> it(&view);
  const QPointer<QWidget> port(view.viewport());
  const int rows = view.model() == nullptr ? 0 : view.model()->rowCount(view.rootIndex());
  const int row = to.Below(rows, " row");
  Hands& hands = to.hands;
  const auto click = [=, &hands](bool twice) {
    const QModelIndex index = it->model()->index(row, 0, it->rootIndex());
    it->scrollTo(index);
    const QPoint at = it->visualRect(index).center();
    if (!port || !port->rect().contains(at)) return;
    if (twice) {
      hands.DoubleClick(port, at);
    } else {
      hands.Click(port, at);
    }
  };
  if (rows > 0) {
    to.Add("click a line of", 1, [=] { click(false); });
    to.Add("click twice a line of", 0.4, [=] { click(true); });
  }
  const int keys[] = {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home, Qt::Key_Return};
  const int key = to.dice.OneOf(keys, to.name + " key");
  to.Add("use keys in", 0.3, [=, &hands] {
    it->setFocus();
    hands.Key(it.data(), key);
  });
}

// Presses, moves, lets go: a slider's handle, and what forms draw themselves.
void AddDrag(QWidget& widget, double weight, const Adding& to) {
  const QPointer<QWidget> it(&widget);
  const QPoint from = to.Anywhere(widget, " from"), over = to.Anywhere(widget, " over"),
               where = to.Anywhere(widget, " where");
  Hands& hands = to.hands;
  to.Add("drag", weight, [=, &hands] {
    if (hands.Press(it, from) && hands.Move(it, over) && hands.Move(it, where)) hands.Release(it, where);
  });
  to.Add("click into", weight, [=, &hands] { hands.Click(it, from); });
}

void AddSlider(QAbstractSlider& slider, const Adding& to) {
  const QPointer<QWidget> it(&slider);
  const int keys[] = {Qt::Key_Left, Qt::Key_Right,  Qt::Key_Home,
                      Qt::Key_End,  Qt::Key_PageUp, Qt::Key_PageDown};
  const int key = to.dice.OneOf(keys, to.name + " key");
  Hands& hands = to.hands;
  AddDrag(slider, 0.4, to);
  to.Add("use keys on", 0.3, [=, &hands] {
    it->setFocus();
    hands.Key(it.data(), key);
  });
}

void AddTabs(QTabBar& tabs, const Adding& to) {
  const QPointer<QWidget> it(&tabs);
  const QPoint at = tabs.tabRect(to.Below(tabs.count(), " tab")).center();
  Hands& hands = to.hands;
  to.Add("turn a page of", 2, [=, &hands] { hands.Click(it, at); });
}

void AddMenu(QMenu& menu, const Adding& to) {
  if (menu.actions().isEmpty()) return;
  const QPointer<QWidget> it(&menu);
  const QPoint at =
      menu.actionGeometry(menu.actions().at(to.Below(static_cast<int>(menu.actions().size()), " line")))
          .center();
  Hands& hands = to.hands;
  to.Add("click a line of", 2, [=, &hands] { hands.Click(it, at); });
}

// A button without a name goes by its words, a part of another control by that one's name.
std::string ControlName(const QWidget& control) {
  const QString name = control.objectName();
  if (!name.isEmpty() && !name.startsWith("qt_")) return name.toStdString();
  const auto* button = qobject_cast<const QAbstractButton*>(&control);
  if (button != nullptr && !button->text().isEmpty()) return button->text().toStdString();
  const QWidget* whole = control.parentWidget();
  return (whole == nullptr ? std::string() : whole->objectName().toStdString() + "'s ") +
         control.metaObject()->className();
}

bool PartOfAnother(const QWidget& control) {
  return qobject_cast<const QScrollBar*>(&control) != nullptr ||
         qobject_cast<const QHeaderView*>(&control) != nullptr ||
         control.objectName().startsWith("qt_scrollarea");
}

}  // namespace

void AddOptionsOf(QWidget& control, const std::string& on, Hands& hands, const Dice& dice,
                  std::vector<Option>& options) {
  const std::string name = ControlName(control);
  const Adding to{name, on, hands, dice, options};
  if (auto* button = qobject_cast<QAbstractButton*>(&control)) return AddButton(*button, to);
  if (qobject_cast<QLineEdit*>(&control) != nullptr || qobject_cast<QPlainTextEdit*>(&control) != nullptr)
    return AddText(control, to);
  if (auto* combo = qobject_cast<QComboBox*>(&control)) return AddCombo(*combo, to);
  if (auto* header = qobject_cast<QHeaderView*>(&control)) return AddDrag(*header->viewport(), 0.03, to);
  if (PartOfAnother(control)) return;
  if (auto* view = qobject_cast<QAbstractItemView*>(&control)) return AddView(*view, to);
  if (auto* slider = qobject_cast<QAbstractSlider*>(&control)) return AddSlider(*slider, to);
  if (auto* tabs = qobject_cast<QTabBar*>(&control)) return AddTabs(*tabs, to);
  if (auto* menu = qobject_cast<QMenu*>(&control)) return AddMenu(*menu, to);
  if (qobject_cast<QAbstractSpinBox*>(&control) != nullptr) return AddDrag(control, 0.2, to);
  if (control.isWindow()) return;
  const bool drawn = control.focusPolicy() != Qt::NoFocus && !control.objectName().isEmpty() &&
                     qobject_cast<QLabel*>(&control) == nullptr &&
                     qobject_cast<QProgressBar*>(&control) == nullptr;
  if (drawn) AddDrag(control, 0.2, to);
}

}  // namespace tvx::monkey
