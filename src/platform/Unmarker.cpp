#include "platform/Unmarker.h"

namespace tvx {

Unmarker::Item Unmarker::Feed(Byte byte) {
  switch (state_) {
    case State::Plain:
      if (byte != 0xFF) return {Kind::Data, byte};
      state_ = State::AfterFF;
      return {};
    case State::AfterFF:
      if (byte == 0x00) {
        state_ = State::AfterFF00;
        return {};
      }
      state_ = State::Plain;
      // Only 0xFF can follow here. Should a driver ever send a lone 0xFF, the byte behind it is data.
      return {Kind::Data, byte};
    case State::AfterFF00:
      state_ = State::Plain;
      if (byte == 0x00) return {Kind::ZeroMark, 0};
      return {Kind::Faulty, byte};
  }
  return {};
}

bool ZeroMarkJudge::IsBreak(const LineCounts& counts) {
  if (counts.breaks == seen_.breaks && counts.errors != seen_.errors) {
    ++seen_.errors;
    return false;
  }
  if (counts.breaks != seen_.breaks) ++seen_.breaks;
  return true;
}

}  // namespace tvx
