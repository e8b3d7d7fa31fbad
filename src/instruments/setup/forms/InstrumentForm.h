// The dialog of one instrument, built from what the instrument says of itself.
#pragma once

#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QSpinBox>
#include <functional>
#include <vector>

#include "config/ModelWatcher.h"
#include "config/setup/ConfigurationWindows.h"
#include "instruments/setup/InstrumentPresenter.h"
#include "ui/Form.h"
#include "ui/Widgets.h"
#include "ui/search/SearchCombo.h"

namespace tvx {

class InstrumentForm : public Form {
  Q_OBJECT
 public:
  // Shows the gauge that `presenter` has open. `watcher` is told when its record was edited, read, moved or
  // removed.
  InstrumentForm(const ConfigModel& model, InstrumentPresenter& presenter, ConfigurationWindows& windows,
                 ModelWatcher& watcher, QWidget* parent);
  // Reads the record and the lists anew.
  void Refresh();
  void ConfigurationReplaced() override;

 protected:
  void AtEnd() override { presenter_.Cancel(); }

 private:
  QWidget* MakeSettingsPanel();
  QWidget* MakeLivePanel();
  QLayout* MakeButtons();
  int AddFunction(QGridLayout* grid, int row, int needle, const FunctionField& field);
  int AddPlate(QGridLayout* grid, int row, int needle, const PlateField& field);
  int AddOption(QGridLayout* grid, int row, const OptionField& field);
  int AddNumbers(QGridLayout* grid, int row);
  void AddTrial(QGridLayout* grid, int row);
  void ShowTrial();
  void CheckNewGaugeID();
  void ShowReadings();
  void ShowAnswer();
  void cmdRead_Click();
  void cmdSetNewID_Click();
  void cmdDelete_Click();

  const ConfigModel& model_;
  InstrumentPresenter& presenter_;
  ConfigurationWindows& windows_;
  ModelWatcher& watcher_;
  const int builtFor_;                             // the Gaugetype that the fields are of
  std::vector<std::function<void()>> refreshers_;  // one for each field
  QLabel *LabelGauge = nullptr, *LabelIdentity = nullptr, *LabelReadings = nullptr, *LabelTrialUnit = nullptr,
         *LabelNewGaugeID = nullptr;
  QLineEdit* boxNewGaugeID = nullptr;
  QPushButton* cmdSetNewGaugeID = nullptr;
  QComboBox* ComboTrial = nullptr;
  QSpinBox* boxTrialValue = nullptr;
};

}  // namespace tvx
