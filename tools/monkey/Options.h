// What a user could do next, and the choice among it.
#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "tools/monkey/Dice.h"
#include "tools/monkey/Hands.h"

namespace tvx::monkey {

struct Option {
  std::string words;  // names it: "click cmdRun on frmStatus"
  double weight;      // how likely, against the others
  std::function<void()> act;
};

// The windows that take input now: a pop-up alone, or those that no modal window blocks.
std::vector<QWidget*> UsableWindows();
// The window's name; its class where it has none.
QString NameOf(const QWidget& window);
// " on frmStatus": how words on it end.
std::string OnForm(const QWidget& window);
// Whether the user may use the control: to be seen, enabled, and of this window.
bool Usable(const QWidget& control, const QWidget& window);

// Appends what can be done with each control of the window, and with the window itself. Their weights make 1
// together.
void AddOptionsOf(QWidget& window, Hands& hands, const Dice& dice, std::vector<Option>& options);
// The same for one control (ControlOptions.cpp).
void AddOptionsOf(QWidget& control, const std::string& on, Hands& hands, const Dice& dice,
                  std::vector<Option>& options);
// One of them, by their weights; nullptr where there is none.
const Option* Choose(const std::vector<Option>& options, const Dice& dice);

}  // namespace tvx::monkey
