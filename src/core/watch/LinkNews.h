// Which links are to be told of, because they have gone or returned: each change once, when it has lasted,
// and several together.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tvx {

class LinkNews {
 public:
  static constexpr std::int64_t kAtFirstMs = 10000;  // a start has so long to find everything
  static constexpr std::int64_t kLastsMs = 4000;     // what is over sooner is not told
  // The least between two tellings; twice as long after each one, up to kCalmMs, until it has been calm for
  // so long.
  static constexpr std::int64_t kQuietMs = 30000;
  static constexpr std::int64_t kCalmMs = 600000;

  // `well`: how each link stands, always in the same order. To be called about once a second. Gives the links
  // to tell of now, by their place; none while the program does not run.
  std::vector<std::size_t> Tick(bool running, std::span<const bool> well, std::int64_t nowMs);

 private:
  struct Link {
    bool told = true;                          // well or not, as it was told last
    std::optional<std::int64_t> otherSinceMs;  // it stands otherwise since then
  };
  std::vector<Link> links_;
  bool running_ = false;
  std::int64_t nextMs_ = 0;   // not before
  std::int64_t quietMs_ = 0;  // before that
};

}  // namespace tvx
