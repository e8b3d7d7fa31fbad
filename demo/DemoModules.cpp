// The demonstration's IO module on COM 6 and engine cluster on COM 7.
#include <algorithm>
#include <string>

#include "demo/DemoConfig.h"
#include "hwbus/iomodule/IOModuleInput.h"

namespace tvx::demo {
namespace {

enum ModuleFunction : std::int16_t { kBeacon = 200, kLandingLight, kNavLights, kThrottle, kFlapsCommand };

FunctionRecord& Define(ConfigModel& model, std::int16_t number, const char* shortName, FunctionUse use,
                       Byte category, DataType type) {
  FunctionRecord& record = model.Functions[static_cast<std::size_t>(number)];
  record.ShortName = shortName;
  record.FunctionNr = number;
  record.FuncType = static_cast<Byte>(use);
  record.ComboClass = category;
  record.ComboDT = static_cast<Byte>(type);
  record.Multiplier = record.Devider = 1;
  record.boxMaximumValue = 1;
  return record;
}

void DefineDataref(ConfigModel& model, std::int16_t number, const char* shortName, FunctionUse use,
                   Byte category, const char* dataref) {
  FunctionRecord& record = Define(model, number, shortName, use, category, DataType::XplaneDataref);
  record.FullName = std::string("#1:") + dataref + "\r\n";
  record.XPVal1 = 5;
}

void DefineFunctions(ConfigModel& model) {
  constexpr Byte kEngines = 1, kSurfaces = 2, kExternal = 11;
  DefineDataref(model, kBeacon, "Beacon", FunctionUse::SwitchAndLed, kExternal,
                "sim/cockpit2/switches/beacon_on");
  DefineDataref(model, kLandingLight, "Landing light", FunctionUse::SwitchAndLed, kExternal,
                "sim/cockpit2/switches/landing_lights_on");
  DefineDataref(model, kNavLights, "Nav lights", FunctionUse::SwitchAndLed, kExternal,
                "sim/cockpit2/switches/navigation_lights_on");
  DefineDataref(model, kThrottle, "Throttle", FunctionUse::InputAnalogue, kEngines,
                "sim/cockpit2/engine/actuators/throttle_ratio_all");
  FunctionRecord& flaps =
      Define(model, kFlapsCommand, "Flaps step", FunctionUse::InputSwitch, kSurfaces, DataType::XplaneCmnd);
  flaps.FullName = "#1:sim/flight_controls/flaps_down\r\n#2:sim/flight_controls/flaps_up\r\n";
  flaps.boxMaximumValue = 2;
}

// A definition of module 1; what is not said here is 0.
IOModuleRecord Of(IOModuleKind kind, int index, std::int16_t function) {
  IOModuleRecord record;
  record.Input = IOModuleInputNumber({1, kind, index});
  record.FunctionNr = function;
  record.SequenceNr = 1;
  record.ActionKind = static_cast<Byte>(IOModuleAction::WriteValue);
  record.RawMaximum = kIOModuleRawTop;
  if (kind == IOModuleKind::Switch) record.DebounceTime = 5;
  return record;
}

IOModuleRecord Toggle(int index, std::int16_t function) {
  IOModuleRecord record = Of(IOModuleKind::Switch, index, function);
  record.OffOnValue = 100;
  return record;
}

IOModuleRecord CommandKey(int index, std::int16_t function, int entry) {
  IOModuleRecord record = Of(IOModuleKind::Switch, index, function);
  record.ActionKind = static_cast<Byte>(IOModuleAction::Command);
  record.OffOnValue = static_cast<float>(entry);
  record.OnOffValue = kIOModuleSendNothing;
  return record;
}

IOModuleRecord EncoderHalf(int index, std::int16_t function, IOModuleSwitchType half) {
  IOModuleRecord record = Of(IOModuleKind::Switch, index, function);
  record.IncrementFlags = kIOModuleStepOffOn;
  record.OffOnValue = half == IOModuleSwitchType::EncoderA ? 1.0f : -1.0f;
  record.SwitchType = static_cast<std::int16_t>(half);
  return record;
}

IOModuleRecord Lamp(int index, std::int16_t function, int condition, float percentage = 0) {
  IOModuleRecord record = Of(IOModuleKind::Lamp, index, function);
  record.IncrementFlags = static_cast<std::int16_t>(condition);
  record.OffOnValue = percentage;
  return record;
}

void AddIOModule(ConfigModel& model) {
  IOModuleRecord view = Of(IOModuleKind::Switch, 6, 0);
  view.ActionKind = static_cast<Byte>(IOModuleAction::Keystroke);
  view.OnKeystroke = 0x0100 | 'w';  // the simulator's key for the view to the front
  IOModuleRecord throttle = Of(IOModuleKind::Analogue, 0, kThrottle);
  throttle.DeadBand = 8;
  model.IOModuleInputs = {
      Toggle(0, kParkingBrake),
      Toggle(1, kBeacon),
      Toggle(2, kLandingLight),
      Toggle(3, kNavLights),
      CommandKey(4, kFlapsCommand, 1),
      CommandKey(5, kFlapsCommand, 2),
      view,
      EncoderHalf(8, kHeadingBug, IOModuleSwitchType::EncoderA),
      EncoderHalf(9, kHeadingBug, IOModuleSwitchType::EncoderB),
      EncoderHalf(10, kCourse1, IOModuleSwitchType::EncoderA),
      EncoderHalf(11, kCourse1, IOModuleSwitchType::EncoderB),
      throttle,
      Lamp(0, kParkingBrake, kIOModuleLitAtMaximum),
      Lamp(1, kBeacon, kIOModuleLitAtMaximum),
      Lamp(2, kLandingLight, kIOModuleLitAtMaximum),
      Lamp(3, kNavLights, kIOModuleLitAtMaximum),
      Lamp(4, kFlaps, kIOModuleLitAbove, 10),
      Lamp(5, kLowVoltageLamp, kIOModuleLitAtMaximum),
  };
  model.IOModuleInputs.emplace_back();  // the spare one
  model.General.ComPortIOM1 = 6;
}

std::int16_t PlateNamed(const ConfigModel& model, std::string_view start) {
  const auto found = std::find_if(model.Plates.begin(), model.Plates.end(),
                                  [&](const PlateRecord& plate) { return plate.Name.starts_with(start); });
  return static_cast<std::int16_t>(found - model.Plates.begin());
}

void AddEngineCluster(ConfigModel& model) {
  const struct {
    std::int16_t function;
    std::string_view plate;
  } channels[] = {
      {kEngineSpeed, "Engine speed"},   {kManifoldPressure, "Manifold"}, {kOilTemperature, "Oil temperature"},
      {kOilPressure, "Oil pressure"},   {kFuelLeft, "Fuel left"},        {kFuelRight, "Fuel right"},
      {kExhaustTemperature, "Exhaust"}, {kFuelFlow, "Fuel flow"}};
  for (std::size_t k = 0; k < std::size(channels); ++k) {
    model.EngineCluster[k] = {1, channels[k].function, PlateNamed(model, channels[k].plate)};
  }
  model.General.ComPortEC = 7;
}

}  // namespace

void AddModules(ConfigModel& model) {
  DefineFunctions(model);
  AddIOModule(model);
  AddEngineCluster(model);
}

}  // namespace tvx::demo
