// Which serial port serves which hardware group: a line for each group.
#pragma once

#include <QComboBox>
#include <vector>

#include "config/Model.h"
#include "config/setup/PortAccess.h"
#include "ui/Widgets.h"

namespace tvx {

class ComPortsPanel : public QFrame {
  Q_OBJECT
 public:
  ComPortsPanel(ConfigModel& model, PortAccess& ports);
  // Shows the model and the devices as they are now. A choice that is not set yet stays, unless the port in
  // use has changed meanwhile.
  void ShowModel();
  // Shows what keeps a group from its port.
  void ShowAdvice();
  // True while a choice differs from what is set.
  bool Pending() const;
  QWidget* First() const { return lines_.front().choice; }

 signals:
  void PortSet();        // a group has another port now
  void AdaptersAsked();  // the user wants to see the list of adapters

 private:
  // The port in use, the ports to choose from, the button that takes the choice.
  struct Line {
    std::int16_t GeneralRecord::*field;
    QString group;
    QLabel* current;
    QComboBox* choice;
    QPushButton* set;
    int shown = -1;  // the number in use when the choices were last filled
  };
  int Chosen(const Line& line) const;
  int InUse(const Line& line) const { return std::max<int>(0, model_.General.*line.field); }
  std::vector<int> OfferedNumbers() const;
  void Fill(Line& line, const std::vector<std::pair<int, QString>>& offered);
  void OfferSet(const Line& line);
  void SetPort(std::size_t line);

  ConfigModel& model_;
  PortAccess& ports_;
  std::vector<Line> lines_;
  QLabel* LabelComAdvice;
};

}  // namespace tvx
