// The demonstration's gauges and their faces.
#include <string_view>
#include <vector>

#include "config/ConfigFile.h"
#include "config/NameTables.h"
#include "config/StandardFunctions.h"
#include "demo/DemoConfig.h"

namespace tvx::demo {
namespace {

struct Point {
  double value;
  std::int16_t position;  // three to a degree, clockwise; 540 is the middle of the sweep
};

struct Face {
  std::string_view name;
  std::vector<Point> points;  // rising values, at most 21: the numbers that the face prints
};

enum PlateNumber : Byte {
  kAirspeedFace,
  kVerticalSpeedFace,
  kEngineSpeedFace,
  kFuelLeftFace,
  kFuelRightFace,
  kOilTemperatureFace,
  kOilPressureFace,
  kExhaustFace,
  kFuelFlowFace,
  kManifoldFace,
  kVacuumFace,
  kAmperesFace,
  kHeadTemperatureFace,
  kFlapsFace,
};

std::vector<Face> Faces() {
  return {
      {"Airspeed 40-200 kt",
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
        {200, 1032}}},
      {"Vertical speed 2000 ft/min",
       {{-2000, 30},
        {-1500, 135},
        {-1000, 258},
        {-500, 399},
        {0, 540},
        {500, 681},
        {1000, 822},
        {1500, 945},
        {2000, 1050}}},
      {"Engine speed 0-3500 RPM",
       {{0, 150}, {500, 246}, {1000, 351}, {1500, 462}, {2000, 579}, {2500, 699}, {3000, 816}, {3500, 930}}},
      {"Fuel left 0-26 gal", {{0, 180}, {5, 225}, {10, 276}, {15, 330}, {20, 387}, {26, 450}}},
      {"Fuel right 0-26 gal", {{0, 900}, {5, 855}, {10, 804}, {15, 750}, {20, 693}, {26, 630}}},
      {"Oil temperature 75-245 F", {{75, 180}, {100, 210}, {150, 294}, {200, 384}, {245, 450}}},
      {"Oil pressure 0-115 psi", {{0, 900}, {20, 861}, {50, 789}, {90, 690}, {115, 630}}},
      {"Exhaust temperature 900-1700 F",
       {{900, 150},
        {1000, 204},
        {1100, 264},
        {1200, 330},
        {1300, 402},
        {1400, 480},
        {1500, 564},
        {1600, 654},
        {1700, 750}}},
      {"Fuel flow 0-20 gal/h", {{0, 150}, {4, 276}, {8, 423}, {12, 585}, {16, 756}, {20, 930}}},
      {"Manifold pressure 10-35 inHg", {{10, 150}, {15, 312}, {20, 471}, {25, 627}, {30, 780}, {35, 930}}},
      {"Vacuum 3-7 inHg", {{3, 180}, {4, 240}, {5, 315}, {6, 390}, {7, 450}}},
      {"Amperes -60-60 A", {{-60, 900}, {-30, 831}, {0, 765}, {30, 699}, {60, 630}}},
      {"Head temperature 100-500 F", {{100, 150}, {200, 303}, {300, 483}, {400, 690}, {500, 930}}},
      {"Flaps 0-100 %", {{0, 270}, {33, 435}, {67, 615}, {100, 810}}},
  };
}

// Entries 2 and 3 hold the ends of the scale, entries 4 and up its points.
PlateRecord PlateOf(const Face& face) {
  PlateRecord plate;
  plate.Name = face.name;
  const auto set = [&plate](std::size_t entry, const Point& point) {
    plate.Value[entry] = point.value;
    plate.Position[entry] = point.position;
  };
  set(2, face.points.front());
  set(3, face.points.back());
  for (std::size_t i = 0; i < face.points.size(); ++i) set(4 + i, face.points[i]);
  return plate;
}

struct GaugeRow {
  Byte id;
  Byte type, model, version;
  std::int16_t function1 = 0;
  Byte plate1 = 0;
  std::int16_t function2 = 0;
  Byte plate2 = 0;
  std::int16_t options = 0;
  Byte sequence = 1;
};

constexpr Byte kMillibarModel = 2;  // of an altimeter; model 1 shows inches

constexpr GaugeRow kGaugeRows[] = {
    // the six flight instruments
    {10, 4, 1, 12, kAirspeed, kAirspeedFace},
    {11, 103, 1, 10},
    {12, 101, kMillibarModel, 14, kAltitude, 0, kAirPressure, 0},
    {13, 130, 1, 10, 0, 0, 0, 0, 2},  // the first pointer a VOR, the second the ADF
    {14, 105, 1, 10, kHeadingBug, 0, kGyroDrift, 0, 1},
    {15, 4, 1, 12, kVerticalSpeed, kVerticalSpeedFace},
    // navigation
    {16, 106, 1, 13, kCourse1},
    {17, 107, 1, 13, kCourse1, 0, 0, 0, 0, 2},
    {18, 108, 1, 10},
    {19, 113, 1, 10, 0, 0, kDmeSource},
    // the engine
    {20, 1, 1, 11, kEngineSpeed, kEngineSpeedFace},
    {21, 2, 1, 11, kManifoldPressure, kManifoldFace},
    {22, 3, 1, 11, kFuelLeft, kFuelLeftFace, kFuelRight, kFuelRightFace},
    {23, 6, 1, 11, kOilTemperature, kOilTemperatureFace, kOilPressure, kOilPressureFace},
    {24, 5, 1, 12, kExhaustTemperature, kExhaustFace, kFuelFlow, kFuelFlowFace},
    {25, 8, 1, 10, kFuelLeft, kVacuumFace, 0, kAmperesFace},  // mode 0: vacuum and amperes
    {26, 1, 1, 11, kFlaps, kFlapsFace},
    {27, 140, 1, 10},
    // the radio stack
    {30, 125, 1, 10},
    {31, 120, 1, 10, 0, 0, 0, 0, 4},
    {32, 110, 1, 10, kNavActive, 0, kNavStandby, 0, 1 | 4},
    {33, 111, 1, 10, kCom1Active, 0, kCom1Standby, 0, 4},
    {34, 121, 1, 10, kAdfActive, 0, kAdfStandby, 0, 4},
    {35, 114, 1, 10, 0, 0, 0, 0, 1 | 4},
    {36, 122, 1, 10, 0, 0, 0, 0, 4},
    {37, 112, 1, 10, 0, 0, 0, 0, 1},
    {38, 123, 1, 10, 0, 0, 0, 0, 2},  // counts from 100 MHz
    {39, 124, 1, 10, 1, 0, 22},
    // clocks and lamps
    {40, 104, 1, 10},
    {41, 109, 1, 10},
    {42, 10, 1, 10, kLowVoltageLamp, 0, kCom1Active},
};

}  // namespace

