#include "platform/machine/DatagramCalls.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cstring>

namespace tvx {
namespace {

constexpr std::size_t kControlRoom = 256;       // for the time of a datagram
constexpr std::int64_t kLongestWaitMs = 10000;  // more is a clock that was set

sockaddr_in SocketAddress(std::uint32_t address, std::int32_t port) {
  sockaddr_in made{};
  made.sin_family = AF_INET;
  made.sin_addr.s_addr = htonl(address);
  made.sin_port = htons(static_cast<std::uint16_t>(port));
  return made;
}

// How long ago the computer received what `message` tells of. 0 where it does not say, or where the clock was
// set meanwhile.
std::int64_t WaitedMs(msghdr& message) {
  for (cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr; part = CMSG_NXTHDR(&message, part)) {
    if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_TIMESTAMPNS) continue;
    timespec received{}, now{};
    std::memcpy(&received, CMSG_DATA(part), sizeof received);
    clock_gettime(CLOCK_REALTIME, &now);
    const std::int64_t ms =
        (now.tv_sec - received.tv_sec) * 1000 + (now.tv_nsec - received.tv_nsec) / 1'000'000;
    return ms >= 0 && ms < kLongestWaitMs ? ms : 0;
  }
  return 0;
}

}  // namespace

// Only own addresses can be bound to. Cards come and go, so no answer is kept.
bool IsOwnAddress(std::uint32_t address) {
  if (address >> 24 == 127) return true;
  if (address == 0) return false;
  const int trial = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (trial < 0) return false;
  const sockaddr_in own = SocketAddress(address, 0);
  const bool bound = ::bind(trial, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0;
  ::close(trial);
  return bound;
}

void PrepareDatagramSocket(NativeSocket socket) {
  const int on = 1;
  ::setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_TIMESTAMPNS, &on, sizeof on);
}

std::optional<WaitingDatagram> PeekDatagram(NativeSocket socket) {
  sockaddr_in from{};
  char byte = 0;
  iovec data{&byte, sizeof byte};
  alignas(cmsghdr) std::array<char, kControlRoom> control{};
  msghdr message{};
  message.msg_name = &from;
  message.msg_namelen = sizeof from;
  message.msg_iov = &data;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  const auto peeked = ::recvmsg(static_cast<int>(socket), &message, MSG_PEEK | MSG_DONTWAIT);
  if (peeked < 0 || from.sin_family != AF_INET) return std::nullopt;
  return WaitingDatagram{ntohl(from.sin_addr.s_addr), ntohs(from.sin_port), WaitedMs(message)};
}

// The system says by which way it would send, without sending anything.
std::optional<std::uint32_t> AddressTowards(std::uint32_t address, std::int32_t port) {
  const int way = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (way < 0) return std::nullopt;
  sockaddr_in end = SocketAddress(address, port);
  socklen_t size = sizeof end;
  const bool known = ::connect(way, reinterpret_cast<sockaddr*>(&end), size) == 0 &&
                     ::getsockname(way, reinterpret_cast<sockaddr*>(&end), &size) == 0;
  ::close(way);
  if (!known) return std::nullopt;
  return ntohl(end.sin_addr.s_addr);
}

}  // namespace tvx
