// The random numbers of a life. Every draw has a name, and depends on the seed, the step and that name alone:
// a life that is started again makes the same choices, though a form may come a moment earlier or later.
#pragma once

#include <cstdint>
#include <string_view>

namespace tvx::monkey {

class Dice {
 public:
  Dice(std::uint64_t seed, std::uint64_t step) : state_(Mix(Mix(seed + kOdd) ^ (step * kOdd))) {}

  // 0 <= x < 1.
  double Of(std::string_view name) const {
    return static_cast<double>(Bits(name) >> 11) * (1.0 / 9007199254740992.0);
  }
  // 0 <= x < count; 0 for a count of 0 or less.
  int Below(int count, std::string_view name) const {
    return count <= 0 ? 0 : static_cast<int>(Of(name) * count);
  }
  bool Chance(double probability, std::string_view name) const { return Of(name) < probability; }
  // One of an array.
  template <typename List>
  const auto& OneOf(const List& list, std::string_view name) const {
    return list[static_cast<std::size_t>(Below(static_cast<int>(std::size(list)), name))];
  }
  std::uint64_t Bits(std::string_view name) const {
    std::uint64_t hash = state_;
    for (const char letter : name) hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001b3u;
    return Mix(hash);
  }

 private:
  static constexpr std::uint64_t kOdd = 0x9e3779b97f4a7c15u;
  static std::uint64_t Mix(std::uint64_t x) {
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9u;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebu;
    return x ^ (x >> 31);
  }

  std::uint64_t state_;
};

}  // namespace tvx::monkey
