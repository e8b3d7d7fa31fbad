// `frmStatusEC`: the engine cluster's needles as they stand, and its channels.
#pragma once

#include <QTimer>
#include <array>
#include <functional>

#include "hwbus/EngineCluster.h"
#include "hwbus/forms/Indicators.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class EngineClusterForm : public Form {
  Q_OBJECT
 public:
  EngineClusterForm(EngineCluster& cluster, const ConfigModel& model, std::function<void()> showTest);
  void ShowState();

 protected:
  void CloseAsked() override { hide(); }
  void EscapePressed() override { hide(); }

 private:
  QLayout* MakeButtons(std::function<void()> showTest);

  EngineCluster& cluster_;
  QLabel *status_ = nullptr, *boxUnitReply_ = nullptr;
  std::array<NeedleDial*, kECChannels> dials_{};
  std::array<QLabel*, kECChannels> values_{};
  QPushButton *cmdRun_ = nullptr, *cmdStop_ = nullptr, *cmdRecalibrate_ = nullptr;
  QTimer refresh_;
};

}  // namespace tvx
