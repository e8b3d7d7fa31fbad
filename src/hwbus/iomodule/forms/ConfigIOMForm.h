// `ConfigIOM`: sets an IO module up, and finds the input to define by touching it.
#pragma once

#include <QLineEdit>
#include <QListWidget>

#include "hwbus/iomodule/forms/InputForm.h"

namespace tvx {

class ConfigIOMForm : public Form {
  Q_OBJECT
 public:
  ConfigIOMForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes, QWidget* parent);
  void ConfigurationReplaced() override;

  IOModuleInput Selected() const;
  InputForm* Editor() const { return editor_.Get(); }

 private:
  QWidget* MakeSetUp();
  void TakeReport(const IOModuleReport& report);
  void Select(const IOModuleInput& input);
  void Edit();
  void Copy();
  void Paste();
  InputForm* MakeEditor(const IOModuleInput& input);
  void FillList();
  QString LineFor(const IOModuleInput& input) const;
  void Command(int command, std::int32_t value);

  ConfigModel& model_;
  IOModule& module_;
  MessageBoxes& boxes_;
  IOModuleTouch touch_;
  QListWidget* list_;
  QLabel* status_;
  FormHolder<InputForm> editor_;
  QPushButton* cmdPaste_;
  std::optional<IOModuleRecord> copied_;
  QTimer poll_{this};
};

}  // namespace tvx
