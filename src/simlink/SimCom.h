// The link to the simulator: one door to its socket, its subscriptions and its ports, and what is known of
// arrivals.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Registration.h"
#include "config/Model.h"
#include "platform/Host.h"
#include "platform/UdpSocket.h"
#include "simlink/Opener.h"
#include "simlink/PortTable.h"
#include "simlink/SubscriptionKeeper.h"
#include "simlink/Subscriptions.h"
#include "simlink/datagrams/LinkSocket.h"
#include "simlink/datagrams/Strangers.h"

namespace tvx {

inline constexpr int kLastStoppedGroup = 135;  // CommandStopAll unselects 0..135

// Everything here traps its own errors: a packet that cannot be built or sent is dropped silently, a datagram
// that does not decode is abandoned where it stops making sense. What is handed on is described where it is
// done: LinkSocket.h, Subscriptions.h, PortTable.h.
class SimCom {
 public:
  SimCom(const ConfigModel& model, UdpSocket& socket, MessageBoxes& boxes, const Clock& clock);

  // --- socket ---
  using Endpoint = LinkSocket::Endpoint;
  void UseEndpoint(std::optional<Endpoint> endpoint) { link_.UseEndpoint(std::move(endpoint)); }
  bool OpenUDP();
  // The link counts as closed at once; the cancellations that wait leave first (SubscriptionKeeper::Close).
  void CloseUDP() {
    if (others_ != nullptr) others_->Closing();
    keeper_.Close();
  }
  void OpenSimCom() { OpenUDP(); }
  void RunSimcom() { OpenUDP(); }
  void StopSimcom() { CloseUDP(); }
  bool UdpOpen() const { return link_.IsOpen() && !keeper_.Closing(); }
  // Whether cancellations still have to leave a link that was closed.
  bool SayingGoodbye() const { return keeper_.Closing(); }
  // Whether Tick is to be called soon again, since not all requests could leave at once.
  bool RequestsWait() const { return keeper_.RequestsWaiting() > 0; }
  // To be called as long as the program lives: every 20 ms while RequestsWait, ten times a second otherwise.
  void Tick() { keeper_.Tick(); }
  std::string LinkError() const { return link_.Error(); }
  // "192.168.1.20, port 49003": where the simulator is to send; empty where no way leads to it.
  std::string OwnAddressWords() const { return link_.OwnAddressWords(); }
  // Told of a socket error after its message was shown: writes the dump and stops the run.
  using SocketErrorHandler = std::function<void(int code)>;
  Registration SetSocketErrorHandler(SocketErrorHandler handler) {
    return socketError_.Give(std::move(handler));
  }

  // --- senders; requests for values and their ends leave in turn (SubscriptionKeeper.h) ---
  void SendDSEL(int group) { keeper_.AskForGroup(group, SubscriptionKeeper::Keep::No); }
  void SendUSEL(int group) { keeper_.CancelGroup(group); }
  void CommandStopAll();  // USEL for groups 0..135, or no packet at all in monitor mode
  void SendDataFloat(int group, int number, float value) { link_.SendDataFloat(group, number, value); }
  void SendDataInt(int group, int number, std::int32_t value) { link_.SendDataInt(group, number, value); }
  void SendDataChar(int character) { link_.SendDataChar(character); }
  void SendXplaneCommand(std::string_view list, int entry) { link_.SendXplaneCommand(list, entry); }
  void SendCommandPath(std::string_view path) { link_.SendCommandPath(path); }
  void SendDataOutputHere() { link_.SendDataOutputHere(); }
  void SendXplaneDREF(std::string_view dataref, float value) { link_.SendXplaneDREF(dataref, value); }

  // --- subscriptions ---
  void SendXplaneRREF(std::string_view dataref, std::int32_t frequency, std::int32_t identifier,
                      Register record) {
    subscriptions_.SendXplaneRREF(dataref, frequency, identifier, record);
  }
  void ClearAllRREF() { subscriptions_.ClearAllRREF(); }
  // Of values that no port reads. They are not recorded: whoever asks also cancels. `others`: where they go,
  // null for nowhere; it must outlive its being set.
  void SetOtherValues(OtherValues* others) {
    others_ = others;
    ports_.SetOtherValues(others);
  }
  void KeepDataref(std::string_view path, std::int32_t frequency, std::int32_t identifier) {
    keeper_.AskForDataref(path, frequency, identifier, SubscriptionKeeper::Keep::Yes);
  }
  void CancelDataref(std::string_view path, std::int32_t identifier) {
    keeper_.CancelDataref(path, identifier);
  }
  const std::vector<RrefRow>& Rrefs() const { return subscriptions_.Rrefs(); }
  const SubscriptionKeeper& Keeper() const { return keeper_; }

