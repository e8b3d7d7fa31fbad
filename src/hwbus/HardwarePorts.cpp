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

// An adapter that answers later than this is stuck.
constexpr int kLongestOpening = 3;  // s

}  // namespace

HardwarePorts::HardwarePorts(const ConfigModel& model, const Ports& ports) : model_(model), ports_(ports) {
  for (const HardwareGroup group : kGroups)
    watched_[static_cast<std::size_t>(group)] = PortOf(group).SetWatcher([this, group] { OnChanged(group); });
}

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
  const SerialPort& port = PortOf(group);
  std::string words = SerialWords(ComNumber(group), ShownState(group), port.Device(), port.Group());
  if (port.IsOpen() && Configured(group) && !port.Assigned())
    words += "; another adapter may have this number next time: assign it in the configuration";
  return words;
}

bool HardwarePorts::InTrouble(HardwareGroup group) const {
  return SerialTrouble(ComNumber(group), ShownState(group)) || (Configured(group) && Stuck(LineOf(group)));
}

bool HardwarePorts::Stuck(const Line& line) const {
  return line.secondsOpening >= kLongestOpening;
}

// A port that is asked for once a second, in vain, shows what is wrong with it, not the asking.
SerialState HardwarePorts::ShownState(HardwareGroup group) const {
  const Line& line = LineOf(group);
  SerialState state = PortOf(group).State();
  if (state == SerialState::Opening && line.settled != SerialState::Closed && !Stuck(line))
    state = line.settled;
  return state == SerialState::NotFound && line.lost ? SerialState::Unplugged : state;
}

void HardwarePorts::OnChanged(HardwareGroup group) {
  Line& line = LineOf(group);
  line.settled = PortOf(group).State();
  line.secondsOpening = 0;
  if (line.settled == SerialState::Unplugged) line.lost = true;
  if (line.settled == SerialState::Open) line.lost = false;
  changed_(group);
}

void HardwarePorts::OpenAll() {
  held_ = false;
  for (const HardwareGroup group : kGroups) {
    LineOf(group) = {};
    // ODDITY: opened twice. Closing drops the adapter's modem lines, and that resets it.
    if (Configured(group)) Ask(group, SerialReset::Yes);
  }
}

void HardwarePorts::CloseAll() {
  for (const HardwareGroup group : kGroups) {
    LineOf(group) = {};
    SerialPort& port = PortOf(group);
    if (port.State() != SerialState::Closed) port.Close();
  }
}

void HardwarePorts::Open(HardwareGroup group) {
  const SerialState state = PortOf(group).State();
  if (!held_ && state != SerialState::Open && state != SerialState::Opening) Ask(group, SerialReset::No);
}

void HardwarePorts::Ask(HardwareGroup group, SerialReset reset) {
  SerialPort& port = PortOf(group);
  port.SetReceiveThreshold(ReceiveThreshold(group));
  port.Open(ComNumber(group), reset);
}

void HardwarePorts::WatchLines() {
  for (const HardwareGroup group : kGroups) {
    if (!Configured(group)) continue;
    if (PortOf(group).State() == SerialState::Opening) ++LineOf(group).secondsOpening;
    Open(group);
  }
}

}  // namespace tvx
