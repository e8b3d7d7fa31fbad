#include "simlink/datagrams/Strangers.h"

#include <algorithm>

namespace tvx {

void Strangers::Note(std::uint32_t address, std::int64_t nowMs) {
  const auto known = std::find_if(rows_.begin(), rows_.end(), [address](const Stranger& row) {
    return row.datagrams > 0 && row.address == address;
  });
  if (known == rows_.end()) {
    const auto oldest =
        std::min_element(rows_.begin(), rows_.end(), [](const Stranger& a, const Stranger& b) {
          return a.datagrams == 0 ? b.datagrams > 0 : b.datagrams > 0 && a.lastMs < b.lastMs;
        });
    *oldest = {address, 1, nowMs};
    return;
  }
  ++known->datagrams;
  known->lastMs = nowMs;
}

const Stranger* Strangers::Loudest(std::int64_t nowMs, std::int64_t withinMs) const {
  const Stranger* loudest = nullptr;
  for (const Stranger& row : rows_) {
    if (row.datagrams == 0 || nowMs - row.lastMs > withinMs) continue;
    if (loudest == nullptr || row.datagrams > loudest->datagrams) loudest = &row;
  }
  return loudest;
}

std::string AddressText(std::uint32_t address) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    text += std::to_string(address >> shift & 0xFF) + (shift > 0 ? "." : "");
  }
  return text;
}

}  // namespace tvx
