// The needles that can be calibrated.
#pragma once

#include <vector>

#include "config/plates/PlatePresenter.h"

namespace tvx {

// Every needle on the gauge bus that has a Plate, and the channels of the engine cluster where it is
// configured.
std::vector<CalibrationTarget> CalibrationTargets(const ConfigModel& model);

}  // namespace tvx
