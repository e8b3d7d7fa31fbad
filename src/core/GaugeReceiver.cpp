#include "core/GaugeReceiver.h"

#include <algorithm>
#include <exception>

#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr std::size_t kIgnoredLength = 7;
constexpr int kLowestReplyType = 10;
constexpr int kHighestReplyType = 140;

}  // namespace

void GaugeReceiver::OnComm(SerialEvent event, bool running) {
  SerialPort& port = serial_.Line();
  serial_.NoteRead();
  if (event != SerialEvent::Received) {
    port.DiscardInput();
    return;
  }
  std::array<Byte, kReplySize> read{};
  const std::size_t length = port.Read(read);
  if (length <= kIgnoredLength) return;
  if (!IsReplyEnvelope(ByteView(read).first(length))) {
    port.DiscardInput();
    if (running) cycle_.NoteDamaged();
    listener_(std::nullopt);
    return;
  }
  replyText_ = read;
  replyLength_ = length;
  serial_.NoteReply();
  if (running) Dispatch(ReplyView(replyText_));
  listener_(ReplyView(replyText_));
}

void GaugeReceiver::Dispatch(ReplyView reply) {
  const int type = ReplyGaugetype(reply);
  if (type < kLowestReplyType || type > kHighestReplyType) return;
  ActiveGauge* gauge = cycle_.GaugeWithID(ReplyGaugeID(reply));
  if (gauge == nullptr || gauge->Driver == nullptr || gauge->Kind != InstrumentOf(type)) return;
  std::ranges::copy(reply, gauge->Answer.emplace().begin());
  if (!cycle_.NoteAnswer(*gauge)) return;
  try {
    gauge->Driver->TakeReply(reply, *this);
  } catch (const std::exception&) {
    // A value that the simulator's port does not take ends the handling of this reply.
  }
}

void GaugeReceiver::PutAirPressure(float inches) {
  cycle_.HoldBarometricSetting();
  float sent = inches;
  sim_.PutPort(cycle_.StandardPort(StandardValue::AirPressure), sent);
}

}  // namespace tvx
