// A serial port of this computer, over termios.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "platform/FdWatcher.h"
#include "platform/SerialPort.h"
#include "platform/linux/ByteRing.h"
#include "platform/linux/Unmarker.h"

namespace tvx {

// Beyond SerialPort's contract: up to 64 kB of input wait here, then the oldest bytes are lost. Input of one
// moment is taken in pieces, so that a flood leaves time for everything else. A handler may close or open the
// port, set another handler, and yield to the event loop; it must not destroy the port.
class LinuxSerialPort final : public SerialPort {
 public:
  explicit LinuxSerialPort(std::unique_ptr<FdWatcher> watcher);
  ~LinuxSerialPort() override;
  LinuxSerialPort(const LinuxSerialPort&) = delete;
  LinuxSerialPort& operator=(const LinuxSerialPort&) = delete;

  void SetReceiveThreshold(std::size_t threshold) override;
  bool Open(int comNumber) override;
  void Close() override;
  SerialState State() const override { return state_; }
  std::string Device() const override { return device_; }
  std::string Group() const override { return group_; }
  bool Write(ByteView bytes) override;
  std::size_t Read(std::span<Byte> out) override;
  std::size_t Waiting() const override { return input_.Size(); }
  void DiscardInput() override;
  void DiscardOutput() override;
  std::optional<bool> CarrierDetect() const override;

  static constexpr std::size_t kInputRoom = 65536;
  static constexpr std::size_t kOutputRoom = 65536;  // more in one Write is refused

 private:
  void OnReadable();
  void OnWritable();
  void HangUp();
  void Leave(SerialState state);
  void ForgetInput();
  void Deliver();
  void RaiseReceived();

  std::unique_ptr<FdWatcher> watcher_;
  std::size_t threshold_ = 1;
  int fd_ = -1;
  SerialState state_ = SerialState::Closed;
  std::string device_;
  std::string group_ = "dialout";
  unsigned life_ = 0;           // counts openings and closings: a handler may have done either
  std::uint64_t consumed_ = 0;  // bytes read or discarded by the program

  ByteRing<kInputRoom> input_;
  std::array<Byte, 4096> chunk_{};  // read from the device, marks still in it
  std::size_t chunkNext_ = 0;
  std::size_t chunkEnd_ = 0;
  Unmarker unmarker_;
  ZeroMarkJudge judge_;

  std::vector<Byte> output_;  // what the device would not take at once
  std::size_t outputNext_ = 0;
};

}  // namespace tvx
