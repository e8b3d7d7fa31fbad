// `frmStatusEC`: the engine cluster's needles as they stand, and its channels.
#pragma once

#include <QTimer>
#include <array>

#include "hwbus/cluster/EngineCluster.h"
#include "hwbus/cluster/forms/EngineClusterWindows.h"
#include "ui/Form.h"
#include "ui/Indicators.h"
#include "ui/Widgets.h"

namespace tvx {

class EngineClusterForm : public Form {
  Q_OBJECT
 public:
  EngineClusterForm(EngineCluster& cluster, const ConfigModel& model, EngineClusterWindows& windows);
  void ShowState();
  // The channels' captions, after they were edited.
  void ShowChannels();

 protected:
  void CloseAsked() override { hide(); }

 private:
  QLayout* MakeButtons();
  void ShowNeedles();

  EngineCluster& cluster_;
  const ConfigModel& model_;
  EngineClusterWindows& windows_;
  QLabel *status_ = nullptr, *boxUnitReply_ = nullptr;
  std::array<NeedleDial*, kECChannels> dials_{};
  std::array<QLabel*, kECChannels> captions_{};
  std::array<Reading*, kECChannels> values_{};
  QPushButton *cmdRun_ = nullptr, *cmdStop_ = nullptr, *cmdRecalibrate_ = nullptr;
  QTimer refresh_{this};
  unsigned turn_ = 0;
};

}  // namespace tvx
