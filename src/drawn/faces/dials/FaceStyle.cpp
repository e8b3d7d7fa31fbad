#include "drawn/faces/dials/FaceStyle.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <string>

namespace tvx::drawn {
namespace {

using C = FaceArc::Colour;

constexpr FaceArc kAirspeed[] = {
    {40, 85, C::White}, {48, 129, C::Green}, {129, 163, C::Yellow}, {163, 163, C::Red}};
constexpr FaceArc kRpm[] = {{2100, 2500, C::Green}, {2500, 2650, C::Yellow}, {2700, 2700, C::Red}};
constexpr FaceArc kOilPressure[] = {
    {20, 20, C::Red}, {20, 50, C::Yellow}, {50, 90, C::Green}, {100, 100, C::Red}};
constexpr FaceArc kOilTemperature[] = {{40, 110, C::Green}, {118, 118, C::Red}};
constexpr FaceArc kVacuum[] = {{4.5, 5.5, C::Green}};
constexpr FaceArc kVolts[] = {{24, 29, C::Green}, {31, 31, C::Red}};
constexpr FaceArc kManifold[] = {{15, 25, C::Green}};
constexpr FaceArc kExhaust[] = {{600, 750, C::Green}, {800, 800, C::Red}};
constexpr FaceArc kOilTemperatureF[] = {{100, 245, C::Green}, {245, 245, C::Red}};
constexpr FaceArc kHeadF[] = {{200, 435, C::Green}, {475, 475, C::Red}};
constexpr FaceArc kExhaustF[] = {{1100, 1450, C::Green}, {1650, 1650, C::Red}};
constexpr FaceArc kFuelGallons[] = {{0, 0, C::Red}};
constexpr FaceArc kFlaps[] = {{0, 100, C::White}};
constexpr FaceArc kHead[] = {{90, 200, C::Green}, {230, 230, C::Red}};

enum class Factor { Any, Fahrenheit, Gallons };  // what the Function's scaling makes of the simulator's unit
struct Row {
  std::string_view word;  // in the short name
  FaceStyle style;
  Factor factor = Factor::Any;
};

Factor FactorOf(const FunctionRecord& function) {
  const double factor = function.Devider != 0
                            ? static_cast<double>(function.Multiplier) / static_cast<double>(function.Devider)
                            : 1;
  if (std::abs(factor - 1.8) < 0.001) return Factor::Fahrenheit;
  if (std::abs(factor - 1.0 / 6) < 0.01) return Factor::Gallons;
  return Factor::Any;
}

// The first row whose word stands in the name counts.
constexpr Row kRows[] = {
    {"airspeed", {"KNOTS", kAirspeed}},
    {"ias", {"KNOTS", kAirspeed}},
    {"vert", {"FT/MIN", {}, false, true}},
    {"altitude", {"FEET", {}}},
    {"compass", {"", {}, true}},
    {"heading", {"", {}, true}},
    {"rpm", {"RPM", kRpm}},
    {"oil p", {"PSI", kOilPressure}},
    {"oil t", {"\u00B0F", kOilTemperatureF}, Factor::Fahrenheit},
    {"oil t", {"\u00B0C", kOilTemperature}},
    {"fuel flow", {"GAL/H", {}}, Factor::Gallons},
    {"fuel flow", {"LB/H", {}}},
    {"fuel p", {"PSI", {}}},
    {"fuel", {"US GAL", kFuelGallons}, Factor::Gallons},
    {"fuel", {"LB", {}}},
    {"manifold", {"IN HG", kManifold}},
    {"vacuum", {"IN HG", kVacuum}},
    {"suction", {"IN HG", kVacuum}},
    {"egt", {"\u00B0F", kExhaustF}, Factor::Fahrenheit},
    {"cht", {"\u00B0F", kHeadF}, Factor::Fahrenheit},
    {"egt", {"\u00B0C", kExhaust}},
    {"exhaust", {"\u00B0C", kExhaust}},
    {"cht", {"\u00B0C", kHead}},
    {"volt", {"VOLTS", kVolts}},
    {"amp", {"AMPS", {}}},
    {"flap", {"PERCENT", kFlaps}},
    {"pressure", {"IN HG", {}}},
    {"pitch", {"DEGREES", {}}},
    {"bank", {"DEGREES", {}}},
};

}  // namespace

FaceStyle StyleOf(const FunctionRecord& function) {
  std::string name = function.ShortName;
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  const Factor factor = FactorOf(function);
  for (const Row& row : kRows) {
    const bool fits = row.factor == Factor::Any || row.factor == factor;
    if (fits && name.find(row.word) != std::string::npos) return row.style;
  }
  return {};
}

}  // namespace tvx::drawn
