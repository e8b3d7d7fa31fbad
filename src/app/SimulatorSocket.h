// The simulator link's socket, with names of computers looked up and the users of taken ports told.
#pragma once

#include "platform/NamedHostSocket.h"
#include "platform/linux/UdpPortUser.h"
#include "platform/qt/QtHostResolver.h"
#include "platform/qt/QtUdpSocket.h"

namespace tvx {

class SimulatorSocket {
 public:
  explicit SimulatorSocket(const Clock& clock) : named_(udp_, resolver_, clock) {}
  UdpSocket& Socket() { return named_; }
  std::optional<UdpTarget> Target() const { return udp_.Target(); }

 private:
  QtUdpSocket udp_{[](std::int32_t port) { return UserOfUdpPort(port); }};
  QtHostResolver resolver_;
  NamedHostSocket named_;
};

}  // namespace tvx
