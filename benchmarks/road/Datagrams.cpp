// From a datagram's arrival to the values of 300 open ports.
#include <memory>

#include "benchmarks/road/Road.h"

namespace tvx {
namespace {

constexpr int kOpenPorts = 300;

enum class PortTypes { AllFloat, EveryNumber, AllDatarefs };

struct Link {
  explicit Link(PortTypes types) {
    for (int i = 1; i <= kOpenPorts; ++i) {
      FunctionRecord& f = DefineFunction(model, i, TypeOf(types, i), i * 11 % 40, i % 8);
      if (types == PortTypes::AllDatarefs) {
        f.FullName = "#1:sim/cockpit2/gauges/indicators/airspeed_kts_pilot\r\n";
        f.XPVal1 = 20;
      }
      sim.EnableReadSimPort(sim.OpenSimPort(i, 1));
    }
  }
  static DataType TypeOf(PortTypes types, int number) {
    if (types == PortTypes::AllDatarefs) return DataType::XplaneDataref;
    return types == PortTypes::AllFloat ? DataType::Float : static_cast<DataType>(number * 7 % 5);
  }
  ConfigModel model;
  RoadSocket socket;
  FakeMessageBoxes boxes;
  FakeClock clock;
  SimCom sim{model, socket, boxes, clock};
};

void Run(benchmark::State& state, Link& link) {
  for (auto _ : state) {
    link.sim.WinsockUDP_DataArrival(link.socket.Waiting.size());
    if (link.sim.TakePacketsReceived() != 1) state.SkipWithError("the datagram was abandoned");
    benchmark::ClobberMemory();
  }
}

// 40 groups of 8 values.
void Data(benchmark::State& state, PortTypes types) {
  const auto link = std::make_unique<Link>(types);
  std::string& bytes = link->socket.Waiting = "DATA*";
  for (int group = 0; group < 40; ++group) {
    std::array<float, 8> values{};
    for (std::size_t k = 0; k < values.size(); ++k) {
      values[k] = static_cast<float>(group) + static_cast<float>(k) * 0.3f;
    }
    bytes += DataDatagram(group, values).substr(5);
  }
  Run(state, *link);
}
BENCHMARK_CAPTURE(Data, float_ports, PortTypes::AllFloat);
BENCHMARK_CAPTURE(Data, ports_of_every_number, PortTypes::EveryNumber);

// 180 values, each with the identifier that its port asked with.
void Rref(benchmark::State& state) {
  const auto link = std::make_unique<Link>(PortTypes::AllDatarefs);
  std::string& bytes = link->socket.Waiting = "RREF,";
  for (int port = 0; port < 180; ++port) {
    bytes += RrefDatagram({{RrefIdentifierOnWire(port), static_cast<float>(port)}}).substr(5);
  }
  Run(state, *link);
}
BENCHMARK(Rref);

// Reading every port, as a tick does.
void GetEveryPort(benchmark::State& state) {
  const auto link = std::make_unique<Link>(PortTypes::EveryNumber);
  for (auto _ : state) {
    float sum = 0;
    for (int port = 0; port < kOpenPorts; ++port) {
      float value = 0;
      link->sim.GetPort(static_cast<Port>(port), value);
      sum += value;
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(GetEveryPort);

}  // namespace
}  // namespace tvx
