// Several named values in one text, "name=value;name=value".
#pragma once

#include <string>
#include <string_view>

namespace tvx {

// The value with this name; empty where there is none.
std::string NamedText(std::string_view all, std::string_view name);
// Gives `name`, in letters, another value; an empty one takes the name out. In the value a semicolon and a
// double quote become blanks. Whatever else stands in `all` stays as it is.
void SetNamedText(std::string& all, std::string_view name, std::string_view value);

}  // namespace tvx
