// The serial ports of the six hardware groups: which COM number each has, opening, closing, and how they
// stand.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "config/Model.h"
#include "platform/SerialPort.h"

namespace tvx {

// The hardware groups, in the order in which their ports are opened.
enum class HardwareGroup { GaugeBus, EngineCluster, IOModule1, IOModule2, Yoke1, Yoke2 };
inline constexpr std::size_t kHardwareGroups = 6;

class HardwarePorts {
 public:
  using Ports = std::array<SerialPort*, kHardwareGroups>;

  // The ports in the order of HardwareGroup. All must outlive this object.
  HardwarePorts(const ConfigModel& model, const Ports& ports) : model_(model), ports_(ports) {}

  SerialPort& PortOf(HardwareGroup group) { return *ports_[static_cast<std::size_t>(group)]; }
  const SerialPort& PortOf(HardwareGroup group) const { return *ports_[static_cast<std::size_t>(group)]; }
  // The COM number that the configuration gives the group; 0 or less: not used.
  int ComNumber(HardwareGroup group) const;
  bool Configured(HardwareGroup group) const { return ComNumber(group) > 0; }
  // How the group's port stands, in one line for the user, and whether the user should look at it.
  std::string WordsOf(HardwareGroup group) const;
  bool InTrouble(HardwareGroup group) const;

  // Opens the port of every configured group anew. One that cannot be opened stays closed, without a message.
  void OpenAll();
  void CloseAll();
  // Opens one port as it is, with the receive threshold of its group. False where it cannot be opened.
  bool Open(HardwareGroup group);
  // Tries to open again the configured ports that are not open: after an adapter was unplugged, or not there
  // at start. Returns true when the gauge bus came back. Never shows a message. To be called about once a
  // second while running.
  bool ReopenLost();

 private:
  void OpenAnew(HardwareGroup group);

  const ConfigModel& model_;
  Ports ports_;
};

}  // namespace tvx
