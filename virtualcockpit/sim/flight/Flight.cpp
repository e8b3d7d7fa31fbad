#include "virtualcockpit/sim/flight/Flight.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "virtualcockpit/sim/flight/FlightScript.h"

namespace tvx::vc {
namespace {

using namespace script;

constexpr double kDegrees = 180 / std::numbers::pi;
constexpr double kMetresPerKnotSecond = 0.514444;
constexpr double kFieldElevation = 430;  // ft
constexpr double kRunwayHeading = 242;   // true
constexpr double kVariation = 2;         // east
constexpr double kLatitude = 51.72, kLongitude = 6.31;
constexpr double kStartLocalTime = 20.6 * 3600;
constexpr double kFuelAtStart = 118;  // lb in each tank
constexpr double kDegreesPerDot = 2;
constexpr double kFullDeflection = 2.5;  // dots

double Wrap360(double angle) {
  const double wrapped = std::fmod(angle, 360);
  return wrapped < 0 ? wrapped + 360 : wrapped;
}
double Wrap180(double angle) {
  return Wrap360(angle + 180) - 180;
}

// A gentle bump in the air, never the same twice in a flight but the same in every flight.
double Gust(double t, double period, double shift) {
  return std::sin(2 * std::numbers::pi * t / period + shift) +
         0.6 * std::sin(2 * std::numbers::pi * t / (period * 0.37) + 2 * shift) +
         0.3 * std::sin(2 * std::numbers::pi * t / (period * 0.153) + 3 * shift);
}
// 0 on the ground, 1 in free air.
double Airborne(double t) {
  static constexpr Key keys[] = {{0, 0}, {46, 0}, {52, 1}, {236, 1}, {242, 0}, {270, 0}};
  return ValueAt(keys, t);
}

double ScriptedBank(double t) {
  for (const Turn& turn : kTurns) {
    const Key keys[] = {
        {turn.start, 0}, {turn.start + kTurnIn, turn.bank}, {turn.end - kTurnIn, turn.bank}, {turn.end, 0}};
    if (t > turn.start && t < turn.end) return ValueAt(keys, t);
  }
  return 0;
}
int TurnAt(double t) {
  for (int i = 0; i < 4; ++i) {
    if (t > kTurns[i].start && t < kTurns[i].end) return i;
  }
  return -1;
}

double TrueAirspeed(double t) {
  return ValueAt(kAirspeed, t) * 1.02;
}

// Degrees per second of a coordinated turn.
double TurnRate(double t) {
  const double speed = TrueAirspeed(t) * kMetresPerKnotSecond;
  return speed < 1 ? 0 : 9.81 * std::tan(ScriptedBank(t) / kDegrees) / speed * kDegrees;
}
double FuelFlow(double throttle, double rpm) {
  const double running = std::clamp((rpm - 300) / 300, 0.0, 1.0);
  return running * (11 + 74 * throttle * rpm / 2600);
}

std::string_view PhaseAt(double t) {
  std::string_view name;
  for (const Phase& phase : kPhases) {
    if (t >= phase.start) name = phase.name;
  }
  return name;
}

double Smooth01(double u) {
  u = std::clamp(u, 0.0, 1.0);
  return u * u * (3 - 2 * u);
}

// A radio beacon, in metres east and north of the threshold.
struct Beacon {
  double east, north;
};
// Stands left of the runway's far end, so that its flag turns from TO to FROM soon after take-off.
constexpr Beacon kNav1{-1626, -988}, kNav2{5200, 7400}, kAdf{-5200, 300};

struct Fix {
  double bearing;   // true, to the beacon
  double distance;  // m
};
Fix FixOf(const Beacon& beacon, const FlightState& s) {
  const double east = beacon.east - s.east;
  const double north = beacon.north - s.north;
  return {Wrap360(std::atan2(east, north) * kDegrees), std::hypot(east, north)};
}

// Dots by which the needle stands right of the middle, and the flag.
struct Course {
  double deviation;
  double flag;
};
Course CourseOf(double bearingMagnetic, double course) {
  const double error = Wrap180(bearingMagnetic - course);
  const bool to = std::abs(error) < 90;
  const double off = to ? error : Wrap180(180 - error);
  return {std::clamp(off / kDegreesPerDot, -kFullDeflection, kFullDeflection), to ? 1.0 : 2.0};
}

void FillEngine(FlightState& s, double t) {
  s.throttle = ValueAt(kThrottle, t);
  s.rpm = ValueAt(kRpm, t);
  s.rpm += s.rpm > 500 ? 6 * Gust(t, 9, 1.0) * std::min(1.0, (s.rpm - 500) / 300) : 0;
  s.engineRunning = s.rpm > 500 ? 1 : 0;
  s.starter = t > 6 && t < 9.5 ? 1 : 0;
  s.mixture = t > 4 && t < 263 ? 1 : 0;
  s.fuelFlow = FuelFlow(s.throttle, s.rpm);
  s.fuelPressure = 5.5 * (1 - std::exp(-s.rpm / 400));
  s.oilPressure = 68 * (1 - std::exp(-s.rpm / 650)) * (1 - 0.12 * Smooth01((s.oilTemperature - 40) / 60));
  s.vacuum = 5.1 * (1 - std::exp(-s.rpm / 700));
  s.manifold = s.ambientPressure - (s.rpm / 2640) * (19 * (1 - s.throttle) + 0.8);
  s.power = s.engineRunning * 200 * s.throttle * s.rpm / 2640;
}

void FillElectrics(FlightState& s, double t) {
  s.bus1 = ValueAt(kBus1, t);
  s.bus2 = ValueAt(kBus2, t);
  s.batteryOn = t > 2 && t < 268 ? 1 : 0;
  s.avionicsOn = t > 14 && t < 260.3 ? 1 : 0;
  s.generatorOn = t > 11 && t < 263 ? 1 : 0;
  s.battery = s.batteryOn != 0 ? s.bus1 : 24.4;
  static constexpr Key generator[] = {{0, 0},    {11, 0},   {13, 34},  {20, 24}, {60, 14},
                                      {129, 13}, {143, 19}, {262, 18}, {264, 0}, {270, 0}};
  static constexpr Key battery[] = {{0, 0},   {2, 0},  {2.6, -6}, {6, -7},   {7, -95}, {9, -85}, {11, -8},
                                    {13, 18}, {60, 2}, {262, 1},  {265, -8}, {268, 0}, {270, 0}};
  s.generatorAmps = ValueAt(generator, t);
  s.batteryAmps = ValueAt(battery, t);
  s.instrumentLights = ValueAt(kInstrumentLights, t);
  s.navigationLights = t >= kNavigationLightsOn && t < kNavigationLightsOff ? 1 : 0;
  s.beacon = t > 5 && t < 266 ? 1 : 0;
  s.strobes = t > 26 && t < 258 ? 1 : 0;
  s.landingLights = (t > 26 && t < 70) || (t > 200 && t < 258) ? 1 : 0;
  s.taxiLight = t > 255 && t < 262 ? 1 : 0;
  s.lowVacuum = s.vacuum < 3.5 ? s.batteryOn : 0;
  s.lowVolts = s.bus1 < 25 ? s.batteryOn : 0;
  s.lowOilPressure = s.oilPressure < 20 ? s.batteryOn : 0;
}

double MinutesTo(double miles, double knots) {
  return knots > 20 ? std::min(99.0, miles / knots * 60) : 99;
}

void FillNavigation(FlightState& s, const FlightSettings& settings) {
  const Fix nav1 = FixOf(kNav1, s);
  const Fix nav2 = FixOf(kNav2, s);
  const Course course1 = CourseOf(nav1.bearing - kVariation, settings.course1);
  const Course course2 = CourseOf(nav2.bearing - kVariation, settings.course2);
  s.nav1Bearing = Wrap360(nav1.bearing - kVariation);
  s.nav2Bearing = Wrap360(nav2.bearing - kVariation);
  s.nav1Distance = nav1.distance / 1852;
  s.nav2Distance = nav2.distance / 1852;
  s.nav1Deviation = course1.deviation;
  s.nav2Deviation = course2.deviation;
  s.nav1Flag = s.avionicsOn != 0 ? course1.flag : 0;
  s.nav2Flag = s.avionicsOn != 0 ? course2.flag : 0;
  s.nav1Minutes = MinutesTo(s.nav1Distance, s.groundSpeed);
  s.nav2Minutes = MinutesTo(s.nav2Distance, s.groundSpeed);
  const double adf = FixOf(kAdf, s).bearing;
  s.adfBearing = Wrap360(adf - s.heading);
  s.adfBearingMagnetic = Wrap360(adf - kVariation);
  // The glide path is received on the way down only; it fades in and out of the scale.
  static constexpr Key glide[] = {{0, 0},    {196, 0},    {206, -1.6}, {216, .7}, {226, -.25},
                                  {236, .1}, {241, -1.2}, {247, 0},    {270, 0}};
  s.nav1Glide = ValueAt(glide, s.time);
  s.nav1GlideFlag = s.avionicsOn != 0 && s.time > 197 && s.time < 246 ? 0 : 1;
  s.nav1GlideReceived = 1 - s.nav1GlideFlag;
  const auto lit = [&s](double from, double to) { return s.avionicsOn != 0 && s.time > from && s.time < to; };
  s.outerMarker = lit(206, 214) ? 1 : 0;
  s.middleMarker = lit(226, 230) ? 1 : 0;
  s.innerMarker = lit(235, 237) ? 1 : 0;
}

}  // namespace

Flight::Flight() {
  // Two rounds: the first finds by how much the script misses the runway and the right angles.
  SumUp();
  double down = 0;
  double up = 0;
  for (double t = 0; t < kSeconds; t += kStep) {
    const double rate = ValueAt(kVerticalSpeed, t);
    (rate > 0 ? up : down) += rate;
  }
  descentScale_ = down < 0 ? -up / down : 1;
  for (int i = 0; i < 4; ++i) {
    double turned = 0;
    for (double t = kTurns[i].start; t < kTurns[i].end; t += kStep) turned += TurnRate(t) * kStep;
    turnScale_[i] = -90 / turned;
  }
  SumUp();
  CloseTheCircle();
}

void Flight::SumUp() {
  sums_.clear();
  Sum sum{kFieldElevation, kRunwayHeading, 0, 0, 48, 90, 75, 0};
  const int steps = static_cast<int>(kSeconds / kStep);
  for (int i = 0; i <= steps; ++i) {
    sums_.push_back(sum);
    const double t = i * kStep;
    const double rate = ValueAt(kVerticalSpeed, t);
    sum.altitude += (rate < 0 ? rate * descentScale_ : rate) / 60 * kStep;
    const int turn = TurnAt(t);
    if (turn >= 0) sum.heading += TurnRate(t) * turnScale_[turn] * kStep;
    const double metres = TrueAirspeed(t) * kMetresPerKnotSecond * kStep;
    sum.east += metres * std::sin(sum.heading / kDegrees);
    sum.north += metres * std::cos(sum.heading / kDegrees);
    const double throttle = ValueAt(kThrottle, t);
    const double rpm = ValueAt(kRpm, t);
    const double running = std::clamp((rpm - 300) / 300, 0.0, 1.0);
    sum.oilTemperature += (20 + running * (38 + 40 * throttle) - sum.oilTemperature) / 70 * kStep;
    sum.exhaustTemperature += (25 + running * (430 + 330 * throttle) - sum.exhaustTemperature) / 7 * kStep;
    sum.headTemperature += (25 + running * (95 + 95 * throttle) - sum.headTemperature) / 45 * kStep;
    sum.fuelUsed += FuelFlow(throttle, rpm) / 3600 * kStep;
  }
}

// Leads every sum back to its start, so that the next round follows without a jump: the place by a wind too
// light to notice, temperatures and fuel while the aircraft stands at the end.
void Flight::CloseTheCircle() {
  const Sum first = sums_.front();
  const Sum last = sums_.back();
  const auto count = static_cast<double>(sums_.size() - 1);
  for (std::size_t i = 0; i < sums_.size(); ++i) {
    const double part = static_cast<double>(i) / count;
    const double parked = Smooth01((part * kSeconds - 255) / 15);
    Sum& sum = sums_[i];
    sum.altitude += (first.altitude - last.altitude) * part;
    sum.heading += (first.heading - 360 - last.heading) * part;
    sum.east += (first.east - last.east) * part;
    sum.north += (first.north - last.north) * part;
    sum.oilTemperature += (first.oilTemperature - sum.oilTemperature) * parked;
    sum.exhaustTemperature += (first.exhaustTemperature - sum.exhaustTemperature) * parked;
    sum.headTemperature += (first.headTemperature - sum.headTemperature) * parked;
    sum.fuelUsed += (first.fuelUsed - sum.fuelUsed) * parked;
  }
}

Flight::Sum Flight::SumAt(double time) const {
  const double place = time / kStep;
  const auto k = std::min(static_cast<std::size_t>(place), sums_.size() - 2);
  const double u = place - static_cast<double>(k);
  const Sum& a = sums_[k];
  const Sum& b = sums_[k + 1];
  const auto mix = [u](double from, double to) { return from + (to - from) * u; };
  return {mix(a.altitude, b.altitude),
          mix(a.heading, b.heading),
          mix(a.east, b.east),
          mix(a.north, b.north),
          mix(a.oilTemperature, b.oilTemperature),
          mix(a.exhaustTemperature, b.exhaustTemperature),
          mix(a.headTemperature, b.headTemperature),
          mix(a.fuelUsed, b.fuelUsed)};
}

FlightState Flight::StateAt(double seconds, const FlightSettings& settings) const {
  FlightState s;
  const double t = std::isfinite(seconds) && seconds > 0 ? std::fmod(seconds, kSeconds) : 0;
  const double air = Airborne(t);
  const Sum sum = SumAt(t);
  s.time = t;
  s.phase = PhaseAt(t);

  const double gust = 0.7 * air * Gust(t, 23, 0.4);
  s.airspeed = std::max(0.0, ValueAt(kAirspeed, t) + gust);
  s.trueAirspeed = s.airspeed * 1.02;
  s.mach = s.trueAirspeed / 661;
  s.windSpeed = 6;
  s.windDirection = 260;
  s.groundSpeed =
      std::max(0.0, s.trueAirspeed - air * 5 * std::cos((sum.heading - s.windDirection) / kDegrees));
  s.altitude = sum.altitude;
  s.heightAboveGround = std::max(0.0, sum.altitude - kFieldElevation);
  s.onGround = s.heightAboveGround < 0.5 ? 1 : 0;
  s.indicatedAltitude = s.altitude + (settings.barometer - s.seaLevelPressure) * 1000;
  const double rate = ValueAt(kVerticalSpeed, t);
  s.verticalSpeed = (rate < 0 ? rate * descentScale_ : rate) + 22 * air * Gust(t, 17, 2.2);

  const int turn = TurnAt(t);
  s.turnRate = turn >= 0 ? TurnRate(t) * turnScale_[turn] : 0;
  s.variation = kVariation;
  s.heading = Wrap360(sum.heading + 0.4 * air * Gust(t, 31, 0.9));
  s.headingMagnetic = Wrap360(s.heading - kVariation);
  s.compass =
      Wrap360(s.headingMagnetic +
              air * (2.2 * std::sin(t * 0.8) * std::min(1.0, std::abs(s.turnRate)) + 0.6 * Gust(t, 7, 1.7)));
  s.bank = ScriptedBank(t) + 0.9 * air * Gust(t, 13, 1.3);
  s.pitch = ValueAt(kPitch, t) + 0.3 * air * Gust(t, 11, 0.2);
  s.slip = 0.4 * air * Gust(t, 19, 2.6);
  s.angleOfAttack = air * std::clamp(14 - s.airspeed / 10, 1.0, 12.0);
  s.gForce = 1 / std::cos(s.bank / kDegrees);
  s.pitchRate = (ValueAt(kPitch, t + 0.05) - ValueAt(kPitch, t - 0.05)) / 0.1;
  s.rollRate = (ScriptedBank(t + 0.05) - ScriptedBank(t - 0.05)) / 0.1;
  s.east = sum.east;
  s.north = sum.north;
  s.latitude = kLatitude + sum.north / 111120;
  s.longitude = kLongitude + sum.east / (111120 * std::cos(kLatitude / kDegrees));

  s.ambientPressure = s.seaLevelPressure - s.altitude / 1000 * 1.06;
  s.ambientTemperature = 15 - s.altitude / 1000 * 1.98;
  s.oilTemperature = sum.oilTemperature;
  s.exhaustTemperature = sum.exhaustTemperature;
  s.headTemperature = sum.headTemperature;
  s.fuelLeft = kFuelAtStart - 0.55 * sum.fuelUsed;
  s.fuelRight = kFuelAtStart - 4 - 0.45 * sum.fuelUsed;
  FillEngine(s, t);
  FillElectrics(s, t);

  s.flaps = ValueAt(kFlaps, t);
  s.brakes = ValueAt(kBrakes, t);
  s.elevatorTrim = ValueAt(kTrim, t);
  s.elevator = std::clamp(s.pitchRate * 0.12 + 0.03 * air * Gust(t, 5, 0.3), -1.0, 1.0);
  s.aileron = std::clamp(s.rollRate * 0.08 + 0.04 * air * Gust(t, 6, 1.1), -1.0, 1.0);
  s.rudder = std::clamp(s.turnRate * 0.02, -1.0, 1.0);
  FillNavigation(s, settings);
  s.localSeconds = kStartLocalTime + t;
  s.zuluSeconds = s.localSeconds - 7200;
  return s;
}

}  // namespace tvx::vc
