// A datagram socket without a network: records what is sent, delivers what a test gives it.
#pragma once

#include <algorithm>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "platform/UdpSocket.h"
#include "tests/fakes/AllocationCount.h"

namespace tvx {

class FakeUdpSocket final : public UdpSocket {
 public:
  struct SentDatagram {
    std::string bytes;
    UdpEndpoints to;
  };

  // --- what the program did ---
  std::vector<SentDatagram> Sent;         // only what left an open socket
  std::vector<UdpEndpoints> SetUps;       // every call, failed ones too
  std::vector<std::int32_t> RemotePorts;  // every SetRemotePort
  int Closes = 0;

  // The bytes of every datagram sent so far, which are then forgotten.
  std::vector<std::string> TakeSent() {
    std::vector<std::string> all;
    for (SentDatagram& datagram : Sent) all.push_back(std::move(datagram.bytes));
    Sent.clear();
    return all;
  }

  // --- what the test makes happen ---
  UdpSender Sender;        // of all that is delivered
  std::string SetUpError;  // not empty: SetUp fails, and this is why

  // A datagram waits; the program is not told yet.
  void Queue(std::string_view bytes) { waiting_.emplace_back(bytes); }
  // A datagram arrives, and the program is told.
  void Deliver(std::string_view bytes) {
    Queue(bytes);
    RaiseArrival(bytes.size());
  }
  using UdpSocket::RaiseError;

  // --- UdpSocket ---
  bool SetUp(const UdpEndpoints& endpoints) override {
    const AllocationPause recording;
    SetUps.push_back(endpoints);
    open_ = SetUpError.empty();
    lastError_ = SetUpError;
    if (open_) endpoints_ = endpoints;
    return open_;
  }
  void SetRemotePort(std::int32_t remotePort) override {
    const AllocationPause recording;
    RemotePorts.push_back(remotePort);
    endpoints_.remotePort = remotePort;
  }
  void Close() override {
    ++Closes;
    open_ = false;
  }
  bool IsOpen() const override { return open_; }
  bool Send(ByteView datagram) override {
    if (!open_) return false;
    const AllocationPause recording;
    Sent.push_back({std::string(datagram.begin(), datagram.end()), endpoints_});
    return true;
  }
  std::size_t Receive(std::span<Byte> out) override {
    if (waiting_.empty()) return 0;
    const std::string& bytes = waiting_.front();
    const std::size_t count = std::min(out.size(), bytes.size());
    std::copy_n(bytes.begin(), count, out.begin());
    waiting_.pop_front();
    return count;
  }
  UdpSender WaitingSender() const override { return Sender; }
  std::string LocalAddress() const override { return "192.168.1.20"; }
  std::string LastError() const override { return lastError_; }

 private:
  std::deque<std::string> waiting_;
  UdpEndpoints endpoints_;
  bool open_ = false;
  std::string lastError_;
};

}  // namespace tvx
