// The row of drawn IO modules and engine cluster below the instruments.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "drawn/faces/units/UnitFace.h"
#include "virtualcockpit/Cockpit.h"

namespace tvx::vc {

// Hidden where the configuration names no such hardware.
class UnitShelf : public QWidget {
  Q_OBJECT
 public:
  UnitShelf(Cockpit& cockpit, QWidget* parent);
  void Advance();

 private:
  struct Place {
    UnitLine* line;
    drawn::UnitFace* face;
    std::function<void()> show;  // what the unit shows now
  };
  void Add(UnitLine& line, drawn::UnitFace* face, std::function<void()> show);

  std::vector<Place> places_;
};

}  // namespace tvx::vc
