// The socket's side of the link: set-up, senders, subscriptions. SimComReceive.cpp and SimComPorts.cpp hold
// the rest.
#include "simlink/SimCom.h"

#include <bitset>
#include <charconv>

namespace tvx {
namespace {

// A port number as the configuration writes it, blanks around it allowed.
std::optional<std::int32_t> PortNumber(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return std::nullopt;
  text = text.substr(first, text.find_last_not_of(' ') + 1 - first);
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 1 || number > 65535) {
    return std::nullopt;
  }
  return number;
}

}  // namespace

SimCom::SimCom(const ConfigModel& model, UdpSocket& socket, MessageBoxes& boxes, const Clock& clock)
    : model_(model), socket_(socket), boxes_(boxes), clock_(clock) {
  socket_.SetHandlers([this](std::size_t bytesTotal) { WinsockUDP_DataArrival(bytesTotal); },
                      [this](int code, std::string_view description) { OnSocketError(code, description); });
}

bool SimCom::ConvertPorts() {
  const auto refuse = [this](const char* which, const std::string& text) {
    portTextError_ = std::string(which) + " port \"" + text + "\" is no number from 1 to 65535";
    return false;
  };
  numbers_.reset();
  const std::string& remoteText = endpoint_ ? endpoint_->RemotePort : model_.General.RemotePort;
  const std::string& localText = endpoint_ ? endpoint_->LocalPort : model_.General.LocalPort;
  const auto remote = PortNumber(remoteText);
  if (!remote) return refuse("the simulator's", remoteText);
  const auto local = PortNumber(localText);
  if (!local) return refuse("the local", localText);
  portTextError_.clear();
  numbers_ = PortNumbers{*remote, *local};
  return true;
}

bool SimCom::SetUpSocket() {
  if (!numbers_ && !ConvertPorts()) return false;
  return socket_.SetUp({RemoteIP(), numbers_->remote, numbers_->local});
}

void SimCom::UseEndpoint(std::optional<Endpoint> endpoint) {
  endpoint_ = std::move(endpoint);
  numbers_.reset();
}

bool SimCom::OpenUDP() {
  lastArrivalMs_.reset();
  if (ConvertPorts()) return SetUpSocket();
  socket_.Close();
  return false;
}

void SimCom::CloseUDP() {
  socket_.Close();
}

std::string SimCom::LinkError() const {
  return portTextError_.empty() ? socket_.LastError() : portTextError_;
}

void SimCom::OnSocketError(int code, std::string_view description) {
  boxes_.Show("Error reading data via UDP: " + std::string(description) +
              "\r\nErrorcode= " + std::to_string(code));
  if (socketError_) socketError_(code);
}

void SimCom::SetUpAndSend(const Datagram& datagram) {
  if (SetUpSocket()) socket_.Send(datagram.View());
}

void SimCom::SendAsItIs(const Datagram& datagram) {
  if (!numbers_ && !ConvertPorts()) return;
  socket_.SetRemotePort(numbers_->remote);
  socket_.Send(datagram.View());
}

void SimCom::SendDSEL(int group) {
  Datagram packet;
  if (BuildDSEL(group, packet)) SetUpAndSend(packet);
}

void SimCom::SendUSEL(int group) {
  if (model_.General.BlockUSEL == 1) return;
  Datagram packet;
  if (BuildUSEL(group, packet)) SetUpAndSend(packet);
}

void SimCom::CommandStopAll() {
  if (UdpMonitorMode != 0) return;
  for (int group = 0; group <= kLastStoppedGroup; ++group) SendUSEL(group);
}

void SimCom::SendDataFloat(int group, int valueNumber, float value) {
  Datagram packet;
  if (BuildDataFloat(group, valueNumber, value, packet)) SendAsItIs(packet);
}

void SimCom::SendDataInt(int group, int valueNumber, std::int32_t value) {
  Datagram packet;
  if (BuildDataInt(group, valueNumber, value, packet)) SendAsItIs(packet);
}

void SimCom::SendDataChar(int character) {
  Datagram packet;
  if (BuildCHAR(character, RemoteIP(), packet)) SendAsItIs(packet);
}

void SimCom::SendXplaneCommand(std::string_view commandList, int entry) {
  if (entry < 0 || entry > 255) return;
  if (const auto path = CutEntry(commandList, entry)) SendCommandPath(*path);
}

void SimCom::SendCommandPath(std::string_view path) {
  Datagram packet;
  if (BuildCMND(path, packet)) SendAsItIs(packet);
}

void SimCom::SendXplaneDREF(std::string_view dataref, float value) {
  Datagram packet;
  if (BuildDREF(dataref, value, packet)) SendAsItIs(packet);
}

void SimCom::SendXplaneRREF(std::string_view dataref, std::int32_t frequency, std::int32_t identifier,
                            int registerIt) {
  if (registerIt == 1 && frequency >= 1 && !RegisterRref(dataref, frequency, identifier)) return;
  Datagram packet;
  if (BuildRREF(dataref, frequency, identifier, packet)) SetUpAndSend(packet);
}

bool SimCom::RegisterRref(std::string_view dataref, std::int32_t frequency, std::int32_t identifier) {
  for (const RrefRow& row : rrefs_) {
    if (row.Identifier != identifier) continue;
    boxes_.Show("RREF Indent: " + std::to_string(identifier) + ", already used for: " + row.Dataref);
    return false;
  }
  rrefs_.push_back({frequency, identifier, std::string(dataref), 0});
  return true;
}

void SimCom::ClearAllRREF() {
  for (const RrefRow& row : rrefs_) SendXplaneRREF(row.Dataref, 0, row.Identifier, 0);
  rrefs_.clear();
}

void SimCom::RenewSubscriptions() {
  std::bitset<256> sent;
  for (int port = 0; port < PortCount(); ++port) {
    const PortRow& row = PortAt(port);
    const FunctionRecord& function = FunctionOf(row);
    const int group = function.SlotOf(row.SeqNr).index;
    if (row.ReadEnabled != 1 || function.Is(DataType::XplaneDataref) || group < 0 || group > 255) continue;
    const auto bit = static_cast<std::size_t>(group);
    if (!sent[bit]) SendDSEL(group);
    sent.set(bit);
  }
  for (const RrefRow& row : rrefs_) SendXplaneRREF(row.Dataref, row.Frequency, row.Identifier, 0);
}

}  // namespace tvx
