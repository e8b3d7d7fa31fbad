// The serial module: the six COM ports, the gauge bus's transmit slot and batch, the query.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "config/Model.h"
#include "hwbus/GaugeFrame.h"
#include "platform/Host.h"
#include "platform/SerialPort.h"

namespace tvx {

// The hardware groups, in the order in which their ports are opened.
enum class HardwareGroup { GaugeBus, EngineCluster, IOModule1, IOModule2, Yoke1, Yoke2 };
inline constexpr std::size_t kHardwareGroups = 6;

// The pseudo-addresses of gauge commands for the IO modules.
inline constexpr int kIOModule1Address = 1000;
inline constexpr int kIOModule2Address = 2000;

class Serial {
 public:
  using Ports = std::array<SerialPort*, kHardwareGroups>;
  // Takes a gauge command for a pseudo-address: (gaugeID, command, value).
  using ModuleCommand = std::function<void(int, int, std::int32_t)>;

  Serial(const ConfigModel& model, const Ports& ports, MessageBoxes& boxes, EventLoop& loop);

  // Opens every configured port (number above 0) anew. A port that cannot be opened stays closed, without a
  // message. The transmit buffer becomes 40 blanks, unless a queued frame still waits in it. Shows "No Power
  // on CIM; Check Power Switch and Fuses" when the interface module's power signal says so.
  void OpenComPorts();
  void CloseComPorts();
  // Tries to open again the configured ports that are not open: after an adapter was unplugged, or not there
  // at start. Returns true when the gauge bus came back. Never shows a message. To be called about once a
  // second while running.
  bool ReopenLostPorts();
  SerialPort& PortOf(HardwareGroup group) { return *ports_[static_cast<std::size_t>(group)]; }
  const SerialPort& PortOf(HardwareGroup group) const { return *ports_[static_cast<std::size_t>(group)]; }
  // The COM number that the configuration gives the group; 0 or less: not used.
  int ComNumber(HardwareGroup group) const;

  void SetModuleCommand(HardwareGroup module, ModuleCommand command);

  // Queues one command frame; waits for a free slot, yielding to the event loop. Nothing is queued when the
  // program ends meanwhile. 1000 and 2000 go to the IO modules, other numbers of 256 and more nowhere. Throws
  // RangeError when |value| is above 65535 or gaugeID below 0; the slot is then as it was.
  void WriteGaugeCommand(int gaugeID, int command, std::int32_t value);
  // Queues, in the same way, the frame that gives a gauge a new address. Throws RangeError when one of the
  // two is outside 0..255.
  void WriteNewGaugeID(int gaugeID, int newGaugeID);
  // Asks a gauge to report and waits for any reply, for at most 20 ticks of TickReplyCountdown. False, with a
  // message, when none came.
  bool QueryGauge(int gaugeID);
  // One tick of the configuration form's timer.
  void TickReplyCountdown();
  // One tick of the status form's WriteCmdDuringConfig timer: writes the queued frame, if there is one, and
  // opens the gauge bus for it where it is closed. A dead line loses the frame.
  void TickTransmit();

  // --- the process cycle's batch, in the same buffer ---
  std::vector<Byte> TransmitBuffer;  // never grows once running: it holds kBatchLimit bytes
  std::int16_t TransmitPending = 0;  // 1: a queued frame has not been written yet
  std::int16_t ReplyReceived = 0;    // 1: a well-formed reply came
  std::int16_t ReplyCountdown = 0;
  static constexpr std::size_t kBatchLimit = 32768;

  // The pieces of the last command that was queued for a gauge; only the dump shows them.
  struct CommandPieces {
    int GaugeID = 0;
    std::int32_t Magnitude = 0;
    int High = 0;  // Magnitude / 256
    Byte CommandByte = 0;
  };
  const CommandPieces& LastCommand() const { return lastCommand_; }

 private:
  void OpenAnew(HardwareGroup group);
  bool OpenOnce(HardwareGroup group);
  bool QueueFrame(ByteView frame);

  const ConfigModel& model_;
  Ports ports_;
  MessageBoxes& boxes_;
  EventLoop& loop_;
  std::array<ModuleCommand, 2> modules_;
  CommandPieces lastCommand_;
};

}  // namespace tvx
