// Ready faces: what usual needle gauges show, each with its Function and its points, so that nobody has to
// calibrate one from nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/Model.h"

namespace tvx {

struct FaceMark {
  double value = 0;           // of the Function
  std::int16_t position = 0;  // of the needle that points to it, 0..1079
  bool operator==(const FaceMark&) const = default;
};

struct ReadyFace {
  static constexpr std::size_t kMostMarks = 21;  // what a Plate has room for

  std::string name;             // "Airspeed 40-200 kt"
  std::int16_t function = 0;    // the number of its Function, and
  std::string functionName{};   // that one's short name: numbers mean other things elsewhere
  std::vector<FaceMark> marks;  // 2 to kMostMarks, rising values
  bool operator==(const ReadyFace&) const = default;
};

// Those that come with the program: a light aircraft's, to begin with.
const std::vector<ReadyFace>& BuiltInFaces();
// One of them as a Plate; an empty Plate where none has the name.
PlateRecord BuiltInPlate(std::string_view name);

// The points as a Plate of the face's name.
PlateRecord PlateOfFace(const ReadyFace& face);
// The points of a Plate, without those behind the last one.
std::vector<FaceMark> MarksOf(const PlateRecord& plate);

// The number of the face's Function in this configuration: under its own number or another one, by its short
// name or by what it reads. A standard one that the configuration does not have is defined, under its number
// or, where that means something else, under the first free one of the user's. 0 where there is none.
int FunctionForFace(ConfigModel& model, const ReadyFace& face);
// The same for a standard Function by its number.
int StandardFunctionIn(ConfigModel& model, int number);
// Whether it reads what the standard Function of this number does, or has its short name.
bool ReadsAsStandard(const FunctionRecord& function, int number);
// The first number of the user's that has no Function and no other use; 0 where none is left.
int FreeFunction(const ConfigModel& model);
// The number of a Plate with the face's points: one that is there already, or else a new one. No Plate is
// ever changed. -1 where no number is left that a gauge can have.
int PlateForFace(ConfigModel& model, const ReadyFace& face);
// Adds a Plate; its number, or -1 where no number is left that a gauge can have.
int AddPlate(ConfigModel& model, PlateRecord plate);

}  // namespace tvx
