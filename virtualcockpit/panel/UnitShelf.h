// The row of drawn IO modules and engine cluster below the instruments.
#pragma once

#include <QWidget>
#include <vector>

#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/panel/UnitWidget.h"

namespace tvx::vc {

// Hidden where the configuration names no such hardware.
class UnitShelf : public QWidget {
  Q_OBJECT
 public:
  UnitShelf(Cockpit& cockpit, QWidget* parent);
  void Advance();

 private:
  std::vector<UnitWidget*> widgets_;
};

}  // namespace tvx::vc
