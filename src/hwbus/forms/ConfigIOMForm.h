// `ConfigIOM`: sets an IO module up, and finds the input to define by touching it.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <functional>

#include "hwbus/forms/InputForm.h"

namespace tvx {

class ConfigIOMForm : public Form {
  Q_OBJECT
 public:
  // `closed` is told when the form goes away.
  ConfigIOMForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes, std::function<void()> closed,
                QWidget* parent);
  ~ConfigIOMForm() override;

  IomInput Selected() const;
  InputForm* Editor() const { return editor_; }

 protected:
  void CloseAsked() override;
  void EscapePressed() override { CloseAsked(); }

 private:
  QWidget* MakeSetUp();
  void TakeReport(const IOModuleReport& report);
  void Select(const IomInput& input);
  void Edit();
  void FillList();
  QString LineFor(const IomInput& input) const;
  void Command(int command, std::int32_t value);

  ConfigModel& model_;
  IOModule& module_;
  MessageBoxes& boxes_;
  std::function<void()> closed_;
  IomTouch touch_;
  QListWidget* list_;
  QLabel* status_;
  QPointer<InputForm> editor_;
  QTimer poll_;
};

}  // namespace tvx
