// What the simulator is asked to send, and whether it does. Requests leave in their order and no faster than
// it reads them; what stays away is asked for again, for as long as it is wanted.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Host.h"
#include "simlink/RequestLists.h"
#include "simlink/datagrams/LinkSocket.h"

namespace tvx {

// Groups have the keys 0..255, and datarefs those behind, by their identifiers.
inline constexpr std::size_t kGroupKeys = 256;

// How it stands with one data group or one dataref.
struct SubscriptionState {
  bool wanted = false;
  int asked = 0;                           // times since it was first wanted
  std::int64_t askedMs = 0;                // when last, on the keeper's clock
  std::optional<std::int64_t> answeredMs;  // when last; std::nullopt: never
  bool silent = false;                     // asked for, and no answer came in time, or none comes any more
};

// Driven from outside: by its clock, and by Tick, about every 20 ms. What a tick costs does not depend on how
// much is wanted. Groups are 0..255; others are ignored. Datarefs are told apart by their identifier as the
// wire carries it (RrefIdentifierOnWire).
class SubscriptionKeeper {
 public:
  static constexpr std::size_t kMostRequests = 100;  // in any kWindowMs
  static constexpr std::int64_t kWindowMs = 100;
  static constexpr std::int64_t kSilentMs = 3000;  // without an answer: three periods of once a second
  // How long an answer is waited for; the next time longer.
  static constexpr std::array<std::int64_t, 6> kPatienceMs{1000, 2000, 4000, 8000, 16000, 30000};
  // While no datagram comes at all, a few of what is wanted are asked for so often, in turn.
  static constexpr std::int64_t kScoutMs = 1000;
  static constexpr int kScouts = 8;
  static constexpr std::int64_t kLongestGoodbyeMs = 2000;

  SubscriptionKeeper(LinkSocket& socket, const Clock& clock);

  // --- asking ---
  // Keep: asked for until it answers, and again when it falls silent, until it is cancelled. Otherwise the
  // request leaves once. What is kept already is asked for again.
  enum class Keep { No, Yes };
  void AskForGroup(int group, Keep keep);
  void AskForDataref(std::string_view path, std::int32_t frequency, std::int32_t identifier, Keep keep);
  // Not wanted any more. The cancellation leaves before every request that waits; a request for the same that
  // has not left yet never does.
  void CancelGroup(int group);
  void CancelDataref(std::string_view path, std::int32_t identifier);
  // Groups are not wanted any more; sends no packet.
  void ForgetGroups();

  void Tick();
  // Values are not looked at for a while (true): whether they come cannot be known, and is not judged.
  void Hold(bool on);

  // --- the link's socket ---
  // It was opened: what comes is waited for, and asked for where it does not come.
  void Opened();
  // Closes it when the last cancellation has left, at most kLongestGoodbyeMs from now; at once where none
  // waits. Requests that wait do not leave before the link is opened again or another request is made.
  void Close();
  bool Closing() const { return closing_; }

  // --- what arrives; none of it allocates ---
  void Heard();  // any datagram of the simulator, before what it holds
  void GroupAnswered(int group) { Answered(FindGroup(group)); }
  void DatarefAnswered(int identifierOnWire) {  // 0..65535
    const Place place = kept_[kGroupKeys + static_cast<std::size_t>(identifierOnWire)];
    if (place == kNone) return;
    Entry& entry = requests_.At(place);
    // Most values come soon after another: then only the time is noted.
    if (!IsFresh(entry)) return Answered(place);
    entry.answeredMs = heardMs_;
  }
  // A value of a dataref that nobody asks for: what a program that died had asked for goes on. It is
  // cancelled at the next Tick.
  void Unasked(int identifierOnWire) {
    if (unaskedCount_ < unasked_.size()) unasked_[unaskedCount_++] = identifierOnWire;
  }

  // --- what is known ---
  SubscriptionState OfGroup(int group) const { return StateOf(FindGroup(group)); }
  SubscriptionState OfDataref(int identifierOnWire) const { return StateOf(FindDataref(identifierOnWire)); }
  std::size_t RequestsWaiting() const { return Of(List::Cancel).count + Of(List::Ask).count; }
  std::size_t CancellationsWaiting() const { return Of(List::Cancel).count; }

 private:
  // Those of a Patience list wait for their answer, for the same time in each; so all lists are in the order
  // in which something falls due, and only their first entries need a look.
  enum class List : std::uint8_t { Cancel, Ask, Answered, Patience };  // Patience + step
  static constexpr std::size_t kLists = static_cast<std::size_t>(List::Patience) + kPatienceMs.size();
  using Place = RequestLists::Place;
  using Entry = RequestLists::Entry;
  // How old a time in the list of what answers may be, so that not every value moves its entry there.
  static constexpr std::int64_t kFreshMs = 250;
  static constexpr Place kNone = RequestLists::kNone;

  static std::size_t Index(List list, std::size_t step = 0) { return static_cast<std::size_t>(list) + step; }
  const RequestLists::Chain& Of(List list) const { return requests_.Of(Index(list)); }
  bool IsFresh(const Entry& entry) const {
    return entry.list == Index(List::Answered) && heardMs_ - entry.sinceMs < kFreshMs;
  }
  static std::size_t KeyOf(const Entry& entry);
  Place FindGroup(int group) const;
  Place FindDataref(int identifierOnWire) const;
  SubscriptionState StateOf(Place place) const;

  void Requeue(Place place, std::int64_t now) { requests_.Move(place, Index(List::Ask), now); }
  void Free(Place place);
  void Ask(Entry entry, std::string_view path, Keep keep);
  void Cancel(const Entry& entry, std::string_view path);
  void CancelUnasked();
  void DropRequestsFor(std::size_t key);
  void Answered(Place place);
  void WaitAnew(std::int64_t now);
  void NoticeSilence(std::int64_t now);
  void SendScouts(std::int64_t now);
  void CollectDue(std::int64_t now);
  void SendWaiting(std::int64_t now);
  void Send(Place place, std::int64_t now);

  LinkSocket& socket_;
  const Clock& clock_;
  RequestLists requests_{kLists};
  std::vector<Place> kept_;       // by key: the entry that is kept
  std::vector<bool> cancelling_;  // by key: its cancellation waits
  std::size_t onceWaiting_ = 0;   // requests that wait and are not kept
  std::array<std::int64_t, kMostRequests> sentAtMs_;
  std::size_t nextSent_ = 0;
  std::array<std::int32_t, kMostRequests> unasked_{};
  std::size_t unaskedCount_ = 0;
  bool paused_ = false, held_ = false, closing_ = false;
  std::int64_t closeByMs_ = 0;
  bool silent_ = true;  // no datagram for kSilentMs
  bool woken_ = false;  // what had stayed away has answered
  std::int64_t heardMs_ = 0, scoutDueMs_ = 0;
  std::int64_t anewMs_;  // what was asked up to then is asked again without the longer patience
  std::size_t nextScout_ = 0;
};

}  // namespace tvx
