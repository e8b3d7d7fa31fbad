#include "ffb/YokeLine.h"

#include <algorithm>
#include <array>

namespace tvx {
namespace {

constexpr Byte kSeparator = 0xFF;  // after each frame, so that a yoke that lost the end of one finds the next
constexpr std::string_view kActivity[] = {"---", " \\", " |", " /"};
constexpr std::string_view kPattern = "#0.0";

ShortText Percent(int position) {
  return FormatNumber(static_cast<double>(position) / kYokeTravel * 100, kPattern);
}

}  // namespace

YokeLine::YokeLine(SerialPort& port, const Clock& clock) : port_(port), clock_(clock) {
  lookedMs_ = clock_.MonotonicMs();
  queue_.reserve(kQueueLimit);
  events_ = port_.SetHandler([this](SerialEvent event) { MSComm1_OnComm(event); });
}

void YokeLine::SetCalibration(const AxisCalibration& roll, const AxisCalibration& pitch) {
  roll_ = roll;
  pitch_ = pitch;
}

void YokeLine::ComposeCmd(Byte address, Byte command, int p1, int p2, int p3, int p4) {
  if (queue_.size() + kYokeFrameSize + 1 > kQueueLimit) return;
  const auto frame = YokeFrame(address, command, p1, p2, p3, p4);
  queue_.insert(queue_.end(), frame.begin(), frame.end());
  queue_.push_back(kSeparator);
}

bool YokeLine::SendSerial() {
  if (queue_.empty()) return true;
  const bool taken = port_.Write(queue_);
  queue_.clear();
  if (taken) NoteAsked();
  return taken;
}

// A third one on its way means that the reply to the first was lost.
void YokeLine::NoteAsked() {
  if (asked_ == askedMs_.size()) {
    askedMs_[0] = askedMs_[1];
    --asked_;
  }
  askedMs_[asked_++] = clock_.MonotonicMs();
}

void YokeLine::Forget() {
  port_.DiscardInput();
  waitingBefore_ = 0;
  answered_ = faded_ = false;
  asked_ = 0;
}

void YokeLine::DropStalePiece() {
  lookedMs_ = clock_.MonotonicMs();
  const std::size_t waiting = port_.Waiting();
  if (waiting > 0 && waiting == waitingBefore_) {
    port_.DiscardInput();
    waitingBefore_ = 0;
  } else {
    waitingBefore_ = waiting;
  }
}

void YokeLine::MSComm1_OnComm(SerialEvent event) {
  switch (event) {
    case SerialEvent::Break:
      message_ = "Break rcvd.";
      return;
    case SerialEvent::Framing:
      message_ = "Framing err.";
      return;
    case SerialEvent::Received:
      break;
  }
  // All that waits is taken as one reply or as none, so that after a damaged reply the next one is read from
  // its own first byte.
  std::array<Byte, 256> input;
  std::size_t count = port_.Read(input);
  if (count == input.size()) port_.DiscardInput();
  TakeReply(ByteView(input).first(count));
}

void YokeLine::TakeReply(ByteView bytes) {
  switch (ReadYokeReply(bytes, address_, lastReply_)) {
    case YokeReplyKind::Incomplete:
      message_ = "Inc. reply";
      return;
    case YokeReplyKind::Garbled:
      message_ = "Garbled reply";
      return;
    case YokeReplyKind::Wrong:
      message_ = "Wrong Reply";
      return;
    case YokeReplyKind::Correct:
      break;
  }
  message_ = "Correct";
  ++goodReplies_;
  answered_ = true;
  lastGoodMs_ = lookedMs_;
  if ((lastReply_.status & yokestatus::kFading) != 0) faded_ = true;
  if (asked_ > 0) {
    replyTookMs_ = clock_.MonotonicMs() - askedMs_[0];
    askedMs_[0] = askedMs_[1];
    --asked_;
  }
  rollPosition_ = AxisPosition(lastReply_.rawRoll, roll_);
  pitchPosition_ = AxisPosition(lastReply_.rawPitch, pitch_);
}

bool YokeLine::AnsweredWithinMs(std::int64_t milliseconds) const {
  return answered_ && clock_.MonotonicMs() - lastGoodMs_ <= milliseconds;
}

std::optional<std::int64_t> YokeLine::ReplyAgeMs() const {
  if (!answered_) return std::nullopt;
  return clock_.MonotonicMs() - lastGoodMs_;
}

std::string_view YokeLine::Activity() const {
  return kActivity[goodReplies_ % std::size(kActivity)];
}

ShortText YokeLine::BankText() const {
  return Percent(rollPosition_);
}

ShortText YokeLine::PitchText() const {
  return Percent(pitchPosition_);
}

ShortText YokeLine::RollLoadText() const {
  return FormatNumber(lastReply_.rollLoad / 10.0, kPattern);
}

ShortText YokeLine::PitchLoadText() const {
  return FormatNumber(lastReply_.pitchLoad / 10.0, kPattern);
}

}  // namespace tvx
