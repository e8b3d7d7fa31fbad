// The serial module: the gauge bus's transmit slot, its batch, and the query whether a gauge is there.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "base/Registration.h"
#include "hwbus/FrameQueue.h"
#include "hwbus/GaugeFrame.h"
#include "hwbus/HardwarePorts.h"
#include "hwbus/LineBacklog.h"
#include "hwbus/StaleInput.h"
#include "hwbus/gaugebus/FrameBuffer.h"
#include "platform/Host.h"

namespace tvx {

// The pseudo-addresses of gauge commands for the IO modules.
inline constexpr int kIOModule1Address = 1000;
inline constexpr int kIOModule2Address = 2000;

// One buffer serves two users that never run together: while the program is halted it holds the frame whose
// turn it is, and while it runs, the batch of a tick. Nothing here waits.
class Serial {
 public:
  // Takes a gauge command for a pseudo-address: (gaugeID, command, value).
  using ModuleCommand = std::function<void(int, int, std::int32_t)>;

  // Watches the ports from now on.
  Serial(HardwarePorts& ports, MessageBoxes& boxes, const Clock& clock);

  HardwarePorts& Ports() { return ports_; }
  // The gauge bus's own port, and how it stands, in one line for the user.
  SerialPort& Line() { return ports_.PortOf(HardwareGroup::GaugeBus); }
  const SerialPort& Line() const { return ports_.PortOf(HardwareGroup::GaugeBus); }
  std::string LineWords() const;
  bool LineInTrouble() const { return NoPower() || ports_.InTrouble(HardwareGroup::GaugeBus); }
  // While it is being opened, frames can wait for it.
  bool LineOpening() const { return Line().State() == SerialState::Opening; }
  // The interface module says that it has no power.
  bool NoPower() const { return Line().CarrierDetect().value_or(false); }

  // Asks for the ports of all hardware groups anew. The transmit buffer becomes 40 blanks, unless a queued
  // frame still waits in it. Shows "No Power on CIM; Check Power Switch and Fuses" when the gauge bus has
  // opened and the interface module's power signal says so.
  void OpenComPorts();
  void CloseComPorts();
  // Opens lost ports again and asks for the interface module's power. Never shows a message. About once a
  // second.
  void WatchLines();
  // Told when the gauge bus's line stands differently. `cameBack`: it, or its interface module's power, had
  // gone and is there again, and what the gauges show is unknown.
  Registration SetLineChanged(std::function<void(bool cameBack)> lineChanged) {
    return lineChanged_.Give(std::move(lineChanged));
  }

  // Who takes the commands for the pseudo-address of IO module 1 or 2, until the Registration ends.
  Registration SetModuleCommand(HardwareGroup module, ModuleCommand command);

  // --- single frames, while halted ---
  // Queues one command frame behind those that wait. False, and the frame is lost, where the queue is full.
  // 1000 and 2000 go to the IO modules, other numbers of 256 and more nowhere. Throws RangeError when |value|
  // is above 65535 or gaugeID below 0; the queue is then as it was.
  bool WriteGaugeCommand(int gaugeID, int command, std::int32_t value);
  // Queues, in the same way, the frame that gives a gauge a new address. Throws RangeError when one of the
  // two is outside 0..255.
  bool WriteNewGaugeID(int gaugeID, int newGaugeID);
  // True while a queued frame has not been written yet.
  bool TransmitPending() const { return transmitPending_; }
  // One tick of the status form's WriteCmdDuringConfig timer: writes the frame whose turn it is, if there is
  // one, and opens the gauge bus for it where it is closed. A dead line loses the frame; one that is being
  // opened gets kOpeningTicks, once.
  void TickTransmit();
  static constexpr int kOpeningTicks = 100;

  // --- the query ---
  // Asks a gauge to report. `done` is called once: with true when any well-formed reply has come, or with
  // false, after a message, when none came within 20 ticks of TickReplyCountdown, and the ticks that frames
  // before this one need to leave. Never after the Registration has ended. A query takes the place of an
  // earlier one, which then comes to no end.
  Registration QueryGauge(int gaugeID, std::function<void(bool answered)> done);
  // One tick of the configuration form's timer.
  void TickReplyCountdown();
  // The receive handler reads what has come in.
  void NoteRead() { input_.NoteRead(); }
  // The receive handler got a well-formed reply, and keeps it.
  void NoteReply();
  // Whether one came since the last query began.
  bool ReplyReceived() const { return replyReceived_; }

  // --- the batch of a tick, while running ---
  // Empties the buffer. Frames that were queued outside the cycle and still wait stand at its head.
  void BeginBatch();
  // Adds a frame. False where the buffer has no room for it.
  bool AppendToBatch(ByteView frame) { return transmitBuffer_.Append(frame); }
  // Sent: also where there was none to send, or the gauge bus has no COM number. Closed: the line is not
  // open. Full: bytes of an earlier batch still wait. Of the last two, the line has taken no byte.
  enum class BatchResult { Sent, Closed, Full };
  // Writes the whole batch at once. Discards what is waiting to be read where it has not grown for 25 ms.
  BatchResult SendBatch();
  // How many such rests of damaged answers were discarded since the program started.
  std::uint32_t DiscardedRests() const { return discardedRests_; }
  // Whether a part of an answer waited when the last batch was sent.
  bool RestWaits() const { return input_.Waiting() > 0; }

  // What the line has taken and not carried yet.
  const LineBacklog& Backlog() const { return backlog_; }
  std::int64_t NowMs() const { return clock_.MonotonicMs(); }

  // What the buffer holds now.
  ByteView TransmitBuffer() const { return transmitBuffer_.Bytes(); }

 private:
  bool QueueFrame(ByteView frame);
  bool WriteLine(ByteView bytes);
  void NextFrame();
  void EndQuery(bool answered);
  bool FrameCanWait();
  void OnChanged(HardwareGroup group);

  HardwarePorts& ports_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  LineBacklog backlog_;
  StaleInput input_;
  std::uint32_t discardedRests_ = 0;
  FrameBuffer transmitBuffer_;
  FrameQueue waiting_;  // behind the frame in the buffer
  bool transmitPending_ = false;
  int openingTicks_ = 0;     // that frames have waited for the line to open
  bool openedAnew_ = false;  // OpenComPorts asked for the gauge bus, and it has not answered yet
  bool lineOpen_ = false;    // as last told
  bool noPower_ = false;     // as last told
  Callback<bool> lineChanged_;
  Registration portsChanged_;
  bool replyReceived_ = false;
  int queriedGauge_ = 0;
  int replyCountdown_ = 0;  // ticks that a query still waits; 0: there is none
  Callback<bool> queryDone_;
  Callback<int, int, std::int32_t> module1_, module2_;
};

}  // namespace tvx