void AddGaugesAndPlates(ConfigModel& model) {
  for (const auto& face : Faces()) model.Plates.push_back(PlateOf(face));
  for (const auto& row : kGaugeRows) {
    GaugeRecord& gauge = model.Gauges[row.id];
    gauge.GaugeType = row.type;
    gauge.GaugeSetting1 = row.model;
    gauge.GaugeSetting2 = row.version;
    gauge.GaugeSetting3 = row.plate1;
    gauge.GaugeFunction1 = row.function1;
    gauge.GaugeInstance1 = row.sequence;
    gauge.GaugeSetting4 = row.plate2;
    gauge.GaugeFunction2 = row.function2;
    gauge.GaugeInstance2 = row.function2 != 0 ? row.sequence : Byte{0};
    gauge.GaugeSetting5 = row.options;
  }
}

ConfigModel DemoConfig() {
  ConfigModel model;
  // A date that never changes: the same program writes the same file.
  model.General.ConfigHeader = BuildConfigHeader("X-Plane", "12.11.00", "2024-06-01 12:00:00");
  model.General.ComPortGS = 5;
  model.General.TransferInterval = 50;
  model.StartDelay = 3;
  FillNameTables(model);
  FillStandardFunctions(model);
  AddGaugesAndPlates(model);
  AddModules(model);
  return model;
}

}  // namespace tvx::demo
