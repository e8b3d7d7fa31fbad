// The demonstration's Functions: what each is in X-Plane 11 and 12.
#include <array>
#include <string>
#include <string_view>

#include "demo/DemoConfig.h"

namespace tvx::demo {
namespace {

using Use = FunctionUse;

enum Category : Byte {
  kNoCategory,
  kEngines,
  kSurfaces,
  kFuel,
  kAutopilot,
  kRadios,
  kCockpit,
  kPlane,
  kPosition,
  kCabin,
  kAvionics,
  kExternal,
};

// value = (raw + add) * multiply / divide
struct Scale {
  float add = 0, multiply = 1, divide = 1;
};
constexpr Scale kAsItIs{};
constexpr Scale kFahrenheit{17.777779f, 9, 5};  // of degrees Celsius
constexpr Scale kGallons{0, 1, 6};              // of avgas, from pounds
constexpr Scale kVorNeedle{0, 127, 2.5f};       // 127 at full deflection, from dots
constexpr Scale kPercent{0, 100, 1};
constexpr Scale kLampLevel{0, 1023, 1};  // from 0..1
constexpr Scale kInchesOfSuction{0, 5.1f, 1};

// A value of a data group; the unit stands in the name.
struct GroupRow {
  std::int16_t number;
  std::string_view shortName, fullName;
  Use use;
  Category category;
  std::int16_t group;
  Byte value;  // 0..7
  Scale scale;
  float minimum, maximum;
};

constexpr GroupRow kGroups[] = {
    {kAirspeed, "Airspeed", "Indicated airspeed, kt", Use::Gauge, kPlane, 3, 0, kAsItIs, 0, 200},
    {kAltitude, "Altitude", "Indicated altitude, ft", Use::Gauge, kPlane, 20, 5, kAsItIs, -1000, 20000},
    {kHeading, "Heading", "Magnetic heading, degrees", Use::Gauge, kPlane, 17, 3, kAsItIs, 0, 360},
    {4, "Bank", "Bank, degrees, right positive", Use::Gauge, kPlane, 17, 1, kAsItIs, -180, 180},
    {5, "Pitch", "Pitch, degrees, up positive", Use::Gauge, kPlane, 17, 0, kAsItIs, -90, 90},
    {kVerticalSpeed, "Vert. speed", "Vertical speed, ft/min", Use::Gauge, kPlane, 4, 2, kAsItIs, -2000, 2000},
    {kFuelLeft, "Fuel left", "Fuel in the left tank, US gal", Use::Gauge, kFuel, 62, 0, kGallons, 0, 26},
    {kFuelRight, "Fuel right", "Fuel in the right tank, US gal", Use::Gauge, kFuel, 62, 1, kGallons, 0, 26},
    {kOilTemperature, "Oil temp.", "Oil temperature, degrees F, of an aircraft that tells it in degrees C",
     Use::Gauge, kEngines, 50, 0, kFahrenheit, 75, 245},
    {kOilPressure, "Oil pressure", "Oil pressure, psi", Use::Gauge, kEngines, 49, 0, kAsItIs, 0, 115},
    {kExhaustTemperature, "EGT",
     "Exhaust gas temperature, degrees F, of an aircraft that tells it in degrees C", Use::Gauge, kEngines,
     47, 0, kFahrenheit, 900, 1700},
    {kFuelFlow, "Fuel flow", "Fuel flow, US gal/h", Use::Gauge, kFuel, 45, 0, kGallons, 0, 20},
};

// Datarefs of one kind: up to four sources, for sequence numbers 1..4.
struct DatarefRow {
  std::int16_t number;
  std::string_view shortName;
  Use use;
  Category category;
  Byte frequency;  // per second
  Scale scale;
  float minimum, maximum;
  std::array<std::string_view, 4> datarefs;
};

constexpr DatarefRow kDatarefs[] = {
    {7,
     "Compass",
     Use::Gauge,
     kPlane,
     10,
     kAsItIs,
     0,
     360,
     {"sim/cockpit2/gauges/indicators/compass_heading_deg_mag"}},
    {kAirPressure,
     "Air pressure",
     Use::Gauge,
     kPlane,
     5,
     kAsItIs,
     28,
     31,
     {"sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot",
      "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_copilot"}},
    {9,
     "Voltage",
     Use::Gauge,
     kCockpit,
     2,
     kAsItIs,
     0,
     32,
     {"sim/cockpit2/electrical/bus_volts[0]", "sim/cockpit2/electrical/bus_volts[1]"}},
    {10,
     "Time",
     Use::DedicatedGauge,
     kCockpit,
     2,
     kAsItIs,
     0,
     86400,
     {"sim/time/zulu_time_sec", "sim/time/local_time_sec"}},
    {13, "Paused", Use::OutputLed, kNoCategory, 2, kAsItIs, 0, 1, {"sim/time/paused"}},
    {14,
     "Instr. lights",
     Use::OutputLed,
     kCockpit,
     5,
     kLampLevel,
     0,
     1023,
     {"sim/cockpit2/switches/instrument_brightness_ratio[0]"}},
    {16,
     "Nav. lights",
     Use::SwitchAndLed,
     kExternal,
     5,
     kAsItIs,
     0,
     1,
     {"sim/cockpit2/switches/navigation_lights_on"}},
    {kCom1Active,
     "COM1 active",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     11800,
     13697,
     {"sim/cockpit/radios/com1_freq_hz"}},
    {21,
     "COM2 active",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     11800,
     13697,
     {"sim/cockpit/radios/com2_freq_hz"}},
    {22,
     "COM1 standby",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     11800,
     13697,
     {"sim/cockpit/radios/com1_stdby_freq_hz"}},
    {23,
     "COM2 standby",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     11800,
     13697,
     {"sim/cockpit/radios/com2_stdby_freq_hz"}},
    {24,
     "NAV active",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     10800,
     11795,
     {"sim/cockpit/radios/nav1_freq_hz", "sim/cockpit/radios/nav2_freq_hz"}},
    {25,
     "NAV standby",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     10800,
     11795,
     {"sim/cockpit/radios/nav1_stdby_freq_hz", "sim/cockpit/radios/nav2_stdby_freq_hz"}},
    {26,
     "Transponder",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     0,
     7777,
     {"sim/cockpit2/radios/actuators/transponder_code"}},
    {27,
     "DME distance",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     0,
     200,
     {"sim/cockpit2/radios/indicators/nav1_dme_distance_nm",
      "sim/cockpit2/radios/indicators/nav2_dme_distance_nm",
      "sim/cockpit2/radios/indicators/dme_dme_distance_nm",
      "sim/cockpit2/radios/actuators/DME_slave_source"}},
    {28,
     "DME speed",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     0,
     999,
     {"sim/cockpit2/radios/indicators/nav1_dme_speed_kts",
      "sim/cockpit2/radios/indicators/nav2_dme_speed_kts"}},
    {29,
     "DME time",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     0,
     99,
     {"sim/cockpit2/radios/indicators/nav1_dme_time_min",
      "sim/cockpit2/radios/indicators/nav2_dme_time_min"}},
    {30,
     "DME frequency",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     10800,
     11795,
     {"sim/cockpit/radios/dme_freq_hz"}},
    {31,
     "ADF bearing",
     Use::DedicatedGauge,
     kRadios,
     10,
     kAsItIs,
     -180,
     360,
     {"sim/cockpit2/radios/indicators/adf1_relative_bearing_deg",
      "sim/cockpit2/radios/indicators/adf2_relative_bearing_deg"}},
    {32,
     "ADF card",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     0,
     360,
     {"sim/cockpit2/radios/actuators/adf1_card_heading_deg_mag_pilot",
      "sim/cockpit2/radios/actuators/adf2_card_heading_deg_mag_pilot"}},
    {kCourseNeedle,
     "VOR1 course",
     Use::DedicatedGauge,
     kRadios,
     10,
     kVorNeedle,
     -127,
     127,
     {"sim/cockpit2/radios/indicators/nav1_hdef_dots_pilot"}},
    {kGlideNeedle,
     "VOR1 glide",
     Use::DedicatedGauge,
     kRadios,
     10,
     kVorNeedle,
     -127,
     127,
     {"sim/cockpit2/radios/indicators/nav1_vdef_dots_pilot"}},
    {35,
     "VOR1 to/from",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     0,
     2,
     {"sim/cockpit2/radios/indicators/nav1_flag_from_to_pilot"}},
    {36,
     "VOR1 flags",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     0,
     1,
     {"sim/cockpit2/radios/indicators/nav1_flag_glideslope"}},
    {38,
     "Audio",
     Use::DedicatedGauge,
     kRadios,
     2,
     kAsItIs,
     0,
     9,
     {"sim/cockpit2/radios/actuators/audio_com_selection",
      "sim/cockpit2/radios/actuators/audio_nav_selection",
      "sim/cockpit2/radios/actuators/audio_marker_enabled"}},
    {47,
     "XPDR mode",
     Use::DedicatedGauge,
     kRadios,
     5,
     kAsItIs,
     0,
     7,
     {"sim/cockpit2/radios/actuators/transponder_mode", "sim/cockpit2/radios/actuators/transponder_mode"}},
    {kVacuum,
     "Vacuum",
     Use::Gauge,
     kEngines,
     5,
     kInchesOfSuction,
     3,
     7,
     {"sim/cockpit2/gauges/indicators/suction_1_ratio"}},
    {kAmperes,
     "Battery amps",
     Use::Gauge,
     kEngines,
     5,
     kAsItIs,
     -60,
     60,
     {"sim/cockpit2/electrical/battery_amps[0]"}},
    {kEngineSpeed,
     "Engine RPM",
     Use::Gauge,
     kEngines,
     20,
     kAsItIs,
     0,
     3500,
     {"sim/cockpit2/engine/indicators/engine_speed_rpm[0]"}},
    {kManifoldPressure,
     "Manifold press",
     Use::Gauge,
     kEngines,
     10,
     kAsItIs,
     10,
     35,
     {"sim/cockpit2/engine/indicators/MPR_in_hg[0]"}},
    {kHeadTemperature,
     "CHT",
     Use::Gauge,
     kEngines,
     5,
     kFahrenheit,
     100,
     500,
     {"sim/cockpit2/engine/indicators/CHT_deg_cel[0]"}},
    {kFlaps,
     "Flaps",
     Use::Gauge,
     kSurfaces,
     10,
     kPercent,
     0,
     100,
     {"sim/cockpit2/controls/flap_handle_deploy_ratio"}},
    {kTurnRate,
     "Turn rate",
     Use::Gauge,
     kPlane,
     10,
     kAsItIs,
     -30,
     30,
     {"sim/cockpit2/gauges/indicators/turn_rate_heading_deg_pilot"}},
    {kLowVoltageLamp,
     "Low volts",
     Use::OutputLed,
     kCockpit,
     5,
     kAsItIs,
     0,
     1,
     {"sim/cockpit2/annunciators/low_voltage"}},
    {kParkingBrake,
     "Parking brake",
     Use::OutputLed,
     kCockpit,
     5,
     kPercent,
     0,
     100,
     {"sim/cockpit2/controls/parking_brake_ratio"}},
    {143,
     "RMI single",
     Use::DedicatedGauge,
     kRadios,
     10,
     kAsItIs,
     0,
     360,
     {"sim/cockpit2/radios/indicators/nav1_bearing_deg_mag",
      "sim/cockpit2/radios/indicators/adf1_bearing_deg_mag"}},
    {144,
     "RMI double",
     Use::DedicatedGauge,
     kRadios,
     10,
     kAsItIs,
     0,
     360,
     {"sim/cockpit2/radios/indicators/nav2_bearing_deg_mag",
      "sim/cockpit2/radios/indicators/adf2_bearing_deg_mag"}},
    {281,
     "Elevator trim",
     Use::DedicatedGauge,
     kSurfaces,
     10,
     kPercent,
     -100,
     100,
     {"sim/cockpit2/controls/elevator_trim"}},
    {300,
     "Sim version",
     Use::None,
     kNoCategory,
     2,
     kAsItIs,
     0,
     999999,
     {"sim/version/xplane_internal_version"}},
};

template <typename Row>
FunctionRecord& Define(ConfigModel& model, const Row& row, DataType type) {
  FunctionRecord& record = model.Functions[static_cast<std::size_t>(row.number)];
  record.ShortName = row.shortName;
  record.FunctionNr = row.number;
  record.FuncType = static_cast<Byte>(row.use);
  record.ComboClass = row.category;
  record.ComboDT = static_cast<Byte>(type);
  record.BoxAdd = row.scale.add;
  record.Multiplier = row.scale.multiply;
  record.Devider = row.scale.divide;
  record.boxMinimumValue = row.minimum;
  record.boxMaximumValue = row.maximum;
  return record;
}

// The transponder's ident is a command, not a value.
void DefineIdent(ConfigModel& model) {
  FunctionRecord& record = model.Functions[46];
  record.ShortName = "XPDR ident";
  record.FullName = "#1:sim/transponder/transponder_ident\r\n";
  record.FunctionNr = 46;
  record.FuncType = static_cast<Byte>(Use::InputSwitch);
  record.ComboClass = kRadios;
  record.ComboDT = static_cast<Byte>(DataType::XplaneCmnd);
  record.Multiplier = record.Devider = record.boxMaximumValue = 1;
}

}  // namespace

void AddFunctions(ConfigModel& model) {
  for (const auto& row : kGroups) {
    FunctionRecord& record = Define(model, row, DataType::Float);
    record.FullName = row.fullName;
    record.XPindex1 = row.group;
    record.XPVal1 = row.value;
  }
  for (const auto& row : kDatarefs) {
    FunctionRecord& record = Define(model, row, DataType::XplaneDataref);
    const std::array<Byte*, 4> frequencies = {&record.XPVal1, &record.XPVal2, &record.XPVal3, &record.XPVal4};
    for (std::size_t i = 0; i < row.datarefs.size() && !row.datarefs[i].empty(); ++i) {
      record.FullName += '#' + std::to_string(i + 1) + ':' + std::string(row.datarefs[i]) + "\r\n";
      *frequencies[i] = row.frequency;
    }
  }
  DefineIdent(model);
}

}  // namespace tvx::demo
