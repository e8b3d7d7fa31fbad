#include "app/ConfigurationHardware.h"

#include "app/EngineClusterPeripheral.h"
#include "config/plates/PlatePresenter.h"

namespace tvx {

ConfigurationHardware::ConfigurationHardware(ConfigModel& model, Serial& serial, MessageBoxes& boxes,
                                             const SerialDevices& devices, const ComPorts& numbers,
                                             EngineClusterPeripheral& cluster)
    : serial_(serial),
      devices_(devices),
      numbers_(numbers),
      cluster_(cluster),
      search_(model, serial, boxes),
      needle_(serial) {}

ConfigurationHardware::PortNumbers ConfigurationHardware::Numbers() const {
  PortNumbers numbers{};
  for (std::size_t group = 0; group < kHardwareGroups; ++group)
    numbers[group] = serial_.Ports().ComNumber(static_cast<HardwareGroup>(group));
  return numbers;
}

void ConfigurationHardware::OpenPorts() {
  serial_.OpenComPorts();
  opened_ = Numbers();
  LookAgain();
}

void ConfigurationHardware::WithPortsClosed(const std::function<void()>& change) {
  search_.Cancel();
  serial_.CloseComPorts();
  change();
  serial_.OpenComPorts();
  opened_ = Numbers();
}

void ConfigurationHardware::OpenPortsAnew() {
  WithPortsClosed([] {});
}

void ConfigurationHardware::FollowPortNumbers() {
  if (opened_ != Numbers()) OpenPortsAnew();
}

void ConfigurationHardware::Tick() {
  search_.Tick();
  if (!search_.Running()) needle_.Tick();
}

std::string ConfigurationHardware::DeviceOf(int comNumber) const {
  return numbers_.WordsFor(comNumber, listed_);
}

std::string ConfigurationHardware::TroubleOf(int group) const {
  const auto which = static_cast<HardwareGroup>(group);
  const HardwarePorts& ports = serial_.Ports();
  return ports.InTrouble(which) ? ports.WordsOf(which) : std::string();
}

void ConfigurationHardware::StartSearch() {
  serial_.Ports().ReopenLost();  // an adapter that was plugged in since
  search_.Start();
}

void ConfigurationHardware::MoveNeedle(const CalibrationTarget& target, int position) {
  if (target.IsEngineCluster()) {
    cluster_.MoveNeedle(target.channel, position);
  } else {
    needle_.Move(target.gaugeID, target.command, position);
  }
}

}  // namespace tvx
