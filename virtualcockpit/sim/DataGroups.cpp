#include "virtualcockpit/sim/DataGroups.h"

#include <cmath>

namespace tvx::vc {
namespace {

struct FeedRow {
  int group, slot;
  std::string_view name;
  double scale;
};

constexpr double kKnots = 1 / 0.514444;    // from m/s
constexpr double kFeet = 1 / 0.3048;       // from m
constexpr double kPounds = 1 / 0.453592;   // from kg
constexpr double kMilesPerHour = 1.15078;  // from kt

constexpr FeedRow kFeeds[] = {
    {1, 0, "sim/time/total_running_time_sec", 1},
    {1, 2, "sim/time/total_flight_time_sec", 1},
    {1, 5, "sim/time/zulu_time_sec", 1.0 / 3600},
    {1, 6, "sim/time/local_time_sec", 1.0 / 3600},
    {3, 0, "sim/cockpit2/gauges/indicators/airspeed_kts_pilot", 1},
    {3, 1, "sim/cockpit2/gauges/indicators/airspeed_kts_pilot", 1},
    {3, 2, "sim/flightmodel/position/true_airspeed", kKnots},
    {3, 3, "sim/flightmodel/position/groundspeed", kKnots},
    {3, 5, "sim/cockpit2/gauges/indicators/airspeed_kts_pilot", kMilesPerHour},
    {3, 6, "sim/flightmodel/position/true_airspeed", kKnots* kMilesPerHour},
    {3, 7, "sim/flightmodel/position/groundspeed", kKnots* kMilesPerHour},
    {4, 0, "sim/cockpit2/gauges/indicators/mach_pilot", 1},
    {4, 2, "sim/cockpit2/gauges/indicators/vvi_fpm_pilot", 1},
    {4, 4, "sim/flightmodel/forces/g_nrml", 1},
    {5, 0, "sim/weather/barometer_sealevel_inhg", 1},
    {5, 4, "sim/weather/aircraft/wind_now_direction_degt", 1},
    {6, 0, "vc/ambient_pressure_inhg", 1},
    {6, 1, "sim/cockpit2/temperature/outside_air_temp_degc", 1},
    {7, 0, "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot", 1},
    {7, 2, "sim/cockpit2/gauges/indicators/suction_1_ratio", 1},
    {7, 3, "sim/cockpit2/gauges/indicators/suction_2_ratio", 1},
    {8, 0, "sim/cockpit2/controls/yoke_pitch_ratio", 1},
    {8, 1, "sim/cockpit2/controls/yoke_roll_ratio", 1},
    {8, 2, "sim/cockpit2/controls/yoke_heading_ratio", 1},
    {11, 0, "sim/cockpit2/controls/yoke_pitch_ratio", 1},
    {11, 1, "sim/cockpit2/controls/yoke_roll_ratio", 1},
    {11, 2, "sim/cockpit2/controls/yoke_heading_ratio", 1},
    {13, 0, "sim/cockpit2/controls/elevator_trim", 1},
    {13, 3, "sim/cockpit2/controls/flap_ratio", 1},
    {13, 4, "sim/cockpit2/controls/flap_handle_deploy_ratio", 1},
    {14, 0, "sim/cockpit2/controls/gear_handle_down", 1},
    {14, 1, "sim/cockpit2/controls/parking_brake_ratio", 1},
    {16, 0, "sim/flightmodel/position/P", 1},
    {16, 1, "sim/flightmodel/position/Q", 1},
    {16, 2, "sim/flightmodel/position/R", 1},
    {17, 0, "sim/flightmodel/position/theta", 1},
    {17, 1, "sim/flightmodel/position/phi", 1},
    {17, 2, "sim/flightmodel/position/psi", 1},
    {17, 3, "sim/flightmodel/position/mag_psi", 1},
    {18, 0, "sim/flightmodel/position/alpha", 1},
    {18, 1, "sim/flightmodel/position/beta", 1},
    {18, 2, "sim/flightmodel/position/hpath", 1},
    {18, 7, "sim/flightmodel/misc/slip", 1},
    {19, 0, "sim/cockpit2/gauges/indicators/compass_heading_deg_mag", 1},
    {19, 1, "sim/flightmodel/position/magnetic_variation", 1},
    {20, 0, "sim/flightmodel/position/latitude", 1},
    {20, 1, "sim/flightmodel/position/longitude", 1},
    {20, 2, "sim/flightmodel/position/elevation", kFeet},
    {20, 3, "sim/flightmodel/position/y_agl", kFeet},
    {20, 4, "sim/flightmodel2/gear/on_ground[0]", 1},
    {20, 5, "sim/cockpit2/gauges/indicators/altitude_ft_pilot", 1},
    {25, 0, "sim/cockpit2/engine/actuators/throttle_ratio[0]", 1},
    {26, 0, "sim/cockpit2/engine/actuators/throttle_ratio[0]", 1},
    {29, 0, "sim/cockpit2/engine/actuators/mixture_ratio[0]", 1},
    {34, 0, "sim/cockpit2/engine/indicators/power_watts[0]", 1 / 745.7},
    {37, 0, "sim/cockpit2/engine/indicators/engine_speed_rpm[0]", 1},
    {38, 0, "sim/cockpit2/engine/indicators/prop_speed_rpm[0]", 1},
    {43, 0, "sim/cockpit2/engine/indicators/MPR_in_hg[0]", 1},
    {45, 0, "sim/cockpit2/engine/indicators/fuel_flow_kg_sec[0]", 3600 * kPounds},
    {47, 0, "sim/cockpit2/engine/indicators/EGT_deg_C[0]", 1},
    {48, 0, "sim/cockpit2/engine/indicators/CHT_deg_C[0]", 1},
    {49, 0, "sim/cockpit2/engine/indicators/oil_pressure_psi[0]", 1},
    {50, 0, "sim/cockpit2/engine/indicators/oil_temperature_deg_C[0]", 1},
    {51, 0, "sim/cockpit2/engine/indicators/fuel_pressure_psi[0]", 1},
    {52, 0, "sim/cockpit2/electrical/generator_amps[0]", 1},
    {53, 0, "sim/cockpit2/electrical/battery_amps[0]", 1},
    {54, 0, "sim/cockpit2/electrical/battery_voltage_indicated_volts[0]", 1},
    {57, 0, "sim/cockpit2/electrical/battery_on[0]", 1},
    {58, 0, "sim/cockpit2/electrical/generator_on[0]", 1},
    {62, 0, "sim/cockpit2/fuel/fuel_quantity[0]", kPounds},
    {62, 1, "sim/cockpit2/fuel/fuel_quantity[1]", kPounds},
    {67, 0, "sim/flightmodel2/gear/deploy_ratio[0]", 1},
    {67, 1, "sim/flightmodel2/gear/deploy_ratio[1]", 1},
    {67, 2, "sim/flightmodel2/gear/deploy_ratio[2]", 1},
    {96, 0, "sim/cockpit/radios/com1_freq_hz", 1},
    {96, 1, "sim/cockpit/radios/com1_stdby_freq_hz", 1},
    {96, 3, "sim/cockpit/radios/com2_freq_hz", 1},
    {96, 4, "sim/cockpit/radios/com2_stdby_freq_hz", 1},
    {97, 0, "sim/cockpit/radios/nav1_freq_hz", 1},
    {97, 1, "sim/cockpit/radios/nav1_stdby_freq_hz", 1},
    {97, 4, "sim/cockpit/radios/nav2_freq_hz", 1},
    {97, 5, "sim/cockpit/radios/nav2_stdby_freq_hz", 1},
    {98, 0, "sim/cockpit/radios/nav1_obs_degm", 1},
    {98, 4, "sim/cockpit/radios/nav2_obs_degm", 1},
    {99, 1, "sim/cockpit/radios/nav1_fromto", 1},
    {99, 2, "sim/cockpit2/radios/indicators/nav1_bearing_deg_mag", 1},
    {99, 4, "sim/cockpit2/radios/indicators/nav1_dme_distance_nm", 1},
    {99, 5, "sim/cockpit/radios/nav1_hdef_dot", 1},
    {99, 6, "sim/cockpit/radios/nav1_vdef_dot", 1},
    {100, 1, "sim/cockpit/radios/nav2_fromto", 1},
    {100, 2, "sim/cockpit2/radios/indicators/nav2_bearing_deg_mag", 1},
    {100, 4, "sim/cockpit2/radios/indicators/nav2_dme_distance_nm", 1},
    {100, 5, "sim/cockpit/radios/nav2_hdef_dot", 1},
    {101, 0, "sim/cockpit/radios/adf1_freq_hz", 1},
    {101, 2, "sim/cockpit/radios/adf1_dir_degt", 1},
    {104, 0, "sim/cockpit/radios/transponder_mode", 1},
    {104, 1, "sim/cockpit/radios/transponder_code", 1},
    {105, 0, "sim/cockpit2/radios/indicators/outer_marker_lit", 1},
    {105, 1, "sim/cockpit2/radios/indicators/middle_marker_lit", 1},
    {105, 2, "sim/cockpit2/radios/indicators/inner_marker_lit", 1},
    {106, 0, "sim/cockpit2/switches/avionics_power_on", 1},
    {106, 1, "sim/cockpit2/switches/navigation_lights_on", 1},
    {106, 2, "sim/cockpit2/switches/beacon_on", 1},
    {106, 3, "sim/cockpit2/switches/strobe_lights_on", 1},
    {106, 4, "sim/cockpit2/switches/landing_lights_on", 1},
    {106, 5, "sim/cockpit2/switches/taxi_light_on", 1},
    {113, 4, "sim/cockpit2/annunciators/low_vacuum", 1},
    {113, 5, "sim/cockpit2/annunciators/low_voltage", 1},
    {117, 1, "sim/cockpit2/autopilot/heading_mode", 1},
    {118, 1, "sim/cockpit2/autopilot/heading_dial_deg_mag_pilot", 1},
    {118, 2, "sim/cockpit2/autopilot/vvi_dial_fpm", 1},
    {118, 3, "sim/cockpit2/autopilot/altitude_dial_ft", 1},
    {124, 0, "sim/cockpit2/electrical/bus_volts[0]", 1},
    {124, 1, "sim/cockpit2/electrical/bus_volts[1]", 1},
    {124, 2, "sim/cockpit2/electrical/bus_load_amps[0]", 1},
    {132, 1, "sim/cockpit2/gauges/indicators/vvi_fpm_pilot", 1},
};

bool InRange(int group, int slot) {
  return group >= 0 && group < kDataGroups && slot >= 0 && slot < kGroupValues;
}

}  // namespace

DataGroups::DataGroups(DatarefStore& store) : store_(store) {
  for (const FeedRow& row : kFeeds) {
    const int place = store.Find(row.name);
    if (place != DatarefStore::kNone) feeds_[{row.group, row.slot}] = {place, row.scale};
  }
}

std::array<float, kGroupValues> DataGroups::Values(int group) const {
  std::array<float, kGroupValues> values{};
  for (auto at = feeds_.lower_bound({group, 0}); at != feeds_.end() && at->first.first == group; ++at) {
    const auto slot = static_cast<std::size_t>(at->first.second);
    values[slot] = static_cast<float>(store_.Value(at->second.place) * at->second.scale);
  }
  for (auto at = written_.lower_bound({group, 0}); at != written_.end() && at->first.first == group; ++at) {
    values[static_cast<std::size_t>(at->first.second)] = static_cast<float>(at->second);
  }
  return values;
}

bool DataGroups::Write(int group, int slot, double value) {
  if (!InRange(group, slot) || !std::isfinite(value)) return false;
  const auto feed = feeds_.find({group, slot});
  if (feed != feeds_.end()) return store_.Write(feed->second.place, value / feed->second.scale);
  written_[{group, slot}] = value;
  return true;
}

}  // namespace tvx::vc
