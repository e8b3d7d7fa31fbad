#include "platform/machine/DatagramCalls.h"

#include "platform/windows/calls/WinApi.h"
//
#include <mswsock.h>

namespace tvx {
namespace {

// Sockets have to be started once; Qt does so too, which does not matter.
void StartSockets() {
  static const int started = [] {
    WSADATA data{};
    return WSAStartup(MAKEWORD(2, 2), &data);
  }();
  static_cast<void>(started);
}

class Socket {
 public:
  Socket() {
    StartSockets();
    socket_ = socket(AF_INET, SOCK_DGRAM, 0);
  }
  ~Socket() {
    if (*this) closesocket(socket_);
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  explicit operator bool() const { return socket_ != INVALID_SOCKET; }
  SOCKET Get() const { return socket_; }

 private:
  SOCKET socket_ = INVALID_SOCKET;
};

sockaddr_in SocketAddress(std::uint32_t address, std::int32_t port) {
  sockaddr_in made{};
  made.sin_family = AF_INET;
  made.sin_addr.s_addr = htonl(address);
  made.sin_port = htons(static_cast<std::uint16_t>(port));
  return made;
}

}  // namespace

// The way to an address of this computer begins at that address. Cards come and go, so no answer is kept.
bool IsOwnAddress(std::uint32_t address) {
  constexpr std::int32_t kAnyPort = 9;
  return address >> 24 == 127 || (address != 0 && AddressTowards(address, kAnyPort) == address);
}

// Windows would otherwise have the next reading fail after a datagram that nobody took. The time of arrival
// it does not tell here.
void PrepareDatagramSocket(NativeSocket socket) {
  BOOL report = FALSE;
  DWORD size = 0;
  WSAIoctl(static_cast<SOCKET>(socket), SIO_UDP_CONNRESET, &report, sizeof report, nullptr, 0, &size, nullptr,
           nullptr);
}

std::optional<WaitingDatagram> PeekDatagram(NativeSocket socket) {
  const auto own = static_cast<SOCKET>(socket);
  u_long waiting = 0;
  if (ioctlsocket(own, FIONREAD, &waiting) != 0 || waiting == 0) return std::nullopt;  // it would wait
  sockaddr_in from{};
  int size = sizeof from;
  char byte = 0;
  const int got = recvfrom(own, &byte, sizeof byte, MSG_PEEK, reinterpret_cast<sockaddr*>(&from), &size);
  if ((got < 0 && WSAGetLastError() != WSAEMSGSIZE) || from.sin_family != AF_INET) return std::nullopt;
  return WaitingDatagram{ntohl(from.sin_addr.s_addr), ntohs(from.sin_port), 0};
}

// The system says by which way it would send, without sending anything.
std::optional<std::uint32_t> AddressTowards(std::uint32_t address, std::int32_t port) {
  const Socket way;
  if (!way) return std::nullopt;
  sockaddr_in end = SocketAddress(address, port);
  int size = sizeof end;
  if (connect(way.Get(), reinterpret_cast<sockaddr*>(&end), size) != 0 ||
      getsockname(way.Get(), reinterpret_cast<sockaddr*>(&end), &size) != 0)
    return std::nullopt;
  return ntohl(end.sin_addr.s_addr);
}

}  // namespace tvx
