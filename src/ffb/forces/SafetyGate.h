// The watchdog's gate: every force goes through it, and it closes when anything is wrong.
#pragma once

#include <string_view>

namespace tvx {

// Why a yoke gives no force.
enum class SafetyCause {
  None,
  Off,              // OFF mode
  Halted,           // the program is halted or ends
  NotCalibrated,    // its centre and range are not known
  PortClosed,       // its serial port is not open
  YokeSilent,       // no good reply for kYokeSilentMs
  StopButton,       // its red button is pressed, or its motors have no power
  SimulatorSilent,  // no datagram for kSimulatorSilentMs
  ValuesOld,        // datagrams come, but a value that the forces need has not come for so long
  NotANumber,       // the simulator sent a value that is no number
  Stalled,          // the program was held up for longer than kHoldMs, or the yoke has faded by itself
  Changed,          // its calibration or address was changed while it gave force
};
std::string_view SafetyText(SafetyCause cause);  // in words, for the form; empty for None

inline constexpr int kYokeSilentMs = 300;
inline constexpr int kSimulatorSilentMs = 400;
// From wholly open to shut, and back. A yoke without a command for kHoldMs fades within kFadeMs by itself.
inline constexpr int kFadeMs = 500;
inline constexpr int kRiseMs = 2000;
inline constexpr int kHoldMs = 300;

class SafetyGate {
 public:
  // One cycle, `seconds` after the last: shuts steadily while there is a cause, opens steadily while there is
  // none. A late cycle shuts by as much as time went by, but opens by no more than kLongestCycle. Returns 0
  // (shut) to 1 (open).
  double Next(SafetyCause cause, double seconds);
  double Opening() const { return opening_; }
  bool Shut() const { return opening_ <= 0; }

 private:
  double opening_ = 0;
};

}  // namespace tvx
