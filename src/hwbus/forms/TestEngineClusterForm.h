// `frmTestEC`: moves single needles, sets the engine version and the backlight, recalibrates.
#pragma once

#include <QCheckBox>
#include <QRadioButton>
#include <QSlider>

#include "hwbus/EngineCluster.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class TestEngineClusterForm : public Form {
  Q_OBJECT
 public:
  TestEngineClusterForm(EngineCluster& cluster, ConfigModel& model);

 protected:
  void CloseAsked() override { hide(); }
  void EscapePressed() override { hide(); }

 private:
  QWidget* MakeNeedles();
  QWidget* MakeOptions();
  void OptionsChanged();

  EngineCluster& cluster_;
  ConfigModel& model_;
  QRadioButton *OptionSingleEngine_ = nullptr, *OptionDualEngine_ = nullptr;
  QCheckBox* CheckBacklight_ = nullptr;
};

}  // namespace tvx
