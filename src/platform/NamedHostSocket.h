// A datagram socket whose remote host may be given by its name.
#pragma once

#include <optional>

#include "platform/Host.h"
#include "platform/HostResolver.h"
#include "platform/UdpSocket.h"

namespace tvx {

// Stands before another socket. An address goes straight through. A name is looked up without waiting: until
// its address is known, SetUp returns false and LastError says why; once it is, the socket is set up by
// itself as it was asked for last, unless it was closed meanwhile. A name that was not found is looked up
// again at the set-ups that follow, and one whose computer says nothing at those and at what is sent: it may
// have another address by now. The address that was known stays in use until another one is found.
class NamedHostSocket final : public UdpSocket {
 public:
  static constexpr std::int64_t kAskAgainMs = 3000;        // after a name was not found
  static constexpr std::int64_t kSilenceToAskMs = 10'000;  // without a datagram, and after each such time

  NamedHostSocket(UdpSocket& socket, HostResolver& resolver, const Clock& clock);

  // `remoteHost`: an address, or the name of a computer.
  bool SetUp(const UdpEndpoints& endpoints) override;
  void SetRemotePort(std::int32_t remotePort) override { socket_.SetRemotePort(remotePort); }
  void Close() override;
  bool IsOpen() const override { return socket_.IsOpen(); }
  bool Send(ByteView datagram) override;
  std::size_t Receive(std::span<Byte> out) override { return socket_.Receive(out); }
  UdpSender WaitingSender() const override { return socket_.WaitingSender(); }
  std::string LocalAddress() const override { return socket_.LocalAddress(); }
  std::string LastError() const override;

 private:
  bool SetUpNamed();
  void LookUp();
  void LookUpIfSilent();
  void Found(const HostLookup& result);

  UdpSocket& socket_;
  HostResolver& resolver_;
  const Clock& clock_;
  Registration arrivals_, errors_;
  std::optional<UdpEndpoints>
      named_;            // what to set up, with the host's name; std::nullopt: closed, or an address
  std::string name_;     // that is looked up, or was last
  std::string address_;  // of that name; empty: not known
  std::string error_;    // why it is not known; empty while it is looked up for the first time
  Registration lookup_;
  bool looking_ = false;
  bool waiting_ = false;      // the last SetUp failed for want of the address
  std::int64_t askedMs_ = 0;  // when it was looked up last
  std::int64_t heardMs_ = 0;  // when a datagram of that computer arrived last
};

}  // namespace tvx
