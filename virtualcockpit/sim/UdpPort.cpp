#include "virtualcockpit/sim/UdpPort.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace tvx::vc {
namespace {

constexpr std::size_t kReceiveSize = 65536;
constexpr int kLargeBuffer = 1 << 20;

sockaddr_in AddressOf(std::uint32_t address, std::uint16_t port) {
  sockaddr_in result{};
  result.sin_family = AF_INET;
  result.sin_addr.s_addr = htonl(address);
  result.sin_port = htons(port);
  return result;
}

}  // namespace

bool UdpPort::Open(std::uint16_t port, Buffer buffer, std::string& error) {
  Close();
  handle_ = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  sockaddr_in address = AddressOf(INADDR_ANY, port);
  socklen_t size = sizeof address;
  if (handle_ < 0 || ::bind(handle_, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
      ::getsockname(handle_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    error = errno == EADDRINUSE ? "port " + std::to_string(port) + " is in use by another program"
                                : "port " + std::to_string(port) + ": " + std::strerror(errno);
    Close();
    return false;
  }
  if (buffer == Buffer::Large) {
    ::setsockopt(handle_, SOL_SOCKET, SO_RCVBUF, &kLargeBuffer, sizeof kLargeBuffer);
  }
  localPort_ = ntohs(address.sin_port);
  return true;
}

void UdpPort::Close() {
  if (handle_ >= 0) ::close(handle_);
  handle_ = -1;
  localPort_ = 0;
}

void UdpPort::Receive(int most, const std::function<void(ByteView, const Peer&)>& handler) {
  static thread_local std::array<Byte, kReceiveSize> buffer;
  for (int i = 0; i < most && handle_ >= 0; ++i) {
    sockaddr_in from{};
    socklen_t size = sizeof from;
    const ssize_t count =
        ::recvfrom(handle_, buffer.data(), buffer.size(), 0, reinterpret_cast<sockaddr*>(&from), &size);
    if (count < 0) {
      if (errno == EINTR || errno == ECONNREFUSED) continue;
      return;
    }
    handler(ByteView(buffer.data(), static_cast<std::size_t>(count)),
            {ntohl(from.sin_addr.s_addr), ntohs(from.sin_port)});
  }
}

bool UdpPort::SendTo(ByteView datagram, const Peer& to) {
  if (handle_ < 0) return false;
  const sockaddr_in address = AddressOf(to.address, to.port);
  return ::sendto(handle_, datagram.data(), datagram.size(), MSG_NOSIGNAL,
                  reinterpret_cast<const sockaddr*>(&address),
                  sizeof address) == static_cast<ssize_t>(datagram.size());
}

}  // namespace tvx::vc
