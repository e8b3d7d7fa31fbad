// What a face shows beyond its scale: the unit, and the coloured ranges that a pilot looks for.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "config/Records.h"

namespace tvx::drawn {

struct FaceArc {
  enum class Colour { White, Green, Yellow, Red };
  double from, to;  // values; both the same: a radial line
  Colour colour;
};

struct FaceStyle {
  std::string_view unit;
  std::span<const FaceArc> arcs;
  bool compass = false;
  bool upDown = false;  // the face says UP and DN instead of signs
};

// By the Function's short name ("Indicated airspeed", "Oil pressure", ...). An unknown name has no unit and
// no arcs.
FaceStyle StyleOf(const FunctionRecord& function);

}  // namespace tvx::drawn
