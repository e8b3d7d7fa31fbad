// Arbitrary datagrams as beacons. The input is cut into datagrams at a length byte each; every one comes from
// another address of four, and between them time goes on.
#include <algorithm>
#include <cstdlib>
#include <string>

#include "base/NamedTexts.h"
#include "simlink/beacon/SimulatorFinder.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeMulticastListener.h"

namespace {

using namespace tvx;

void Require(bool condition) {
  if (!condition) std::abort();
}

bool IsPlain(const std::string& text) {
  return std::none_of(text.begin(), text.end(),
                      [](unsigned char c) { return c < ' ' || c == 0x7F || c == '"' || c == ';'; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FakeMulticastListener network;
  FakeClock clock;
  SimulatorFinder finder(network, clock);
  const Registration listening = finder.Listen();
  std::string_view left(reinterpret_cast<const char*>(data), size);
  while (!left.empty()) {
    const auto first = static_cast<Byte>(left[0]);
    const std::size_t length = std::min<std::size_t>(left.size() - 1, first);
    network.Deliver(left.substr(1, length), "10.0.0." + std::to_string(first % 4), first % 4 == 0);
    left.remove_prefix(1 + length);
    clock.Advance(100);
    finder.Tick();
    Require(finder.Found().size() <= SimulatorFinder::kMost);
    for (const FoundSimulator& simulator : finder.Found()) {
      Require(IsPlain(simulator.Words()) && simulator.beacon.name.size() <= 64);
      Require(simulator.IsAt(simulator.address, std::to_string(simulator.beacon.port)));
      std::string settings = "a=1";
      SetNamedText(settings, "follow", simulator.beacon.name);
      Require(NamedText(settings, "follow") == simulator.beacon.name && NamedText(settings, "a") == "1");
    }
  }
  return 0;
}
