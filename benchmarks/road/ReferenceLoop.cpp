// A fixed piece of work with what the road is made of: bytes put together to numbers, table look-ups,
// scaling in double precision, rounding, comparing, bytes again. scripts/bench --check divides every time of
// the road by its time, which takes the machine out of the comparison. Never change it: the committed ratios
// would mean something else.
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t kRows = 256;

void ReferenceLoop(benchmark::State& state) {
  std::array<std::uint8_t, 4 * kRows> bytes{};
  std::array<std::int32_t, kRows> last{};
  std::array<double, kRows> factors{};
  for (std::size_t i = 0; i < kRows; ++i) factors[i] = 1.0 + static_cast<double>(i) / 64.0;
  std::uint32_t random = 12345;
  std::size_t changes = 0;
  for (auto _ : state) {
    for (std::size_t i = 0; i < kRows; ++i) {
      random = random * 1664525u + 1013904223u;  // each step needs the one before: nothing runs abreast
      const std::size_t row = random >> 24;
      const std::uint32_t number = bytes[4 * row] | static_cast<std::uint32_t>(bytes[4 * row + 1]) << 8 |
                                   static_cast<std::uint32_t>(bytes[4 * row + 2]) << 16;
      const double scaled = (static_cast<double>(number) + 0.25) * factors[row] / factors[i];
      const auto position = static_cast<std::int32_t>(scaled) % 4320;
      if (position != last[row]) {
        last[row] = position;
        ++changes;
      }
      bytes[4 * i] = static_cast<std::uint8_t>(random >> 16);
      bytes[4 * i + 1] = static_cast<std::uint8_t>(random >> 8);
    }
    benchmark::DoNotOptimize(changes);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(ReferenceLoop);

}  // namespace
