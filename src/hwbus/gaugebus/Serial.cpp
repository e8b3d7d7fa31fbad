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
constexpr int kReplyTicks = 20;
constexpr int kReplyTickMs = 50, kTransmitMs = 20;  // of TickReplyCountdown and TickTransmit

}  // namespace

Serial::Serial(HardwarePorts& ports, MessageBoxes& boxes, const Clock& clock)
    : ports_(ports),
      boxes_(boxes),
      clock_(clock),
      portsChanged_(ports.SetChanged([this](HardwareGroup group) { OnChanged(group); })) {}

std::string Serial::LineWords() const {
  const std::string words = ports_.WordsOf(HardwareGroup::GaugeBus);
  return NoPower() ? words + "; no power on its interface module: check power switch and fuses" : words;
}

void Serial::OpenComPorts() {
  // A frame that was queued while halted is sent when the run starts, so it must outlive the opening.
  openedAnew_ = ports_.Configured(HardwareGroup::GaugeBus);
  if (openedAnew_ && !transmitPending_) transmitBuffer_.Hold(kBlanksAtOpening);
  lineOpen_ = noPower_ = false;
  openingTicks_ = 0;
  ports_.OpenAll();
  backlog_.Clear();
}

void Serial::CloseComPorts() {
  lineOpen_ = noPower_ = openedAnew_ = false;
  ports_.CloseAll();
}

void Serial::OnChanged(HardwareGroup group) {
  if (group != HardwareGroup::GaugeBus) return;
  const bool anew = std::exchange(openedAnew_, false);
  const bool wasOpen = std::exchange(lineOpen_, Line().IsOpen());
  const bool hadNoPower = std::exchange(noPower_, NoPower());
  if (lineOpen_) openingTicks_ = 0;
  if (lineOpen_ && !wasOpen) backlog_.Clear();
  if (anew && noPower_) boxes_.Show("No Power on CIM; Check Power Switch and Fuses");
  const bool cameBack = lineOpen_ && !anew && (!wasOpen || (hadNoPower && !noPower_));
  lineChanged_(cameBack);
}

void Serial::WatchLines() {
  ports_.WatchLines();
  if (Line().CarrierDetect()) Line().AskCarrier();
}

Registration Serial::SetModuleCommand(HardwareGroup module, ModuleCommand command) {
  return (module == HardwareGroup::IOModule2 ? module2_ : module1_).Give(std::move(command));
}

bool Serial::QueueFrame(ByteView frame) {
  if (!waiting_.Push(frame)) return false;
  if (!transmitPending_) NextFrame();
  return true;
}

void Serial::NextFrame() {
  transmitPending_ = !waiting_.Empty();
  if (!transmitPending_) return;
  transmitBuffer_.Hold(waiting_.Front());
  waiting_.Pop();
}

bool Serial::WriteGaugeCommand(int gaugeID, int command, std::int32_t value) {
  if (gaugeID > kHighestGaugeID) {
    if (gaugeID == kIOModule1Address) module1_(gaugeID, command, value);
    if (gaugeID == kIOModule2Address) module2_(gaugeID, command, value);
    return true;
  }
  const auto frame = BuildGaugeFrame(gaugeID, command, value);
  if (!frame) throw RangeError("gauge command value " + std::to_string(value) + " does not fit");
  return QueueFrame(*frame);
}

bool Serial::WriteNewGaugeID(int gaugeID, int newGaugeID) {
  const auto frame = BuildNewGaugeIDFrame(gaugeID, newGaugeID);
  if (!frame) throw RangeError("GaugeID " + std::to_string(newGaugeID) + " does not fit");
  return QueueFrame(*frame);
}

bool Serial::FrameCanWait() {
  if (Line().IsOpen() || !ports_.Configured(HardwareGroup::GaugeBus)) return false;
  ports_.Open(HardwareGroup::GaugeBus);
  return LineOpening() && openingTicks_ < kOpeningTicks && ++openingTicks_ > 0;
}

void Serial::TickTransmit() {
  if (!transmitPending_) return;
  if (FrameCanWait()) return;
  const ByteView held = transmitBuffer_.Bytes();
  WriteLine(held.first(std::min(FrameQueue::kLongestFrame, held.size())));
  NextFrame();
}

bool Serial::WriteLine(ByteView bytes) {
  if (!Line().Write(bytes)) return false;
  backlog_.Add(bytes.size(), NowMs());
  return true;
}

Registration Serial::QueryGauge(int gaugeID, std::function<void(bool)> done) {
  replyReceived_ = false;
  queriedGauge_ = gaugeID;
  WriteGaugeCommand(gaugeID, kCommandReportState, 0);
  const auto before = static_cast<int>(waiting_.Size());
  replyCountdown_ = kReplyTicks + before * kTransmitMs / kReplyTickMs;
  return queryDone_.Give(std::move(done));
}

void Serial::NoteReply() {
  replyReceived_ = true;
  EndQuery(true);
}

void Serial::TickReplyCountdown() {
  if (replyCountdown_ > 0 && --replyCountdown_ == 0) EndQuery(false);
}

void Serial::EndQuery(bool answered) {
  if (answered && replyCountdown_ == 0) return;
  replyCountdown_ = 0;
  if (!queryDone_) return;
  if (!answered) boxes_.Show("Gauge with ID: " + std::to_string(queriedGauge_) + " doesn't respond.");
  queryDone_(answered);
}

void Serial::BeginBatch() {
  if (!transmitPending_) transmitBuffer_.Clear();
  for (; !waiting_.Empty(); waiting_.Pop()) transmitBuffer_.Append(waiting_.Front());
}

Serial::BatchResult Serial::SendBatch() {
  transmitPending_ = false;
  SerialPort& line = Line();
  if (line.IsOpen() && input_.DiscardRest(line, NowMs())) ++discardedRests_;
  if (transmitBuffer_.Empty() || !ports_.Configured(HardwareGroup::GaugeBus)) return BatchResult::Sent;
  if (line.IsOpen() && WriteLine(transmitBuffer_.Bytes())) return BatchResult::Sent;
  return line.IsOpen() ? BatchResult::Full : BatchResult::Closed;
}

}  // namespace tvx
