// The gauge bus: what a line carries to the instruments, and their answers. No line of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "drawn/Device.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/bus/Frames.h"

namespace tvx::vc {

// What can be wrong with the whole line (an unplugged adapter is the line's own matter: PtyLine.h).
enum class LineFault {
  None,
  Silent,   // no answer passes
  Garbled,  // every answer is damaged
  Deaf,     // no command passes
};
inline constexpr LineFault kLineFaults[] = {LineFault::None, LineFault::Silent, LineFault::Garbled,
                                            LineFault::Deaf};
std::string_view FaultText(LineFault fault);

class GaugeBus {
 public:
  static constexpr std::int64_t kLateMs = 400;  // how late a late instrument answers

  using Write = std::function<void(ByteView)>;
  explicit GaugeBus(Write write) : write_(std::move(write)) {}

  Device& Add(std::unique_ptr<Device> device);
  const std::vector<std::unique_ptr<Device>>& Devices() const { return devices_; }
  // The first instrument with the address, or nullptr.
  Device* Find(int gaugeID) const;

  // Bytes from the line; answers go out through `write` at once, except late ones.
  void OnBytes(ByteView bytes, std::int64_t nowMs);
  // Sends what has become due.
  void Tick(std::int64_t nowMs);
  // The line was interrupted: a frame that has begun and answers that wait are lost.
  void Interrupt();

  // The power of all instruments. Without it none hears or answers; when it comes on they all start.
  void SetPower(bool on);
  bool Powered() const { return powered_; }
  LineFault Fault() const { return fault_; }
  void SetFault(LineFault fault) { fault_ = fault; }

  const FrameDecoder& Decoder() const { return decoder_; }
  std::uint64_t Replies() const { return replies_; }
  std::uint64_t Polls() const { return polls_; }
  std::uint64_t Unheard() const { return unheard_; }  // frames for an address that nobody has

 private:
  struct Waiting {
    std::int64_t dueMs;
    Reply reply;
  };
  void OnFrame(const Frame& frame, std::int64_t nowMs);
  void Answer(Device& device, std::int64_t nowMs);
  void Transmit(Reply reply, bool garbled);

  Write write_;
  std::vector<std::unique_ptr<Device>> devices_;
  FrameDecoder decoder_;
  LineFault fault_ = LineFault::None;
  bool powered_ = true;
  std::vector<Waiting> waiting_;
  std::uint64_t replies_ = 0, polls_ = 0, unheard_ = 0;
  std::uint32_t damage_ = 0;  // which byte the next damaged answer spoils
};

}  // namespace tvx::vc
