// The link to the simulator: the socket's senders and receive path, and the simulator ports.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/Model.h"
#include "platform/Host.h"
#include "platform/UdpSocket.h"
#include "simlink/Packets.h"
#include "simlink/PortTable.h"

namespace tvx {

inline constexpr int kDataGroups = 151;        // group index 0..150
inline constexpr int kLastStoppedGroup = 135;  // CommandStopAll unselects 0..135

// Everything here traps its own errors: a packet that cannot be built or sent is dropped silently, a datagram
// that does not decode is abandoned where it stops making sense.
class SimCom {
 public:
  // Told of a socket error after its message was shown: writes the dump and stops the run.
  using SocketErrorHandler = std::function<void(int code)>;

  SimCom(const ConfigModel& model, UdpSocket& socket, MessageBoxes& boxes, const Clock& clock);

  void SetSocketErrorHandler(SocketErrorHandler handler) { socketError_ = std::move(handler); }

  // --- for the test console ---
  // Where the link leads; nothing: where the configuration says. Counts from the next set-up of the socket.
  struct Endpoint {
    std::string RemoteIP, RemotePort, LocalPort;
    bool operator==(const Endpoint&) const = default;
  };
  void UseEndpoint(std::optional<Endpoint> endpoint);
  // Told of every datagram that arrives in monitor mode, with the sender's port (0: not known).
  using MonitorHandler = std::function<void(ByteView datagram, std::int32_t senderPort)>;
  void SetMonitor(MonitorHandler handler) { monitor_ = std::move(handler); }

  // --- socket ---
  // Takes the configured host and ports and binds. False when the ports' texts are no numbers 1..65535, the
  // host is no IPv4 address, or the local port is taken; LinkError() tells in words.
  bool OpenUDP();
  void CloseUDP();
  void OpenSimCom() { OpenUDP(); }
  void RunSimcom() { OpenUDP(); }
  void StopSimcom() { CloseUDP(); }
  bool UdpOpen() const { return socket_.IsOpen(); }
  // Why the last set-up of the socket failed, in words; empty after one that succeeded.
  std::string LinkError() const;

  // --- senders ---
  void SendDSEL(int group);  // group 0..255
  void SendUSEL(int group);  // nothing leaves while the configuration's BlockUSEL is 1
  void CommandStopAll();     // USEL for groups 0..135; nothing in monitor mode
  void SendDataFloat(int group, int valueNumber, float value);
  void SendDataInt(int group, int valueNumber, std::int32_t value);
  void SendDataChar(int character);  // 0..255
  // Sends the command in line `entry` of a Function's list; none where the list has no such line.
  void SendXplaneCommand(std::string_view commandList, int entry);
  void SendCommandPath(std::string_view path);  // "sim/..."
  void SendXplaneDREF(std::string_view dataref, float value);
  // With registerIt 1 and a frequency of 1 or more the subscription is recorded first; an identifier that is
  // recorded already is refused with a message.
  void SendXplaneRREF(std::string_view dataref, std::int32_t frequency, std::int32_t identifier,
                      int registerIt);

  // --- ports ---
  // Opens a port on a Function (1..300) and sequence number (0 becomes 1, seen by the caller). `port` becomes
  // its number, or 65535 when the Function number is below 1 or the Function is not defined; a number above
  // 300 leaves `port` as it was, and so does a dataref Function without a line for the sequence number, which
  // is not opened. A factor of 0 is opened with a warning. At most 32767 ports; beyond that `port` becomes
  // 65535.
  void OpenSimPort(int function, Byte& sequenceNr, Port& port);
  // The same for a caller that keeps no sequence number; kNoPort where no port was given.
  Port OpenSimPort(int function, int sequenceNr);
  // The operations below do nothing for a port that is not open.
  void EnableReadSimPort(Port port);   // selects its data group, unless it is a dataref
  void DisableReadSimPort(Port port);  // port 0 stays enabled
  // Reads another source from the next datagram on. Sends nothing: a data group that was not selected yet is
  // only by the next EnableReadSimPort.
  void NewSeqNr(Port port, Byte sequenceNr);
  // Holds the port's value (non-zero) or lets it be refreshed and read again (0).
  void BlockPort(Port port, Byte blocked);
  // The value, scaled: (raw + add) * multiply / divide. False, and `value` untouched, when the port is not
  // open, not enabled, blocked, or of a type that has no value. A divide factor of 0, or what the simulator
  // sent, can make it an infinity or NaN.
  bool GetPort(Port port, float& value) const;
  bool GetPortRaw(Port port, float& value) const;
  // Whether what the port reads has ever come from the simulator: its dataref, or its data group for any
  // port.
  bool HasArrived(Port port) const;
  // Writes a value to the simulator; the raw value sent comes back in `value`: value * divide / multiply -
  // add. A raw value that is no finite number or does not fit the Function's data type is not sent, and
  // `value` stays as it was: then it gives false.
  bool PutPort(Port port, float& value);
  void CloseAllPorts();
  void ClearAllRREF();

