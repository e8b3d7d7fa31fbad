// A terminal device whose line is kept by a process of its own.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/FdWatcher.h"
#include "platform/TtyDevice.h"
#include "platform/linux/serial/ComPortMap.h"
#include "platform/linux/serial/LineKeepers.h"

namespace tvx {

class KeptTty final : public TtyDevice {
 public:
  using Resolve = std::function<ComPortTarget(int comNumber)>;
  // `keepers` must outlive it. `resolve`: what the COM numbers lead to.
  explicit KeptTty(LineKeepers& keepers, Resolve resolve = FindComPort);
  ~KeptTty() override { Close(); }
  KeptTty(const KeptTty&) = delete;
  KeptTty& operator=(const KeptTty&) = delete;

  void SetCallbacks(Callbacks callbacks) override { callbacks_ = std::move(callbacks); }
  void Open(int comNumber, SerialReset reset) override;
  void Close() override;
  TtyName Name() const override { return name_; }
  void AskCarrier() override;
  std::optional<std::size_t> Read(std::span<Byte> out) override;
  std::optional<std::size_t> Write(ByteView bytes) override;
  void WatchWrite(bool enabled) override { line_->WatchWrite(enabled); }
  LineCounts Counts() const override;

 private:
  void OnStarted(int socket);
  void OnReport();
  void Answer(const TtyAnswer& answer);

  LineKeepers& keepers_;
  const Resolve resolve_;
  Callbacks callbacks_;
  TtyName name_;
  std::string path_;  // of the device itself, behind all links
  int socket_ = -1;   // to the keeper
  int fd_ = -1;       // the line
  bool carrierAsked_ = false;
  std::unique_ptr<FdWatcher> reports_;
  std::unique_ptr<FdWatcher> line_;
};

}  // namespace tvx
