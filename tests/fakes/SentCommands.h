// What a line carries to the instruments, read back.
#pragma once

#include <ostream>
#include <vector>

#include "base/Bytes.h"

namespace tvx {

// A frame on the gauge bus, decoded.
struct SentCommand {
  int gauge, command, value;
  bool operator==(const SentCommand&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const SentCommand& c) {
    return out << "{gauge " << c.gauge << ", command " << c.command << ", value " << c.value << "}";
  }
};

using Commands = std::vector<SentCommand>;

// Takes the frames of a batch apart; the 0xFF in front of a poll frame is skipped. A byte that fits nowhere
// ends the list with gauge -1.
inline Commands CommandsOf(ByteView batch) {
  Commands commands;
  while (!batch.empty()) {
    if (batch[0] == 0xFF) {
      batch = batch.subspan(1);
      continue;
    }
    if (batch.size() < 6 || batch[0] != 0 || batch[5] != 0xFF || (batch[2] & 8) == 0) {
      commands.push_back({-1, 0, 0});
      return commands;
    }
    const int magnitude = ((batch[4] & 0xFD) | (batch[2] & 2)) * 256 + ((batch[3] & 0xFE) | (batch[2] & 1));
    commands.push_back({batch[1], batch[2] >> 4, (batch[2] & 4) ? -magnitude : magnitude});
    batch = batch.subspan(6);
  }
  return commands;
}

}  // namespace tvx
