// `frmStatusEC`: the engine cluster's needles as they stand, and its channels.
#pragma once

#include <QTimer>
#include <array>
#include <functional>

#include "hwbus/cluster/EngineCluster.h"
#include "ui/Form.h"
#include "ui/Indicators.h"
#include "ui/Widgets.h"

namespace tvx {

class EngineClusterForm : public Form {
  Q_OBJECT
 public:
  // What its buttons open.
  struct Ways {
    std::function<void()> setUp, test;
  };
  EngineClusterForm(EngineCluster& cluster, const ConfigModel& model, Ways ways);
  void ShowState();
  // The channels' captions, after they were edited.
  void ShowChannels();

 protected:
  void CloseAsked() override { hide(); }
  void EscapePressed() override { hide(); }

 private:
  QLayout* MakeButtons();

  EngineCluster& cluster_;
  const ConfigModel& model_;
  Ways ways_;
  QLabel *status_ = nullptr, *boxUnitReply_ = nullptr;
  std::array<NeedleDial*, kECChannels> dials_{};
  std::array<QLabel*, kECChannels> captions_{}, values_{};
  QPushButton *cmdRun_ = nullptr, *cmdStop_ = nullptr, *cmdRecalibrate_ = nullptr;
  QTimer refresh_;
};

}  // namespace tvx
