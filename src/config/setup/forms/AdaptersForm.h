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

  // What is known of the chosen adapter, that was asked.
  struct Role {
    QString words;
    QString group;      // the hardware group that it is for; or empty
    int comNumber = 0;  // the number that this group has, without an adapter; otherwise 0
    bool asking = false;
  };
  void ShowRole(const Role& role);

 signals:
  void RoleAsked(const SerialDevice& adapter);  // what hangs on it
  void RoleNotAsked();                          // not any more
  void RoleTaken(int comNumber);                // its group is to have this number, which leads to it now
  void Assigned();                              // a COM number leads elsewhere now

 private:
  void Refresh();
  void ShowChosen();
  void OfferNumber(const SerialDevice& device);
  const SerialDevice* Chosen() const;
  bool cmdAssign_Click();  // false where the adapter could not be assigned
  void cmdAskRole_Click();
  void cmdTakeRole_Click();

  SerialDevices& devices_;
  const ComPorts& numbers_;
  MessageBoxes& boxes_;
  std::vector<SerialDevice> found_;
  QTreeWidget* ListAdapters;
  QComboBox* ComboAssign;
  QPushButton *cmdAssign, *cmdAskRole, *cmdTakeRole;
  bool asking_ = false;
  QString group_;  // that the chosen adapter is for, as far as it was asked
  QLabel* LabelAdvice;
};

}  // namespace tvx
