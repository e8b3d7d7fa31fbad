#include "hwbus/Serial.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "base/Rounding.h"

namespace tvx {

namespace {

constexpr std::array<HardwareGroup, kHardwareGroups> kGroups{
    HardwareGroup::GaugeBus,  HardwareGroup::EngineCluster, HardwareGroup::IOModule1,
    HardwareGroup::IOModule2, HardwareGroup::Yoke1,         HardwareGroup::Yoke2};

constexpr std::size_t kBlanksAtOpening = 40;
constexpr std::size_t kLongestFrame = 7;
constexpr std::int16_t kReplyTicks = 20;

// The engine cluster answers with 16 bytes, everything else with 25.
std::size_t ReceiveThreshold(HardwareGroup group) {
  return group == HardwareGroup::EngineCluster ? 16 : kReplySize;
}

}  // namespace

Serial::Serial(const ConfigModel& model, const Ports& ports, MessageBoxes& boxes, EventLoop& loop)
    : model_(model), ports_(ports), boxes_(boxes), loop_(loop) {
  TransmitBuffer.reserve(kBatchLimit);
}

int Serial::ComNumber(HardwareGroup group) const {
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

void Serial::OpenComPorts() {
  for (const HardwareGroup group : kGroups) {
    if (ComNumber(group) > 0) OpenAnew(group);
  }
}

void Serial::OpenAnew(HardwareGroup group) {
  SerialPort& port = PortOf(group);
  if (port.IsOpen()) port.Close();
  // A frame that was queued while halted is sent when the run starts, so it must outlive the opening.
  if (group == HardwareGroup::GaugeBus && TransmitPending == 0) TransmitBuffer.assign(kBlanksAtOpening, ' ');
  port.SetReceiveThreshold(ReceiveThreshold(group));
  if (!port.Open(ComNumber(group))) return;
  // ODDITY: opened twice. Closing drops the adapter's modem lines, and that resets it.
  port.Close();
  if (!port.Open(ComNumber(group))) return;
  port.DiscardOutput();
  port.DiscardInput();
  // The interface module asserts carrier detect when it has no power.
  if (group == HardwareGroup::GaugeBus && port.CarrierDetect().value_or(false)) {
    boxes_.Show("No Power on CIM; Check Power Switch and Fuses");
  }
}

void Serial::CloseComPorts() {
  for (const HardwareGroup group : kGroups) {
    SerialPort& port = PortOf(group);
    if (port.State() != SerialState::Closed) port.Close();
  }
}

bool Serial::OpenOnce(HardwareGroup group) {
  SerialPort& port = PortOf(group);
  port.SetReceiveThreshold(ReceiveThreshold(group));
  return port.Open(ComNumber(group));
}

bool Serial::ReopenLostPorts() {
  bool gaugeBusCameBack = false;
  for (const HardwareGroup group : kGroups) {
    if (ComNumber(group) <= 0 || PortOf(group).IsOpen() || !OpenOnce(group)) continue;
    PortOf(group).DiscardInput();
    if (group == HardwareGroup::GaugeBus) gaugeBusCameBack = true;
  }
  return gaugeBusCameBack;
}

void Serial::SetModuleCommand(HardwareGroup module, ModuleCommand command) {
  if (module == HardwareGroup::IOModule1) modules_[0] = std::move(command);
  if (module == HardwareGroup::IOModule2) modules_[1] = std::move(command);
}

bool Serial::QueueFrame(ByteView frame) {
  while (TransmitPending == 1) {
    if (loop_.Ending()) return false;
    loop_.Yield();
  }
  TransmitBuffer.assign(frame.begin(), frame.end());
  TransmitPending = 1;
  return true;
}

void Serial::WriteGaugeCommand(int gaugeID, int command, std::int32_t value) {
  if (gaugeID >= 256) {
    if (gaugeID == kIOModule1Address && modules_[0]) modules_[0](gaugeID, command, value);
    if (gaugeID == kIOModule2Address && modules_[1]) modules_[1](gaugeID, command, value);
    return;
  }
  // Built before the wait, so that a value that does not fit leaves the slot alone.
  const auto frame = BuildGaugeFrame(gaugeID, command, value);
  if (!frame) throw RangeError("gauge command value " + std::to_string(value) + " does not fit");
  if (!QueueFrame(*frame)) return;
  const std::int32_t magnitude = std::abs(value);
  lastCommand_ = {gaugeID, magnitude, magnitude / 256, (*frame)[2]};
}

void Serial::WriteNewGaugeID(int gaugeID, int newGaugeID) {
  const auto frame = BuildNewGaugeIDFrame(gaugeID, newGaugeID);
  if (!frame) throw RangeError("GaugeID " + std::to_string(newGaugeID) + " does not fit");
  QueueFrame(*frame);
}

bool Serial::QueryGauge(int gaugeID) {
  ReplyReceived = 0;
  WriteGaugeCommand(gaugeID, kCommandReportState, 0);
  ReplyCountdown = kReplyTicks;
  while (ReplyCountdown > 0) {
    if (loop_.Ending()) return false;
    loop_.Yield();
    if (ReplyReceived == 1) return true;
  }
  boxes_.Show("Gauge with ID: " + std::to_string(gaugeID) + " doesn't respond.");
  return false;
}

void Serial::TickReplyCountdown() {
  if (ReplyCountdown > 0) --ReplyCountdown;
}

void Serial::TickTransmit() {
  if (TransmitPending != 1) return;
  SerialPort& port = PortOf(HardwareGroup::GaugeBus);
  if (!port.IsOpen() && ComNumber(HardwareGroup::GaugeBus) > 0) OpenOnce(HardwareGroup::GaugeBus);
  const std::size_t count = std::min(kLongestFrame, TransmitBuffer.size());
  port.Write(ByteView(TransmitBuffer).first(count));
  TransmitPending = 0;
}

}  // namespace tvx
