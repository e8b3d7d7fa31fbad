// A piece of hardware that is alone on its line: an IO module, the engine cluster.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/Bytes.h"
#include "drawn/Device.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {

class Unit {
 public:
  static constexpr std::int64_t kLateMs = 400;  // how late a late unit answers

  using Write = std::function<void(ByteView)>;
  virtual ~Unit() = default;
  void SetWrite(Write write) { write_ = std::move(write); }

  // Bytes from the line.
  void Receive(ByteView bytes, std::int64_t nowMs);
  // Sends what has become due, and goes on with what takes time.
  void Tick(std::int64_t nowMs);
  // The line was interrupted: what has begun is lost.
  void Interrupt();

  DeviceFault Fault() const { return fault_; }
  // Taking DeviceFault::Dead away switches the unit on.
  void SetFault(DeviceFault fault);
  // Its power; when it comes on the unit shows zero until it is told, if its traits say so.
  void SetPower(bool on);
  bool Powered() const { return power_ && fault_ != DeviceFault::Dead; }
  void SetTraits(const DeviceTraits& traits) { traits_ = traits; }
  // Rises with everything that is to be seen.
  std::uint64_t Changes() const { return changes_; }
  std::uint64_t Frames() const { return frames_; }    // understood
  std::uint64_t Answers() const { return answers_; }  // sent
  // What it shows, in a few words.
  virtual std::string Words() const = 0;

 protected:
  virtual void OnBytes(ByteView bytes) = 0;
  virtual void OnTick(std::int64_t) {}
  virtual void OnInterrupt() = 0;
  // Shows zero; switches and axes stay as they stand.
  virtual void StartAnew() = 0;
  // Sends, as far as the fault lets it.
  void Answer(std::vector<Byte> bytes);
  void Changed() { ++changes_; }
  void CountFrame() { ++frames_; }
  std::int64_t Now() const { return nowMs_; }

 private:
  struct Waiting {
    std::int64_t dueMs;
    std::vector<Byte> bytes;
  };
  void Transmit(const std::vector<Byte>& bytes);
  void ComeOn();

  Write write_;
  DeviceFault fault_ = DeviceFault::None;
  DeviceTraits traits_;
  bool power_ = true;
  std::vector<Waiting> waiting_;
  std::int64_t nowMs_ = 0;
  std::uint64_t changes_ = 0, frames_ = 0, answers_ = 0;
  std::size_t damage_ = 0;  // which byte the next damaged answer spoils
};

}  // namespace tvx::vc
