// Arbitrary datagrams into the receive path. The first byte chooses monitor mode and what is told of the
// size; the rest is cut into datagrams at a length byte each, so that one follows another into the same
// buffer.
#include <algorithm>
#include <string>

#include "simlink/SimCom.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeUdpSocket.h"

namespace {

using namespace tvx;

// A model with a port of every data type, some of whose sources lie outside the tables.
struct Link {
  Link() {
    for (int i = 1; i <= 40; ++i) {
      FunctionRecord& f = model.Functions[static_cast<std::size_t>(i)];
      f.ShortName = "F";
      f.FullName = "#1:a/b\r\n";
      f.ComboDT = static_cast<Byte>(i % 9);
      f.XPindex1 = static_cast<std::int16_t>(i == 39 ? -1 : i * 4);
      f.XPVal1 = static_cast<Byte>(i % 8);
      f.Multiplier = static_cast<float>(i % 3);
      f.Devider = static_cast<float>(i % 4);
      sim.EnableReadSimPort(sim.OpenSimPort(i, 1));
    }
  }
  ConfigModel model;
  FakeUdpSocket socket;
  FakeMessageBoxes boxes;
  FakeClock clock;
  SimCom sim{model, socket, boxes, clock};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Link link;
  std::string_view left(reinterpret_cast<const char*>(data), size);
  if (left.empty()) return 0;
  const unsigned mode = static_cast<Byte>(left[0]);
  left.remove_prefix(1);
  link.sim.SetUdpMonitorMode((mode & 1) != 0);
  while (!left.empty()) {
    const std::size_t length = std::min<std::size_t>(left.size() - 1, 4u * static_cast<Byte>(left[0]));
    const std::string_view datagram = left.substr(1, length);
    link.socket.Queue(datagram);
    link.sim.WinsockUDP_DataArrival((mode & 2) != 0 ? mode : datagram.size());
    left.remove_prefix(1 + length);
  }
  for (int port = 0; port < link.sim.PortCount(); ++port) {
    float value = 0;
    link.sim.GetPort(static_cast<Port>(port), value);
    if ((mode & 4) != 0) link.sim.PutPort(static_cast<Port>(port), value);
  }
  link.socket.Sent.clear();
  link.socket.SetUps.clear();
  link.socket.RemotePorts.clear();
  return 0;
}
