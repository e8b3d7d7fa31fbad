// How long values take from their datagram's arrival to the frame that shows them, over the last minute.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tvx {

class LatencyMeter {
 public:
  struct Result {
    int medianMs, percentile99Ms;
  };

  // No operation allocates.
  void Note(std::int64_t latencyMs, std::int64_t nowMs);
  void Clear() { *this = {}; }
  // std::nullopt where nothing was measured in the last minute. Up to 100 ms exact, above in steps of 10 ms.
  std::optional<Result> OfLastMinute(std::int64_t nowMs) const;

 private:
  static constexpr std::size_t kSeconds = 60;
  static constexpr std::size_t kBins = 200;
  struct Second {
    std::int64_t number = -1;  // since the clock's beginning
    std::array<std::uint16_t, kBins> counts{};
  };
  static std::size_t BinOf(std::int64_t latencyMs);
  static int MsOf(std::size_t bin);

  std::array<Second, kSeconds> seconds_{};
};

}  // namespace tvx
