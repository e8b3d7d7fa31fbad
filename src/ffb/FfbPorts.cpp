#include "ffb/FfbPorts.h"

#include <cmath>
#include <iterator>
#include <string>

#include "simlink/PortValue.h"

namespace tvx {
namespace {

using V = FfbVariables;
constexpr float kKnotsPerMetre = 1.943844f;  // kt/(m/s)
constexpr Byte kFrequency = 25;              // a second: once for each cycle of 40 ms
constexpr Byte kClassSurfaces = 2;           // the category of a Function

// In the order of ffboffset. The autopilot's mode is 2 while its servos hold the controls, 1 with the flight
// director only: less 1, the servos are what is above 0, and writing 0 leaves the flight director on.
constexpr FfbOffset kOffsets[] = {
    {"On ground", &V::OnGround, nullptr, true, false, "sim/flightmodel/failures/onground_any", 1, 0},
    {"AP servos", &V::AutopilotServos, nullptr, true, true, "sim/cockpit/autopilot/autopilot_mode", 1, -1},
    {"Stall warn.", &V::StallWarning, nullptr, true, false, "sim/cockpit2/annunciators/stall_warning", 1, 0},
    {"Paused", &V::Paused, nullptr, true, false, "sim/time/paused", 1, 0},
    {"Yoke roll", nullptr, &V::YokeRoll, false, true, "sim/joystick/yoke_roll_ratio", 1, 0},
    {"Yoke pitch", nullptr, &V::YokePitch, false, true, "sim/joystick/yoke_pitch_ratio", 1, 0},
    {"Airspeed", nullptr, &V::Airspeed, true, false, "sim/flightmodel/position/indicated_airspeed", 1, 0},
    {"Ground speed", nullptr, &V::GroundSpeed, true, false, "sim/flightmodel/position/groundspeed",
     kKnotsPerMetre, 0},
    {"Overspeed", &V::OverspeedWarning, nullptr, true, false, "", 1, 0},
    {"Gear down", &V::GearDown, nullptr, true, false, "sim/cockpit2/controls/gear_handle_down", 1, 0},
    {"AP roll", nullptr, &V::AutopilotRoll, true, false, "sim/joystick/servo_roll_ratio", 1, 0},
    {"AP pitch", nullptr, &V::AutopilotPitch, true, false, "sim/joystick/servo_pitch_ratio", 1, 0},
    {"Elevator trim", nullptr, &V::ElevatorTrim, true, true, "sim/cockpit2/controls/elevator_trim", 1, 0},
    {"Aileron trim", nullptr, &V::AileronTrim, true, true, "sim/cockpit2/controls/aileron_trim", 1, 0},
    {"Load", nullptr, &V::NormalG, true, false, "sim/flightmodel/forces/g_nrml", 1, 0},
    {"Rudder", nullptr, &V::Rudder, false, true, "sim/joystick/yoke_heading_ratio", 1, 0},
    {"Left brake", nullptr, &V::LeftBrake, false, true, "sim/cockpit2/controls/left_brake_ratio", 1, 0},
    {"Right brake", nullptr, &V::RightBrake, false, true, "sim/cockpit2/controls/right_brake_ratio", 1, 0},
};
static_assert(std::size(kOffsets) == kFfbOffsets && ffboffset::kRightBrake == kFfbOffsets - 1);

}  // namespace

std::span<const FfbOffset, kFfbOffsets> FfbOffsets() {
  return kOffsets;
}

void DefineFfbFunctions(ConfigModel& model) {
  for (int offset = 0; offset < kFfbOffsets; ++offset) {
    const FfbOffset& row = kOffsets[offset];
    const int number = kFirstFfbFunction + offset;
    FunctionRecord& function = model.Functions[static_cast<std::size_t>(number)];
    if (!function.ShortName.empty() || row.dataref.empty()) continue;
    function = {};
    function.ShortName = row.name;
    function.FullName = "#1:" + std::string(row.dataref) + "\r\n";
    function.FunctionNr = static_cast<std::int16_t>(number);
    function.ComboDT = static_cast<Byte>(DataType::XplaneDataref);
    function.ComboClass = kClassSurfaces;
    function.BoxAdd = row.add;
    function.Multiplier = row.multiplier;
    function.Devider = 1;
    function.boxMinimumValue = -1;
    function.boxMaximumValue = 1;
    function.XPVal1 = row.read ? kFrequency : Byte{0};
  }
}

FfbPorts::FfbPorts(const ConfigModel& model, SimCom& sim, MessageBoxes& boxes)
    : model_(model), sim_(sim), boxes_(boxes) {
  ports_.fill(kNoPort);
}

void FfbPorts::Open() {
  Forget();
  const OpenerScope by(sim_, opener::kYokes);
  for (int offset = 0; offset < kFfbOffsets; ++offset) {
    const auto at = static_cast<std::size_t>(offset);
    int function = model_.Yoke1.FfbFunctions[at];
    if (function == 0) function = kFirstFfbFunction + offset;
    ports_[at] = sim_.OpenSimPort(function, 1);
    if (kOffsets[at].read && ports_[at] != kNoPort) sim_.EnableReadSimPort(ports_[at]);
    if (kOffsets[at].read) sources_[at] = SourceOf(ports_[at]);
  }
}

void FfbPorts::Forget() {
  ports_.fill(kNoPort);
  Variables = {};
  finite_ = true;
  sources_ = {};
}

bool FfbPorts::Has(int offset) const {
  return offset >= 0 && offset < kFfbOffsets && ports_[static_cast<std::size_t>(offset)] != kNoPort;
}

void FfbPorts::GetPortFFB(int offset) {
  if (offset < 0 || offset >= kFfbOffsets) {
    boxes_.Show("Error getting FFB Port, Offset number: " + std::to_string(offset));
    return;
  }
  const FfbOffset& row = kOffsets[offset];
  float value = 0;
  if (!Has(offset) || !sim_.GetPort(ports_[static_cast<std::size_t>(offset)], value)) return;
  if (!std::isfinite(value)) finite_ = false;
  if (row.flag != nullptr) {
    Variables.*row.flag = value > 0;
  } else {
    Variables.*row.value = value;
  }
}

void FfbPorts::PutPortFFB(int offset) {
  if (offset < 0 || offset >= kFfbOffsets) {
    boxes_.Show("Error writing to FFB Port, Offset number: " + std::to_string(offset));
    return;
  }
  const FfbOffset& row = kOffsets[offset];
  if (!row.written || !Has(offset)) return;
  float value = row.value != nullptr ? Variables.*row.value : Variables.*row.flag ? 1.0f : 0.0f;
  if (std::isfinite(value)) sim_.PutPort(ports_[static_cast<std::size_t>(offset)], value);
}

void FfbPorts::ReadAll(std::int64_t nowMs) {
  finite_ = true;
  readMs_ = nowMs;
  for (int offset = 0; offset < kFfbOffsets; ++offset) {
    if (kOffsets[offset].read) GetPortFFB(offset);
  }
}

FfbPorts::Source FfbPorts::SourceOf(Port port) const {
  if (port == kNoPort) return {};
  const PortRow& row = sim_.PortAt(port);
  const FunctionRecord& function = model_.Functions[static_cast<std::size_t>(row.FunctionNr)];
  if (function.IsMacro()) return {};
  if (ReadsDataGroup(function.ComboDT)) return {Source::Kind::Group, function.SlotOf(row.SeqNr).index};
  if (!function.Is(DataType::XplaneDataref)) return {};
  for (const RrefRow& asked : sim_.Rrefs()) {
    if (asked.For == port) return {Source::Kind::Dataref, RrefIdentifierOnWire(asked.Identifier)};
  }
  return {Source::Kind::Dataref, -1};
}

std::optional<std::int64_t> FfbPorts::ArrivedMs(const Source& source) const {
  if (source.number < 0) return std::nullopt;
  const SubscriptionKeeper& keeper = sim_.Keeper();
  return (source.kind == Source::Kind::Group ? keeper.OfGroup(source.number)
                                             : keeper.OfDataref(source.number))
      .answeredMs;
}

int FfbPorts::Oldest() const {
  int oldest = -1;
  std::int64_t oldestMs = 0;
  for (int offset = 0; offset < kFfbOffsets; ++offset) {
    const Source& source = sources_[static_cast<std::size_t>(offset)];
    if (source.kind == Source::Kind::None) continue;
    const auto ms = ArrivedMs(source);
    if (!ms) return offset;
    if (oldest >= 0 && *ms >= oldestMs) continue;
    oldest = offset;
    oldestMs = *ms;
  }
  return oldest;
}

std::optional<std::int64_t> FfbPorts::AgeMs() const {
  const int oldest = Oldest();
  if (oldest < 0) return 0;
  const auto ms = ArrivedMs(sources_[static_cast<std::size_t>(oldest)]);
  return ms ? std::optional(readMs_ - *ms) : std::nullopt;
}

}  // namespace tvx
