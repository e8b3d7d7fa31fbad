// What Qt does not tell of datagram sockets. Addresses are IPv4, the first number in the highest byte. No
// call waits.
#pragma once

#include <cstdint>
#include <optional>

namespace tvx {

// A socket of the system's, as Qt gives it.
using NativeSocket = std::intptr_t;

// Whether the address is one of this computer's now. Never allocates.
bool IsOwnAddress(std::uint32_t address);

// What arrives at the socket is to carry the time of its arrival, where the system can do that; and a
// receiver that is not there is no error of the socket.
void PrepareDatagramSocket(NativeSocket socket);

struct WaitingDatagram {
  std::uint32_t address = 0;  // the sender's
  std::int32_t port = 0;
  std::int64_t waitedMs = 0;  // since it arrived; 0 where that is not known
};
// Of the oldest datagram that waits; std::nullopt where there is none. Never allocates.
std::optional<WaitingDatagram> PeekDatagram(NativeSocket socket);

// The address of this computer from which datagrams to there would leave; std::nullopt where no way leads
// there.
std::optional<std::uint32_t> AddressTowards(std::uint32_t address, std::int32_t port);

}  // namespace tvx
