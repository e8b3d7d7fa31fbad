// The live table of the simulator ports in use; a click on a line tells more of it.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QTreeView>

#include "simlink/overview/forms/PortLines.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class PortsForm : public Form {
  Q_OBJECT
 public:
  static constexpr int kRefreshMs = 500;

  PortsForm(const ConfigModel& model, const SimCom& sim);

  // Takes the ports and their values anew, as it does by itself while it is shown. What is chosen stays so.
  void Refresh();

 private:
  QLayout* MakeSearch();
  void MakeTable();
  void FitColumns();
  void Search();
  void ShowDetails();
  void CopyChosen();

  const ConfigModel& model_;
  const SimCom& sim_;
  PortLines lines_;
  QTimer timer_{this};
  std::size_t fitted_ = 0;  // to so many ports
  QLabel *LabelPorts, *LabelCount, *LabelDetails;
  QLineEdit* SearchPorts;
  QTreeView* OffsetsList;
};

}  // namespace tvx
