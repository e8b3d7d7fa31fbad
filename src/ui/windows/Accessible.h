// Names for those who do not see the form: of every control that has none from a label or a text of its own.
#pragma once

#include <QWidget>

namespace tvx {

// Gives each control of the form that a user can reach, and each that shows a state, a name for screen
// readers: of the label before it, or of its tip. A name that was given stays.
void NameControls(QWidget* form);

}  // namespace tvx
