#include "config/StandardFunctions.h"

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>

#include "config/FunctionNumbers.h"

namespace tvx {
namespace {

using namespace functions;
using Use = FunctionUse;

// Codes of the category table.
enum Category : Byte {
  kNoCategory,
  kEngines,
  kSurfaces,
  kFuel,
  kAutopilot,
  kRadios,
  kCockpit,
  kPlane,
  kExternal = 11,
};

// value = (raw + add) * multiply / divide
struct Scale {
  float add = 0, multiply = 1, divide = 1;
};
constexpr Scale kAsItIs{};
constexpr Scale kFahrenheit{17.777779f, 9, 5};       // of degrees Celsius
constexpr Scale kGallons{0, 1, 2.721554f};           // of avgas, from kilograms
constexpr Scale kGallonsAnHour{0, 3600, 2.721554f};  // of avgas, from kilograms a second
constexpr Scale kTenKilohertz{0, 1, 10};  // from kHz: the radios count in steps of 10 kHz, with a rest
constexpr Scale kFromOne{1, 1, 1};        // X-Plane counts from 0
constexpr Scale kHoursOfSeconds{0, 1, 3600};
constexpr Scale kVorNeedle{0, 127, 2.5f};  // 127 at full deflection, from dots
constexpr Scale kPercent{0, 100, 1};
constexpr Scale kLampLevel{0, 1023, 1};  // from 0..1
constexpr Scale kInchesOfSuction{0, 5.1f, 1};
constexpr Scale kHalf{0, 1, 2};

struct Row {
  std::int16_t number;
  std::string_view shortName;
  Use use;
  Category category;
  Scale scale;
  float minimum, maximum;
};

// Datarefs of one kind: up to four sources, for sequence numbers 1..4.
struct DatarefRow : Row {
  Byte frequency;  // per second
  std::array<std::string_view, 4> datarefs;
};

constexpr DatarefRow Dataref(std::int16_t number, std::string_view shortName, Use use, Category category,
                             Byte frequency, Scale scale, float minimum, float maximum,
                             std::array<std::string_view, 4> datarefs) {
  return {{number, shortName, use, category, scale, minimum, maximum}, frequency, datarefs};
}

// What each is in X-Plane 11 and 12. Numbers to 50 and above 269 are the program's own; the others are a
// single-engine light aircraft's, to begin with. Names that both versions answer to are used throughout, so
// that nothing has to be switched on in X-Plane; docs/functions.md has the reasons for those that look odd.
constexpr DatarefRow kDatarefs[] = {
    Dataref(kAirspeed, "Airspeed", Use::Gauge, kPlane, 20, kAsItIs, 0, 200,
            {"sim/cockpit2/gauges/indicators/airspeed_kts_pilot"}),
    Dataref(kAltitude, "Altitude", Use::Gauge, kPlane, 20, kAsItIs, -1000, 20000,
            {"sim/cockpit2/gauges/indicators/altitude_ft_pilot"}),
    Dataref(kHeading, "Heading", Use::Gauge, kPlane, 20, kAsItIs, 0, 360,
            {"sim/cockpit2/gauges/indicators/heading_AHARS_deg_mag_pilot"}),
    Dataref(kBank, "Bank", Use::Gauge, kPlane, 20, kAsItIs, -180, 180,
            {"sim/cockpit2/gauges/indicators/roll_AHARS_deg_pilot"}),
    Dataref(kPitch, "Pitch", Use::Gauge, kPlane, 20, kAsItIs, -90, 90,
            {"sim/cockpit2/gauges/indicators/pitch_AHARS_deg_pilot"}),
    Dataref(kVerticalSpeed, "Vert. speed", Use::Gauge, kPlane, 20, kAsItIs, -2000, 2000,
            {"sim/cockpit2/gauges/indicators/vvi_fpm_pilot"}),
    Dataref(kCompass, "Compass", Use::Gauge, kPlane, 10, kAsItIs, 0, 360,
            {"sim/cockpit2/gauges/indicators/compass_heading_deg_mag"}),
    Dataref(kAirPressure, "Air pressure", Use::Gauge, kPlane, 5, kAsItIs, 28, 31,
            {"sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot",
             "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_copilot"}),
    Dataref(kVoltage, "Voltage", Use::Gauge, kCockpit, 2, kAsItIs, 0, 32,
            {"sim/cockpit2/electrical/bus_volts[0]", "sim/cockpit2/electrical/bus_volts[1]"}),
    Dataref(kTimeOfDay, "Time of day", Use::DedicatedGauge, kCockpit, 2, kHoursOfSeconds, 0, 24,
            {"sim/time/zulu_time_sec", "sim/time/local_time_sec"}),
    Dataref(kOutsideTemperature, "Outside temp.", Use::DedicatedGauge, kPlane, 2, kAsItIs, -60, 60,
            {"sim/cockpit2/temperature/outside_air_temp_degc"}),
    Dataref(kInstrumentLights, "Instr. lights", Use::OutputLed, kCockpit, 5, kLampLevel, 0, 1023,
            {"sim/cockpit2/switches/instrument_brightness_ratio[0]"}),
    Dataref(kNavigationLights, "Nav. lights", Use::SwitchAndLed, kExternal, 5, kAsItIs, 0, 1,
            {"sim/cockpit2/switches/navigation_lights_on"}),
    Dataref(kRadio1Active, "COM1 active", Use::DedicatedGauge, kRadios, 5, kTenKilohertz, 11800, 13699,
            {"sim/cockpit2/radios/actuators/com1_frequency_hz_833"}),
    Dataref(kRadio2Active, "COM2 active", Use::DedicatedGauge, kRadios, 5, kTenKilohertz, 11800, 13699,
            {"sim/cockpit2/radios/actuators/com2_frequency_hz_833"}),
    Dataref(kRadio1Standby, "COM1 standby", Use::DedicatedGauge, kRadios, 5, kTenKilohertz, 11800, 13699,
            {"sim/cockpit2/radios/actuators/com1_standby_frequency_hz_833"}),
    Dataref(kRadio2Standby, "COM2 standby", Use::DedicatedGauge, kRadios, 5, kTenKilohertz, 11800, 13699,
            {"sim/cockpit2/radios/actuators/com2_standby_frequency_hz_833"}),
    Dataref(24, "NAV active", Use::DedicatedGauge, kRadios, 5, kAsItIs, 10800, 11795,
            {"sim/cockpit/radios/nav1_freq_hz", "sim/cockpit/radios/nav2_freq_hz"}),
    Dataref(25, "NAV standby", Use::DedicatedGauge, kRadios, 5, kAsItIs, 10800, 11795,
            {"sim/cockpit/radios/nav1_stdby_freq_hz", "sim/cockpit/radios/nav2_stdby_freq_hz"}),
    Dataref(
        kTransponderCode, "Transponder", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 7777,
        {"sim/cockpit2/radios/actuators/transponder_code", "sim/cockpit2/radios/actuators/transponder_code"}),
    Dataref(27, "DME distance", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 200,
            {"sim/cockpit2/radios/indicators/nav1_dme_distance_nm",
             "sim/cockpit2/radios/indicators/nav2_dme_distance_nm",
             "sim/cockpit2/radios/indicators/dme_dme_distance_nm"}),
    Dataref(kDmeSpeed, "DME speed", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 999,
            {"sim/cockpit2/radios/indicators/nav1_dme_speed_kts",
             "sim/cockpit2/radios/indicators/nav2_dme_speed_kts"}),
    Dataref(kDmeTime, "DME time", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 99,
            {"sim/cockpit2/radios/indicators/nav1_dme_time_min",
             "sim/cockpit2/radios/indicators/nav2_dme_time_min"}),
    Dataref(kDmeFrequency, "DME frequency", Use::DedicatedGauge, kRadios, 5, kAsItIs, 10800, 11795,
            {"sim/cockpit/radios/dme_freq_hz"}),
    Dataref(kAdfBearing, "ADF bearing", Use::DedicatedGauge, kRadios, 10, kAsItIs, -180, 360,
            {"sim/cockpit2/radios/indicators/adf1_relative_bearing_deg",
             "sim/cockpit2/radios/indicators/adf2_relative_bearing_deg"}),
    Dataref(kAdfCard, "ADF card", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 360,
            {"sim/cockpit2/radios/actuators/adf1_card_heading_deg_mag_pilot",
             "sim/cockpit2/radios/actuators/adf2_card_heading_deg_mag_pilot"}),
    Dataref(kVorCourse, "VOR course", Use::DedicatedGauge, kRadios, 10, kVorNeedle, -127, 127,
            {"sim/cockpit2/radios/indicators/nav1_hdef_dots_pilot",
             "sim/cockpit2/radios/indicators/nav2_hdef_dots_pilot"}),
    Dataref(kVorGlideSlope, "VOR glide", Use::DedicatedGauge, kRadios, 10, kVorNeedle, -127, 127,
            {"sim/cockpit2/radios/indicators/nav1_vdef_dots_pilot",
             "sim/cockpit2/radios/indicators/nav2_vdef_dots_pilot"}),
    Dataref(kVorToFrom, "VOR to/from", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 2,
            {"sim/cockpit2/radios/indicators/nav1_flag_from_to_pilot",
             "sim/cockpit2/radios/indicators/nav2_flag_from_to_pilot"}),
    Dataref(kVorGlideSlopeReceived, "VOR glide rcvd", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 1,
            {"sim/cockpit2/radios/indicators/nav1_display_vertical",
             "sim/cockpit2/radios/indicators/nav2_display_vertical"}),
    Dataref(kMarkerBeacon, "Markers", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 1,
            {"sim/cockpit2/radios/indicators/outer_marker_lit",
             "sim/cockpit2/radios/indicators/middle_marker_lit",
             "sim/cockpit2/radios/indicators/inner_marker_lit"}),
    Dataref(kTransponderMode, "XPDR mode", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 4,
            {"sim/cockpit2/radios/actuators/transponder_mode"}),
    Dataref(51, "Fuel left", Use::Gauge, kFuel, 5, kGallons, 0, 26, {"sim/cockpit2/fuel/fuel_quantity[0]"}),
    Dataref(52, "Fuel right", Use::Gauge, kFuel, 5, kGallons, 0, 26, {"sim/cockpit2/fuel/fuel_quantity[1]"}),
    // Temperatures in degrees F, of an aircraft that tells them in degrees C.
    Dataref(53, "Oil temp.", Use::Gauge, kEngines, 5, kFahrenheit, 75, 245,
            {"sim/cockpit2/engine/indicators/oil_temperature_deg_C[0]"}),
    Dataref(54, "Oil pressure", Use::Gauge, kEngines, 5, kAsItIs, 0, 115,
            {"sim/cockpit2/engine/indicators/oil_pressure_psi[0]"}),
    Dataref(55, "EGT", Use::Gauge, kEngines, 5, kFahrenheit, 900, 1700,
            {"sim/cockpit2/engine/indicators/EGT_deg_C[0]", "sim/cockpit2/engine/indicators/EGT_deg_cel[0]"}),
    Dataref(56, "Fuel flow", Use::Gauge, kFuel, 5, kGallonsAnHour, 0, 20,
            {"sim/cockpit2/engine/indicators/fuel_flow_kg_sec[0]"}),
    Dataref(57, "Vacuum", Use::Gauge, kEngines, 5, kInchesOfSuction, 3, 7,
            {"sim/cockpit2/gauges/indicators/suction_1_ratio"}),
    Dataref(58, "Battery amps", Use::Gauge, kEngines, 5, kAsItIs, -60, 60,
            {"sim/cockpit2/electrical/battery_amps[0]"}),
    Dataref(59, "Engine RPM", Use::Gauge, kEngines, 20, kAsItIs, 0, 3500,
            {"sim/cockpit2/engine/indicators/engine_speed_rpm[0]"}),
    Dataref(60, "Manifold press", Use::Gauge, kEngines, 10, kAsItIs, 10, 35,
            {"sim/cockpit2/engine/indicators/MPR_in_hg[0]"}),
    Dataref(61, "CHT", Use::Gauge, kEngines, 5, kFahrenheit, 100, 500,
            {"sim/cockpit2/engine/indicators/CHT_deg_C[0]", "sim/cockpit2/engine/indicators/CHT_deg_cel[0]"}),
    Dataref(62, "Flaps", Use::Gauge, kSurfaces, 10, kPercent, 0, 100,
            {"sim/cockpit2/controls/flap_handle_deploy_ratio"}),
    Dataref(63, "Turn rate", Use::Gauge, kPlane, 10, kAsItIs, -30, 30,
            {"sim/cockpit2/gauges/indicators/turn_rate_heading_deg_pilot"}),
    Dataref(64, "Low volts", Use::OutputLed, kCockpit, 5, kAsItIs, 0, 1,
            {"sim/cockpit2/annunciators/low_voltage"}),
    Dataref(65, "Parking brake", Use::OutputLed, kCockpit, 5, kPercent, 0, 100,
            {"sim/flightmodel/controls/parkbrake"}),
    Dataref(66, "Course", Use::DedicatedGauge, kRadios, 5, kAsItIs, 0, 360,
            {"sim/cockpit2/radios/actuators/nav1_obs_deg_mag_pilot",
             "sim/cockpit2/radios/actuators/nav2_obs_deg_mag_pilot"}),
    Dataref(67, "Heading bug", Use::DedicatedGauge, kAutopilot, 10, kAsItIs, 0, 360,
            {"sim/cockpit2/autopilot/heading_dial_deg_mag_pilot"}),
    Dataref(68, "Gyro drift", Use::DedicatedGauge, kPlane, 2, kAsItIs, -180, 180,
            {"sim/cockpit/gyros/dg_drift_vac_deg"}),
    Dataref(69, "ADF active", Use::DedicatedGauge, kRadios, 5, kAsItIs, 190, 1799,
            {"sim/cockpit/radios/adf1_freq_hz"}),
    Dataref(70, "ADF standby", Use::DedicatedGauge, kRadios, 5, kAsItIs, 190, 1799,
            {"sim/cockpit/radios/adf1_stdby_freq_hz"}),
    Dataref(71, "DME source", Use::DedicatedGauge, kRadios, 5, kFromOne, 1, 2,
            {"sim/cockpit2/radios/actuators/DME_slave_source"}),
    // The autopilot panel's block.
    Dataref(91, "AP state", Use::DedicatedGauge, kAutopilot, 5, kAsItIs, 0, 2,
            {"sim/cockpit/autopilot/autopilot_mode"}),
    Dataref(93, "AP lateral", Use::DedicatedGauge, kAutopilot, 5, kAsItIs, 0, 2,
            {"sim/cockpit2/autopilot/heading_mode"}),
    // 2 is captured; the panel lights its lamp at 1.
    Dataref(97, "AP NAV", Use::DedicatedGauge, kAutopilot, 5, kHalf, 0, 1,
            {"sim/cockpit2/autopilot/nav_status"}),
    Dataref(99, "AP approach", Use::DedicatedGauge, kAutopilot, 5, kAsItIs, 0, 2,
            {"sim/cockpit2/autopilot/approach_status"}),
    Dataref(101, "AP alt. hold", Use::DedicatedGauge, kAutopilot, 5, kAsItIs, 0, 2,
            {"sim/cockpit2/autopilot/altitude_hold_status"}),
    Dataref(107, "AP altitude", Use::DedicatedGauge, kAutopilot, 5, kAsItIs, 0, 20000,
            {"sim/cockpit2/autopilot/altitude_dial_ft"}),
    Dataref(109, "AP vert. speed", Use::DedicatedGauge, kAutopilot, 5, kAsItIs, -3000, 3000,
            {"sim/cockpit2/autopilot/vvi_dial_fpm"}),
    Dataref(111, "AP trim", Use::DedicatedGauge, kAutopilot, 5, kPercent, -100, 100,
            {"sim/cockpit2/controls/elevator_trim"}),
    Dataref(112, "AP alt. dial", Use::DedicatedGauge, kAutopilot, 5, kAsItIs, 0, 20000,
            {"sim/cockpit2/autopilot/altitude_dial_ft"}),
    // The radio magnetic indicator's pointers.
    Dataref(kRmiVor, "VOR bearing", Use::DedicatedGauge, kRadios, 10, kAsItIs, 0, 360,
            {"sim/cockpit2/radios/indicators/nav1_bearing_deg_mag",
             "sim/cockpit2/radios/indicators/nav2_bearing_deg_mag"}),
    Dataref(kRmiAdf, "ADF bearing", Use::DedicatedGauge, kRadios, 10, kAsItIs, 0, 360,
            {"sim/cockpit2/radios/indicators/adf1_bearing_deg_mag",
             "sim/cockpit2/radios/indicators/adf2_bearing_deg_mag"}),
    Dataref(kAutopilotFlies, "AP flies", Use::DedicatedGauge, kAutopilot, 5, kAsItIs, 0, 1,
            {"sim/cockpit2/autopilot/servos_on"}),
    Dataref(kElevatorTrim, "Elevator trim", Use::DedicatedGauge, kSurfaces, 10, kAsItIs, -1, 1,
            {"sim/cockpit2/controls/elevator_trim"}),
    Dataref(kSimulatorVersion, "Sim version", Use::None, kNoCategory, 2, kAsItIs, 0, 999999,
            {"sim/version/xplane_internal_version"}),
};

FunctionRecord* Define(ConfigModel& model, const Row& row, DataType type) {
  FunctionRecord& record = model.Functions[static_cast<std::size_t>(row.number)];
  if (!record.ShortName.empty()) return nullptr;
  record = {};
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
  return &record;
}

std::string Entry(std::size_t number, std::string_view text) {
  return '#' + std::to_string(number) + ':' + std::string(text) + "\r\n";
}

// A list of commands, run by their numbers.
void DefineCommands(ConfigModel& model, std::int16_t number, std::string_view shortName, Category category,
                    std::initializer_list<std::string_view> commands) {
  const Row row{
      number, shortName, Use::InputSwitch, category, kAsItIs, 0, static_cast<float>(commands.size())};
  FunctionRecord* record = Define(model, row, DataType::XplaneCmnd);
  if (record == nullptr) return;
  std::size_t entry = 0;
  for (const auto command : commands) record->FullName += Entry(++entry, command);
}

}  // namespace

void FillStandardFunctions(ConfigModel& model) {
  for (const auto& row : kDatarefs) {
    FunctionRecord* record = Define(model, row, DataType::XplaneDataref);
    if (record == nullptr) continue;
    const std::array<Byte*, 4> frequencies = {&record->XPVal1, &record->XPVal2, &record->XPVal3,
                                              &record->XPVal4};
    for (std::size_t i = 0; i < row.datarefs.size() && !row.datarefs[i].empty(); ++i) {
      record->FullName += Entry(i + 1, row.datarefs[i]);
      *frequencies[i] = row.frequency;
    }
  }
  DefineCommands(model, kTransponderIdent, "XPDR ident", kRadios, {"sim/transponder/transponder_ident"});
  // The buttons of the autopilot panel, in the order of their bits.
  DefineCommands(model, 92, "AP buttons", kAutopilot,
                 {"sim/autopilot/servos_toggle", "sim/autopilot/heading", "sim/autopilot/NAV",
                  "sim/autopilot/approach", "sim/autopilot/back_course", "sim/autopilot/altitude_hold",
                  "sim/autopilot/nose_up", "sim/autopilot/nose_down"});
}

}  // namespace tvx
