// A serial port over a tty: takes breaks and faulty bytes out of the input, and keeps frames whole.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/ByteRing.h"
#include "platform/SerialPort.h"
#include "platform/TtyDevice.h"
#include "platform/Unmarker.h"

namespace tvx {

// Beyond SerialPort's contract: up to 64 kB of input wait here, then the oldest bytes are lost. Input of one
// moment is taken in pieces, so that a flood leaves time for everything else. A handler may close or open the
// port, set another handler, and yield to the event loop; it must not destroy the port.
class TtyPort final : public SerialPort {
 public:
  explicit TtyPort(std::unique_ptr<TtyDevice> device);
  TtyPort(const TtyPort&) = delete;
  TtyPort& operator=(const TtyPort&) = delete;

  void SetReceiveThreshold(std::size_t threshold) override;
  void Open(int comNumber, SerialReset reset = SerialReset::No) override;
  void Close() override;
  SerialState State() const override { return state_; }
  std::string Device() const override { return name_.device; }
  std::string Group() const override { return name_.group; }
  bool Assigned() const override { return name_.assigned; }
  bool Write(ByteView bytes) override;
  std::size_t Read(std::span<Byte> out) override;
  std::size_t Waiting() const override { return input_.Size(); }
  void DiscardInput() override;
  void DiscardOutput() override;
  std::optional<bool> CarrierDetect() const override { return carrier_; }
  void AskCarrier() override;

  static constexpr std::size_t kInputRoom = 65536;
  static constexpr std::size_t kOutputRoom = 65536;  // more in one Write is refused

 private:
  void OnOpened(const TtyAnswer& answer);
  void OnCarrier(std::optional<bool> carrier);
  void OnReadable();
  void OnWritable();
  void HangUp();
  void Leave(SerialState state);
  void ForgetInput();
  void Deliver();
  void RaiseReceived();

  std::size_t threshold_ = 1;
  SerialState state_ = SerialState::Closed;
  TtyName name_;
  std::optional<bool> carrier_;
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

  std::unique_ptr<TtyDevice> device_;  // last: its callbacks use all the others
};

}  // namespace tvx
