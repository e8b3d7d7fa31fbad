// The serial ports of the six hardware groups: which COM number each has, opening, closing, and how they
// stand.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>

#include "base/Registration.h"
#include "config/Model.h"
#include "platform/SerialPort.h"

namespace tvx {

// The hardware groups, in the order in which their ports are opened.
enum class HardwareGroup { GaugeBus, EngineCluster, IOModule1, IOModule2, Yoke1, Yoke2 };
inline constexpr std::size_t kHardwareGroups = 6;

class HardwarePorts {
 public:
  using Ports = std::array<SerialPort*, kHardwareGroups>;

  // The ports in the order of HardwareGroup. All must outlive this object, which watches them.
  HardwarePorts(const ConfigModel& model, const Ports& ports);
  HardwarePorts(const HardwarePorts&) = delete;
  HardwarePorts& operator=(const HardwarePorts&) = delete;

  // Told when the port of a group has opened, failed or gone away, or its carrier-detect line has changed. It
  // may be called from inside Open and OpenAll.
  Registration SetChanged(std::function<void(HardwareGroup)> changed) {
    return changed_.Give(std::move(changed));
  }

  SerialPort& PortOf(HardwareGroup group) { return *ports_[static_cast<std::size_t>(group)]; }
  const SerialPort& PortOf(HardwareGroup group) const { return *ports_[static_cast<std::size_t>(group)]; }
  // The COM number that the configuration gives the group; 0 or less: not used.
  int ComNumber(HardwareGroup group) const;
  bool Configured(HardwareGroup group) const { return ComNumber(group) > 0; }
  // How the group's port stands, in one line for the user, and whether the user should look at it.
  std::string WordsOf(HardwareGroup group) const;
  bool InTrouble(HardwareGroup group) const;

  // Asks for the port of every configured group anew. None is waited for, and none that fails is told of
  // here.
  void OpenAll();
  void CloseAll();
  // Until the next OpenAll no port is opened: another user has the lines. To be called after CloseAll.
  void Hold() { held_ = true; }
  // Asks for one port as it is, unless it is open or being opened.
  void Open(HardwareGroup group);
  // Asks again for the configured ports that are not open: after an adapter was unplugged, or not there at
  // start. Never shows a message. To be called about once a second while the ports are in use.
  void WatchLines();

 private:
  // What a port's state alone does not tell.
  struct Line {
    SerialState settled = SerialState::Closed;  // as it stood when it was last not being opened
    bool lost = false;                          // it was open, and went away
    int secondsOpening = 0;
  };
  void OnChanged(HardwareGroup group);
  void Ask(HardwareGroup group, SerialReset reset);
  SerialState ShownState(HardwareGroup group) const;
  bool Stuck(const Line& line) const;
  Line& LineOf(HardwareGroup group) { return lines_[static_cast<std::size_t>(group)]; }
  const Line& LineOf(HardwareGroup group) const { return lines_[static_cast<std::size_t>(group)]; }

  const ConfigModel& model_;
  Ports ports_;
  Callback<HardwareGroup> changed_;
  bool held_ = false;
  std::array<Line, kHardwareGroups> lines_;
  std::array<Registration, kHardwareGroups> watched_;
};

}  // namespace tvx
