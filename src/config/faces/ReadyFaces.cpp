#include "config/faces/ReadyFaces.h"

#include <algorithm>
#include <utility>

#include "config/FunctionNumbers.h"
#include "config/StandardFunctions.h"

namespace tvx {
namespace {

constexpr std::size_t kLowest = 2, kHighest = 3, kFirst = 4;  // entries of a Plate
constexpr int kHighestPlate = 255;                            // what a gauge's record holds
constexpr int kLastOfUser = 269;
constexpr int kFirstOfAutopilot = 91, kLastOfAutopilot = 111;  // its panel reads all of them

// The standard Functions by themselves.
const ConfigModel& Standard() {
  static const ConfigModel model = [] {
    ConfigModel filled;
    FillStandardFunctions(filled);
    return filled;
  }();
  return model;
}

ReadyFace Face(std::string name, int function, std::vector<FaceMark> marks) {
  return {std::move(name), static_cast<std::int16_t>(function),
          Standard().Functions[static_cast<std::size_t>(function)].ShortName, std::move(marks)};
}

std::vector<ReadyFace> MakeFaces() {
  using namespace functions;
  return {
      Face("Airspeed 40-200 kt", kAirspeed,
           {{0, 0},
            {40, 90},
            {50, 147},
            {60, 216},
            {70, 291},
            {80, 366},
            {90, 438},
            {100, 507},
            {110, 573},
            {120, 636},
            {130, 696},
            {140, 753},
            {150, 807},
            {160, 858},
            {170, 906},
            {180, 951},
            {190, 993},
            {200, 1032}}),
      Face("Vertical speed 2000 ft/min", kVerticalSpeed,
           {{-2000, 30},
            {-1500, 135},
            {-1000, 258},
            {-500, 399},
            {0, 540},
            {500, 681},
            {1000, 822},
            {1500, 945},
            {2000, 1050}}),
      Face("Altitude 0-10000 ft", kAltitude, {{0, 180}, {2500, 360}, {5000, 540}, {7500, 720}, {10000, 900}}),
      Face("Engine speed 0-3500 RPM", 59,
           {{0, 150},
            {500, 246},
            {1000, 351},
            {1500, 462},
            {2000, 579},
            {2500, 699},
            {3000, 816},
            {3500, 930}}),
      Face("Manifold pressure 10-35 inHg", 60,
           {{10, 150}, {15, 312}, {20, 471}, {25, 627}, {30, 780}, {35, 930}}),
      Face("Fuel left 0-26 gal", 51, {{0, 180}, {5, 225}, {10, 276}, {15, 330}, {20, 387}, {26, 450}}),
      Face("Fuel right 0-26 gal", 52, {{0, 900}, {5, 855}, {10, 804}, {15, 750}, {20, 693}, {26, 630}}),
      Face("Oil temperature 75-245 F", 53, {{75, 180}, {100, 210}, {150, 294}, {200, 384}, {245, 450}}),
      Face("Oil pressure 0-115 psi", 54, {{0, 900}, {20, 861}, {50, 789}, {90, 690}, {115, 630}}),
      Face("Exhaust temperature 900-1700 F", 55,
           {{900, 150},
            {1000, 204},
            {1100, 264},
            {1200, 330},
            {1300, 402},
            {1400, 480},
            {1500, 564},
            {1600, 654},
            {1700, 750}}),
      Face("Fuel flow 0-20 gal/h", 56, {{0, 150}, {4, 276}, {8, 423}, {12, 585}, {16, 756}, {20, 930}}),
      Face("Vacuum 3-7 inHg", 57, {{3, 180}, {4, 240}, {5, 315}, {6, 390}, {7, 450}}),
      Face("Amperes -60-60 A", 58, {{-60, 900}, {-30, 831}, {0, 765}, {30, 699}, {60, 630}}),
      Face("Head temperature 100-500 F", 61, {{100, 150}, {200, 303}, {300, 483}, {400, 690}, {500, 930}}),
      Face("Flaps 0-100 %", 62, {{0, 270}, {33, 435}, {67, 615}, {100, 810}}),
      Face("Turn rate -30-30 degrees", 63, {{-30, 330}, {0, 540}, {30, 750}}),
      Face("Voltage 0-32 V", kVoltage, {{0, 180}, {8, 360}, {16, 540}, {24, 720}, {32, 900}}),
      Face("Outside temperature -60-60 C", kOutsideTemperature,
           {{-60, 180}, {-30, 360}, {0, 540}, {30, 720}, {60, 900}}),
  };
}

// Whether it is what the program itself would have defined, whatever it is called.
bool Reads(const FunctionRecord& function, const FunctionRecord& standard) {
  return !standard.FullName.empty() && function.FullName == standard.FullName &&
         function.Multiplier == standard.Multiplier && function.Devider == standard.Devider &&
         function.BoxAdd == standard.BoxAdd;
}

}  // namespace

int FreeFunction(const ConfigModel& model) {
  for (int number = functions::kFirstOfUser; number <= kLastOfUser; ++number) {
    if (number >= kFirstOfAutopilot && number <= kLastOfAutopilot) continue;
    const FunctionRecord& own = *model.FunctionOf(number);
    if (own.ShortName.empty() && Standard().FunctionOf(number)->ShortName.empty()) return number;
  }
  return 0;
}

const std::vector<ReadyFace>& BuiltInFaces() {
  static const std::vector<ReadyFace> faces = MakeFaces();
  return faces;
}

PlateRecord PlateOfFace(const ReadyFace& face) {
  PlateRecord plate;
  plate.Name = face.name;
  const auto put = [&plate](std::size_t entry, const FaceMark& mark) {
    plate.Value[entry] = mark.value;
    plate.Position[entry] = mark.position;
  };
  const std::size_t count = std::min(face.marks.size(), ReadyFace::kMostMarks);
  if (count == 0) return plate;
  put(kLowest, face.marks.front());
  put(kHighest, face.marks[count - 1]);
  for (std::size_t i = 0; i < count; ++i) put(kFirst + i, face.marks[i]);
  return plate;
}

PlateRecord BuiltInPlate(std::string_view name) {
  const auto& faces = BuiltInFaces();
  const auto found =
      std::find_if(faces.begin(), faces.end(), [name](const ReadyFace& face) { return face.name == name; });
  return found == faces.end() ? PlateRecord{} : PlateOfFace(*found);
}

std::vector<FaceMark> MarksOf(const PlateRecord& plate) {
  std::vector<FaceMark> marks;
  for (std::size_t entry = kFirst; entry < PlateRecord::kStoredPoints; ++entry) {
    if (!marks.empty() && plate.Value[entry] <= marks.back().value) break;
    marks.push_back({plate.Value[entry], plate.Position[entry]});
    if (plate.Value[entry] == plate.Value[kHighest]) break;
  }
  return marks;
}

int FunctionForFace(ConfigModel& model, const ReadyFace& face) {
  const FunctionTable& known = model.Functions;
  const auto is = [&](int number) {
    return !face.functionName.empty() &&
           known[static_cast<std::size_t>(number)].ShortName == face.functionName;
  };
  if (face.function > 0 && face.function < kFunctions && is(face.function)) return face.function;
  const FunctionRecord* standard = Standard().FunctionOf(face.function);
  const bool isStandard =
      standard != nullptr && !standard->ShortName.empty() && standard->ShortName == face.functionName;
  for (int number = 1; number < kFunctions; ++number) {
    if (is(number) || (isStandard && Reads(known[static_cast<std::size_t>(number)], *standard)))
      return number;
  }
  if (!isStandard) return 0;
  const int number =
      known[static_cast<std::size_t>(face.function)].ShortName.empty() ? face.function : FreeFunction(model);
  if (number == 0) return 0;
  FunctionRecord& defined = model.Functions[static_cast<std::size_t>(number)];
  defined = *standard;
  defined.FunctionNr = static_cast<std::int16_t>(number);
  model.ConfigChanged = true;
  return number;
}

int StandardFunctionIn(ConfigModel& model, int number) {
  const FunctionRecord* standard = Standard().FunctionOf(number);
  if (standard == nullptr || standard->ShortName.empty()) return 0;
  return FunctionForFace(model, {{}, static_cast<std::int16_t>(number), standard->ShortName, {}});
}

bool ReadsAsStandard(const FunctionRecord& function, int number) {
  const FunctionRecord* standard = Standard().FunctionOf(number);
  return standard != nullptr && !standard->ShortName.empty() &&
         (function.ShortName == standard->ShortName || Reads(function, *standard));
}

int AddPlate(ConfigModel& model, PlateRecord plate) {
  if (model.PlateCount() > kHighestPlate) return -1;
  model.Plates.push_back(std::move(plate));
  model.ConfigChanged = true;
  return model.PlateCount() - 1;
}

int PlateForFace(ConfigModel& model, const ReadyFace& face) {
  PlateRecord wanted = PlateOfFace(face);
  for (int number = 0; number < std::min(model.PlateCount(), kHighestPlate + 1); ++number) {
    const PlateRecord& plate = *model.PlateOf(number);
    if (plate.Value == wanted.Value && plate.Position == wanted.Position) return number;
  }
  return AddPlate(model, std::move(wanted));
}

}  // namespace tvx
