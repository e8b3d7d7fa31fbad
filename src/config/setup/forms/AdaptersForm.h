// The serial adapters of this computer, and the COM numbers that lead to them.
#pragma once

#include <QComboBox>
#include <QTreeWidget>
#include <vector>

#include "platform/ComPorts.h"
#include "platform/Host.h"
#include "platform/SerialDevices.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class AdaptersForm : public Form {
  Q_OBJECT
 public:
  AdaptersForm(SerialDevices& devices, const ComPorts& numbers, MessageBoxes& boxes, QWidget* parent);

 signals:
  void Assigned();  // a COM number leads elsewhere now

 private:
  void Refresh();
  void ShowChosen();
  void OfferNumber(const SerialDevice& device);
  void cmdAssign_Click();

  SerialDevices& devices_;
  const ComPorts& numbers_;
  MessageBoxes& boxes_;
  std::vector<SerialDevice> found_;
  QTreeWidget* ListAdapters;
  QComboBox* ComboAssign;
  QPushButton* cmdAssign;
  QLabel* LabelAdvice;
};

}  // namespace tvx
