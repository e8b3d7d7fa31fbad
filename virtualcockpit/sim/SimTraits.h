// How the stand-in simulator behaves towards the network.
#pragma once

#include <cstdint>

namespace tvx::vc {

// What a bad network does to datagrams, in per cent of them, each way.
struct NetworkTraits {
  double lost = 0, doubled = 0, reordered = 0, delayed = 0;
  bool operator==(const NetworkTraits&) const = default;
};

struct SimTraits {
  // The simulated frame: requests are read and values sent once in each. 10..100 ms.
  int frameMs = 33;
  // The most requests that are read in one frame; what is more waits in the socket's buffer, and is lost
  // where that is full. 0: they are read as they come.
  int requestsPerFrame = 148;
  // False: a receive buffer of a megabyte, in place of the computer's usual one.
  bool usualBuffer = true;
  // Data groups go only to the address that is set on the simulator's own screen, or by a request that sets
  // it. False: to whoever selected a group last.
  bool dataToTarget = true;
  // Groups that were selected are sent again after a restart, as those are that are ticked on its screen.
  bool keepsGroups = false;
  // A restart also takes back what was written to datarefs and groups.
  bool forgetsValues = true;
  // Only the built-in names exist. False: also every dataref that the configuration names.
  bool onlyKnownNames = true;
  // Answers leave from a port of their own, the one above that on which requests are taken.
  bool ownSendPort = true;
  // Tells the network once a second that it is there.
  bool beacon = true;
  NetworkTraits network;
  std::uint32_t seed = 1;
  bool operator==(const SimTraits&) const = default;
};

}  // namespace tvx::vc
