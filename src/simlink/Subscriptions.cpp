#include "simlink/Subscriptions.h"

namespace tvx {
namespace {

using Keep = SubscriptionKeeper::Keep;

constexpr std::size_t kIdentifiersOnWire = 65536;

// Added to the number of a port whose request would carry the bytes of another port's. Rounding does that to
// 384 and 640, to 896 and 1152, and so on. The sums lie above the numbers of all ports and are rounded to
// themselves, so each of them is unique.
constexpr std::int32_t kAboveAllPorts = kMaxPorts + 1;

}  // namespace

Subscriptions::Subscriptions(SubscriptionKeeper& keeper, MessageBoxes& boxes)
    : keeper_(keeper), boxes_(boxes), askedWith_(kIdentifiersOnWire, kNoPort) {}

Port& Subscriptions::AskerOf(std::int32_t identifier) {
  return askedWith_[static_cast<std::size_t>(RrefIdentifierOnWire(identifier))];
}

void Subscriptions::SendXplaneRREF(std::string_view dataref, std::int32_t frequency, std::int32_t identifier,
                                   Register record) {
  const Port port = identifier >= 0 && identifier < kMaxPorts ? static_cast<Port>(identifier) : kNoPort;
  const bool recorded = record == Register::Yes && frequency >= 1;
  if (recorded && !Record(dataref, frequency, identifier, port)) return;
  if (frequency == 0) return keeper_.CancelDataref(dataref, identifier);
  keeper_.AskForDataref(dataref, frequency, identifier, recorded ? Keep::Yes : Keep::No);
}

void Subscriptions::Subscribe(Port port, std::string_view dataref, std::int32_t frequency) {
  const std::int32_t identifier = AskerOf(port) == kNoPort ? port : port + kAboveAllPorts;
  if (!Record(dataref, frequency, identifier, port)) return;
  keeper_.AskForDataref(dataref, frequency, identifier, Keep::Yes);
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
    keeper_.CancelDataref(row.Dataref, row.Identifier);
    AskerOf(row.Identifier) = kNoPort;
  }
  rrefs_.clear();
}

}  // namespace tvx
