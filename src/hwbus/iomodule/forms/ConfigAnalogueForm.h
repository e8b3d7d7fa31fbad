// `ConfigAnalogue`: how an axis is scaled; and the definition of a lamp.
#pragma once

#include <QCheckBox>
#include <array>

#include "hwbus/iomodule/forms/InputForm.h"

namespace tvx {

class ConfigAnalogueForm : public InputForm {
  Q_OBJECT
 public:
  ConfigAnalogueForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes, const IOModuleInput& input,
                     QWidget* parent);
  void TakeReport(const IOModuleReport& report) override;

 protected:
  bool ReadControls(IOModuleRecord& definition) const override;
  QString Preview(const IOModuleRecord& definition, const FunctionRecord* function) const override;

 private:
  void AddTake(const QString& caption, QLineEdit* box);

  QLineEdit *boxRawMinimum_ = nullptr, *boxRawCentre_ = nullptr, *boxRawMaximum_ = nullptr,
            *boxDeadBand_ = nullptr;
  int raw_ = 0;
};

class ConfigLampForm : public InputForm {
  Q_OBJECT
 public:
  ConfigLampForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes, const IOModuleInput& input,
                 QWidget* parent);

 protected:
  bool ReadControls(IOModuleRecord& definition) const override;
  QString Preview(const IOModuleRecord& definition, const FunctionRecord* function) const override;

 private:
  std::array<QCheckBox*, 4> CheckCondition_{};
  QLineEdit *boxPercentage_ = nullptr, *boxValue_ = nullptr;
};

}  // namespace tvx
