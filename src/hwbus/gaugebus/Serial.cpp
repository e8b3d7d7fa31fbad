#include "hwbus/gaugebus/Serial.h"

#include <algorithm>
#include <utility>

#include "base/Rounding.h"
#include "hwbus/gaugebus/NewGaugeIDFrame.h"

namespace tvx {

namespace {

constexpr auto kBlanksAtOpening = [] {
  std::array<Byte, 40> blanks{};
  blanks.fill(' ');
  return blanks;
}();
constexpr std::size_t kLongestFrame = 7;
constexpr int kReplyTicks = 20;

}  // namespace

void Serial::OpenComPorts() {
  // A frame that was queued while halted is sent when the run starts, so it must outlive the opening.
  const bool configured = ports_.Configured(HardwareGroup::GaugeBus);
  if (configured && !transmitPending_) transmitBuffer_.Hold(kBlanksAtOpening);
  ports_.OpenAll();
  // The interface module asserts carrier detect when it has no power.
  if (configured && Line().CarrierDetect().value_or(false)) {
    boxes_.Show("No Power on CIM; Check Power Switch and Fuses");
  }
}

void Serial::SetModuleCommand(HardwareGroup module, ModuleCommand command) {
  modules_[module == HardwareGroup::IOModule2 ? 1 : 0] = std::move(command);
}

bool Serial::QueueFrame(ByteView frame) {
  while (transmitPending_) {
    if (loop_.Ending()) return false;
    loop_.Yield();
  }
  transmitBuffer_.Hold(frame);
  transmitPending_ = true;
  return true;
}

void Serial::WriteGaugeCommand(int gaugeID, int command, std::int32_t value) {
  if (gaugeID > kHighestGaugeID) {
    if (gaugeID == kIOModule1Address && modules_[0]) modules_[0](gaugeID, command, value);
    if (gaugeID == kIOModule2Address && modules_[1]) modules_[1](gaugeID, command, value);
    return;
  }
  // Built before the wait, so that a value that does not fit leaves the slot alone.
  const auto frame = BuildGaugeFrame(gaugeID, command, value);
  if (!frame) throw RangeError("gauge command value " + std::to_string(value) + " does not fit");
  QueueFrame(*frame);
}

void Serial::WriteNewGaugeID(int gaugeID, int newGaugeID) {
  const auto frame = BuildNewGaugeIDFrame(gaugeID, newGaugeID);
  if (!frame) throw RangeError("GaugeID " + std::to_string(newGaugeID) + " does not fit");
  QueueFrame(*frame);
}

void Serial::TickTransmit() {
  if (!transmitPending_) return;
  if (!Line().IsOpen() && ports_.Configured(HardwareGroup::GaugeBus)) ports_.Open(HardwareGroup::GaugeBus);
  const ByteView held = transmitBuffer_.Bytes();
  Line().Write(held.first(std::min(kLongestFrame, held.size())));
  transmitPending_ = false;
}

bool Serial::QueryGauge(int gaugeID) {
  replyReceived_ = false;
  WriteGaugeCommand(gaugeID, kCommandReportState, 0);
  replyCountdown_ = kReplyTicks;
  while (replyCountdown_ > 0) {
    if (loop_.Ending()) return false;
    loop_.Yield();
    if (replyReceived_) return true;
  }
  boxes_.Show("Gauge with ID: " + std::to_string(gaugeID) + " doesn't respond.");
  return false;
}

void Serial::TickReplyCountdown() {
  if (replyCountdown_ > 0) --replyCountdown_;
}

void Serial::BeginBatch() {
  if (!transmitPending_) transmitBuffer_.Clear();
}

Serial::BatchResult Serial::SendBatch() {
  transmitPending_ = false;
  SerialPort& line = Line();
  if (line.IsOpen()) line.DiscardInput();
  if (transmitBuffer_.Empty() || !ports_.Configured(HardwareGroup::GaugeBus)) return BatchResult::Sent;
  if (line.IsOpen() && line.Write(transmitBuffer_.Bytes())) return BatchResult::Sent;
  return line.IsOpen() ? BatchResult::Full : BatchResult::Closed;
}

}  // namespace tvx
