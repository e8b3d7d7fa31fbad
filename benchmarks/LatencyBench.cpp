// The way from a datagram's arrival to the frame on the line: a real UDP socket, a real pseudo-terminal, one
// needle. The tick is called as soon as the value is in; in the program it comes with the timer, up to one
// interval later.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QUdpSocket>
#include <algorithm>
#include <chrono>
#include <filesystem>

#include "core/ProcessCycle.h"
#include "platform/TtyPort.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/serial/KeptTty.h"
#include "platform/qt/QtFdWatcher.h"
#include "platform/qt/QtUdpSocket.h"
#include "tests/fakes/CockpitRig.h"

namespace tvx {
namespace {

using SteadyClock = std::chrono::steady_clock;

int OpenMaster() {
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  if (master >= 0) {
    grantpt(master);
    unlockpt(master);
  }
  return master;
}

std::string GroupDatagram(float value) {
  std::string datagram("DATA*\x33\0\0\0", 9);
  for (int i = 0; i < 8; ++i) {
    std::array<Byte, 4> bytes{};
    FloatToLittleEndian(value, bytes);
    datagram.append(bytes.begin(), bytes.end());
  }
  return datagram;
}

void DatagramToFrame(benchmark::State& state) {
  QTemporaryDir folder;
  QDir::setCurrent(folder.path());
  const int master = OpenMaster();
  std::filesystem::create_directory("comports");
  std::filesystem::create_symlink(ptsname(master), "comports/com5");

  CockpitRig fakes;  // for the model and the hosts; the socket and the line are real ones
  fakes.Define(51);
  GaugeRecord& gauge = fakes.AddGauge(12, 1);
  gauge.GaugeFunction1 = 51;
  gauge.GaugeSetting3 = static_cast<Byte>(fakes.AddPlate(0, 1000, 1079));
  QUdpSocket sender;
  sender.bind(QHostAddress::LocalHost, 0);
  {
    QUdpSocket probe;
    probe.bind(QHostAddress::LocalHost, 0);
    fakes.model.General.LocalPort = std::to_string(probe.localPort());
  }
  QtUdpSocket socket;
  SimCom sim(fakes.model, socket, fakes.boxes, fakes.clock);
  LineServer server;
  LineKeepers keepers(server, [] { return std::make_unique<QtFdWatcher>(); });
  TtyPort line(std::make_unique<KeptTty>(keepers));
  HardwarePorts::Ports ports{&line,           &fakes.ports[1], &fakes.ports[2],
                             &fakes.ports[3], &fakes.ports[4], &fakes.ports[5]};
  HardwarePorts hardware(fakes.model, ports);
  Serial serial(hardware, fakes.boxes, fakes.clock);
  SpecialValues special(sim, fakes.boxes, fakes.clock);
  ProcessCycle cycle(fakes.model, sim, serial, special);
  sim.OpenUDP();
  serial.OpenComPorts();
  while (serial.LineOpening()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  cycle.PrepareGauges();
  cycle.StartRun();
  std::array<char, 256> bytes{};
  for (int i = 0; i < 4; ++i) cycle.Tick();
  if (read(master, bytes.data(), bytes.size()) <= 0) state.SkipWithError("nothing on the line");

  std::vector<double> micros;
  const auto port = static_cast<quint16>(std::stoi(fakes.model.General.LocalPort));
  float value = 0;
  for (auto _ : state) {
    value = value > 900 ? 10 : value + 10;
    const std::string datagram = GroupDatagram(value);
    const auto start = SteadyClock::now();
    sender.writeDatagram(datagram.data(), static_cast<qint64>(datagram.size()), QHostAddress::LocalHost,
                         port);
    while (sim.TakePacketsReceived() == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    cycle.Tick();
    pollfd ready{master, POLLIN, 0};
    poll(&ready, 1, 1000);
    const double elapsed = std::chrono::duration<double>(SteadyClock::now() - start).count();
    if (read(master, bytes.data(), bytes.size()) <= 0) state.SkipWithError("the frame did not come");
    state.SetIterationTime(elapsed);
    micros.push_back(elapsed * 1e6);
  }
  std::sort(micros.begin(), micros.end());
  const auto at = [&micros](double part) {
    return micros.empty() ? 0.0
                          : micros[static_cast<std::size_t>(part * static_cast<double>(micros.size() - 1))];
  };
  state.counters["p50_us"] = at(0.5);
  state.counters["p95_us"] = at(0.95);
  state.counters["p99_us"] = at(0.99);
  state.counters["max_us"] = at(1.0);
  close(master);
  QDir::setCurrent("/");
}
BENCHMARK(DatagramToFrame)->UseManualTime();

}  // namespace
}  // namespace tvx

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
