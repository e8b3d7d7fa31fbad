// Who opened a port: the codes that `CurrentOpener` takes.
#pragma once

#include <cstdint>
#include <string>

namespace tvx::opener {

// A gauge has its GaugeID 0..255 as its code.
inline constexpr std::int16_t kIOModule1 = 1000;
inline constexpr std::int16_t kIOModule2 = 2000;
inline constexpr std::int16_t kInternal = 3000;  // the status form's own values
inline constexpr std::int16_t kEngineCluster = 4000;
inline constexpr std::int16_t kYokes = 5000;

// "ID:" and the GaugeID in three digits for codes below 256, "IOM#1", "IOM#2", "INTRN", "ENGCl" or "YOKES";
// empty for any other code.
std::string Text(std::int16_t code);

}  // namespace tvx::opener
