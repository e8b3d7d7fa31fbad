// What the program calls itself.
#pragma once

#include <string_view>

namespace tvx {

// The program's version. It must be 4 to 10 characters long: the configuration file's header is compared with
// it at a fixed position of 10 characters, of which at least four come before the header goes on with its six
// blanks.
inline constexpr std::string_view kProgramVersion = "1.0.0";
static_assert(kProgramVersion.size() >= 4 && kProgramVersion.size() <= 10);

// The program's title: 43 characters, the six trailing blanks included. The positions in the configuration
// file's header depend on this length.
inline constexpr std::string_view kProgramTitle = "Control Program for X-Plane Simulator      ";
static_assert(kProgramTitle.size() == 43);

}  // namespace tvx
