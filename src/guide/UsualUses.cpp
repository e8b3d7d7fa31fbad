#include "guide/UsualUses.h"

#include "config/faces/ReadyFaces.h"
#include "hwbus/iomodule/IOModulePresenter.h"

namespace tvx {
namespace {

constexpr Byte kExternal = 11;  // category
constexpr float kFirstEntry = 1, kSecondEntry = 2;
constexpr std::int16_t kAxisDeadBand = 8;
constexpr Byte kReadsPerSecond = 5;

std::string EntriesOf(const UsualUse& use) {
  std::string text = "#1:" + std::string(use.first) + "\r\n";
  if (!use.second.empty()) text += "#2:" + std::string(use.second) + "\r\n";
  return text;
}

FunctionRecord RecordOf(const UsualUse& use, int number) {
  FunctionRecord record;
  const bool axis = use.kind == UseKind::Axis;
  record.ShortName = use.name;
  record.FullName = EntriesOf(use);
  record.FunctionNr = static_cast<std::int16_t>(number);
  record.FuncType = static_cast<Byte>(axis ? FunctionUse::InputAnalogue : FunctionUse::InputSwitch);
  record.ComboClass = kExternal;
  record.ComboDT = static_cast<Byte>(axis ? DataType::XplaneDataref : DataType::XplaneCmnd);
  record.Multiplier = record.Devider = 1;
  record.boxMaximumValue = use.second.empty() ? 1.0f : 2.0f;
  if (axis) record.XPVal1 = kReadsPerSecond;
  return record;
}

}  // namespace

const std::vector<UsualUse>& UsualUses() {
  using enum UseKind;
  static const std::vector<UsualUse> uses{
      {"Gear lever", Switch, "sim/flight_controls/landing_gear_down", "sim/flight_controls/landing_gear_up"},
      {"Flaps one step down", Button, "sim/flight_controls/flaps_down", {}},
      {"Flaps one step up", Button, "sim/flight_controls/flaps_up", {}},
      {"Parking brake", Button, "sim/flight_controls/brakes_toggle_max", {}},
      {"Battery", Switch, "sim/electrical/battery_1_on", "sim/electrical/battery_1_off"},
      {"Generator", Switch, "sim/electrical/generator_1_on", "sim/electrical/generator_1_off"},
      {"Avionics", Switch, "sim/systems/avionics_on", "sim/systems/avionics_off"},
      {"Fuel pump", Switch, "sim/fuel/fuel_pump_1_on", "sim/fuel/fuel_pump_1_off"},
      {"Pitot heat", Switch, "sim/ice/pitot_heat0_on", "sim/ice/pitot_heat0_off"},
      {"Navigation lights", Switch, "sim/lights/nav_lights_on", "sim/lights/nav_lights_off"},
      {"Beacon lights", Switch, "sim/lights/beacon_lights_on", "sim/lights/beacon_lights_off"},
      {"Strobe lights", Switch, "sim/lights/strobe_lights_on", "sim/lights/strobe_lights_off"},
      {"Landing lights", Switch, "sim/lights/landing_lights_on", "sim/lights/landing_lights_off"},
      {"Taxi lights", Switch, "sim/lights/taxi_lights_on", "sim/lights/taxi_lights_off"},
      {"Starter", Button, "sim/starters/engage_starter_1", {}},
      {"Autopilot on, off", Button, "sim/autopilot/servos_toggle", {}},
      {"Autopilot heading", Button, "sim/autopilot/heading", {}},
      {"Autopilot NAV", Button, "sim/autopilot/NAV", {}},
      {"Autopilot approach", Button, "sim/autopilot/approach", {}},
      {"Autopilot altitude", Button, "sim/autopilot/altitude_hold", {}},
      {"Autopilot vert. speed", Button, "sim/autopilot/vertical_speed", {}},
      {"COM 1 swap", Button, "sim/radios/com1_standy_flip", {}},
      {"COM 2 swap", Button, "sim/radios/com2_standy_flip", {}},
      {"NAV 1 swap", Button, "sim/radios/nav1_standy_flip", {}},
      {"NAV 2 swap", Button, "sim/radios/nav2_standy_flip", {}},
      {"Transponder ident", Button, "sim/transponder/transponder_ident", {}},
      {"Heading bug", Encoder, "sim/autopilot/heading_up", "sim/autopilot/heading_down"},
      {"Selected altitude", Encoder, "sim/autopilot/altitude_up", "sim/autopilot/altitude_down"},
      {"Selected vert. speed", Encoder, "sim/autopilot/vertical_speed_up",
       "sim/autopilot/vertical_speed_down"},
      {"Course of VOR 1", Encoder, "sim/radios/obs1_up", "sim/radios/obs1_down"},
      {"Altimeter setting", Encoder, "sim/instruments/barometer_up", "sim/instruments/barometer_down"},
      {"Gyro correction", Encoder, "sim/instruments/DG_sync_up", "sim/instruments/DG_sync_down"},
      {"COM 1 MHz", Encoder, "sim/radios/stby_com1_coarse_up", "sim/radios/stby_com1_coarse_down"},
      {"COM 1 kHz", Encoder, "sim/radios/stby_com1_fine_up", "sim/radios/stby_com1_fine_down"},
      {"COM 2 MHz", Encoder, "sim/radios/stby_com2_coarse_up", "sim/radios/stby_com2_coarse_down"},
      {"COM 2 kHz", Encoder, "sim/radios/stby_com2_fine_up", "sim/radios/stby_com2_fine_down"},
      {"NAV 1 MHz", Encoder, "sim/radios/stby_nav1_coarse_up", "sim/radios/stby_nav1_coarse_down"},
      {"NAV 1 kHz", Encoder, "sim/radios/stby_nav1_fine_up", "sim/radios/stby_nav1_fine_down"},
      {"NAV 2 MHz", Encoder, "sim/radios/stby_nav2_coarse_up", "sim/radios/stby_nav2_coarse_down"},
      {"NAV 2 kHz", Encoder, "sim/radios/stby_nav2_fine_up", "sim/radios/stby_nav2_fine_down"},
      {"Elevator trim", Encoder, "sim/flight_controls/pitch_trim_up", "sim/flight_controls/pitch_trim_down"},
      {"Throttle", Axis, "sim/cockpit2/engine/actuators/throttle_ratio_all", {}},
      {"Mixture", Axis, "sim/cockpit2/engine/actuators/mixture_ratio[0]", {}},
  };
  return uses;
}

int FunctionForUse(ConfigModel& model, const UsualUse& use) {
  const std::string entries = EntriesOf(use);
  const auto type = use.kind == UseKind::Axis ? DataType::XplaneDataref : DataType::XplaneCmnd;
  for (int number = 1; number < kFunctions; ++number) {
    const FunctionRecord& function = *model.FunctionOf(number);
    const bool plain = type == DataType::XplaneCmnd || (function.Multiplier == 1 && function.Devider == 1);
    if (function.FullName == entries && function.Is(type) && plain && !function.ShortName.empty())
      return number;
  }
  const int number = FreeFunction(model);
  if (number == 0) return 0;
  model.Functions[static_cast<std::size_t>(number)] = RecordOf(use, number);
  model.ConfigChanged = true;
  return number;
}

std::vector<IOModuleRecord> DefinitionsFor(ConfigModel& model, const UsualUse& use,
                                           const IOModuleInput& input) {
  const int function = FunctionForUse(model, use);
  if (function == 0) return {};
  IOModuleRecord record;
  record.Input = IOModuleInputNumber(input);
  record.FunctionNr = static_cast<std::int16_t>(function);
  record.SequenceNr = 1;
  record.RawMaximum = kIOModuleRawTop;
  record.DebounceTime = kIOModuleUsualDebounce;
  if (use.kind == UseKind::Axis) {
    record.ActionKind = static_cast<Byte>(IOModuleAction::WriteValue);
    record.DeadBand = kAxisDeadBand;
    return {record};
  }
  record.ActionKind = static_cast<Byte>(IOModuleAction::Command);
  record.OffOnValue = kFirstEntry;
  record.OnOffValue = use.kind == UseKind::Switch ? kSecondEntry : kIOModuleSendNothing;
  if (use.kind != UseKind::Encoder) return {record};
  IOModuleRecord other = record;
  record.SwitchType = static_cast<std::int16_t>(IOModuleSwitchType::EncoderA);
  ++other.Input;
  other.OffOnValue = kSecondEntry;
  other.SwitchType = static_cast<std::int16_t>(IOModuleSwitchType::EncoderB);
  return {record, other};
}

std::string UseOf(const ConfigModel& model, const IOModuleRecord& definition) {
  const FunctionRecord* function = model.FunctionOf(definition.FunctionNr);
  if (function == nullptr) return {};
  for (const UsualUse& use : UsualUses()) {
    if (function->FullName == EntriesOf(use)) return std::string(use.name);
  }
  return {};
}

}  // namespace tvx
