// Frames on the gauge bus as an instrument understands them.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <variant>

#include "base/Bytes.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {

inline constexpr std::size_t kCommandFrameSize = 6;

// A command to the gauge with the address.
struct CommandFrame {
  Byte gaugeID;
  int command;         // 0..15
  std::int32_t value;  // -65535..65535
};
// The gauge with the address is to take a new one.
struct AddressFrame {
  Byte gaugeID;
  Byte newGaugeID;
};
using Frame = std::variant<CommandFrame, AddressFrame>;

// Finds the frames in a stream of bytes, whatever stands between them.
class FrameDecoder {
 public:
  // Takes bytes as they come, in pieces of any size, and hands over every frame they complete.
  void Take(ByteView bytes, const std::function<void(const Frame&)>& handler);
  // Forgets a frame that has begun (the line was interrupted).
  void Reset() { length_ = 0; }

  std::uint64_t Frames() const { return frames_; }
  // Bytes that were part of no frame. The 0xFF before a frame and the blank after one are no garbage:
  // fillers.
  std::uint64_t Garbage() const { return garbage_; }
  std::uint64_t Fillers() const { return fillers_; }

 private:
  bool CouldBeFrame() const;
  void DropFirst();

  std::array<Byte, kCommandFrameSize> bytes_{};
  std::size_t length_ = 0;
  std::uint64_t frames_ = 0, garbage_ = 0, fillers_ = 0;
};

}  // namespace tvx::vc
