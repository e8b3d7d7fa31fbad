// The simulator ports of the program's own values.
#pragma once

#include <array>
#include <cstddef>

#include "simlink/SimCom.h"

namespace tvx {

// The entries of StandardPort. Entries 0 and 15 are not used.
enum class StandardValue : std::size_t {
  Airspeed = 1,
  Altitude,
  Heading,
  Bank,
  Pitch,
  VerticalSpeed,
  Compass,
  AirPressure,
  Voltage,  // of the first bus
  TimeOfDay,
  OutsideTemperature,
  InstrumentLights,
  NavigationLights,
  SecondVoltage,
};
inline constexpr std::size_t kStandardPorts = 16;

class StandardPorts {
 public:
  StandardPorts() { Clear(); }
  // Opens the port of every entry, in their order, under sim.CurrentOpener. An entry whose Function is not
  // defined has none.
  void Open(SimCom& sim);
  // No entry has a port any more; the simulator link has closed them.
  void Clear() { ports_.fill(kNoPort); }
  // The entry's port, or kNoPort.
  Port operator[](StandardValue value) const { return ports_[static_cast<std::size_t>(value)]; }

 private:
  std::array<Port, kStandardPorts> ports_;
};

}  // namespace tvx
