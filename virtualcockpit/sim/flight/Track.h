// A value over time, given at some moments and smooth in between.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace tvx::vc {

struct Key {
  double time;  // s, rising
  double value;
};

// The slope at key k: none at a turning point, so that the curve never swings beyond its keys.
inline double SlopeAt(std::span<const Key> keys, std::size_t k) {
  if (k == 0 || k + 1 >= keys.size()) return 0;
  const double before = (keys[k].value - keys[k - 1].value) / (keys[k].time - keys[k - 1].time);
  const double after = (keys[k + 1].value - keys[k].value) / (keys[k + 1].time - keys[k].time);
  return before * after <= 0 ? 0 : 2 * before * after / (before + after);
}

// The value at `time`; before the first key its value, after the last key its value. No key: 0.
inline double ValueAt(std::span<const Key> keys, double time) {
  if (keys.empty()) return 0;
  const auto next =
      std::upper_bound(keys.begin(), keys.end(), time, [](double t, const Key& key) { return t < key.time; });
  if (next == keys.begin()) return keys.front().value;
  if (next == keys.end()) return keys.back().value;
  const auto k = static_cast<std::size_t>(next - keys.begin()) - 1;
  const Key& a = keys[k];
  const Key& b = keys[k + 1];
  const double span = b.time - a.time;
  const double u = (time - a.time) / span;
  const double u2 = u * u;
  const double u3 = u2 * u;
  return (2 * u3 - 3 * u2 + 1) * a.value + (u3 - 2 * u2 + u) * span * SlopeAt(keys, k) +
         (3 * u2 - 2 * u3) * b.value + (u3 - u2) * span * SlopeAt(keys, k + 1);
}

}  // namespace tvx::vc
