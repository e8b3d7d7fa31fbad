#include "core/StandardPorts.h"

#include "config/FunctionNumbers.h"

namespace tvx {
namespace {

struct Row {
  StandardValue value;
  int function;
  int sequenceNr;
  bool read;
};

// ODDITY: the time and the temperature are opened and never read. The list of ports has always shown them.
constexpr Row kRows[] = {
    {StandardValue::Airspeed, functions::kAirspeed, 1, true},
    {StandardValue::Altitude, functions::kAltitude, 1, true},
    {StandardValue::Heading, functions::kHeading, 1, true},
    {StandardValue::Bank, functions::kBank, 1, true},
    {StandardValue::Pitch, functions::kPitch, 1, true},
    {StandardValue::VerticalSpeed, functions::kVerticalSpeed, 1, true},
    {StandardValue::Compass, functions::kCompass, 1, true},
    {StandardValue::AirPressure, functions::kAirPressure, 1, true},
    {StandardValue::Voltage, functions::kVoltage, 1, true},
    {StandardValue::TimeOfDay, functions::kTimeOfDay, 1, false},
    {StandardValue::OutsideTemperature, functions::kOutsideTemperature, 1, false},
    {StandardValue::InstrumentLights, functions::kInstrumentLights, 1, true},
    {StandardValue::NavigationLights, functions::kNavigationLights, 1, true},
    {StandardValue::SecondVoltage, functions::kVoltage, 2, true},
};

}  // namespace

void StandardPorts::Open(SimCom& sim) {
  for (const Row& row : kRows) {
    Port& port = ports_[static_cast<std::size_t>(row.value)];
    port = sim.OpenSimPort(row.function, row.sequenceNr);
    if (row.read && port != kNoPort) sim.EnableReadSimPort(port);
  }
}

}  // namespace tvx
