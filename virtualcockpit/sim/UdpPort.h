// A datagram socket that never blocks.
#pragma once

#include <functional>
#include <string>

#include "base/Bytes.h"
#include "virtualcockpit/sim/Peer.h"

namespace tvx::vc {

class UdpPort {
 public:
  UdpPort() = default;
  ~UdpPort() { Close(); }
  UdpPort(const UdpPort&) = delete;
  UdpPort& operator=(const UdpPort&) = delete;

  // How much the computer keeps of what arrives until it is read: as usual, or a megabyte.
  enum class Buffer { Usual, Large };
  // Listens on the port of every network card; 0: any free one. False with the reason in words in `error`.
  bool Open(std::uint16_t port, Buffer buffer, std::string& error);
  void Close();
  bool IsOpen() const { return handle_ >= 0; }
  int Handle() const { return handle_; }  // -1 when closed
  std::uint16_t LocalPort() const { return localPort_; }

  // Hands over what has arrived, at most so many datagrams.
  void Receive(int most, const std::function<void(ByteView, const Peer&)>& handler);
  // False when the datagram could not be sent; it is dropped then.
  bool SendTo(ByteView datagram, const Peer& to);

 private:
  int handle_ = -1;
  std::uint16_t localPort_ = 0;
};

}  // namespace tvx::vc
