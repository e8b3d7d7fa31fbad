// The gauge test console.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QTimer>
#include <functional>

#include "config/ModelWatcher.h"
#include "config/setup/GaugeBusAccess.h"
#include "hwbus/gaugebus/GaugeConsolePresenter.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class TestGaugesForm : public Form {
  Q_OBJECT
 public:
  // `watcher` is told when a gauge was added to the configuration.
  TestGaugesForm(const ConfigModel& model, GaugeConsolePresenter& presenter, const GaugeBusAccess& bus,
                 ModelWatcher& watcher, QWidget* parent);
  void ShowView();

 protected:
  void AtEnd() override { presenter_.cmdStopPoll(); }

 private:
  QWidget* MakePollPanel();
  QWidget* MakeSendPanel();
  QWidget* MakeAddPanel();
  void TakeInputs();
  void Do(const std::function<void()>& operation);

  const ConfigModel& model_;
  GaugeConsolePresenter& presenter_;
  const GaugeBusAccess& bus_;
  ModelWatcher& watcher_;
  QTimer PollTimer{this};
  QLineEdit *ManualGaugeID = nullptr, *CommandNumber = nullptr, *CommandValue = nullptr,
            *boxAddModel = nullptr, *boxAddVersion = nullptr;
  QComboBox* ComboGaugeType = nullptr;
  QLabel *Text7 = nullptr, *BoxID = nullptr, *BoxType = nullptr, *BoxModel = nullptr, *boxVersion = nullptr,
         *boxName = nullptr, *ProgressIndicator = nullptr, *LabelBus = nullptr, *LabelTyped = nullptr;
  QPushButton *cmdPollGauge = nullptr, *cmdStopPoll = nullptr;
};

}  // namespace tvx
