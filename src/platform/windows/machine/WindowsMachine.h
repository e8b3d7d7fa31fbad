// The machine under Windows.
#pragma once

#include "platform/machine/Machine.h"
#include "platform/windows/FolderLock.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/serial/ComDevices.h"
#include "platform/windows/serial/ComNumbers.h"
#include "platform/windows/serial/CommPorts.h"

namespace tvx {

class WindowsMachine final : public Machine {
 public:
  FolderStart ClaimFolder(const std::string& folder, int milliseconds) override;
  void BeforeWindows() override {}
  void ListenForStarts(std::function<void()> asked) override;
  std::unique_ptr<EndWatch> WatchForEnd(std::function<void()> ended, std::function<bool()> gone) override;
  void CatchCrashes() override;

  const Clock& Clocks() const override { return clock_; }
  std::unique_ptr<SerialPort> MakePort() override;
  std::unique_ptr<SerialPort> MakePortTo(std::function<std::string()> path) override;
  SerialDevices& Adapters() override { return devices_; }
  const ComPorts& Numbers() const override { return numbers_; }
  std::unique_ptr<KeyInjector> MakeKeys() override;
  std::unique_ptr<JoystickDevice> MakeJoysticks() override;
  std::unique_ptr<LastWords> MakeLastWords(std::function<std::optional<UdpTarget>()> target) override;
  std::string UserOfUdpPort(std::int32_t port) const override;

 private:
  std::unique_ptr<SerialPort> MakePort(std::function<std::string(int)> resolve);

  WindowsClock clock_;
  FolderLock lock_;
  ComDevices devices_;
  ComNumbers numbers_;
  CommPorts ports_;
};

}  // namespace tvx
