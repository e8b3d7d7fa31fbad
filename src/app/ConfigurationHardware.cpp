#include "app/ConfigurationHardware.h"

#include <algorithm>
#include <utility>

#include "app/peripherals/EngineClusterPeripheral.h"
#include "config/plates/PlatePresenter.h"

namespace tvx {
namespace {

constexpr int kTicksPerSecond = 50;
constexpr int kTicksOfShow = 10;     // no faster than an eye reads
constexpr int kFirstOfAdapters = 5;  // COM numbers below are the computer's own ports
constexpr const char* kOwnPorts = "/dev/ttyS";

}  // namespace

ConfigurationHardware::ConfigurationHardware(ConfigModel& model, Serial& serial, MessageBoxes& boxes,
                                             SerialDevices& devices, const ComPorts& numbers,
                                             AdapterLine& line, EngineClusterPeripheral& cluster)
    : model_(model),
      serial_(serial),
      devices_(devices),
      numbers_(numbers),
      cluster_(cluster),
      roles_(model, serial, numbers, line),
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
  roles_.Cancel();
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

// A cable that is pulled or put back shows within a second.
void ConfigurationHardware::Tick() {
  if (roles_.Running()) return roles_.Tick();
  if (++ticksOfWatch_ >= kTicksPerSecond) {
    ticksOfWatch_ = 0;
    serial_.WatchLines();
  }
  search_.Tick();
  if (!search_.Running()) needle_.Tick();
}

bool ConfigurationHardware::LinesChanged() {
  if (ticksOfWatch_ % kTicksOfShow != 0) return false;
  std::string words = BusWords();
  for (std::size_t group = 0; group < kHardwareGroups; ++group)
    words += '\n' + TroubleOf(static_cast<int>(group));
  const bool changed = std::exchange(lineWords_, words) != words;
  if (changed) LookAgain();  // who uses what has changed with it
  return changed;
}

std::string ConfigurationHardware::DeviceOf(int comNumber) const {
  return numbers_.WordsFor(comNumber, listed_);
}

std::string ConfigurationHardware::BusTrouble() const {
  return serial_.LineInTrouble() ? "Gauge bus: " + serial_.LineWords() : std::string();
}

const SerialDevice* ConfigurationHardware::AdapterOf(int comNumber) const {
  const auto found = std::find_if(listed_.begin(), listed_.end(), [&](const SerialDevice& device) {
    return numbers_.LeadsTo(comNumber, device);
  });
  return found == listed_.end() ? nullptr : &*found;
}

// Two groups that have different numbers, and one adapter all the same.
std::string ConfigurationHardware::SharingWords(int group) const {
  const PortNumbers numbers = Numbers();
  const int own = numbers[static_cast<std::size_t>(group)];
  const std::string path = numbers_.PathOf(own);
  for (std::size_t other = 0; !path.empty() && other < static_cast<std::size_t>(group); ++other) {
    if (numbers[other] <= 0 || numbers[other] == own || numbers_.PathOf(numbers[other]) != path) continue;
    return "COM " + std::to_string(own) + " leads to the same adapter as COM " +
           std::to_string(numbers[other]) + "; only one group can have it";
  }
  return {};
}

std::string ConfigurationHardware::TroubleOf(int group) const {
  const auto which = static_cast<HardwareGroup>(group);
  const HardwarePorts& ports = serial_.Ports();
  if (!ports.Configured(which)) return {};
  if (const std::string shared = SharingWords(group); !shared.empty()) return shared;
  const SerialPort& port = ports.PortOf(which);
  const SerialDevice* adapter = AdapterOf(ports.ComNumber(which));
  const std::string others = adapter == nullptr ? std::string() : adapter->OtherUserWords();
  const std::string com = "COM " + std::to_string(ports.ComNumber(which));
  if (port.State() == SerialState::Busy && !others.empty())
    return com + " busy: " + others + " has " + port.Device();
  if (port.IsOpen() && !others.empty())
    return com + " is open for " + others + " too; bytes get lost while two read it";
  const bool mayChange = port.IsOpen() && !port.Assigned();
  return ports.InTrouble(which) || mayChange ? ports.WordsOf(which) : std::string();
}

// An adapter that is refused must not be called free because whoever has it cannot be seen.
void ConfigurationHardware::LookAgain() {
  listed_ = devices_.List();
  const HardwarePorts& ports = serial_.Ports();
  for (std::size_t group = 0; group < kHardwareGroups; ++group) {
    const auto which = static_cast<HardwareGroup>(group);
    if (!ports.Configured(which) || ports.PortOf(which).State() != SerialState::Busy) continue;
    for (SerialDevice& device : listed_) device.foundBusy |= numbers_.LeadsTo(ports.ComNumber(which), device);
  }
}

void ConfigurationHardware::KeepAdapter(int comNumber) {
  if (!numbers_.ByOrder(comNumber)) return;
  LookAgain();
  const SerialDevice* adapter = AdapterOf(comNumber);
  if (adapter == nullptr || adapter->LastingName() == adapter->path) return;
  std::string error;  // without a link the number works as before, and it is said that it may change
  devices_.Assign(comNumber, *adapter, error);
}

void ConfigurationHardware::AskRole(const SerialDevice& adapter) {
  search_.Cancel();
  roles_.Ask(adapter);
}

void ConfigurationHardware::GiveNumber(HardwareGroup group, int comNumber) {
  static constexpr std::array<std::int16_t GeneralRecord::*, kHardwareGroups> kFields{
      &GeneralRecord::ComPortGS,   &GeneralRecord::ComPortEC,    &GeneralRecord::ComPortIOM1,
      &GeneralRecord::ComPortIOM2, &GeneralRecord::ComPortYoke1, &GeneralRecord::ComPortYoke2};
  WithPortsClosed([&] {
    model_.General.*kFields[static_cast<std::size_t>(group)] = static_cast<std::int16_t>(comNumber);
  });
  model_.ConfigChanged = true;
}

void ConfigurationHardware::StartSearch() {
  roles_.Cancel();
  serial_.WatchLines();  // an adapter that was plugged in since
  search_.Start();
}

void ConfigurationHardware::MoveNeedle(const CalibrationTarget& target, int position) {
  if (target.IsEngineCluster()) {
    cluster_.MoveNeedle(target.channel, position);
  } else {
    needle_.Move(target.gaugeID, target.command, position);
  }
}

// The computer's own ports are left alone: mostly nothing hangs on them, and to ask takes its time.
std::vector<SerialDevice> ConfigurationHardware::FreeAdapters() {
  LookAgain();
  std::vector<SerialDevice> free;
  for (const SerialDevice& adapter : listed_) {
    if (!adapter.mayOpen || !adapter.OtherUserWords().empty() || adapter.path.rfind(kOwnPorts, 0) == 0)
      continue;
    const PortNumbers numbers = Numbers();
    if (std::none_of(numbers.begin(), numbers.end(),
                     [&](int number) { return numbers_.LeadsTo(number, adapter); }))
      free.push_back(adapter);
  }
  return free;
}

// One that leads to it already; otherwise the first that leads nowhere and that no group has.
int ConfigurationHardware::NumberFor(const SerialDevice& adapter) const {
  const auto own = numbers_.NumbersOf(adapter);
  if (!own.empty()) return own.front();
  const PortNumbers taken = Numbers();
  int number = kFirstOfAdapters;
  while (number < kHighestComNumber &&
         (!numbers_.DeviceOf(number).empty() || std::find(taken.begin(), taken.end(), number) != taken.end()))
    ++number;
  return number;
}

std::string ConfigurationHardware::TakeRole(const SerialDevice& adapter) {
  const std::string words = roles_.Words();
  const auto offer = roles_.Offered();
  if (!offer) return words + '.';
  const std::string group = kGroupNames[static_cast<std::size_t>(offer->group)];
  if (offer->comNumber == 0 && serial_.Ports().Configured(offer->group))
    return words + ". " + group + " has an adapter already.";
  const int number = offer->comNumber > 0 ? offer->comNumber : NumberFor(adapter);
  std::string error;
  if (!devices_.Assign(number, adapter, error)) return words + ". It could not be assigned: " + error;
  GiveNumber(offer->group, number);
  LookAgain();
  return words + ". It is used from now on: " + group + ", COM " + std::to_string(number) + '.';
}

bool ConfigurationHardware::SearchGauges() {
  StartSearch();
  return search_.Running();
}

std::string ConfigurationHardware::GaugesFoundWords() {
  std::string words = search_.Summary();
  for (const std::string& remark : search_.Remarks()) words += '\n' + remark;
  return words;
}

bool ConfigurationHardware::Command(int gaugeID, int command, std::int32_t value) {
  if (serial_.TransmitPending() || !serial_.Line().IsOpen()) return false;
  return serial_.WriteGaugeCommand(gaugeID, command, value);
}

}  // namespace tvx
