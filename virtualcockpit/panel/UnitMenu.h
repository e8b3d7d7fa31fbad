// What is wrong with a drawn unit, and the menu that puts it wrong and right.
#pragma once

#include <QWidget>

#include "virtualcockpit/lines/UnitLine.h"

namespace tvx::vc {

// Empty where all is well.
QString TroubleOf(UnitLine& line);
// A right click on the widget offers faults, switching off, and unplugging.
void OfferUnitMenu(UnitLine& line, QWidget& widget);

}  // namespace tvx::vc
