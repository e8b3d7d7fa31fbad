// Takes the marks out of a serial line's input.
#pragma once

#include <cstdint>

#include "base/Bytes.h"
#include "platform/TtyDevice.h"

namespace tvx {

// With PARMRK the kernel writes 0xFF 0xFF for a byte 0xFF, 0xFF 0x00 0x00 for a break and 0xFF 0x00 x for a
// byte x with a framing or parity error. A mark may be split between two reads, so the state is kept.
class Unmarker {
 public:
  enum class Kind {
    Nothing,   // in the middle of a mark
    Data,      // `value` is a byte of the line
    ZeroMark,  // a break, or a zero byte with a framing error: the mark cannot tell
    Faulty,    // `value` came with a framing or parity error
  };
  struct Item {
    Kind kind = Kind::Nothing;
    Byte value = 0;
    bool operator==(const Item&) const = default;
  };

  Item Feed(Byte byte);
  void Reset() { state_ = State::Plain; }

 private:
  enum class State { Plain, AfterFF, AfterFF00 };
  State state_ = State::Plain;
};

// Tells a break from a faulty zero byte: the one whose counter has gone on further than the marks seen so
// far.
class ZeroMarkJudge {
 public:
  // From here on, `counts` are accounted for.
  void Restart(const LineCounts& counts) { seen_ = counts; }
  void SawFaulty() { ++seen_.errors; }
  // True for a break. The mark is then accounted for.
  bool IsBreak(const LineCounts& counts);

 private:
  LineCounts seen_;
};

}  // namespace tvx
