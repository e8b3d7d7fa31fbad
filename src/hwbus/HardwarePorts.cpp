#include "hwbus/HardwarePorts.h"

#include "hwbus/SerialWords.h"

namespace tvx {
namespace {

constexpr std::array<HardwareGroup, kHardwareGroups> kGroups{
    HardwareGroup::GaugeBus,  HardwareGroup::EngineCluster, HardwareGroup::IOModule1,
    HardwareGroup::IOModule2, HardwareGroup::Yoke1,         HardwareGroup::Yoke2};

// The length of an answer: Received is raised when that many bytes have come in.
constexpr std::size_t kClusterAnswer = 16;
constexpr std::size_t kOtherAnswer = 25;

std::size_t ReceiveThreshold(HardwareGroup group) {
  return group == HardwareGroup::EngineCluster ? kClusterAnswer : kOtherAnswer;
}

}  // namespace

int HardwarePorts::ComNumber(HardwareGroup group) const {
  const GeneralRecord& general = model_.General;
  switch (group) {
    case HardwareGroup::GaugeBus:
      return general.ComPortGS;
    case HardwareGroup::EngineCluster:
      return general.ComPortEC;
    case HardwareGroup::IOModule1:
      return general.ComPortIOM1;
    case HardwareGroup::IOModule2:
      return general.ComPortIOM2;
    case HardwareGroup::Yoke1:
      return general.ComPortYoke1;
    case HardwareGroup::Yoke2:
      return general.ComPortYoke2;
  }
  return 0;
}

std::string HardwarePorts::WordsOf(HardwareGroup group) const {
  return SerialWords(ComNumber(group), PortOf(group));
}

bool HardwarePorts::InTrouble(HardwareGroup group) const {
  return SerialTrouble(ComNumber(group), PortOf(group).State());
}

void HardwarePorts::OpenAll() {
  for (const HardwareGroup group : kGroups) {
    if (Configured(group)) OpenAnew(group);
  }
}

void HardwarePorts::OpenAnew(HardwareGroup group) {
  SerialPort& port = PortOf(group);
  if (port.IsOpen()) port.Close();
  if (!Open(group)) return;
  // ODDITY: opened twice. Closing drops the adapter's modem lines, and that resets it.
  port.Close();
  if (!port.Open(ComNumber(group))) return;
  port.DiscardOutput();
  port.DiscardInput();
}

void HardwarePorts::CloseAll() {
  for (const HardwareGroup group : kGroups) {
    SerialPort& port = PortOf(group);
    if (port.State() != SerialState::Closed) port.Close();
  }
}

bool HardwarePorts::Open(HardwareGroup group) {
  SerialPort& port = PortOf(group);
  port.SetReceiveThreshold(ReceiveThreshold(group));
  return port.Open(ComNumber(group));
}

bool HardwarePorts::ReopenLost() {
  bool gaugeBusCameBack = false;
  for (const HardwareGroup group : kGroups) {
    if (!Configured(group) || PortOf(group).IsOpen() || !Open(group)) continue;
    PortOf(group).DiscardInput();
    if (group == HardwareGroup::GaugeBus) gaugeBusCameBack = true;
  }
  return gaugeBusCameBack;
}

}  // namespace tvx
