// `ConfigIOM`: sets an IO module up, and finds the input to define by touching it.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <functional>

#include "hwbus/iomodule/forms/InputForm.h"

namespace tvx {

class ConfigIOMForm : public Form {
  Q_OBJECT
 public:
  // `closed` is told when the form goes away.
  ConfigIOMForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes, std::function<void()> closed,
                QWidget* parent);
  ~ConfigIOMForm() override;

  IOModuleInput Selected() const;
  InputForm* Editor() const { return editor_; }

 protected:
  void CloseAsked() override;
  void EscapePressed() override { CloseAsked(); }

 private:
  QWidget* MakeSetUp();
  void TakeReport(const IOModuleReport& report);
  void Select(const IOModuleInput& input);
  void Edit();
  void FillList();
  QString LineFor(const IOModuleInput& input) const;
  void Command(int command, std::int32_t value);

  ConfigModel& model_;
  IOModule& module_;
  MessageBoxes& boxes_;
  std::function<void()> closed_;
  IOModuleTouch touch_;
  QListWidget* list_;
  QLabel* status_;
  QPointer<InputForm> editor_;
  QTimer poll_;
};

}  // namespace tvx
