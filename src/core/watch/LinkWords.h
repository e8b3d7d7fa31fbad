// The state of the simulator link in words, for the status form.
#pragma once

#include <cstdint>
#include <string>

namespace tvx {

struct SimulatorLinkState {
  bool Running = false;
  bool SocketOpen = false;
  std::string SocketError;    // in words; empty when the socket is fine
  bool EverAnswered = false;  // since the run started to listen
  std::int64_t SilentMs = 0;  // since the last datagram, or since the run started to listen
  std::string RemoteHost, RemotePort, LocalPort;
};

// How long the simulator may say nothing before it counts as silent.
inline constexpr std::int64_t kSilentAfterMs = 2000;

// Sets `trouble` when the user should look at something.
std::string SimulatorLinkWords(const SimulatorLinkState& state, bool& trouble);

}  // namespace tvx
