// Values as a file's text, and back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Bytes.h"
#include "base/NumberText.h"

namespace tvx {

// Appends the shortest plain decimal notation that reads back to the same bits, never with an exponent.
// Infinities and NaN, which the file cannot hold, become 0.
void AppendValue(std::string& out, float value);
void AppendValue(std::string& out, double value);
void AppendValue(std::string& out, Byte value);
void AppendValue(std::string& out, std::int16_t value);
// Appends the text between double quotes. There is no escape for a double quote, so one inside becomes an
// apostrophe; NUL characters are left out.
void AppendValue(std::string& out, std::string_view text);

}  // namespace tvx
