// A socket and a serial port that stand before real ones, and note what passes.
#pragma once

#include <algorithm>

#include "platform/Host.h"
#include "platform/SerialPort.h"
#include "platform/UdpSocket.h"
#include "trace/TraceRing.h"

namespace tvx {

class TracedSocket final : public UdpSocket {
 public:
  TracedSocket(UdpSocket& socket, TraceRing& trace, const Clock& clock)
      : socket_(socket), trace_(trace), clock_(clock) {
    arrivals_ = socket_.SetArrivalHandler([this](std::size_t bytes) { RaiseArrival(bytes); });
    errors_ = socket_.SetErrorHandler([this](int code, std::string_view words) { RaiseError(code, words); });
  }
  bool SetUp(const UdpEndpoints& endpoints) override { return socket_.SetUp(endpoints); }
  void SetRemotePort(std::int32_t remotePort) override { socket_.SetRemotePort(remotePort); }
  void Close() override { socket_.Close(); }
  bool IsOpen() const override { return socket_.IsOpen(); }
  bool Send(ByteView datagram) override {
    const bool sent = socket_.Send(datagram);
    if (sent) trace_.Note(TraceSource::Simulator, true, datagram, clock_.MonotonicMs());
    return sent;
  }
  std::size_t Receive(std::span<Byte> out) override {
    const std::size_t size = socket_.Receive(out);
    trace_.Note(TraceSource::Simulator, false, out.first(std::min(size, out.size())), clock_.MonotonicMs());
    return size;
  }
  UdpSender WaitingSender() const override { return socket_.WaitingSender(); }
  std::string LocalAddress() const override { return socket_.LocalAddress(); }
  std::string LastError() const override { return socket_.LastError(); }

 private:
  UdpSocket& socket_;
  TraceRing& trace_;
  const Clock& clock_;
  Registration arrivals_, errors_;
};

class TracedPort final : public SerialPort {
 public:
  TracedPort(SerialPort& port, TraceSource source, TraceRing& trace, const Clock& clock)
      : port_(port), source_(source), trace_(trace), clock_(clock) {
    events_ = port_.SetHandler([this](SerialEvent event) { Raise(event); });
    changes_ = port_.SetWatcher([this] { Tell(); });
  }
  void SetReceiveThreshold(std::size_t threshold) override { port_.SetReceiveThreshold(threshold); }
  void Open(int comNumber, SerialReset reset) override { port_.Open(comNumber, reset); }
  void Close() override { port_.Close(); }
  SerialState State() const override { return port_.State(); }
  std::string Device() const override { return port_.Device(); }
  std::string Group() const override { return port_.Group(); }
  bool Assigned() const override { return port_.Assigned(); }
  bool Write(ByteView bytes) override {
    const bool taken = port_.Write(bytes);
    if (taken) trace_.Note(source_, true, bytes, clock_.MonotonicMs());
    return taken;
  }
  std::size_t Read(std::span<Byte> out) override {
    const std::size_t size = port_.Read(out);
    trace_.Note(source_, false, out.first(size), clock_.MonotonicMs());
    return size;
  }
  std::size_t Waiting() const override { return port_.Waiting(); }
  void DiscardInput() override { port_.DiscardInput(); }
  void DiscardOutput() override { port_.DiscardOutput(); }
  std::optional<bool> CarrierDetect() const override { return port_.CarrierDetect(); }
  void AskCarrier() override { port_.AskCarrier(); }

 private:
  SerialPort& port_;
  const TraceSource source_;
  TraceRing& trace_;
  const Clock& clock_;
  Registration events_, changes_;
};

}  // namespace tvx
