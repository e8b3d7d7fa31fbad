#include "simlink/SimCom.h"

#include <algorithm>
#include <limits>

namespace tvx {

SimCom::SimCom(const ConfigModel& model, UdpSocket& socket, MessageBoxes& boxes, const Clock& clock)
    : model_(model),
      socket_(socket),
      boxes_(boxes),
      clock_(clock),
      link_(model, socket),
      keeper_(link_, clock),
      subscriptions_(keeper_, boxes),
      ports_(model, link_, keeper_, subscriptions_, boxes) {
  arrivals_ =
      socket_.SetArrivalHandler([this](std::size_t bytesTotal) { WinsockUDP_DataArrival(bytesTotal); });
  errors_ = socket_.SetErrorHandler(
      [this](int code, std::string_view description) { OnSocketError(code, description); });
}

bool SimCom::OpenUDP() {
  lastArrivalMs_.reset();
  strangers_.Clear();
  ports_.ForgetGivenUp();
  const bool open = link_.OpenUDP();
  keeper_.Opened();
  return open;
}

void SimCom::CommandStopAll() {
  if (udpMonitorMode_) return;
  for (int group = 0; group <= kLastStoppedGroup; ++group) keeper_.CancelGroup(group);
}

void SimCom::CloseAllPorts() {
  CommandStopAll();
  ClearAllRREF();
  keeper_.ForgetGroups();
  ports_.Clear();
  written_.clear();
}

void SimCom::OpenSimPort(int function, Byte& sequenceNr, Port& port) {
  ports_.OpenSimPort(function, sequenceNr, port);
  written_.resize(static_cast<std::size_t>(ports_.PortCount()));
}

Port SimCom::OpenSimPort(int function, int sequenceNr) {
  const Port port = ports_.OpenSimPort(function, sequenceNr);
  written_.resize(static_cast<std::size_t>(ports_.PortCount()));
  return port;
}

bool SimCom::PutPort(Port port, float& value) {
  if (!ports_.PutPort(port, value)) return false;
  written_[port] = {value, clock_.MonotonicMs()};
  return true;
}

std::optional<SimCom::Written> SimCom::LastWritten(Port port) const {
  if (port >= written_.size() || written_[port].atMs < 0) return std::nullopt;
  return written_[port];
}

void SimCom::SetUdpMonitorMode(bool on) {
  udpMonitorMode_ = on;
  keeper_.Hold(on);
}

void SimCom::WinsockUDP_DataArrival(std::size_t bytesTotal) {
  const UdpSender sender = socket_.WaitingSender();
  received_ = std::min(socket_.Receive(buffer_), buffer_.size());
  if (keeper_.Closing()) return;
  if (!udpMonitorMode_ && !sender.isRemote && !HearsAll()) {
    strangers_.Note(sender.address, clock_.MonotonicMs());
    return;
  }
  dataReceived_ = true;
  lastArrivalMs_ = clock_.MonotonicMs();
  if (udpMonitorMode_) {
    packetArrived_ = true;
    CountPacket();
    monitor_(LastDatagram(), sender.port);
    return;
  }
  keeper_.Heard();
  if (!untakenMs_) untakenMs_ = *lastArrivalMs_ - sender.waitedMs;
  if (bytesTotal >= kSmallestDatagram && Decode()) CountPacket();
}

bool SimCom::HearsAll() const {
  return !model_.General.Setting(kHearAllSetting).empty();
}

bool SimCom::Decode() {
  switch (Classify(LastDatagram())) {
    case DatagramKind::TooShort:
      return false;
    case DatagramKind::Rref:
      return ports_.DecodeRref(LastDatagram(), *lastArrivalMs_);
    case DatagramKind::Data:
      return ports_.DecodeData(LastDatagram(), *lastArrivalMs_);
    case DatagramKind::Dref:
    case DatagramKind::Other:
      return true;
  }
  return false;
}

void SimCom::CountPacket() {
  if (packetsReceived_ < std::numeric_limits<std::int16_t>::max()) ++packetsReceived_;
}

std::optional<std::int64_t> SimCom::AgeMs(Port port) const {
  const PortTraffic& traffic = ports_.TrafficOf(port);
  if (!traffic.HasCome()) return std::nullopt;
  return clock_.MonotonicMs() - traffic.CameMs();
}

std::optional<std::int64_t> SimCom::SilentForMs() const {
  if (!lastArrivalMs_) return std::nullopt;
  return clock_.MonotonicMs() - *lastArrivalMs_;
}

void SimCom::OnSocketError(int code, std::string_view description) {
  boxes_.Show("Error reading data via UDP: " + std::string(description) +
              "\r\nErrorcode= " + std::to_string(code));
  socketError_(code);
}

}  // namespace tvx
