#include "ffb/pedals/Pedals.h"

#include <algorithm>
#include <cstdlib>

namespace tvx {
namespace {

constexpr float kCentredRudder = 0.01f;
constexpr float kReleasedBrake = 0.02f;

bool CentreInRange(int left, int centre, int right) {
  const int first = centre - left;
  const int second = right - centre;
  return (first < 0) == (second < 0) && std::min(std::abs(first), std::abs(second)) >= kLeastPedalTravel;
}

bool UsableAxis(Byte place) {
  return place > 0 && place < kJoystickAxes.size();
}

}  // namespace

int ReadAxis(clsJoy& joystick, int place) {
  // In the order of kJoystickAxes.
  using Reader = std::int32_t (clsJoy::*)();
  constexpr std::array<Reader, kJoystickAxes.size()> kReaders = {
      nullptr, &clsJoy::JoyR, &clsJoy::JoyX, &clsJoy::JoyY, &clsJoy::JoyZ, &clsJoy::JoyU, &clsJoy::JoyV};
  if (place < 1 || static_cast<std::size_t>(place) >= kReaders.size()) return 0;
  return (joystick.*kReaders[static_cast<std::size_t>(place)])();
}

bool HasAxis(const JoystickInfo& device, int place) {
  // How many axes a device has that has this one: X, Y, Z, R, U, V are its axes in the order of its driver.
  constexpr std::array<int, kJoystickAxes.size()> kNeeded = {1000, 4, 1, 2, 3, 5, 6};
  if (place < 1 || static_cast<std::size_t>(place) >= kNeeded.size()) return false;
  return device.axes >= kNeeded[static_cast<std::size_t>(place)];
}

std::string NoAxisWords(const JoystickInfo& device, int place) {
  const bool listed = place >= 0 && static_cast<std::size_t>(place) < kJoystickAxes.size();
  const std::string axis(listed ? kJoystickAxes[static_cast<std::size_t>(place)] : "such axis");
  return '"' + device.name + "\" has no " + axis + '.';
}

std::vector<std::string_view> CheckJoystick(const YokeRecord& r) {
  std::vector<std::string_view> faults;
  if (!UsableAxis(r.RudderAxis)) faults.emplace_back("No Rudder axe defined");
  if (!UsableAxis(r.LeftBrakeAxis) || !UsableAxis(r.RightBrakeAxis)) {
    faults.emplace_back("No Brake axe defined");
  }
  if (!CentreInRange(r.RudderLeft, r.RudderCentre, r.RudderRight)) {
    faults.emplace_back("The Center is not in Range; Set Left and Right limts first");
  }
  if (std::abs(r.LeftBrakePressed - r.LeftBrakeReleased) < kLeastPedalTravel) {
    faults.emplace_back("Left brake not correctly calibrated");
  }
  if (std::abs(r.RightBrakePressed - r.RightBrakeReleased) < kLeastPedalTravel) {
    faults.emplace_back("Right brake not correctly calibrated");
  }
  return faults;
}

float RudderRatio(int raw, const YokeRecord& r) {
  if (!CentreInRange(r.RudderLeft, r.RudderCentre, r.RudderRight)) return 0;
  const int left = RawOf(r.RudderLeft), centre = RawOf(r.RudderCentre), right = RawOf(r.RudderRight);
  const bool toRight = (raw > centre) == (right > centre);
  const float span = static_cast<float>(toRight ? right - centre : centre - left);
  const float ratio = std::clamp(static_cast<float>(raw - centre) / span, -1.0f, 1.0f);
  return std::abs(ratio) < kCentredRudder ? 0 : ratio;
}

float BrakeRatio(int raw, int released, int pressed) {
  if (std::abs(pressed - released) < kLeastPedalTravel) return 0;
  const float ratio = static_cast<float>(raw - released) / static_cast<float>(pressed - released);
  return ratio < kReleasedBrake ? 0 : std::min(ratio, 1.0f);
}

PedalRatios ReadPedals(clsJoy& joystick, const YokeRecord& r) {
  return {
      RudderRatio(ReadAxis(joystick, r.RudderAxis), r),
      BrakeRatio(ReadAxis(joystick, r.LeftBrakeAxis), RawOf(r.LeftBrakeReleased), RawOf(r.LeftBrakePressed)),
      BrakeRatio(ReadAxis(joystick, r.RightBrakeAxis), RawOf(r.RightBrakeReleased),
                 RawOf(r.RightBrakePressed))};
}

}  // namespace tvx
