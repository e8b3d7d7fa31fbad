// The faces of the kinds of instruments. A new kind is a class in dials/ or radios/ and a line in
// MakeFace.cpp.
#pragma once

#include "config/Model.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

// The widget that shows the instrument, never nullptr; `model` says what its needles and lamps mean. An
// instrument without a face of its own gets one that lists its values.
InstrumentWidget* MakeFace(Device& device, const ConfigModel& model, QWidget* parent);

}  // namespace tvx::drawn
