// The machine under Linux.
#pragma once

#include "platform/linux/FolderClaim.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/serial/ComPortMap.h"
#include "platform/linux/serial/LineKeepers.h"
#include "platform/linux/serial/LinuxSerialDevices.h"
#include "platform/machine/Machine.h"

namespace tvx {

class LinuxMachine final : public Machine {
 public:
  FolderStart ClaimFolder(const std::string& folder, int milliseconds) override;
  void BeforeWindows() override { Keepers(); }
  void ListenForStarts(std::function<void()> asked) override;
  // Whoever sends the signals waits for the program's end by itself: `gone` is not needed.
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
  LineKeepers& Keepers();

  LinuxClock clock_;
  FolderClaim claim_;
  LinuxSerialDevices devices_;
  LinuxComPorts numbers_;
  std::unique_ptr<LineServer> lines_;
  std::unique_ptr<LineKeepers> keepers_;
};

}  // namespace tvx
