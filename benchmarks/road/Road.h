// The program from its socket to its line without either: what arrives is copied from memory, what is sent is
// dropped, so that only the program is measured.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "core/GaugeReceiver.h"
#include "core/ProcessCycle.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/SimData.h"

namespace tvx {

// The same datagram over and over.
class RoadSocket final : public UdpSocket {
 public:
  std::string Waiting;

  bool SetUp(const UdpEndpoints&) override { return true; }
  void SetRemotePort(std::int32_t) override {}
  void Close() override {}
  UdpSender WaitingSender() const override { return {}; }
  std::string LocalAddress() const override { return {}; }
  bool IsOpen() const override { return true; }
  bool Send(ByteView datagram) override {
    benchmark::DoNotOptimize(datagram.data());
    return true;
  }
  std::size_t Receive(std::span<Byte> out) override {
    const std::size_t size = std::min(out.size(), Waiting.size());
    std::memcpy(out.data(), Waiting.data(), size);
    return size;
  }
  std::string LastError() const override { return {}; }
};

// The same reply over and over.
class RoadLine final : public SerialPort {
 public:
  std::array<Byte, kReplySize> Reply{};

  void SetReceiveThreshold(std::size_t) override {}
  void Open(int, SerialReset) override {}
  void Close() override {}
  SerialState State() const override { return SerialState::Open; }
  std::string Device() const override { return {}; }
  bool Write(ByteView bytes) override {
    benchmark::DoNotOptimize(bytes.data());
    return true;
  }
  std::size_t Read(std::span<Byte> out) override {
    const std::size_t size = std::min(out.size(), Reply.size());
    std::memcpy(out.data(), Reply.data(), size);
    return size;
  }
  std::size_t Waiting() const override { return 0; }
  void DiscardInput() override {}
  void DiscardOutput() override {}
  std::optional<bool> CarrierDetect() const override { return std::nullopt; }
  void AskCarrier() override {}
};

struct Road {
  ConfigModel model;
  RoadSocket socket;
  RoadLine line;
  FakeMessageBoxes boxes;
  FakeClock clock;
  SimCom sim{model, socket, boxes, clock};
  HardwarePorts hardware{model, {&line, &line, &line, &line, &line, &line}};
  Serial serial{hardware, boxes, clock};
  SpecialValues special{sim, boxes, clock};
  ProcessCycle cycle{model, sim, serial, special};
  GaugeReceiver receiver{model, serial, cycle, sim, special};

  Road() {
    model.General.ComPortGS = 5;
    sim.OpenUDP();
  }
  GaugeRecord& AddGauge(int id, int type, int function) {
    GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(id)];
    gauge.GaugeType = static_cast<Byte>(type);
    gauge.GaugeFunction1 = static_cast<std::int16_t>(function);
    return gauge;
  }
  void Start() {
    serial.OpenComPorts();
    cycle.PrepareGauges();
    cycle.StartRun();
    for (int i = 0; i < 3; ++i) cycle.Tick();
  }
  // The datagram that waits arrives.
  void Receive() { sim.WinsockUDP_DataArrival(socket.Waiting.size()); }
};

}  // namespace tvx
