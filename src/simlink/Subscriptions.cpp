#include "simlink/Subscriptions.h"

namespace tvx {
namespace {

constexpr std::size_t kIdentifiersOnWire = 65536;

// Added to the number of a port whose request would carry the bytes of another port's. Rounding does that to
// 384 and 640, to 896 and 1152, and so on. The sums lie above the numbers of all ports and are rounded to
// themselves, so each of them is unique.
constexpr std::int32_t kAboveAllPorts = kMaxPorts + 1;

}  // namespace

Subscriptions::Subscriptions(LinkSocket& socket, MessageBoxes& boxes)
    : socket_(socket), boxes_(boxes), askedWith_(kIdentifiersOnWire, kNoPort) {}

Port& Subscriptions::AskerOf(std::int32_t identifier) {
  return askedWith_[static_cast<std::size_t>(RrefIdentifierOnWire(identifier))];
}

void Subscriptions::SendXplaneRREF(std::string_view dataref, std::int32_t frequency, std::int32_t identifier,
                                   Register record) {
  const Port port = identifier >= 0 && identifier < kMaxPorts ? static_cast<Port>(identifier) : kNoPort;
  const bool recorded = record == Register::Yes && frequency >= 1;
  if (recorded && !Record(dataref, frequency, identifier, port)) return;
  socket_.SendRREF(dataref, frequency, identifier);
}

void Subscriptions::Subscribe(Port port, std::string_view dataref, std::int32_t frequency) {
  const std::int32_t identifier = AskerOf(port) == kNoPort ? port : port + kAboveAllPorts;
  if (Record(dataref, frequency, identifier, port)) socket_.SendRREF(dataref, frequency, identifier);
}

bool Subscriptions::Record(std::string_view dataref, std::int32_t frequency, std::int32_t identifier,
                           Port port) {
  for (const RrefRow& row : rrefs_) {
    if (row.Identifier != identifier) continue;
    boxes_.Show("RREF Indent: " + std::to_string(identifier) + ", already used for: " + row.Dataref);
    return false;
  }
  rrefs_.push_back({frequency, identifier, port, std::string(dataref)});
  AskerOf(identifier) = port;
  return true;
}

void Subscriptions::ClearAllRREF() {
  for (const RrefRow& row : rrefs_) {
    socket_.SendRREF(row.Dataref, 0, row.Identifier);
    AskerOf(row.Identifier) = kNoPort;
  }
  rrefs_.clear();
}

void Subscriptions::Renew(const std::vector<int>& groups) {
  for (const int group : groups) socket_.SendDSEL(group);
  for (const RrefRow& row : rrefs_) socket_.SendRREF(row.Dataref, row.Frequency, row.Identifier);
}

}  // namespace tvx
