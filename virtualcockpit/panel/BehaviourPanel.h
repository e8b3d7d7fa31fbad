// The window in which the stand-ins are made to behave as real ones do, or better, or worse.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "virtualcockpit/Cockpit.h"

class QFormLayout;

namespace tvx::vc {

// Every setting counts at once, except where its tip says otherwise.
class BehaviourPanel : public QWidget {
  Q_OBJECT
 public:
  // `onYokes` is told of settings that concern the yokes' lines.
  BehaviourPanel(Cockpit& cockpit, std::function<void(const Traits&)> onYokes, QWidget* parent);
  // Shows how things stand; called when they may have changed otherwise.
  void Show();

 private:
  // One setting: an object name, what it is called, and what it means for a newcomer.
  struct Words {
    const char* name;
    QString text, tip;
  };
  void AddPreset(QFormLayout& form);
  void AddSimulator(QFormLayout& form);
  void AddNetwork(QFormLayout& form);
  void AddLines(QFormLayout& form);
  void AddPower(QFormLayout& form);
  void AddTarget(QFormLayout& form);
  void AddCheck(QFormLayout& form, const Words& words, bool& (*field)(Traits&));
  void AddNumber(QFormLayout& form, const Words& words, int least, int most, const QString& unit,
                 std::function<int(const Traits&)> get, std::function<void(Traits&, int)> set,
                 const QString& atLeast = {});
  void AddPercent(QFormLayout& form, const Words& words, double NetworkTraits::*field);
  void Change(const std::function<void(Traits&)>& change);

  Cockpit& cockpit_;
  std::function<void(const Traits&)> onYokes_;
  std::vector<std::function<void(const Traits&)>> show_;  // one for each control
};

}  // namespace tvx::vc
