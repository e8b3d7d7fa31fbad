// `ConfigSwitch`: what a switch or one half of an encoder does.
#pragma once

#include <QCheckBox>
#include <QRadioButton>
#include <array>

#include "hwbus/iomodule/forms/InputForm.h"
#include "hwbus/iomodule/forms/KeytopEdit.h"

namespace tvx {

class ConfigSwitchForm : public InputForm {
  Q_OBJECT
 public:
  ConfigSwitchForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes, const IOModuleInput& input,
                   QWidget* parent);

 protected:
  bool ReadControls(IOModuleRecord& definition) const override;
  QString Preview(const IOModuleRecord& definition, const FunctionRecord* function) const override;
  void Stored(const IOModuleRecord& definition) override;

 private:
  void MakeAction();
  void MakeType();
  void NameData(const FunctionRecord* function) const;

  IOModule& module_;
  QComboBox* comboAction_ = nullptr;
  QCheckBox *CheckStepOffOn_ = nullptr, *CheckStepOnOff_ = nullptr;
  QLineEdit *BoxOffOnValue_ = nullptr, *boxOnOffValue_ = nullptr, *boxDebounceTime_ = nullptr;
  KeytopEdit *KeytopKeyOn_ = nullptr, *KeytopKeyOff_ = nullptr;
  std::array<QRadioButton*, 3> OptionSwitchType_{};
  QLabel* help_ = nullptr;
};

}  // namespace tvx
