// Raw positions of axes, as records keep them.
#pragma once

#include <cstdint>

namespace tvx {

// A raw position 0..65535 as a record keeps it, and back.
constexpr std::int16_t StoredRaw(int raw) {
  return static_cast<std::int16_t>((raw < 0 ? 0 : raw > 65535 ? 65535 : raw) - 32768);
}
constexpr int RawOf(std::int16_t stored) {
  return stored + 32768;
}

}  // namespace tvx
