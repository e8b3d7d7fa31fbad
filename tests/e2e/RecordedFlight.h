// A flight as it was recorded: the simulator's datagrams, and the bytes that each tick put on the gauge bus.
#pragma once

#include <string>
#include <vector>

#include "tests/fakes/CockpitRig.h"

namespace tvx::e2e {

struct RecordedTick {
  Texts datagrams;  // that came before the tick
  std::string bus;  // what the tick sent
};

// One line each: "S" and a datagram, "G" and the bus bytes that end a tick, in hexadecimal.
// Lines that are neither are skipped.
std::vector<RecordedTick> ReadRecording(const std::string& text);

// The program's side of a recording: link, cycle and bus of a configuration, over fakes.
struct RecordedCockpit : CockpitRig {
  // False when the file does not load.
  bool Load(const std::string& configFile);
  // Hands the datagrams over, ticks once, returns what went out on the bus.
  std::string Play(const Texts& datagrams);
};

}  // namespace tvx::e2e
