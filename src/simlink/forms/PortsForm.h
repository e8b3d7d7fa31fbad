// The list of the simulator ports in use; a click on a line tells more of it.
#pragma once

#include <QLabel>

#include "simlink/PortListing.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class PortsForm : public Form {
  Q_OBJECT
 public:
  PortsForm(const ConfigModel& model, const SimCom& sim);

  // Reads the ports anew; the chosen line stays chosen.
  void Refresh();

 private:
  void ShowDetails();

  const ConfigModel& model_;
  const SimCom& sim_;
  QLabel* LabelPorts;
  QListWidget* OffsetsList;
  QLabel* LabelDetails;
};

}  // namespace tvx
