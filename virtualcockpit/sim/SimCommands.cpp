// The few commands that do something in the stand-in simulator.
#include <algorithm>
#include <cmath>

#include "virtualcockpit/sim/Simulator.h"

namespace tvx::vc {
namespace {

enum class Act { On, Off, Toggle, Step };

struct CommandRow {
  std::string_view name;
  std::string_view dataref;
  Act act;
  double step = 0, lowest = 0, highest = 1;
};

constexpr std::string_view kNavLights = "sim/cockpit2/switches/navigation_lights_on";
constexpr std::string_view kBeacon = "sim/cockpit2/switches/beacon_on";
constexpr std::string_view kStrobes = "sim/cockpit2/switches/strobe_lights_on";
constexpr std::string_view kLanding = "sim/cockpit2/switches/landing_lights_on";
constexpr std::string_view kTaxi = "sim/cockpit2/switches/taxi_light_on";
constexpr std::string_view kBarometer = "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot";
constexpr std::string_view kFlaps = "sim/cockpit2/controls/flap_ratio";
constexpr std::string_view kGear = "sim/cockpit2/controls/gear_handle_down";

constexpr CommandRow kCommands[] = {
    {"sim/lights/nav_lights_on", kNavLights, Act::On},
    {"sim/lights/nav_lights_off", kNavLights, Act::Off},
    {"sim/lights/nav_lights_toggle", kNavLights, Act::Toggle},
    {"sim/lights/beacon_lights_on", kBeacon, Act::On},
    {"sim/lights/beacon_lights_off", kBeacon, Act::Off},
    {"sim/lights/beacon_lights_toggle", kBeacon, Act::Toggle},
    {"sim/lights/strobe_lights_on", kStrobes, Act::On},
    {"sim/lights/strobe_lights_off", kStrobes, Act::Off},
    {"sim/lights/strobe_lights_toggle", kStrobes, Act::Toggle},
    {"sim/lights/landing_lights_on", kLanding, Act::On},
    {"sim/lights/landing_lights_off", kLanding, Act::Off},
    {"sim/lights/landing_lights_toggle", kLanding, Act::Toggle},
    {"sim/lights/taxi_lights_on", kTaxi, Act::On},
    {"sim/lights/taxi_lights_off", kTaxi, Act::Off},
    {"sim/lights/taxi_lights_toggle", kTaxi, Act::Toggle},
    {"sim/instruments/barometer_up", kBarometer, Act::Step, .01, 27, 32},
    {"sim/instruments/barometer_down", kBarometer, Act::Step, -.01, 27, 32},
    {"sim/flight_controls/flaps_down", kFlaps, Act::Step, .25},
    {"sim/flight_controls/flaps_up", kFlaps, Act::Step, -.25},
    {"sim/flight_controls/landing_gear_down", kGear, Act::On},
    {"sim/flight_controls/landing_gear_up", kGear, Act::Off},
    {"sim/flight_controls/landing_gear_toggle", kGear, Act::Toggle},
};

double NewValue(const CommandRow& row, double value) {
  switch (row.act) {
    case Act::On:
      return 1;
    case Act::Off:
      return 0;
    case Act::Toggle:
      return value != 0 ? 0 : 1;
    case Act::Step:
      return std::clamp(value + row.step, row.lowest, row.highest);
  }
  return value;
}

}  // namespace

bool RunSimCommand(std::string_view name, Simulator& simulator) {
  if (name == "sim/operation/pause_toggle") {
    simulator.SetPaused(!simulator.Paused());
    return true;
  }
  if (RunRadioCommand(name, simulator)) return true;
  const auto row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                [name](const CommandRow& r) { return r.name == name; });
  if (row == std::end(kCommands)) return false;
  DatarefStore& store = simulator.Datarefs();
  const int place = store.Find(row->dataref);
  return store.Write(place, NewValue(*row, store.Value(place)));
}

}  // namespace tvx::vc
