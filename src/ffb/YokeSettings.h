// The yokes' settings as the logic uses them: taken out of the configuration's records, with every value
// brought into its range and the standard values put where none was ever set.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "config/Model.h"
#include "ffb/YokeFrame.h"
#include "ffb/forces/Forces.h"
#include "ffb/pedals/RawPosition.h"

namespace tvx {

enum class YokeMode : std::int16_t { Centre = 0, Ffb = 1, FollowAP = 2, Servo = 3, Off = 4 };
inline constexpr int kYokeModes = 5;

// Bits of YokeRecord::OptionBits.
namespace yokeoption {
inline constexpr int kSendPositions = 0x01;    // this yoke flies the simulator
inline constexpr int kTrimMovesCentre = 0x02;  // the yoke stands where it is trimmed
inline constexpr int kEffects = 0x04;          // buffet, vibration, gusts, shocks, rumble
inline constexpr int kJoystick = 0x08;         // rudder and brakes come from the joystick
inline constexpr int kHandoverByGrip = 0x10;   // this yoke takes over when it is gripped
inline constexpr int kStandard = 0x17;
}  // namespace yokeoption

// What a button of the yoke does (YokeRecord::Button::Action).
enum class ButtonAction : Byte {
  None = 0,
  TakeControl = 1,  // this yoke becomes master
  AutopilotOff = 2,
  ForcesOff = 3,   // this yoke goes to OFF mode
  TrimNoseUp = 4,  // while held
  TrimNoseDown = 5,
  TrimLeft = 6,
  TrimRight = 7,
  Command = 8,  // runs the simulator command of its text, once
};
inline constexpr int kButtonActions = 9;

struct YokeSettings {
  YokeMode startMode = YokeMode::Ffb;
  Byte address = 0;
  AxisCalibration roll, pitch;
  bool calibrated = false;
  double forceLevel = 1;  // 0..1
  int options = 0;
  std::array<ButtonAction, 16> buttons{};
  bool Has(int option) const { return (options & option) != 0; }
  // Whether the other's frames mean the same places of the same yoke.
  bool SameYoke(const YokeSettings& other) const {
    return address == other.address && calibrated == other.calibrated && roll == other.roll &&
           pitch == other.pitch;
  }
};
YokeSettings ReadYokeSettings(const YokeRecord& record);

// Centre and scale from an axis's two ends and its centre, as raw values. The scale is that of the shorter
// side, so that both ends reach the full position; falling values give a negative scale. False, and
// `calibration` as it was, unless the centre lies between the ends, at least kLeastTravel away from each: on
// less the whole force at full deflection would be a steeper spring than a frame can carry.
bool CalibrateAxis(int low, int centre, int high, AxisCalibration& calibration);
inline constexpr int kLeastTravel = 4096;

// Where the frequency and level of an effect stand in YokeRecord::Effects.
constexpr std::size_t EffectPlace(std::size_t effect, Axis axis) {
  return kAxes * effect + static_cast<std::size_t>(axis);
}
inline constexpr double kHighestFrequency = 50;  // Hz, of an effect

// What both yokes share.
struct FfbSettings {
  int master = 1;             // 1 or 2
  double gripThreshold = 40;  // counts; 0: no hand-over by grip
  ForceSettings forces;
  double servoSpeed = 600;  // counts a second
};
FfbSettings ReadFfbSettings(const ConfigModel& model);

// The standard values, as records; what a record that was never set counts as.
GeneralFFBRecord StandardGeneralFFB();
void SetStandardEffects(YokeRecord& yoke1);
// A yoke that has a port and was never set up: gives it the standard mode and options, and both the standard
// forces where none are set. False, and no change, for a record in which anything of a yoke is set.
bool BeginYoke(ConfigModel& model, YokeRecord& yoke);
bool IsBlank(const GeneralFFBRecord& record);
bool EffectsAreBlank(const YokeRecord& yoke1);

// Sets the values of yoke 2's record behind its option bits to 0.
// ODDITY: in the file these values are read one line away from where they were written. Each saving and
// loading would move them on by a line, and a fraction might land where a byte is due and end the load. So
// yoke 2 uses yoke 1's values, and its own are kept at 0, which reads back as 0 from any line.
void ClearYoke2Tail(ConfigModel& model);

}  // namespace tvx
