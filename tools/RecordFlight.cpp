// Records the scripted flight of the stand-in simulator into tests/e2e/recorded/: run it in the source
// folder.
#include <cstdio>
#include <filesystem>

#include "platform/AtomicFile.h"
#include "tests/e2e/RecordedFlight.h"
#include "virtualcockpit/Cockpit.h"

namespace {

constexpr double kFlightSeconds = 270;
constexpr int kSamples = 90;
const std::string kFolder = "tests/e2e/recorded/";

std::string Hex(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    for (const int shift : {4, 0}) text += "0123456789abcdef"[static_cast<unsigned char>(c) >> shift & 15];
  }
  return text;
}

// As ReadRecording reads it.
std::string RecordingText(const std::vector<tvx::e2e::RecordedTick>& ticks) {
  std::string text;
  for (const auto& tick : ticks) {
    for (const std::string& datagram : tick.datagrams) text += "S " + Hex(datagram) + '\n';
    text += "G " + Hex(tick.bus) + '\n';
  }
  return text;
}

}  // namespace

int main() {
  using namespace tvx;
  std::filesystem::copy_file("demo/Default.cfg", kFolder + "flight.cfg",
                             std::filesystem::copy_options::overwrite_existing);
  std::vector<std::string> datagrams;
  vc::Simulator simulator(
      [&datagrams](ByteView bytes, const vc::Peer&) { datagrams.emplace_back(bytes.begin(), bytes.end()); });
  e2e::RecordedCockpit cockpit;
  if (!cockpit.Load(kFolder + "flight.cfg")) return 1;
  const vc::Peer client{0x7F000001, 49003};
  for (const std::string& request : cockpit.socket.TakeSent()) {
    simulator.OnDatagram({reinterpret_cast<const Byte*>(request.data()), request.size()}, client);
  }
  // Paused, the simulator stands at each sample; one second of its ticks lets every subscription come due
  // once.
  std::vector<e2e::RecordedTick> ticks;
  simulator.SetPaused(true);
  std::int64_t now = 0;
  for (int i = 0; i < kSamples; ++i) {
    simulator.RestartFlight(i * kFlightSeconds / kSamples);
    for (int t = 0; t < 1000 / vc::Simulator::kTickMilliseconds; ++t) {
      datagrams.clear();
      simulator.Tick(now += vc::Simulator::kTickMilliseconds);
    }
    const std::string bus = cockpit.Play(datagrams);
    ticks.push_back({datagrams, bus});
  }
  std::string error;
  if (!ReplaceFile(kFolder + "flight.txt", RecordingText(ticks), error)) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }
  return 0;
}