  std::int16_t CurrentOpener = 0;

  // --- what the link knows ---
  int PortCount() const { return static_cast<int>(ports_.size()) - 1; }
  const PortRow& PortAt(int port) const { return ports_[static_cast<std::size_t>(port)]; }
  std::uint16_t PortsOpened() const { return portsOpened_; }
  const std::vector<RrefRow>& Rrefs() const { return rrefs_; }
  float DataValue(int group, int valueNumber) const;  // 0 outside 0..150, 0..7
  // Receive state of the link.
  Byte DataReceived = 0;             // 1 on every arrival; cleared by whoever waits for it
  Byte PacketArrived = 0;            // 1 on an arrival in monitor mode
  std::int16_t PacketsReceived = 0;  // counted datagrams since the last rate display; stops at 32767
  std::int16_t UdpMonitorMode = 0;   // non-zero: datagrams are not decoded
  std::int16_t MacroValue = 0;       // the internal value of macro 3
  // The last datagram, for the test console.
  ByteView LastDatagram() const { return {buffer_.data(), received_}; }

  // Milliseconds since the last datagram; nothing when none came since OpenUDP.
  std::optional<std::int64_t> SilentForMs() const;
  // Sends every DSEL and RREF of the open ports again, for a simulator that was restarted and forgot them.
  void RenewSubscriptions();

  // The socket's data-arrival event.
  void WinsockUDP_DataArrival(std::size_t bytesTotal);

 private:
  struct PortNumbers {
    std::int32_t remote, local;  // 1..65535
  };
  bool ConvertPorts();  // the configured texts into numbers_; false when one is no port number
  bool SetUpSocket();
  const std::string& RemoteIP() const { return endpoint_ ? endpoint_->RemoteIP : model_.General.RemoteIP; }
  void SetUpAndSend(const Datagram& datagram);
  void SendAsItIs(const Datagram& datagram);
  void OnSocketError(int code, std::string_view description);
  bool RegisterRref(std::string_view dataref, std::int32_t frequency, std::int32_t identifier);
  // False where the datagram stops making sense.
  bool DecodeRref();
  bool DecodeData();
  bool RefreshPorts();
  void CountPacket();
  PortRow* OpenRow(Port port);  // nothing for a port that is not open
  const PortRow* ReadableRow(Port port) const;
  const FunctionRecord& FunctionOf(const PortRow& row) const;
  std::optional<float> RawOrMacro(const PortRow& row) const;
  void PutMacro(PortRow& row, const FunctionRecord& function, float value);
  std::optional<float> SendRaw(PortRow& row, const FunctionRecord& function, float raw);

  const ConfigModel& model_;
  UdpSocket& socket_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  SocketErrorHandler socketError_;
  MonitorHandler monitor_;
  std::optional<Endpoint> endpoint_;
  std::vector<PortRow> ports_ = std::vector<PortRow>(1);  // one spare row at the end
  std::vector<RrefRow> rrefs_;
  std::array<std::array<float, kDataValuesPerGroup>, kDataGroups> dataValues_{};
  std::bitset<kDataGroups> arrivedGroups_;
  std::uint16_t portsOpened_ = 0;
  std::array<Byte, 65536> buffer_{};
  std::size_t received_ = 0;
  std::optional<PortNumbers> numbers_;
  std::string portTextError_;
  std::optional<std::int64_t> lastArrivalMs_;
};

}  // namespace tvx
