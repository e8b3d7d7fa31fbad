// A serial port that exists in memory only: it records what the program did, and does what a test tells it.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "platform/SerialPort.h"
#include "tests/fakes/AllocationCount.h"

namespace tvx {

class FakeSerialPort final : public SerialPort {
 public:
  // --- What a test sets ---
  SerialState OpenResult = SerialState::Open;     // how the next Open ends; Opening: it hangs until Answer
  bool RefuseWrites = false;                      // every Write fails, as on a dead line
  std::optional<bool> Carrier;                    // what CarrierDetect gives while open; see SetCarrier
  bool IsAssigned = true;                         // what Assigned gives
  std::vector<std::string>* SharedLog = nullptr;  // a second log, shared by ports, for their common order
  std::string Name;                               // put before the entries of SharedLog

  // --- What a test reads ---
  std::vector<std::vector<Byte>> Writes;  // each Write that was taken, whole
  std::vector<Byte> Sent;                 // all their bytes
  std::vector<std::string> Log;  // "open 3", "open 3 twice", "close", "threshold 25", "discard input",
                                 // "discard output", "ask carrier"
  std::size_t Threshold = 1;

  // Bytes come in. Received is raised as the real port raises it.
  void Arrive(ByteView bytes) {
    if (state_ != SerialState::Open) return;
    Take(bytes);
    RaiseWhileWaiting();
  }
  void Arrive(std::initializer_list<Byte> bytes) { Arrive(ByteView(bytes.begin(), bytes.size())); }
  // Break, Framing, or a Received out of turn.
  using SerialPort::Raise;
  // The adapter is pulled out. It stays so until OpenResult is Open again and the program opens the port.
  void Unplug() {
    OpenResult = SerialState::NotFound;
    input_.clear();
    if (state_ == SerialState::Open) Become(SerialState::Unplugged);
  }
  // A device that hung answers.
  void Answer(SerialState state) {
    if (state_ == SerialState::Opening) Become(state);
  }
  void SetCarrier(std::optional<bool> carrier) {
    Carrier = carrier;
    Become(state_);
  }
  std::size_t CountOf(std::string_view entry) const {
    return static_cast<std::size_t>(std::count(Log.begin(), Log.end(), entry));
  }

  // --- SerialPort ---
  void SetReceiveThreshold(std::size_t threshold) override {
    Threshold = threshold;
    Note("threshold " + std::to_string(threshold));
  }
  void Open(int comNumber, SerialReset reset = SerialReset::No) override {
    Note("open " + std::to_string(comNumber) + (reset == SerialReset::Yes ? " twice" : ""));
    input_.clear();
    device_ = "/dev/fake" + std::to_string(comNumber);
    state_ = SerialState::Opening;
    Answer(OpenResult);
  }
  void Close() override {
    Note("close");
    input_.clear();
    state_ = SerialState::Closed;
  }
  SerialState State() const override { return state_; }
  std::string Device() const override { return device_; }
  bool Assigned() const override { return IsAssigned; }
  bool Write(ByteView bytes) override {
    if (state_ != SerialState::Open || RefuseWrites) return false;
    const AllocationPause recording;
    Writes.emplace_back(bytes.begin(), bytes.end());
    Sent.insert(Sent.end(), bytes.begin(), bytes.end());
    return true;
  }
  std::size_t Read(std::span<Byte> out) override {
    const std::size_t count = std::min(out.size(), input_.size());
    const auto end = input_.begin() + static_cast<std::ptrdiff_t>(count);
    std::copy(input_.begin(), end, out.begin());
    input_.erase(input_.begin(), end);
    return count;
  }
  std::size_t Waiting() const override { return input_.size(); }
  void DiscardInput() override {
    const AllocationPause recording;
    Note("discard input");
    input_.clear();
  }
  void DiscardOutput() override { Note("discard output"); }
  std::optional<bool> CarrierDetect() const override {
    return state_ == SerialState::Open ? Carrier : std::nullopt;
  }
  void AskCarrier() override { Note("ask carrier"); }

 private:
  void Become(SerialState state) {
    state_ = state;
    if (state != SerialState::Opening) Tell();
  }
  void Take(ByteView bytes) {
    const AllocationPause recording;
    input_.insert(input_.end(), bytes.begin(), bytes.end());
  }
  void RaiseWhileWaiting() {
    while (state_ == SerialState::Open && input_.size() >= Threshold) {
      const std::size_t before = input_.size();
      Raise(SerialEvent::Received);
      if (input_.size() >= before) return;
    }
  }
  void Note(const std::string& entry) {
    Log.push_back(entry);
    if (SharedLog != nullptr) SharedLog->push_back(Name + " " + entry);
  }

  SerialState state_ = SerialState::Closed;
  std::string device_;
  std::vector<Byte> input_;
};

// As HardwarePorts takes them.
template <std::size_t kCount>
std::array<SerialPort*, kCount> PointersTo(std::array<FakeSerialPort, kCount>& ports) {
  std::array<SerialPort*, kCount> pointers{};
  std::ranges::transform(ports, pointers.begin(), [](FakeSerialPort& port) { return &port; });
  return pointers;
}

}  // namespace tvx
