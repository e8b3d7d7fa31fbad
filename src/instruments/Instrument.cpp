#include "instruments/Instrument.h"

namespace tvx {

Port GaugeDriver::Open(const Activation& activation, int function, int sequenceNr, bool used) {
  if (function == 0) return kNoPort;
  const Port port = activation.sim.OpenSimPort(function, sequenceNr);
  if (port == kNoPort) return kNoPort;
  activation.sim.EnableReadSimPort(port);
  if (used) ports_.push_back(port);
  return port;
}

}  // namespace tvx
