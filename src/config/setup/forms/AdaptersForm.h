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
  struct Surroundings {
    SerialDevices& devices;
    std::function<std::vector<int>(const SerialDevice&)> comNumbersOf;  // those that lead to the adapter
    std::function<void()> changed;                                      // a COM number leads elsewhere now
  };
  AdaptersForm(Surroundings surroundings, MessageBoxes& boxes, QWidget* parent);

 protected:
  void CloseAsked() override { Unload(); }
  void EscapePressed() override { Unload(); }

 private:
  void Refresh();
  void ShowChosen();
  void OfferNumber(const SerialDevice& device);
  void cmdAssign_Click();

  Surroundings surroundings_;
  MessageBoxes& boxes_;
  std::vector<SerialDevice> found_;
  QTreeWidget* ListAdapters;
  QComboBox* ComboAssign;
  QPushButton* cmdAssign;
  QLabel* LabelAdvice;
};

}  // namespace tvx
