// A Plate as its form's boxes hold it, and the rules between boxes and Plate.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "config/Records.h"

namespace tvx {

// The texts of the value boxes and the needle boxes. Box 0 is the minimum; a box with an empty value is not
// used.
struct PlateBoxes {
  static constexpr std::size_t kBoxes = 21;
  std::array<std::string, kBoxes> value;
  std::array<std::string, kBoxes> needle;
  bool operator==(const PlateBoxes&) const = default;
};

// The number that a value box holds; std::nullopt for an empty box and for text that is no number.
std::optional<double> BoxNumber(std::string_view text);
// The position that a needle box holds, rounded; std::nullopt for an empty box, and for text that is no
// position 0..1079.
std::optional<std::int16_t> NeedleInBox(std::string_view text);
// The last box whose value is a number; 0 where none beyond the minimum is.
std::size_t LastUsedBox(const PlateBoxes& boxes);

// A stored Plate in boxes, point for point as it was stored, whatever the order of the values. Left out are
// only the points behind the last one, which are all 0.
PlateBoxes BoxesOfPlate(const PlateRecord& plate);
// The boxes as a Plate's points: box b in entry b + 4, the minimum box in entry 2 as well, the last used box
// in entry 3. A box that is empty between used ones gets the point of the straight line over it, so that the
// lookup, which walks over all entries, finds them in rising order. A text that NeedleInBox does not take
// counts as 0.
PlateRecord PlateOfBoxes(const PlateBoxes& boxes, const std::string& name);
// What PlateOfBoxes puts in where the boxes are empty; empty texts for all others.
PlateBoxes FilledIn(const PlateBoxes& boxes);
// The first text that cannot be stored, in words; empty where all can.
std::string UnusableBox(const PlateBoxes& boxes);

// The words of the check: the first fault, or that there is none (`good` tells which). What cannot be stored
// is a fault as well.
struct PlateVerdict {
  bool good = false;
  std::string text;
};
PlateVerdict CheckPlateBoxes(const PlateBoxes& boxes);

// Fills the value boxes between the minimum and the last used box in equal steps. Where one of the two is
// missing, or both are equal, the boxes stay as they are and the verdict names the fault.
PlateVerdict FillLinear(PlateBoxes& boxes);

// Whether the file can hold the name and a list can show it: something beside blanks, no double quote, no
// control character.
bool PlateNameUsable(std::string_view name);

}  // namespace tvx
