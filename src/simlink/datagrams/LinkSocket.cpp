#include "simlink/datagrams/LinkSocket.h"

#include <charconv>
#include <utility>

namespace tvx {
namespace {

constexpr int kHighestCommandEntry = 255;

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

bool LinkSocket::ConvertPorts() {
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

bool LinkSocket::SetUp() {
  if (!numbers_ && !ConvertPorts()) return false;
  return socket_.SetUp({RemoteIP(), numbers_->remote, numbers_->local});
}

void LinkSocket::UseEndpoint(std::optional<Endpoint> endpoint) {
  endpoint_ = std::move(endpoint);
  numbers_.reset();
}

bool LinkSocket::OpenUDP() {
  if (ConvertPorts()) return SetUp();
  socket_.Close();
  return false;
}

void LinkSocket::SetUpAndSend(const Datagram& datagram) {
  if (SetUp()) socket_.Send(datagram.View());
}

void LinkSocket::SendAsItIs(const Datagram& datagram) {
  if (!numbers_ && !ConvertPorts()) return;
  socket_.SetRemotePort(numbers_->remote);
  socket_.Send(datagram.View());
}

void LinkSocket::SendDSEL(int group) {
  Datagram packet;
  if (BuildDSEL(group, packet)) SetUpAndSend(packet);
}

void LinkSocket::SendUSEL(int group) {
  if (UselBlocked()) return;
  Datagram packet;
  if (BuildUSEL(group, packet)) SetUpAndSend(packet);
}

void LinkSocket::SendRREF(std::string_view dataref, std::int32_t frequency, std::int32_t identifier) {
  Datagram packet;
  if (BuildRREF(dataref, frequency, identifier, packet)) SetUpAndSend(packet);
}

void LinkSocket::SendDataFloat(int group, int valueNumber, float value) {
  Datagram packet;
  if (BuildDataFloat(group, valueNumber, value, packet)) SendAsItIs(packet);
}

void LinkSocket::SendDataInt(int group, int valueNumber, std::int32_t value) {
  Datagram packet;
  if (BuildDataInt(group, valueNumber, value, packet)) SendAsItIs(packet);
}

void LinkSocket::SendDataChar(int character) {
  Datagram packet;
  if (BuildCHAR(character, RemoteIP(), packet)) SendAsItIs(packet);
}

void LinkSocket::SendXplaneCommand(std::string_view commandList, int entry) {
  if (entry < 0 || entry > kHighestCommandEntry) return;
  if (const auto path = CutEntry(commandList, entry)) SendCommandPath(*path);
}

void LinkSocket::SendCommandPath(std::string_view path) {
  Datagram packet;
  if (BuildCMND(path, packet)) SendAsItIs(packet);
}

void LinkSocket::SendXplaneDREF(std::string_view dataref, float value) {
  Datagram packet;
  if (BuildDREF(dataref, value, packet)) SendAsItIs(packet);
}

std::string LinkSocket::OwnAddressWords() const {
  const std::string address = numbers_ ? socket_.LocalAddress() : std::string();
  return address.empty() ? address : address + ", port " + std::to_string(numbers_->local);
}

void LinkSocket::SendDataOutputHere() {
  if (!numbers_ && !ConvertPorts()) return;
  const std::string address = socket_.LocalAddress();
  Datagram packet;
  if (!address.empty() && BuildISE4(address, std::to_string(numbers_->local), packet)) SendAsItIs(packet);
}

}  // namespace tvx
