// The faces of the kinds of instruments. A new kind is a class here and a line in MakeFace.
#pragma once

#include "config/Model.h"
#include "virtualcockpit/panel/InstrumentWidget.h"

namespace tvx::vc {

// The widget that shows the instrument; `model` says what its faces mean. Never nothing.
InstrumentWidget* MakeFace(Device& device, const ConfigModel& model, QWidget* parent);

}  // namespace tvx::vc
