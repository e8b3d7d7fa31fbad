// Every form of the program, and what a user presses to get there.
#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <string>
#include <vector>

#include "tests/fakes/FakeKeyInjector.h"
#include "tests/forms/FormsRig.h"
#include "tests/platform/Pty.h"

namespace tvx {

struct Step {
  const char *form, *button;  // "F1" is the key; the name of a list: its line is chosen
  int line = 0;
};
using Steps = std::vector<Step>;

struct Row {
  const char* what;
  Steps steps;
};

inline Steps operator+(Steps first, const Steps& then) {
  first.insert(first.end(), then.begin(), then.end());
  return first;
}

inline const Steps kHalted{{"frmMain", "butOK"}};
inline const Steps kRunning = kHalted + Steps{{"frmStatus", "cmdRun"}};
inline const Steps kConfiguring{{"frmMain", "CmdConfigure"}};
inline const Steps kFromRun = kRunning + Steps{{"frmStatus", "CmdConfig"}};
inline const Steps kUnsaved = kConfiguring + Steps{{"FrmMainConfigure", "CmdSet250"}};
inline const Steps kFiles = kConfiguring + Steps{{"FrmMainConfigure", "cmdSaveConfig"}};
inline const Steps kFunctionEditor = kConfiguring + Steps{{"FrmMainConfigure", "cmdGetOffset"}};
inline const Steps kConsole = kConfiguring + Steps{{"FrmMainConfigure", "cmdTestXplaneInterface"}};
inline const Steps kSetUp = Steps{{"frmStatusIOM", "cmdConfigIOM"}};

inline const std::vector<Row> kEveryForm{
    {"start", {}},
    {"halted", kHalted},
    {"running", kRunning},
    {"help", kRunning + Steps{{"frmStatus", "F1"}}},
    {"ports", kRunning + Steps{{"frmStatus", "cmdShowPorts"}}},
    {"cockpit", kRunning + Steps{{"frmStatus", "cmdCockpit"}}},
    {"road of a value", kRunning + Steps{{"frmStatus", "cmdCockpit"}, {"frmCockpit", "cmdFollow"}}},
    {"messages", kRunning + Steps{{"frmStatus", "cmdMessages"}}},
    {"module", kRunning + Steps{{"frmStatus", "cmdShowIOM"}}},
    {"set-up of a module", kRunning + kSetUp},
    {"definition of an input", kHalted + kSetUp + Steps{{"ConfigIOM", "cmdEdit"}}},
    {"definition of an axis",
     kHalted + kSetUp + Steps{{"ConfigIOM", "ListInputs", 48}, {"ConfigIOM", "cmdEdit"}}},
    {"definition of a lamp",
     kHalted + kSetUp + Steps{{"ConfigIOM", "ListInputs", 56}, {"ConfigIOM", "cmdEdit"}}},
    {"cluster", kRunning + Steps{{"frmStatusEC", "cmdTestEC"}}},
    {"set-up of the cluster", kHalted + Steps{{"frmStatusEC", "cmdConfigEC"}}},
    {"Plates over it", kHalted + Steps{{"frmStatusEC", "cmdConfigEC"}, {"frmConfigEC", "cmdCalibrate0"}}},
    {"yoke", kRunning + Steps{{"frmStatusFFB", "cmdConfigY1"}}},
    {"configuration", kConfiguring},
    {"configuration after a run", kFromRun},
    {"files", kFiles},
    {"Functions", kFunctionEditor},
    {"list of Functions", kFunctionEditor + Steps{{"frmFunctionEditor", "cmdListFunctions"}}},
    {"test of a Function", kFunctionEditor + Steps{{"frmFunctionEditor", "cmdTestFunction"}}},
    {"console", kConsole},
    {"console, receiving", kConsole + Steps{{"frmTestXplaneInterface", "cmdStartUDP"}}},
    {"set-up guide", kConfiguring + Steps{{"FrmMainConfigure", "cmdGuide"}}},
    {"instrument", kConfiguring + Steps{{"FrmMainConfigure", "cmdNextWork"}}},
    {"Plates", kConfiguring + Steps{{"FrmMainConfigure", "cmdPlates"}}},
    {"gauge test", kConfiguring + Steps{{"FrmMainConfigure", "cmdTestGauges"}}},
    {"adapters", kConfiguring + Steps{{"FrmMainConfigure", "cmdAdapters"}}},
    {"aircraft", kConfiguring + Steps{{"FrmMainConfigure", "cmdAircraft"}}},
    {"module from the configuration", kConfiguring + Steps{{"FrmMainConfigure", "cmdGotoIOM"}} + kSetUp},
    {"cluster from the configuration", kConfiguring + Steps{{"FrmMainConfigure", "cmdGotoEC"}}},
    {"yokes from the configuration", kConfiguring + Steps{{"FrmMainConfigure", "cmdGotoFFB"}}},
};

inline void PressHelp(QWidget* form) {
  Press(form->focusWidget() == nullptr ? form : form->focusWidget(), Qt::Key_F1);
}

// A cockpit with everything in it: ports, modules, cluster and yokes.
class EveryFormTest : public FormsTest {
 public:
  static QWidget* Shown(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->objectName() == name) return window;
    }
    return nullptr;
  }

 protected:
  EveryFormTest() {
    ConfigModel model = SmallModel();
    model.General.ComPortIOM1 = 6;
    model.General.ComPortEC = 7;
    model.General.ComPortYoke1 = 9;
    model.EngineCluster[0] = {1, 1, 0};
    model.Gauges[8].GaugeType = 1;  // nobody has said yet what it shows
    WriteConfig("Default.cfg", model);
    QDir().mkdir("comports");
    ScratchFolder::Link(6, module_.Device());
    ScratchFolder::Link(7, cluster_.Device());
  }
  static void PressStep(const Step& step) {
    QWidget* form = Shown(step.form);
    if (form != nullptr && std::string(step.button) == "F1") return PressHelp(form);
    if (auto* list = form == nullptr ? nullptr : form->findChild<QAbstractItemView*>(step.button))
      return list->setCurrentIndex(list->model()->index(step.line, 0));
    auto* button = form == nullptr ? nullptr : form->findChild<QAbstractButton*>(step.button);
    if (button == nullptr) {
      ADD_FAILURE() << "no " << step.form << '/' << step.button;
      return;
    }
    button->click();
  }

  Pty module_, cluster_;
  FakeKeyInjector keys_;
};

}  // namespace tvx
