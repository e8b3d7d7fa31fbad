// One yoke on its serial line: the commands that wait to be written, and what its replies said last.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/NumberFormat.h"
#include "ffb/YokeFrame.h"
#include "platform/Host.h"
#include "platform/SerialPort.h"

namespace tvx {

class YokeLine {
 public:
  // Takes the port's events from now on. The port is opened and closed elsewhere.
  YokeLine(SerialPort& port, const Clock& clock);
  YokeLine(const YokeLine&) = delete;
  YokeLine& operator=(const YokeLine&) = delete;

  void SetAddress(Byte address) { address_ = address; }
  void SetCalibration(const AxisCalibration& roll, const AxisCalibration& pitch);

  // Appends one command to the queue: its frame and one 0xFF more. A command that does not fit into
  // kQueueLimit bytes is left out.
  void ComposeCmd(Byte address, Byte command, int p1, int p2, int p3, int p4);
  void ComposeCmd(YokeCommand command, int p1 = 0, int p2 = 0, int p3 = 0, int p4 = 0) {
    ComposeCmd(address_, static_cast<Byte>(command), p1, p2, p3, p4);
  }
  // Writes the queue and empties it. False where the line does not take it: the commands are lost then, since
  // forces of the past are of no use later.
  bool SendSerial();
  ByteView TransmitQueue() const { return queue_; }
  static constexpr std::size_t kQueueLimit = 1024;

  // Once a cycle, before a reply is asked for: drops an incomplete reply that has not grown since the last
  // cycle. Otherwise its bytes would be taken for the start of the next reply, and so on for ever.
  void DropStalePiece();
  // The program was held up: what waits on the line is old. Drops it, and forgets that the yoke has answered.
  void Forget();

  // The port's events.
  void MSComm1_OnComm(SerialEvent event);

  int RollPosition() const { return rollPosition_; }  // -511..511, as last reported
  int PitchPosition() const { return pitchPosition_; }
  const YokeReply& LastReply() const { return lastReply_; }  // the last good one
  // Whether the last good reply is no older than `milliseconds`. When it came is not known exactly: it counts
  // as come at the cycle before it was read, the earliest that is possible.
  bool AnsweredWithinMs(std::int64_t milliseconds) const;
  // How old it is by that count; std::nullopt where none came, or it was forgotten.
  std::optional<std::int64_t> ReplyAgeMs() const;
  // How long the last good reply took from its Report to when it was read, ms; 0 where none came.
  std::int64_t ReplyTookMs() const { return replyTookMs_; }
  // Whether a good reply since the last call said that the yoke fades, or has faded, by itself.
  bool TakeFaded() { return std::exchange(faded_, false); }

  bool PortOpen() const { return port_.IsOpen(); }
  const AxisCalibration& Calibration(bool pitch) const { return pitch ? pitch_ : roll_; }

  // What the form shows.
  std::string_view ReceivedMessage() const { return message_; }
  std::string_view Activity() const;  // "---", " \", " |", " /" in turn, a step for each good reply
  ShortText BankText() const;         // boxBank, percent of the travel
  ShortText PitchText() const;        // boxPitch
  ShortText RollLoadText() const;     // percent
  ShortText PitchLoadText() const;

 private:
  void TakeReply(ByteView bytes);
  void NoteAsked();

  SerialPort& port_;
  const Clock& clock_;
  Registration events_;  // of the port
  Byte address_ = 0;
  AxisCalibration roll_, pitch_;
  std::vector<Byte> queue_;
  std::string_view message_;
  std::int16_t rollPosition_ = 0, pitchPosition_ = 0;
  YokeReply lastReply_;
  std::uint32_t goodReplies_ = 0;  // since the start
  bool answered_ = false;          // there is a good reply that was not forgotten
  bool faded_ = false;
  std::int64_t lastGoodMs_ = 0;
  std::int64_t lookedMs_ = 0;  // the last cycle
  std::size_t waitingBefore_ = 0;
  // When the Reports went out whose replies have not come, the oldest first; no more than two are under way.
  std::array<std::int64_t, 2> askedMs_{};
  std::size_t asked_ = 0;
  std::int64_t replyTookMs_ = 0;
};

}  // namespace tvx
