// The program's ways out: the socket to the simulator, and the serial ports of the hardware.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>

#include "hwbus/HardwarePorts.h"
#include "platform/NamedHostSocket.h"
#include "platform/machine/Machine.h"
#include "platform/qt/QtHostResolver.h"
#include "platform/qt/QtUdpSocket.h"
#include "trace/Traced.h"

namespace tvx {

// Names of computers are looked up, and the users of taken ports told.
class SimulatorSocket {
 public:
  explicit SimulatorSocket(const Machine& machine)
      : udp_([&machine](std::int32_t port) { return machine.UserOfUdpPort(port); }),
        named_(udp_, resolver_, machine.Clocks()) {}
  UdpSocket& Socket() { return named_; }
  std::optional<UdpTarget> Target() const { return udp_.Target(); }

 private:
  QtUdpSocket udp_;
  QtHostResolver resolver_;
  NamedHostSocket named_;
};

// One port for each hardware group; what passes over it is noted in the trace.
class TracedPorts {
 public:
  TracedPorts(Machine& machine, TraceRing& trace) {
    for (std::size_t i = 0; i < ports_.size(); ++i) {
      ports_[i] = machine.MakePort();
      traced_[i].emplace(*ports_[i], kSources[i], trace, machine.Clocks());
    }
  }
  HardwarePorts::Ports Ports() {
    HardwarePorts::Ports ports{};
    for (std::size_t i = 0; i < ports.size(); ++i) ports[i] = &*traced_[i];
    return ports;
  }

 private:
  // In the order of HardwareGroup.
  static constexpr TraceSource kSources[kHardwareGroups] = {
      TraceSource::GaugeBus,  TraceSource::EngineCluster, TraceSource::IOModule1,
      TraceSource::IOModule2, TraceSource::Yoke1,         TraceSource::Yoke2};

  std::array<std::unique_ptr<SerialPort>, kHardwareGroups> ports_;
  std::array<std::optional<TracedPort>, kHardwareGroups> traced_;
};

// All of them, with the trace of what passes, and what is said to the simulator should the program crash.
class Connections {
 public:
  explicit Connections(Machine& machine)
      : socket_(machine),
        lastWords_(machine.MakeLastWords([this] { return socket_.Target(); })),
        traced_(socket_.Socket(), trace_, machine.Clocks()),
        ports_(machine, trace_) {}
  UdpSocket& ToSimulator() { return traced_; }
  HardwarePorts::Ports Ports() { return ports_.Ports(); }
  TraceRing& Trace() { return trace_; }
  LastWords& InACrash() { return *lastWords_; }

 private:
  SimulatorSocket socket_;
  std::unique_ptr<LastWords> lastWords_;
  TraceRing trace_;
  TracedSocket traced_;
  TracedPorts ports_;
};

}  // namespace tvx
