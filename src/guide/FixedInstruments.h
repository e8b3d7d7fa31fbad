// Instruments that show what they are made for: their Functions follow from their type.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "config/Model.h"

namespace tvx {

// Gives every gauge of a fixed kind that has no setting yet the Functions and options of its type; how many.
// A radio that may be any one (IsRadio) stays as it is.
int FillFixedInstruments(ConfigModel& model);

// Whether the Gaugetype is a radio that can be COM, NAV or ADF, first or second.
bool IsRadio(int gaugetype);
struct RadioRole {
  std::string_view name;         // "COM 1"
  std::int16_t active, standby;  // standard Functions
  Byte sequence;
  std::int16_t kind;  // option bits
};
inline constexpr std::array<RadioRole, 5> kRadioRoles{{{"COM 1", 20, 22, 1, 0},
                                                       {"COM 2", 21, 23, 1, 0},
                                                       {"NAV 1", 24, 25, 1, 1},
                                                       {"NAV 2", 24, 25, 2, 1},
                                                       {"ADF", 69, 70, 1, 2}}};
// Makes the radio this one; `role` is an index of kRadioRoles. False for a gauge that is no radio.
bool GiveRadioRole(ConfigModel& model, int gaugeID, std::size_t role);
// Which one it is, "COM 1"; empty where that is not decided.
std::string RadioRoleOf(const ConfigModel& model, int gaugeID);

}  // namespace tvx
