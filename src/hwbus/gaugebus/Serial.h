// The serial module: the gauge bus's transmit slot, its batch, and the query whether a gauge is there.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "hwbus/GaugeFrame.h"
#include "hwbus/HardwarePorts.h"
#include "hwbus/gaugebus/FrameBuffer.h"
#include "platform/Host.h"

namespace tvx {

// The pseudo-addresses of gauge commands for the IO modules.
inline constexpr int kIOModule1Address = 1000;
inline constexpr int kIOModule2Address = 2000;

// One buffer serves two users that never run together: while the program is halted it holds a single queued
// frame, and while it runs, the batch of a tick.
class Serial {
 public:
  // Takes a gauge command for a pseudo-address: (gaugeID, command, value).
  using ModuleCommand = std::function<void(int, int, std::int32_t)>;

  Serial(HardwarePorts& ports, MessageBoxes& boxes, EventLoop& loop)
      : ports_(ports), boxes_(boxes), loop_(loop) {}

  HardwarePorts& Ports() { return ports_; }
  // The gauge bus's own port, and how it stands, in one line for the user.
  SerialPort& Line() { return ports_.PortOf(HardwareGroup::GaugeBus); }
  const SerialPort& Line() const { return ports_.PortOf(HardwareGroup::GaugeBus); }
  std::string LineWords() const { return ports_.WordsOf(HardwareGroup::GaugeBus); }

  // Opens the ports of all hardware groups anew. The transmit buffer becomes 40 blanks, unless a queued frame
  // still waits in it. Shows "No Power on CIM; Check Power Switch and Fuses" when the interface module's
  // power signal says so.
  void OpenComPorts();
  void CloseComPorts() { ports_.CloseAll(); }

  // Who takes the commands for an IO module's pseudo-address (`module`: IOModule1 or IOModule2); an empty
  // function for none.
  void SetModuleCommand(HardwareGroup module, ModuleCommand command);

  // --- single frames, while halted ---
  // Queues one command frame; waits for a free slot, yielding to the event loop. No frame is queued when the
  // program ends meanwhile. 1000 and 2000 go to the IO modules, other numbers of 256 and more nowhere. Throws
  // RangeError when |value| is above 65535 or gaugeID below 0; the slot is then as it was.
  void WriteGaugeCommand(int gaugeID, int command, std::int32_t value);
  // Queues, in the same way, the frame that gives a gauge a new address. Throws RangeError when one of the
  // two is outside 0..255.
  void WriteNewGaugeID(int gaugeID, int newGaugeID);
  // True while a queued frame has not been written yet.
  bool TransmitPending() const { return transmitPending_; }
  // One tick of the status form's WriteCmdDuringConfig timer: writes the queued frame, if there is one, and
  // opens the gauge bus for it where it is closed. A dead line loses the frame.
  void TickTransmit();

  // --- the query ---
  // Asks a gauge to report and waits for any reply, for at most 20 ticks of TickReplyCountdown. False, with a
  // message, when none came.
  bool QueryGauge(int gaugeID);
  // One tick of the configuration form's timer.
  void TickReplyCountdown();
  // The receive handler got a well-formed reply.
  void NoteReply() { replyReceived_ = true; }
  // Whether one came since the last query began.
  bool ReplyReceived() const { return replyReceived_; }

  // --- the batch of a tick, while running ---
  // Empties the buffer. A frame that was queued outside the cycle and still waits stays, at its head.
  void BeginBatch();
  // Adds a frame. False where the buffer has no room for it.
  bool AppendToBatch(ByteView frame) { return transmitBuffer_.Append(frame); }
  // Sent: also where there was none to send, or the gauge bus has no COM number. Closed: the line is not
  // open. Full: bytes of an earlier batch still wait. Of the last two, the line has taken no byte.
  enum class BatchResult { Sent, Closed, Full };
  // Writes the whole batch at once and discards what is waiting to be read.
  BatchResult SendBatch();

  // What the buffer holds now.
  ByteView TransmitBuffer() const { return transmitBuffer_.Bytes(); }

 private:
  bool QueueFrame(ByteView frame);

  HardwarePorts& ports_;
  MessageBoxes& boxes_;
  EventLoop& loop_;
  FrameBuffer transmitBuffer_;
  bool transmitPending_ = false;
  bool replyReceived_ = false;
  int replyCountdown_ = 0;  // ticks that a query still waits
  std::array<ModuleCommand, 2> modules_;
};

}  // namespace tvx
