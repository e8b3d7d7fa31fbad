// A COM port of Windows as a terminal device.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "platform/ByteRing.h"
#include "platform/TtyDevice.h"
#include "platform/windows/HandleWatcher.h"
#include "platform/windows/serial/CommLine.h"

namespace tvx {

// Marks breaks and faulty bytes in its input as Unmarker wants them: Windows only tells that there were some,
// so their marks stand behind what came with them. A write may stay under way until its last byte is on the
// line; so a queue takes what is to follow.
class CommTty final : public TtyDevice {
 public:
  using Resolve = std::function<std::string(int comNumber)>;  // the name to open; empty: there is none
  static constexpr std::size_t kQueueRoom = CommLine::kMostAtOnce;

  CommTty(OpenComm open, const MakeHandleWatcher& makeWatcher, Resolve resolve);
  ~CommTty() override { Close(); }
  CommTty(const CommTty&) = delete;
  CommTty& operator=(const CommTty&) = delete;

  void SetCallbacks(Callbacks callbacks) override { callbacks_ = std::move(callbacks); }
  void Open(int comNumber, SerialReset reset) override;
  void Close() override;
  TtyName Name() const override { return name_; }
  void AskCarrier() override;
  std::optional<std::size_t> Read(std::span<Byte> out) override;
  std::optional<std::size_t> Write(ByteView bytes) override;
  void WatchWrite(bool enabled) override { watchWrite_ = enabled; }
  LineCounts Counts() const override { return counts_; }

 private:
  void OnOpened();
  void OnInput();
  void OnWritten();
  void Mark(Byte value);
  bool Launch();
  void Gone();

  OpenComm open_;
  Resolve resolve_;
  Callbacks callbacks_;
  TtyName name_;
  std::unique_ptr<HandleWatcher> openWatcher_, readWatcher_, writeWatcher_;
  std::unique_ptr<CommOpening> opening_;
  std::unique_ptr<CommLine> line_;
  LineCounts counts_;
  std::array<Byte, CommLine::kMostAtOnce> chunk_{};
  ByteRing<16384> input_;     // with marks
  std::vector<Byte> output_;  // what is being written, and behind it what is to follow
  bool writing_ = false, watchWrite_ = false;
};

}  // namespace tvx
