// What the simulator is asked to send: data groups, and datarefs with the ports that asked for them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Host.h"
#include "simlink/PortRow.h"
#include "simlink/SubscriptionKeeper.h"

namespace tvx {

// A recorded RREF subscription.
struct RrefRow {
  std::int32_t Frequency = 0;   // times per second
  std::int32_t Identifier = 0;  // that the request gives, before its second byte is rounded
  Port For = kNoPort;           // the port that gets the answers
  std::string Dataref;
};

// Whether a subscription is recorded, so that it is kept up, and cancelled with the others.
enum class Register { No, Yes };

class Subscriptions {
 public:
  Subscriptions(SubscriptionKeeper& keeper, MessageBoxes& boxes);

  // Groups 0..255. Each call sends its packet, whatever was asked for before.
  void SelectGroup(int group) { keeper_.AskForGroup(group, SubscriptionKeeper::Keep::Yes); }
  void UnselectGroup(int group) { keeper_.CancelGroup(group); }

  // Asks for a dataref, or cancels it with frequency 0. A subscription that is to be recorded, with a
  // frequency of 1 or more, is refused with a message when its identifier is recorded already. Its answers
  // belong to the port with the identifier's number.
  void SendXplaneRREF(std::string_view dataref, std::int32_t frequency, std::int32_t identifier,
                      Register record);
  // Asks, recorded, for what a newly opened port reads. The identifier is the port's number, or, where the
  // request would look like that of another port, one that no other request can have.
  void Subscribe(Port port, std::string_view dataref, std::int32_t frequency);
  // Cancels every recorded dataref, and forgets them.
  void ClearAllRREF();

  const std::vector<RrefRow>& Rrefs() const { return rrefs_; }
  // The port whose recorded request carried this identifier, 0..65535, on the wire; kNoPort where none did.
  Port AskedWith(int identifierOnWire) const {
    return askedWith_[static_cast<std::size_t>(identifierOnWire)];
  }

 private:
  bool Record(std::string_view dataref, std::int32_t frequency, std::int32_t identifier, Port port);
  Port& AskerOf(std::int32_t identifier);

  SubscriptionKeeper& keeper_;
  MessageBoxes& boxes_;
  std::vector<RrefRow> rrefs_;
  std::vector<Port> askedWith_;  // by identifier on the wire
};

}  // namespace tvx
