// `frmStatusIOM` and `frmstatusIOM2`: what an IO module reports, and which lamps are lit.
#pragma once

#include <QProgressBar>
#include <QTimer>
#include <array>
#include <functional>

#include "hwbus/iomodule/IOModule.h"
#include "ui/Form.h"
#include "ui/Indicators.h"
#include "ui/Widgets.h"

namespace tvx {

class IOModuleStatusForm : public Form {
  Q_OBJECT
 public:
  // `setUp` opens the module's set-up; without it there is no button for it.
  IOModuleStatusForm(IOModule& module, const ConfigModel& model, std::function<void()> setUp = {});
  void ShowState();

 protected:
  void CloseAsked() override { hide(); }

 private:
  QWidget* MakeSwitches();
  QWidget* MakeAnalogues();
  QWidget* MakeLamps();
  QLayout* MakeButtons();
  QString WordsFor(int definitionNr) const;

  IOModule& module_;
  const ConfigModel& model_;
  std::function<void()> setUp_;
  std::array<Indicator*, kIOModuleSwitches> switches_{};
  std::array<QProgressBar*, kIOModuleAnalogues> bars_{};
  std::array<Indicator*, kIOModuleLamps> lamps_{};
  QLabel* status_ = nullptr;
  QPushButton *cmdRun_ = nullptr, *cmdStop_ = nullptr;
  QTimer refresh_{this};
};

// "A1" for switch 0, "F8" for switch 47.
QString SwitchName(int index);

}  // namespace tvx
