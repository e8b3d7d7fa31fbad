// The simulator link's datagram socket, over Qt.
#pragma once

#include <QElapsedTimer>
#include <QHostAddress>
#include <QUdpSocket>
#include <functional>
#include <optional>
#include <string>

#include "platform/LastWords.h"
#include "platform/UdpSocket.h"

namespace tvx {

// Beyond UdpSocket's contract: a datagram that the arrival handler leaves unread is dropped, so that one can
// never block those behind it. A datagram of length 0 is announced too. Answers of the network to a failed
// send are no errors of the socket.
class QtUdpSocket final : public UdpSocket {
 public:
  // Names the program that has a port, "name (pid)"; empty where that is not known.
  using PortUser = std::function<std::string(std::int32_t port)>;

  // `portUser` is asked, at most every two seconds, when LastError() tells of a port that is taken.
  explicit QtUdpSocket(PortUser portUser = {});
  ~QtUdpSocket() override;
  QtUdpSocket(const QtUdpSocket&) = delete;
  QtUdpSocket& operator=(const QtUdpSocket&) = delete;

  bool SetUp(const UdpEndpoints& endpoints) override;
  void SetRemotePort(std::int32_t remotePort) override;
  void Close() override;
  bool IsOpen() const override;
  bool Send(ByteView datagram) override;
  std::size_t Receive(std::span<Byte> out) override;
  UdpSender WaitingSender() const override;
  std::string LocalAddress() const override;
  std::string LastError() const override;
  // Where Send sends to; std::nullopt while closed.
  std::optional<UdpTarget> Target() const;

 private:
  void DeliverWaiting(int most);
  bool Bind(std::int32_t localPort);
  bool Fail(std::string words);
  void OnError(QAbstractSocket::SocketError code);

  QUdpSocket socket_;
  QHostAddress remote_;
  std::int32_t remotePort_ = 0;
  std::int32_t localPort_ = 0;  // bound to; 0: closed
  PortUser portUser_;
  std::string lastError_;
  std::int32_t takenPort_ = 0;        // that could not be bound to, because somebody has it; 0: none
  mutable std::string takenBy_;       // its user, as of
  mutable QElapsedTimer takenSince_;  // this time
  std::uint64_t received_ = 0;        // datagrams taken off the socket
  unsigned life_ = 0;                 // counts bindings and closings: a handler may have done either
  bool quiet_ = false;                // an operation reports its failure itself
};

}  // namespace tvx
