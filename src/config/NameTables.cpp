#include "config/NameTables.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace tvx {
namespace {

constexpr std::array<std::string_view, kCategories> kCategoryNames = {
    "",        "Engines", "Surfaces", "Fuel",  "Autopilot", "Radios",
    "Cockpit", "Plane",   "Position", "Cabin", "Avionics",  "External",
};

struct BuiltInGaugetype {
  std::int16_t code;
  std::string_view name;
};

// Slots 1..29. The order is not that of the codes, code 102 is not used, and the blanks at the end of some
// names belong to them.
constexpr std::array<BuiltInGaugetype, 29> kGaugetypes = {{
    {1, "Small gauge; Single Needle "},
    {2, "Small gauge; Single Needle + Display "},
    {3, "Small gauge; Dual Needle "},
    {4, "Large gauge, single needle "},
    {10, "Input/Output module"},
    {101, "Digital/Analogue Altimeter "},
    {103, "Attitude Indicator "},
    {104, "Boeing Clock "},
    {5, "Large gauge; Dual Needle Concentric "},
    {105, "Heading Indicator/Directional Gyro "},
    {6, "Small gauge; Dual Needle Concentric "},
    {110, "Generic Radio Module"},
    {111, "CTL30 Radio Module"},
    {112, "CTL30 Transponder"},
    {106, "VOR1 Indicator"},
    {107, "VOR2 Indicator"},
    {108, "ADF Indicator"},
    {109, "Cessna Clock"},
    {8, "Cessna Enginecluster"},
    {113, "DME Indicator"},
    {114, "737 Transponder"},
    {120, "Bendix/King COM/NAV radio"},
    {121, "Bendix/King ADF radio"},
    {122, "Bendix/King Transponder"},
    {123, "Bendix/King DME Ind."},
    {124, "Bendix/King Autopilot"},
    {125, "Bendix/King Audio Panel"},
    {130, "Radio Magnetic Indicator"},
    {140, "Motorized Trimwheel"},
}};

}  // namespace

void FillNameTables(ConfigModel& model) {
  for (std::size_t i = 0; i < kCategoryNames.size(); ++i) model.Categories[i] = kCategoryNames[i];
  for (std::size_t i = 0; i < kGaugetypes.size(); ++i) {
    model.Gaugetypes[i + 1].Code = kGaugetypes[i].code;
    model.Gaugetypes[i + 1].Name = kGaugetypes[i].name;
  }
}

void GetGaugetypeName(const ConfigModel& model, int code, std::string& name) {
  // ODDITY: slots above the built-in ones are never searched, so that a file's own entries there have no
  // name.
  for (std::size_t slot = 1; slot <= kGaugetypes.size(); ++slot) {
    if (model.Gaugetypes[slot].Code == code) {
      name = model.Gaugetypes[slot].Name;
      return;
    }
  }
}

}  // namespace tvx
