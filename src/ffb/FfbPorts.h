// The force-feedback table: the simulator ports of the yokes by FFB offset, and the variables they fill.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "config/Model.h"
#include "ffb/forces/FfbVariables.h"
#include "platform/Host.h"
#include "simlink/SimCom.h"

namespace tvx {

inline constexpr int kFfbOffsets = 18;
// Functions 282..299 serve the offsets 0..17 where the configuration names no other.
inline constexpr int kFirstFfbFunction = 282;

// The FFB offsets: places in the table.
namespace ffboffset {
enum : int {
  kOnGround,
  kAutopilotServos,
  kStallWarning,
  kPaused,
  kYokeRoll,
  kYokePitch,
  kAirspeed,
  kGroundSpeed,
  kOverspeedWarning,
  kGearDown,
  kAutopilotRoll,
  kAutopilotPitch,
  kElevatorTrim,
  kAileronTrim,
  kNormalG,
  kRudder,
  kLeftBrake,
  kRightBrake,
};
}  // namespace ffboffset

// One line of the table.
struct FfbOffset {
  std::string_view name;
  bool FfbVariables::*flag;    // a switch, or
  float FfbVariables::*value;  // a value
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

  // Reads the port of an offset into its variable: a switch is on for a value above 0. An offset without a
  // port, or whose port has no value, keeps its variable. A value that is no number is stored as it is, and
  // AllFinite turns false. Shows a message for an offset that is not in the table.
  void GetPortFFB(int offset);
  // Writes the variable of an offset that is written (its row says so); for others there is no effect. A
  // value that is no number is never written. Shows a message for an offset that is not in the table.
  void PutPortFFB(int offset);

  // Reads every offset that is read. To be called once a cycle, with the time of the link's clock.
  void ReadAll(std::int64_t nowMs);
  // False when what was read last contains something that is no number.
  bool AllFinite() const { return finite_; }
  // How long ago the value arrived, ms, of that which has waited longest; std::nullopt where one has never
  // come. Values that no arrival refreshes (those of a macro) do not count; with no others it is 0.
  std::optional<std::int64_t> AgeMs() const;
  // Its offset; where one has never come, that one's; -1 where there are none.
  int Oldest() const;

 private:
  const ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  std::array<Port, kFfbOffsets> ports_;
  bool finite_ = true;
  // What refreshes a port: a data group, or a dataref by its identifier on the wire.
  struct Source {
    enum class Kind { None, Group, Dataref } kind = Kind::None;
    int number = 0;  // -1: a dataref that is not asked for
  };
  Source SourceOf(Port port) const;
  std::optional<std::int64_t> ArrivedMs(const Source& source) const;
  std::array<Source, kFfbOffsets> sources_{};  // of what is read
  std::int64_t readMs_ = 0;
};

}  // namespace tvx
