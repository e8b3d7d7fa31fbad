#include "simlink/SubscriptionKeeper.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

namespace tvx {
namespace {

constexpr std::size_t kKeys = kGroupKeys + 65536;
constexpr std::int64_t kLongAgo = std::numeric_limits<std::int64_t>::min() / 2;
// Asked for so often without an answer, it had stayed away.
constexpr int kStayedAway = 3;
// Entries that are looked at for one scout.
constexpr int kLooksForAScout = 8;

bool IsGroup(int group) {
  return group >= 0 && static_cast<std::size_t>(group) < kGroupKeys;
}

}  // namespace

SubscriptionKeeper::SubscriptionKeeper(LinkSocket& socket, const Clock& clock)
    : socket_(socket), clock_(clock), kept_(kKeys, kNone), cancelling_(kKeys), anewMs_(kLongAgo) {
  sentAtMs_.fill(kLongAgo);
}

std::size_t SubscriptionKeeper::KeyOf(const Entry& entry) {
  if (entry.isGroup) return static_cast<std::size_t>(entry.number);
  return kGroupKeys + static_cast<std::size_t>(RrefIdentifierOnWire(entry.number));
}

SubscriptionKeeper::Place SubscriptionKeeper::FindGroup(int group) const {
  return IsGroup(group) ? kept_[static_cast<std::size_t>(group)] : kNone;
}

SubscriptionKeeper::Place SubscriptionKeeper::FindDataref(int identifierOnWire) const {
  const auto key = kGroupKeys + static_cast<std::size_t>(identifierOnWire);
  return identifierOnWire >= 0 && key < kKeys ? kept_[key] : kNone;
}

// --- the lists ---

void SubscriptionKeeper::Free(Place place) {
  Entry& entry = requests_.At(place);
  const auto key = KeyOf(entry);
  if (kept_[key] == place) kept_[key] = kNone;
  if (entry.list == Index(List::Ask) && !entry.kept) --onceWaiting_;
  entry.kept = false;
  requests_.Free(place);
}

// --- asking ---

void SubscriptionKeeper::AskForGroup(int group, Keep keep) {
  if (!IsGroup(group)) return;
  Entry entry;
  entry.isGroup = true;
  entry.number = group;
  Ask(entry, {}, keep);
}

void SubscriptionKeeper::AskForDataref(std::string_view path, std::int32_t frequency, std::int32_t identifier,
                                       Keep keep) {
  Entry entry;
  entry.number = identifier;
  entry.frequency = frequency;
  Ask(entry, path, keep);
}

void SubscriptionKeeper::Ask(Entry entry, std::string_view path, Keep keep) {
  const std::int64_t now = clock_.MonotonicMs();
  closing_ = false;
  if (std::exchange(paused_, false)) WaitAnew(now);
  const auto key = KeyOf(entry);
  if (keep == Keep::No) {
    ++onceWaiting_;
    requests_.New(entry, path, Index(List::Ask), clock_.MonotonicMs());
  } else if (kept_[key] == kNone) {
    entry.kept = true;
    kept_[key] = requests_.New(entry, path, Index(List::Ask), clock_.MonotonicMs());
  } else if (requests_.At(kept_[key]).list != Index(List::Ask)) {
    Requeue(kept_[key], now);
  }
  SendWaiting(now);
}

void SubscriptionKeeper::CancelGroup(int group) {
  if (!IsGroup(group)) return;
  Entry entry;
  entry.isGroup = true;
  entry.number = group;
  Cancel(entry, {});
}

void SubscriptionKeeper::CancelDataref(std::string_view path, std::int32_t identifier) {
  Entry entry;
  entry.number = identifier;
  Cancel(entry, path);
}

void SubscriptionKeeper::Cancel(const Entry& entry, std::string_view path) {
  const auto key = KeyOf(entry);
  DropRequestsFor(key);
  if (cancelling_[key] || (entry.isGroup && socket_.UselBlocked())) return;
  cancelling_[key] = true;
  requests_.New(entry, path, Index(List::Cancel), clock_.MonotonicMs());
  SendWaiting(clock_.MonotonicMs());
}

// Of the numbers that a request can carry, the one that stands so on the wire.
void SubscriptionKeeper::CancelUnasked() {
  const auto begin = unasked_.begin();
  const auto end = begin + static_cast<std::ptrdiff_t>(std::exchange(unaskedCount_, 0));
  std::sort(begin, end);
  for (const std::int32_t onWire : std::span(begin, std::unique(begin, end))) {
    if (FindDataref(onWire) != kNone) continue;
    for (const std::int32_t number : {onWire, onWire - 256}) {
      if (RrefIdentifierOnWire(number) != onWire) continue;
      CancelDataref({}, number);
      break;
    }
  }
}

void SubscriptionKeeper::DropRequestsFor(std::size_t key) {
  if (kept_[key] != kNone) Free(kept_[key]);
  for (Place place = Of(List::Ask).first; onceWaiting_ > 0 && place != kNone;) {
    const Place next = requests_.At(place).after;
    if (KeyOf(requests_.At(place)) == key) Free(place);
    place = next;
  }
}

void SubscriptionKeeper::ForgetGroups() {
  for (std::size_t key = 0; key < kGroupKeys; ++key) DropRequestsFor(key);
}

// --- the link's socket ---

void SubscriptionKeeper::Opened() {
  const std::int64_t now = clock_.MonotonicMs();
  closing_ = false;
  if (std::exchange(paused_, false)) WaitAnew(now);
  SendWaiting(now);
}

void SubscriptionKeeper::Close() {
  paused_ = true;
  closing_ = CancellationsWaiting() > 0;
  closeByMs_ = clock_.MonotonicMs() + kLongestGoodbyeMs;
  if (!closing_) socket_.CloseUDP();
}

void SubscriptionKeeper::Hold(bool on) {
  if (held_ && !on) WaitAnew(clock_.MonotonicMs());
  held_ = on;
}

// What comes had no chance to be noticed: everything that was asked for gets the shortest patience again.
void SubscriptionKeeper::WaitAnew(std::int64_t now) {
  for (Place place = 0; place < static_cast<Place>(requests_.Size()); ++place) {
    Entry& entry = requests_.At(place);
    if (!entry.kept || entry.list == Index(List::Ask)) continue;
    entry.step = 0;
    requests_.Move(place, Index(List::Patience), now);
  }
  anewMs_ = kLongAgo;
}

// --- what arrives ---

void SubscriptionKeeper::Heard() {
  heardMs_ = clock_.MonotonicMs();
  if (std::exchange(silent_, false)) woken_ = true;
}

void SubscriptionKeeper::Answered(Place place) {
  if (place == kNone) return;
  Entry& entry = requests_.At(place);
  // What was asked under this number before, by something else.
  if (entry.asked == 0) return;
  if (entry.step >= kStayedAway) woken_ = true;
  entry.everAnswered = true;
  entry.step = 0;
  entry.answeredMs = heardMs_;
  if (IsFresh(entry)) return;
  requests_.Move(place, Index(List::Answered), heardMs_);
}

SubscriptionState SubscriptionKeeper::StateOf(Place place) const {
  SubscriptionState state;
  if (place == kNone) return state;
  const Entry& entry = requests_.At(place);
  state.wanted = entry.kept;
  state.asked = entry.asked;
  state.askedMs = entry.askedMs;
  if (entry.everAnswered) state.answeredMs = entry.answeredMs;
  state.silent = entry.asked > 1 && entry.list != Index(List::Answered);
  return state;
}

// --- the flow ---

void SubscriptionKeeper::Tick() {
  const std::int64_t now = clock_.MonotonicMs();
  CancelUnasked();
  if (!paused_ && !held_) {
    NoticeSilence(now);
    CollectDue(now);
  }
  SendWaiting(now);
  if (!closing_ || (CancellationsWaiting() > 0 && now < closeByMs_)) return;
  while (CancellationsWaiting() > 0) {
    const Place place = Of(List::Cancel).first;
    cancelling_[KeyOf(requests_.At(place))] = false;
    Free(place);
  }
  closing_ = false;
  socket_.CloseUDP();
}

// A simulator that comes back, or has loaded its aircraft, may know now what it did not know before: what has
// stayed away is asked for again at once.
void SubscriptionKeeper::NoticeSilence(std::int64_t now) {
  if (std::exchange(woken_, false)) anewMs_ = now;
  if (now - heardMs_ >= kSilentMs) silent_ = true;
  if (silent_ && now >= scoutDueMs_) SendScouts(now);
}

void SubscriptionKeeper::SendScouts(std::int64_t now) {
  scoutDueMs_ = now + kScoutMs;
  int scouts = 0;
  const int looks = std::min(kScouts * kLooksForAScout, static_cast<int>(requests_.Size()));
  for (int look = 0; look < looks && scouts < kScouts; ++look) {
    if (nextScout_ >= requests_.Size()) nextScout_ = 0;
    const auto place = static_cast<Place>(nextScout_++);
    Entry& entry = requests_.At(place);
    if (!entry.kept || entry.list < Index(List::Patience) || now - entry.sinceMs < kScoutMs) continue;
    Requeue(place, now);
    if (entry.step > 0) --entry.step;  // its patience stays as it is
    ++scouts;
  }
}

// No more than can leave at once, so that a tick stays short.
void SubscriptionKeeper::CollectDue(std::int64_t now) {
  std::size_t room = kMostRequests - std::min(kMostRequests, RequestsWaiting());
  for (; room > 0; --room) {
    const Place place = Of(List::Answered).first;
    if (place == kNone || now - requests_.At(place).sinceMs < kSilentMs + kFreshMs) break;
    Requeue(place, now);
  }
  for (std::size_t step = 0; step < kPatienceMs.size(); ++step) {
    for (; room > 0; --room) {
      const Place place = requests_.Of(Index(List::Patience, step)).first;
      if (place == kNone) break;
      Entry& entry = requests_.At(place);
      const bool anew = entry.sinceMs <= anewMs_;
      if (now - entry.sinceMs < (anew ? kPatienceMs[0] : kPatienceMs[step])) break;
      if (anew && step > 0) entry.step = 0;
      Requeue(place, now);
    }
  }
}

void SubscriptionKeeper::SendWaiting(std::int64_t now) {
  while (now - sentAtMs_[nextSent_] > kWindowMs) {
    const Place cancel = Of(List::Cancel).first;
    const Place place = cancel != kNone ? cancel : Of(List::Ask).first;
    if (place == kNone || (cancel == kNone && paused_)) return;
    sentAtMs_[nextSent_] = now;
    nextSent_ = (nextSent_ + 1) % sentAtMs_.size();
    Send(place, now);
  }
}

void SubscriptionKeeper::Send(Place place, std::int64_t now) {
  Entry& entry = requests_.At(place);
  if (entry.list == Index(List::Cancel)) {
    cancelling_[KeyOf(entry)] = false;
    if (entry.isGroup) {
      socket_.SendUSEL(entry.number);
    } else {
      socket_.SendRREF(requests_.PathOf(place), 0, entry.number);
    }
    Free(place);
    return;
  }
  if (entry.isGroup) {
    socket_.SendDSEL(entry.number);
  } else {
    socket_.SendRREF(requests_.PathOf(place), entry.frequency, entry.number);
  }
  if (!entry.kept) return Free(place);
  ++entry.asked;
  entry.askedMs = now;
  requests_.Move(place, Index(List::Patience, entry.step), now);
  entry.step = static_cast<std::uint8_t>(std::min<std::size_t>(entry.step + 1u, kPatienceMs.size() - 1));
}

}  // namespace tvx
