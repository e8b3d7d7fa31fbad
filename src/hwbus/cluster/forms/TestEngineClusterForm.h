// `frmTestEC`: moves single needles, sets the engine version and the backlight, recalibrates.
#pragma once

#include <QSlider>

#include "hwbus/cluster/EngineCluster.h"
#include "hwbus/cluster/forms/EngineClusterOptions.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class TestEngineClusterForm : public Form {
  Q_OBJECT
 public:
  TestEngineClusterForm(EngineCluster& cluster, EngineClusterPresenter& presenter);
  // After the options were edited.
  void Refresh() { options_->Refresh(); }

 protected:
  void CloseAsked() override { hide(); }

 private:
  QWidget* MakeNeedles();

  EngineCluster& cluster_;
  EngineClusterOptions* options_;
};

}  // namespace tvx
