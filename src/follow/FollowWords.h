// The words in which stations speak.
#pragma once

#include <cstdint>
#include <string>

#include "config/Model.h"

namespace tvx {

// "0.3 s", "12 s", "5 min"
std::string AgeWords(std::int64_t ms);
// A value in at most six digits.
std::string NumberWords(double value);
// "Function 061"
std::string FunctionWords(int number);
// "00 0C 05 84 70 FF"
std::string HexWords(int gaugeID, int command, std::int32_t value);
// "IO module 1, switch B3"; the number itself where it is no input's.
std::string InputWords(int input);

}  // namespace tvx
