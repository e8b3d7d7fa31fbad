// Requests in lists, each in the order in which they came into it. Moving one costs the same however many
// there are, and allocates nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvx {

class RequestLists {
 public:
  using Place = std::int32_t;  // of an entry; it keeps it as long as it is in a list
  static constexpr Place kNone = -1;

  // A request for a data group or a dataref, and how it stands with it. Every value that comes looks at its
  // entry, so that an entry lies in one line of the cache, and the path elsewhere.
  struct alignas(64) Entry {
    bool isGroup = false, kept = false, everAnswered = false;
    std::uint8_t list = 0, step = 0;
    std::int32_t number = 0, frequency = 0;
    int asked = 0;
    std::int64_t sinceMs = 0, askedMs = 0, answeredMs = 0;  // sinceMs: in its list
    Place before = kNone, after = kNone;
  };
  static_assert(sizeof(Entry) == 64);

  struct Chain {
    Place first = kNone, last = kNone;
    std::size_t count = 0;
  };

  // Lists 0 to `lists` - 1.
  explicit RequestLists(std::size_t lists) : chains_(lists + 1) {}

  const Chain& Of(std::size_t list) const { return chains_[list]; }
  Entry& At(Place place) { return entries_[static_cast<std::size_t>(place)]; }
  const Entry& At(Place place) const { return entries_[static_cast<std::size_t>(place)]; }
  // Of a dataref; empty for a group.
  std::string_view PathOf(Place place) const { return paths_[static_cast<std::size_t>(place)]; }
  // Places 0 to Size() - 1 hold entries; those that were freed are in none of the lists.
  std::size_t Size() const { return entries_.size(); }

  // Puts an entry at the end of a list; it may allocate.
  Place New(Entry entry, std::string_view path, std::size_t list, std::int64_t nowMs);
  // To the end of another list, or of its own.
  void Move(Place place, std::size_t list, std::int64_t nowMs);
  // Its place may be given to another entry.
  void Free(Place place) { Move(place, FreeList(), 0); }

 private:
  std::size_t FreeList() const { return chains_.size() - 1; }

  std::vector<Entry> entries_;
  std::vector<std::string> paths_;  // by place
  std::vector<Chain> chains_;       // the last is that of the free places
};

}  // namespace tvx
