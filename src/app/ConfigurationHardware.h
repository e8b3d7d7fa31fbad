// The hardware while the configuration is edited: the serial ports, the gauge bus with its search, and the
// needle that is calibrated.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "app/RoleFinder.h"
#include "config/plates/LiveNeedleAccess.h"
#include "config/setup/GaugeBusAccess.h"
#include "config/setup/PortAccess.h"
#include "guide/GuideHardware.h"
#include "hwbus/gaugebus/GaugeSearch.h"
#include "hwbus/gaugebus/LiveNeedle.h"
#include "hwbus/gaugebus/Serial.h"
#include "platform/ComPorts.h"

namespace tvx {

class EngineClusterPeripheral;

inline constexpr std::array<const char*, kHardwareGroups> kGroupNames{
    "Gauge bus", "Engine cluster", "IO module 1", "IO module 2", "Yoke 1", "Yoke 2"};

class ConfigurationHardware final : public PortAccess,
                                    public GaugeBusAccess,
                                    public LiveNeedleAccess,
                                    public GuideHardware {
 public:
  ConfigurationHardware(ConfigModel& model, Serial& serial, MessageBoxes& boxes, SerialDevices& devices,
                        const ComPorts& numbers, AdapterLine& line, EngineClusterPeripheral& cluster);

  GaugeSearch& Search() { return search_; }
  void OpenPorts();
  // Closes the ports and opens them again: a COM number leads elsewhere now.
  void OpenPortsAnew();
  // A file that was loaded or imported may name other ports than those that are open. Does the same then.
  void FollowPortNumbers();
  // About every 20 ms, after Serial::TickTransmit.
  void Tick();
  // True where what BusWords or TroubleOf says has changed since it was last asked. To be asked after Tick.
  bool LinesChanged();

  // What hangs on an adapter, on request.
  RoleFinder& Roles() { return roles_; }
  void AskRole(const SerialDevice& adapter) override;
  // Gives the group the COM number.
  void GiveNumber(HardwareGroup group, int comNumber);

  // PortAccess
  std::string DeviceOf(int comNumber) const override;
  std::string TroubleOf(int group) const override;
  void KeepAdapter(int comNumber) override;
  void LookAgain() override;
  void WithPortsClosed(const std::function<void()>& change) override;
  // GaugeBusAccess
  std::string BusWords() const override { return serial_.LineWords(); }
  // How the bus stands where that is not well; otherwise empty.
  std::string BusTrouble() const;
  void StartSearch() override;
  void CancelSearch() override { search_.Cancel(); }
  void TickReplyCountdown() override { serial_.TickReplyCountdown(); }
  // LiveNeedleAccess, GuideHardware
  void MoveNeedle(const CalibrationTarget& target, int position) override;
  std::vector<SerialDevice> FreeAdapters() override;
  bool AskingRole() override { return roles_.Running(); }
  void StopAskingRole() override { roles_.Cancel(); }
  std::string TakeRole(const SerialDevice& adapter) override;
  bool SearchGauges() override;
  void StopSearch() override { search_.Cancel(); }
  bool SearchingGauges() override { return search_.Running(); }
  int SearchedAddresses() override { return search_.Done(); }
  std::string GaugesFoundWords() override;
  bool Command(int gaugeID, int command, std::int32_t value) override;

 private:
  using PortNumbers = std::array<int, kHardwareGroups>;
  PortNumbers Numbers() const;
  const SerialDevice* AdapterOf(int comNumber) const;
  std::string SharingWords(int group) const;
  int NumberFor(const SerialDevice& adapter) const;

  ConfigModel& model_;
  Serial& serial_;
  SerialDevices& devices_;
  const ComPorts& numbers_;
  EngineClusterPeripheral& cluster_;
  RoleFinder roles_;
  GaugeSearch search_;
  LiveNeedle needle_;
  std::vector<SerialDevice> listed_;  // the adapters, as they were when they were last looked for
  int ticksOfWatch_ = 0;              // since the lines were last watched
  std::string lineWords_;             // how they stood when that was last asked
  PortNumbers opened_{};              // the COM numbers that the ports were opened with
};

}  // namespace tvx
