#include "simlink/RequestLists.h"

namespace tvx {

RequestLists::Place RequestLists::New(Entry entry, std::string_view path, std::size_t list,
                                      std::int64_t nowMs) {
  Place place = Of(FreeList()).first;
  if (place == kNone) {
    place = static_cast<Place>(entries_.size());
    entries_.emplace_back().list = static_cast<std::uint8_t>(FreeList());
    paths_.emplace_back();
    chains_[FreeList()] = {place, place, 1};
  }
  Move(place, list, nowMs);
  Entry& made = At(place);
  entry.list = made.list;
  entry.before = made.before;
  entry.after = made.after;
  entry.sinceMs = made.sinceMs;
  made = entry;
  paths_[static_cast<std::size_t>(place)] = path;
  return place;
}

void RequestLists::Move(Place place, std::size_t list, std::int64_t nowMs) {
  Entry& entry = At(place);
  Chain& from = chains_[entry.list];
  (entry.before == kNone ? from.first : At(entry.before).after) = entry.after;
  (entry.after == kNone ? from.last : At(entry.after).before) = entry.before;
  --from.count;
  Chain& to = chains_[list];
  entry.before = to.last;
  entry.after = kNone;
  (to.last == kNone ? to.first : At(to.last).after) = place;
  to.last = place;
  ++to.count;
  entry.list = static_cast<std::uint8_t>(list);
  entry.sinceMs = nowMs;
}

}  // namespace tvx
