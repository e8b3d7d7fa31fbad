// The form frmAircraft: which configuration each aircraft wants.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTimer>
#include <QTreeWidget>

#include "simlink/aircraft/AircraftSwitch.h"
#include "ui/Form.h"

namespace tvx {

// What is changed is written at once.
class AircraftForm final : public Form {
  Q_OBJECT
 public:
  // `files`: the configurations of the working folder.
  AircraftForm(AircraftSwitch& aircraft, const QStringList& files, QWidget* parent);

  QCheckBox* CheckFollow;
  QLabel* LabelFlown;
  QTreeWidget* AircraftLines;
  QLineEdit* EditPattern;
  QComboBox* ComboFile;
  QPushButton *cmdAdd, *cmdRemove, *cmdUp;

 private:
  QLayout* MakeLine(const QStringList& files);
  QLayout* MakeButtons();
  void Add();
  void Remove();
  void MoveUp();
  void Change(const AircraftList& list, int chosen);
  void ShowList(int chosen);
  void ShowFlown();
  int Chosen() const { return AircraftLines->indexOfTopLevelItem(AircraftLines->currentItem()); }

  AircraftSwitch& aircraft_;
  QTimer timer_;
};

}  // namespace tvx
