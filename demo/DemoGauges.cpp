// The demonstration's gauges and their faces.
#include "config/ConfigFile.h"
#include "config/NameTables.h"
#include "config/StandardFunctions.h"
#include "config/faces/ReadyFaces.h"
#include "demo/DemoConfig.h"

namespace tvx::demo {
namespace {

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

// In the order of their numbers.
constexpr const char* kFaces[] = {
    "Airspeed 40-200 kt",
    "Vertical speed 2000 ft/min",
    "Engine speed 0-3500 RPM",
    "Fuel left 0-26 gal",
    "Fuel right 0-26 gal",
    "Oil temperature 75-245 F",
    "Oil pressure 0-115 psi",
    "Exhaust temperature 900-1700 F",
    "Fuel flow 0-20 gal/h",
    "Manifold pressure 10-35 inHg",
    "Vacuum 3-7 inHg",
    "Amperes -60-60 A",
    "Head temperature 100-500 F",
    "Flaps 0-100 %",
};

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
  for (const char* face : kFaces) model.Plates.push_back(BuiltInPlate(face));
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
