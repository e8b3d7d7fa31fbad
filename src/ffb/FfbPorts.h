// The force-feedback table: the simulator ports of the yokes by FFB offset, and the variables they fill.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "config/Model.h"
#include "platform/Host.h"
#include "simlink/SimCom.h"

namespace tvx {

inline constexpr int kFfbOffsets = 18;
// Functions 282..299 serve the offsets 0..17 where the configuration names no other.
inline constexpr int kFirstFfbFunction = 282;

// The yoke variables. Ratios are -1..1 (right, nose up positive), speeds indicated knots unless said.
struct FfbVariables {
  std::int16_t OnGround = 0;         // switches are 0 or 1
  std::int16_t AutopilotServos = 0;  // the autopilot holds the controls
  std::int16_t StallWarning = 0;
  std::int16_t Paused = 0;
  float YokeRoll = 0;  // what is written as the simulator's yoke ratio
  float YokePitch = 0;
  float Airspeed = 0;
  float GroundSpeed = 0;  // kt
  std::int16_t OverspeedWarning = 0;
  std::int16_t GearDown = 1;
  float AutopilotRoll = 0;  // the autopilot's place for the yoke
  float AutopilotPitch = 0;
  float ElevatorTrim = 0;
  float AileronTrim = 0;
  float NormalG = 1;    // load, g
  float Rudder = 0;     // -1..1
  float LeftBrake = 0;  // 0..1
  float RightBrake = 0;
};

// One line of the table.
struct FfbOffset {
  std::string_view name;
  std::int16_t FfbVariables::*flag;  // a switch, or
  float FfbVariables::*value;        // a value
  bool read, written;
  std::string_view dataref;  // the standard one; empty: none
  float multiplier;
  float add;
};
std::span<const FfbOffset, kFfbOffsets> FfbOffsets();

// Defines those of the Functions 282..299 that have no name yet, on the simulator's datarefs.
void DefineFfbFunctions(ConfigModel& model);

class FfbPorts {
 public:
  FfbPorts(const ConfigModel& model, SimCom& sim, MessageBoxes& boxes);

  FfbVariables Variables;

  // Opens a port for every offset with a usable Function, under the yokes' opener code, and enables reading.
  void Open();
  // Forgets the ports (they are closed with all others) and the values.
  void Forget();
  bool Has(int offset) const;

  // Reads the port of an offset (0..17) into its variable: a switch is 1 for a value above 0, otherwise 0. An
  // offset without a port, or whose port has no value, keeps its variable. A value that is no number is not
  // taken for one: it is stored, and AllFinite tells.
  void GetPortFFB(int offset);
  // Writes the variable of offset 1, 4, 5, 12, 13, 15, 16 or 17; others do nothing. Both report an offset
  // outside 0..17, and a value that is no number is never written.
  void PutPortFFB(int offset);

  // Reads every offset that is read.
  void ReadAll();
  // False when what was read last contains something that is no number.
  bool AllFinite() const { return finite_; }

 private:
  const ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  std::array<Port, kFfbOffsets> ports_;
  bool finite_ = true;
};

}  // namespace tvx
