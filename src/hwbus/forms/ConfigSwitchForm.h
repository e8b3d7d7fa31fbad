// `ConfigSwitch`: what a switch or one half of an encoder does.
#pragma once

#include <QCheckBox>
#include <QRadioButton>
#include <array>

#include "hwbus/forms/InputForm.h"
#include "hwbus/forms/KeytopEdit.h"

namespace tvx {

class ConfigSwitchForm : public InputForm {
  Q_OBJECT
 public:
  ConfigSwitchForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes, const IomInput& input,
                   Callbacks callbacks, QWidget* parent);

 protected:
  bool ReadControls(IomRecord& definition) const override;
  QString Preview(const IomRecord& definition, const FunctionRecord* function) const override;
  void Stored(const IomRecord& definition) override;

 private:
  void MakeAction();
  void MakeType();

  IOModule& module_;
  QComboBox* comboAction_ = nullptr;
  QCheckBox *CheckStepOffOn_ = nullptr, *CheckStepOnOff_ = nullptr;
  QLineEdit *BoxOffOnValue_ = nullptr, *boxOnOffValue_ = nullptr, *boxDebounceTime_ = nullptr;
  KeytopEdit *KeytopKeyOn_ = nullptr, *KeytopKeyOff_ = nullptr;
  std::array<QRadioButton*, 3> OptionSwitchType_{};
  QLabel* help_ = nullptr;
};

}  // namespace tvx
