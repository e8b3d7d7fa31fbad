// The link's socket: where it leads, and every packet that is sent through it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "config/Model.h"
#include "platform/UdpSocket.h"
#include "simlink/datagrams/Packets.h"

namespace tvx {

// A packet that cannot be built or sent is dropped silently.
class LinkSocket {
 public:
  LinkSocket(const ConfigModel& model, UdpSocket& socket) : model_(model), socket_(socket) {}

  // Where the link leads, as texts.
  struct Endpoint {
    std::string RemoteIP, RemotePort, LocalPort;
    bool operator==(const Endpoint&) const = default;
  };
  // Leads to `endpoint` from the next set-up of the socket on; std::nullopt: where the configuration says.
  void UseEndpoint(std::optional<Endpoint> endpoint);

  // Converts the texts of both ports and binds. False when one of them is no number 1..65535, the host is no
  // IPv4 address, or the local port is taken; Error() tells in words.
  bool OpenUDP();
  void CloseUDP() { socket_.Close(); }
  bool IsOpen() const { return socket_.IsOpen(); }
  // Why the last set-up failed, in words; empty after one that succeeded.
  std::string Error() const { return portTextError_.empty() ? socket_.LastError() : portTextError_; }

  // "192.168.1.20, port 49003": this end of the link; empty where no way leads to the simulator.
  std::string OwnAddressWords() const;

  // These set the socket up again before they send.
  void SendDSEL(int group);  // group 0..255
  void SendUSEL(int group);  // does nothing while the configuration's BlockUSEL is 1
  bool UselBlocked() const { return model_.General.BlockUSEL == 1; }
  void SendRREF(std::string_view dataref, std::int32_t frequency, std::int32_t identifier);
  // These send on the socket as it is.
  void SendDataFloat(int group, int valueNumber, float value);
  void SendDataInt(int group, int valueNumber, std::int32_t value);
  void SendDataChar(int character);                                 // 0..255
  void SendXplaneCommand(std::string_view commandList, int entry);  // the command in line "#entry:"
  void SendCommandPath(std::string_view path);                      // "sim/..."
  void SendXplaneDREF(std::string_view dataref, float value);
  void SendDataOutputHere();  // the simulator is to send its data groups to this socket

 private:
  struct PortNumbers {
    std::int32_t remote, local;  // 1..65535
  };
  bool ConvertPorts();  // the texts into numbers_; false when one is no port number
  bool SetUp();
  const std::string& RemoteIP() const { return endpoint_ ? endpoint_->RemoteIP : model_.General.RemoteIP; }
  void SetUpAndSend(const Datagram& datagram);
  void SendAsItIs(const Datagram& datagram);

  const ConfigModel& model_;
  UdpSocket& socket_;
  std::optional<Endpoint> endpoint_;
  std::optional<PortNumbers> numbers_;  // std::nullopt: not converted yet
  std::string portTextError_;
};

}  // namespace tvx
