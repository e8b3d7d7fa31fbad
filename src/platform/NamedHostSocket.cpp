#include "platform/NamedHostSocket.h"

#include <algorithm>

#include "platform/HostName.h"

namespace tvx {

NamedHostSocket::NamedHostSocket(UdpSocket& socket, HostResolver& resolver, const Clock& clock)
    : socket_(socket), resolver_(resolver), clock_(clock) {
  arrivals_ = socket_.SetArrivalHandler([this](std::size_t bytesTotal) {
    if (!named_ || socket_.WaitingSender().isRemote) heardMs_ = clock_.MonotonicMs();
    RaiseArrival(bytesTotal);
  });
  errors_ = socket_.SetErrorHandler(
      [this](int code, std::string_view description) { RaiseError(code, description); });
}

bool NamedHostSocket::SetUp(const UdpEndpoints& endpoints) {
  waiting_ = false;
  if (!IsHostName(endpoints.remoteHost)) {
    named_.reset();
    return socket_.SetUp(endpoints);
  }
  if (endpoints.remoteHost != name_) {
    name_ = endpoints.remoteHost;
    address_.clear();
    error_.clear();
    looking_ = false;
    lookup_.End();
  }
  named_ = endpoints;
  if (!address_.empty()) {
    LookUpIfSilent();
    return SetUpNamed();
  }
  waiting_ = true;
  socket_.Close();
  if (error_.empty() || clock_.MonotonicMs() - askedMs_ >= kAskAgainMs) LookUp();
  return socket_.IsOpen();
}

bool NamedHostSocket::SetUpNamed() {
  waiting_ = false;
  return socket_.SetUp({address_, named_->remotePort, named_->localPort});
}

void NamedHostSocket::LookUp() {
  if (looking_) return;
  looking_ = true;
  askedMs_ = clock_.MonotonicMs();
  lookup_ = resolver_.Lookup(name_, [this](const HostLookup& result) { Found(result); });
}

void NamedHostSocket::LookUpIfSilent() {
  if (clock_.MonotonicMs() - std::max(askedMs_, heardMs_) >= kSilenceToAskMs) LookUp();
}

void NamedHostSocket::Found(const HostLookup& result) {
  looking_ = false;
  if (result.address.empty()) {
    error_ = result.error.empty() ? "no reason is known" : result.error;
    return;
  }
  error_.clear();
  if (result.address == address_) return;
  address_ = result.address;
  // Wanted by the SetUp that began the lookup, or open still with the address of before.
  if (named_ && (waiting_ || socket_.IsOpen())) SetUpNamed();
}

// A lookup goes on: its result is kept for the next SetUp.
void NamedHostSocket::Close() {
  named_.reset();
  socket_.Close();
}

bool NamedHostSocket::Send(ByteView datagram) {
  if (named_ && !address_.empty()) LookUpIfSilent();
  return socket_.Send(datagram);
}

std::string NamedHostSocket::LastError() const {
  if (!waiting_) return socket_.LastError();
  if (error_.empty()) return "the address of \"" + name_ + "\" is being looked up";
  return "no computer with the name \"" + name_ + "\" was found (" + error_ + ")";
}

}  // namespace tvx