  // --- ports ---
  void SetCurrentOpener(std::int16_t opener) { ports_.SetCurrentOpener(opener); }
  std::int16_t CurrentOpener() const { return ports_.CurrentOpener(); }
  void OpenSimPort(int function, Byte& sequenceNr, Port& port);
  Port OpenSimPort(int function, int sequenceNr);
  void EnableReadSimPort(Port port) { ports_.EnableReadSimPort(port); }
  void DisableReadSimPort(Port port) { ports_.DisableReadSimPort(port); }
  void NewSeqNr(Port port, Byte sequenceNr) { ports_.NewSeqNr(port, sequenceNr); }
  void BlockPort(Port port, bool blocked) { ports_.BlockPort(port, blocked); }
  bool GetPort(Port port, float& value) const { return ports_.GetPort(port, value); }
  bool GetPortRaw(Port port, float& value) const { return ports_.GetPortRaw(port, value); }
  bool HasArrived(Port port) const { return ports_.HasArrived(port); }
  const PortTraffic& TrafficOf(Port port) const { return ports_.TrafficOf(port); }
  // Milliseconds since the port's value came; std::nullopt where none has.
  std::optional<std::int64_t> AgeMs(Port port) const;
  bool PutPort(Port port, float& value);
  // What was written to the port last, as it was sent, and when; std::nullopt where that never happened.
  struct Written {
    float raw = 0;
    std::int64_t atMs = -1;
  };
  std::optional<Written> LastWritten(Port port) const;
  void CloseAllPorts();  // CommandStopAll, ClearAllRREF, and no port is open any more
  int PortCount() const { return ports_.PortCount(); }
  const PortRow& PortAt(int port) const { return ports_.PortAt(port); }
  std::uint16_t PortsOpened() const { return ports_.PortsOpened(); }
  float DataValue(int group, int valueNumber) const { return ports_.DataValue(group, valueNumber); }
  std::int16_t MacroValue() const { return ports_.MacroValue(); }

  // --- what arrives ---
  // Only the simulator's datagrams are decoded, unless kHearAllSetting says otherwise; others count here.
  const tvx::Strangers& Strangers() const { return strangers_; }
  // The socket's data-arrival event.
  void WinsockUDP_DataArrival(std::size_t bytesTotal);
  // Set by every arrival.
  bool DataReceived() const { return dataReceived_; }
  void ClearDataReceived() { dataReceived_ = false; }
  // Datagrams counted since they were taken last; stops at 32767. One that is abandoned is not counted.
  std::int16_t PacketsReceived() const { return packetsReceived_; }
  std::int16_t TakePacketsReceived() { return std::exchange(packetsReceived_, std::int16_t{0}); }
  // Milliseconds since the last datagram; std::nullopt when none came since OpenUDP.
  std::optional<std::int64_t> SilentForMs() const;
  // Since OpenUDP.
  const GivenUp& GivenUpDatagrams() const { return ports_.GivenUpDatagrams(); }
  std::uint64_t ValuesLost() const { return ports_.ValuesLost(); }
  // When the computer received the oldest of those values that were not taken yet; std::nullopt where none
  // came since.
  std::optional<std::int64_t> TakeArrivalMs() { return std::exchange(untakenMs_, std::nullopt); }
  ByteView LastDatagram() const { return {buffer_.data(), received_}; }

  // --- monitor mode: arrivals are shown and counted, not decoded ---
  bool UdpMonitorMode() const { return udpMonitorMode_; }
  void SetUdpMonitorMode(bool on);
  // Told of every datagram that arrives in monitor mode, with the sender's port (0: not known).
  using MonitorHandler = std::function<void(ByteView datagram, std::int32_t senderPort)>;
  Registration SetMonitor(MonitorHandler handler) { return monitor_.Give(std::move(handler)); }
  // Set by every arrival in monitor mode.
  bool PacketArrived() const { return packetArrived_; }
  void ClearPacketArrived() { packetArrived_ = false; }

 private:
  bool HearsAll() const;
  bool Decode();  // the last datagram; false where it is not to be counted
  void CountPacket();
  void OnSocketError(int code, std::string_view description);

  const ConfigModel& model_;
  UdpSocket& socket_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  LinkSocket link_;
  SubscriptionKeeper keeper_;
  Subscriptions subscriptions_;
  PortTable ports_;
  OtherValues* others_ = nullptr;
  Callback<int> socketError_;
  Callback<ByteView, std::int32_t> monitor_;
  Registration arrivals_, errors_;  // of the socket
  tvx::Strangers strangers_;
  bool udpMonitorMode_ = false;
  bool dataReceived_ = false;
  bool packetArrived_ = false;
  std::int16_t packetsReceived_ = 0;
  std::optional<std::int64_t> lastArrivalMs_, untakenMs_;
  std::vector<Written> written_;  // by port
  std::array<Byte, 65536> buffer_{};
  std::size_t received_ = 0;
};

// Ports that are opened while it lives are marked with its opener.
class OpenerScope {
 public:
  OpenerScope(SimCom& sim, std::int16_t opener) : sim_(sim), before_(sim.CurrentOpener()) {
    sim.SetCurrentOpener(opener);
  }
  ~OpenerScope() { sim_.SetCurrentOpener(before_); }
  OpenerScope(const OpenerScope&) = delete;
  OpenerScope& operator=(const OpenerScope&) = delete;

 private:
  SimCom& sim_;
  std::int16_t before_;
};

}  // namespace tvx
