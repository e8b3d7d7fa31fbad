// Pictures of an installation being set up from nothing, step by step: those of the manual.
#pragma once

#include <QDir>

namespace tvx::tools {

// Leaves "set-up-<step>.png" for every step.
void TakeSetUpPictures(const QDir& folder);

}  // namespace tvx::tools
