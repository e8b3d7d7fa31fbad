// From a datagram's arrival to the values of 300 open ports.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <string>

#include "simlink/SimCom.h"
#include "tests/fakes/FakeHost.h"

namespace {

using namespace tvx;

constexpr int kOpenPorts = 300;

// The same datagram over and over.
class OneDatagram final : public UdpSocket {
 public:
  std::string bytes;

  void SetHandlers(ArrivalHandler, ErrorHandler) override {}
  bool SetUp(const UdpEndpoints&) override { return true; }
  void SetRemotePort(std::int32_t) override {}
  void Close() override {}
  bool IsOpen() const override { return true; }
  bool Send(ByteView) override { return true; }
  std::size_t Receive(std::span<Byte> out) override {
    std::copy(bytes.begin(), bytes.end(), out.begin());
    return bytes.size();
  }
  std::string LastError() const override { return {}; }
};

struct Link {
  explicit Link(bool ofEveryType) {
    for (int i = 1; i <= kOpenPorts; ++i) {
      FunctionRecord& f = model.Functions[static_cast<std::size_t>(i)];
      f.ShortName = "Function";
      f.Multiplier = f.Devider = 1;
      f.ComboDT = ofEveryType ? static_cast<Byte>(i * 7 % 5) : static_cast<Byte>(DataType::Float);
      f.XPindex1 = static_cast<std::int16_t>(i * 11 % 40);
      f.XPVal1 = static_cast<Byte>(i % 8);
      sim.EnableReadSimPort(sim.OpenSimPort(i, 1));
    }
  }
  ConfigModel model;
  OneDatagram socket;
  FakeMessageBoxes boxes;
  FakeClock clock;
  SimCom sim{model, socket, boxes, clock};
};

void AppendFloat(std::string& bytes, float value) {
  std::array<Byte, 4> four{};
  FloatToLittleEndian(value, four);
  bytes.append(four.begin(), four.end());
}

void Run(benchmark::State& state, Link& link) {
  for (auto _ : state) {
    link.sim.PacketsReceived = 0;
    link.sim.WinsockUDP_DataArrival(link.socket.bytes.size());
    if (link.sim.PacketsReceived != 1) state.SkipWithError("the datagram was abandoned");
    benchmark::ClobberMemory();
  }
}

// 40 groups of 8 values.
void DataDatagram(benchmark::State& state) {
  const auto link = std::make_unique<Link>(state.range(0) != 0);
  std::string& bytes = link->socket.bytes = "DATA*";
  for (int group = 0; group < 40; ++group) {
    bytes += static_cast<char>(group);
    bytes += std::string(3, '\0');
    for (int k = 0; k < 8; ++k) AppendFloat(bytes, static_cast<float>(group) + static_cast<float>(k) * 0.3f);
  }
  Run(state, *link);
}
BENCHMARK(DataDatagram)->ArgName("everyType")->Arg(0)->Arg(1);

// 180 values.
void RrefDatagram(benchmark::State& state) {
  const auto link = std::make_unique<Link>(false);
  std::string& bytes = link->socket.bytes = "RREF,";
  for (int identifier = 0; identifier < 180; ++identifier) {
    bytes += static_cast<char>(identifier);
    bytes += std::string(3, '\0');
    AppendFloat(bytes, static_cast<float>(identifier));
  }
  Run(state, *link);
}
BENCHMARK(RrefDatagram);

// Reading every port, as a tick does.
void GetEveryPort(benchmark::State& state) {
  const auto link = std::make_unique<Link>(true);
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

BENCHMARK_MAIN();
