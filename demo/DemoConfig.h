// The demonstration cockpit: a single-engine light aircraft's panel.
#pragma once

#include "config/Model.h"

namespace tvx::demo {

// The whole configuration, always the same.
ConfigModel DemoConfig();
// The same with two yokes: Yokes.cfg.
ConfigModel YokesConfig();

// Its parts.
void AddGaugesAndPlates(ConfigModel& model);
void AddModules(ConfigModel& model);  // behind the others: it uses their Functions and Plates

// The standard Functions that its gauges show.
enum FunctionNumber : std::int16_t {
  kAltitude = 2,
  kAirspeed = 1,
  kHeading = 3,
  kVerticalSpeed = 6,
  kAirPressure = 8,
  kCom1Active = 20,
  kCom1Standby = 22,
  kNavActive = 24,
  kNavStandby = 25,
  kCourseNeedle = 33,
  kGlideNeedle = 34,
  kFuelLeft = 51,  // the eight of the engine cluster stand in a row, in this order
  kFuelRight,
  kOilTemperature,
  kOilPressure,
  kExhaustTemperature,
  kFuelFlow,
  kVacuum,
  kAmperes,
  kEngineSpeed,
  kManifoldPressure,
  kHeadTemperature,
  kFlaps,
  kTurnRate,
  kLowVoltageLamp,
  kParkingBrake,
  kCourse1,
  kHeadingBug,
  kGyroDrift,
  kAdfActive,
  kAdfStandby,
  kDmeSource,
};

}  // namespace tvx::demo
