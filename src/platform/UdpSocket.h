// The datagram socket of the simulator link.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/Bytes.h"
#include "base/Registration.h"

namespace tvx {

struct UdpEndpoints {
  std::string remoteHost;       // a dotted IPv4 address; of a NamedHostSocket also a name
  std::int32_t remotePort = 0;  // 1..65535
  std::int32_t localPort = 0;   // 1..65535

  bool operator==(const UdpEndpoints&) const = default;
};

// Where a datagram came from, and when.
struct UdpSender {
  std::uint32_t address = 0;  // IPv4, its first number in the highest byte; 0: not known
  std::int32_t port = 0;      // 0: not known
  // It is the remote host: its address; where that is this computer, any of its own. True where not known.
  bool isRemote = true;
  // How long ago the computer received it; 0 where not known.
  std::int64_t waitedMs = 0;
};

// An unconnected UDP socket bound to a local port. No operation waits.
class UdpSocket {
 public:
  // Called from the event loop, once for each datagram that waits; the handler reads it with Receive().
  using ArrivalHandler = std::function<void(std::size_t bytesTotal)>;
  // An error that no single call can report (a failed Send is not one of them).
  using ErrorHandler = std::function<void(int code, std::string_view description)>;

  virtual ~UdpSocket() = default;

  // Each in force until its Registration ends, or another handler is set.
  Registration SetArrivalHandler(ArrivalHandler handler) { return arrival_.Give(std::move(handler)); }
  Registration SetErrorHandler(ErrorHandler handler) { return error_.Give(std::move(handler)); }
  // Closes the socket (harmless when closed), then binds it to the local port and aims it at the remote host
  // and port. Datagrams that have arrived already are not lost: where the local port stays the same, so does
  // the socket; otherwise they are delivered first. False when an address is bad or the port cannot be bound;
  // LastError() says why.
  virtual bool SetUp(const UdpEndpoints& endpoints) = 0;
  // Aims at another remote port; the socket stays as it is.
  virtual void SetRemotePort(std::int32_t remotePort) = 0;
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;
  // False when the socket is closed, an address is bad or the system refuses the datagram.
  virtual bool Send(ByteView datagram) = 0;
  // Moves the oldest waiting datagram to `out`, cut to its size; returns the bytes stored (0 when none
  // waits).
  virtual std::size_t Receive(std::span<Byte> out) = 0;
  // Where the oldest waiting datagram came from. Never allocates.
  virtual UdpSender WaitingSender() const = 0;
  // The address of this computer that the remote host sees; empty where no way leads to it.
  virtual std::string LocalAddress() const = 0;
  // In words, of the last SetUp that failed; empty after one that succeeded.
  virtual std::string LastError() const = 0;

 protected:
  void RaiseArrival(std::size_t bytesTotal) const { arrival_(bytesTotal); }
  void RaiseError(int code, std::string_view description) const { error_(code, description); }

 private:
  Callback<std::size_t> arrival_;
  Callback<int, std::string_view> error_;
};

}  // namespace tvx
