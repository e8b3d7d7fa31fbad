// The user's own ready faces: a text file in the working folder, one face a line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/faces/ReadyFaces.h"

namespace tvx {

inline constexpr std::string_view kFaceFileName = "Faces.txt";

// The faces of a text, and the numbers of the lines (from 1) that hold none. Fields stand between tab
// characters: name, number and short name of the Function, then each point as "value:position". Empty lines
// and those that begin with '#' are left out.
std::vector<ReadyFace> ReadFaces(std::string_view text, std::vector<int>* unread = nullptr);
// The line of a face, with its end.
std::string FaceLine(const ReadyFace& face);

// Those of the program, then the user's own.
std::vector<ReadyFace> AllFaces();
// Adds a face to the user's own; every line of the file stays as it is. Empty on success, otherwise why it
// was not done, for the user: the name is taken or cannot be used, the points are no calibration, the file
// cannot be written.
std::string SaveFace(const ReadyFace& face);
// The face that a Plate and a Function make.
ReadyFace FaceOf(const ConfigModel& model, const PlateRecord& plate, int function);

}  // namespace tvx
