// What users type: sensible, odd, empty, very long.
#pragma once

#include <QString>

#include "tools/monkey/Dice.h"

namespace tvx::monkey {

// For a field with this name: file names where it takes one, addresses where it takes one.
QString TextFor(const QString& field, const Dice& dice);
// What is typed where a file or folder is chosen.
QString FileChoice(const Dice& dice);
QString RandomLetter(const Dice& dice);

}  // namespace tvx::monkey
