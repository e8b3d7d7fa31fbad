// The serial adapters of this computer, and the COM numbers that lead to them.
#pragma once

#include <QComboBox>
#include <QTreeWidget>
#include <functional>
#include <vector>

#include "platform/Host.h"
#include "platform/SerialDevices.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class AdaptersForm : public Form {
  Q_OBJECT
 public:
  // `changed`: a COM number leads elsewhere now.
  AdaptersForm(SerialDevices& devices, MessageBoxes& boxes, std::function<void()> changed, QWidget* parent);

 protected:
  void CloseAsked() override { Unload(); }
  void EscapePressed() override { Unload(); }

 private:
  void Refresh();
  void ShowChosen();
  void cmdAssign_Click();

  SerialDevices& devices_;
  MessageBoxes& boxes_;
  std::function<void()> changed_;
  std::vector<SerialDevice> found_;
  QTreeWidget* ListAdapters;
  QComboBox* ComboAssign;
  QPushButton* cmdAssign;
  QLabel* LabelAdvice;
};

}  // namespace tvx
