#include "simlink/SpecialValues.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "base/Rounding.h"

namespace tvx {
namespace {

constexpr int kTimeGroup = 1;
constexpr int kZuluHours = 5;
constexpr int kLocalHours = 6;
constexpr int kAtmosphereGroup = 6;
constexpr int kTemperature = 1;
constexpr int kNavGroup = 115;
constexpr int kNavValue = 1;
constexpr std::int32_t kFoldLimit = 65535;
constexpr std::int32_t kJump = 10;  // s

// The autopilot's ports that the status and the displays are made of, by their distance from the first.
enum : int {
  kEngagedPort = 0,
  kLateralPort = 2,
  kNavigationPort = 6,
  kApproachPort = 8,
  kAltitudeHoldPort = 10,
  kAltitudePort = 16,
  kVerticalSpeedPort = 18,
  kTrimPort = 20,
};
constexpr float kEngaged = 2.0f;         // of the first port
constexpr float kHeadingMode = 1.0f;     // of the lateral port
constexpr float kNavigationMode = 2.0f;  // of the lateral port
constexpr double kTrimStepsPerPercent = 160.0;
// Bits of APStatusBits.
constexpr int kLampEngaged = 0x01;
constexpr int kLampHeading = 0x02;
constexpr int kLampNavigation = 0x08;
constexpr int kLampApproach = 0x10;
constexpr int kLampAltitudeHold = 0x20;

struct AudioSelector {
  int bit;
  std::string_view dataref;
};
constexpr AudioSelector kAudioSelectors[] = {
    {0x80, "sim/cockpit2/radios/actuators/audio_selection_com1"},
    {0x40, "sim/cockpit2/radios/actuators/audio_selection_com2"},
    {0x10, "sim/cockpit2/radios/actuators/audio_selection_nav1"},
    {0x08, "sim/cockpit2/radios/actuators/audio_selection_nav2"},
    {0x04, "sim/cockpit2/radios/actuators/audio_marker_enabled"},
    {0x02, "sim/cockpit2/radios/actuators/audio_dme_enabled"},
    {0x01, "sim/cockpit2/radios/actuators/audio_selection_adf1"},
};

// Seconds of a day from hours as the simulator sends them; 0 for what is no time of day.
std::int32_t SecondsOf(float hours) {
  if (!(hours >= 0.0f && hours <= 24.0f)) return 0;
  const double whole = std::floor(static_cast<double>(hours));
  return static_cast<std::int32_t>(whole) * 3600 +
         static_cast<std::int32_t>((static_cast<double>(hours) - whole) * 3600.0);
}

// ODDITY: the fold makes a time above 65535 s negative; the clocks know it.
std::int32_t Folded(std::int32_t seconds) {
  return seconds > kFoldLimit ? kFoldLimit - seconds : seconds;
}

std::int16_t DialPosition(double degrees) {
  return RoundTo<std::int16_t>(degrees / 360.0 * kDialSteps).value_or(kParkedNeedle);
}

std::int16_t AnglePosition(std::int16_t angle) {
  double degrees = angle * 360.0 / 65536.0;
  if (degrees < 0) degrees += 360.0;
  return DialPosition(degrees);
}

}  // namespace

float SpecialValues::ArrivedOrGroup(Port port, int group, int number) const {
  float value = 0;
  return sim_.HasArrived(port) && sim_.GetPort(port, value) ? value : sim_.DataValue(group, number);
}

void SpecialValues::GetTimeAndDate() {
  const float localHours = ArrivedOrGroup(localPort_, kTimeGroup, kLocalHours);
  LocalHour = static_cast<Byte>(SecondsOf(localHours) / 3600);
  LocalSeconds = Folded(SecondsOf(localHours));

  const std::int32_t zulu = SecondsOf(ArrivedOrGroup(utcPort_, kTimeGroup, kZuluHours));
  if (std::abs(zulu - previousZulu_) > kJump) timeJumped_ = true;
  previousZulu_ = zulu;
  ZuluSeconds = Folded(zulu);

  const std::tm now = clock_.LocalTime();
  DateMonth = static_cast<std::int16_t>(now.tm_mon + 1);
  DateDay = static_cast<std::int16_t>(now.tm_mday);
  DateYear = static_cast<std::int16_t>(now.tm_year - 100);
  OutsideTemperature = ArrivedOrGroup(temperaturePort_, kAtmosphereGroup, kTemperature);
}

void SpecialValues::PutNAVFrequency(float value) {
  sim_.SendDataFloat(kNavGroup, kNavValue, value);
}

void SpecialValues::SetSoundSelector() {
  for (const AudioSelector& selector : kAudioSelectors) {
    sim_.SendXplaneDREF(selector.dataref, (AudioPanelBits & selector.bit) != 0 ? 1.0f : 0.0f);
  }
  PreviousAudioPanelBits = AudioPanelBits;
}

void SpecialValues::PutADF(std::string_view digits, bool standby) {
  if (digits.size() < 5) return;
  const auto digit = [digits](std::size_t i) { return static_cast<float>(digits[i] & 15); };
  const float frequency = digit(0) * 1000 + digit(1) * 100 + digit(2) * 10 + digit(3) + digit(4) / 10;
  sim_.SendXplaneDREF(standby ? "sim/cockpit/radios/adf1_stdby_freq_hz" : "sim/cockpit/radios/adf1_freq_hz",
                      frequency);
}

float SpecialValues::AutopilotValue(int offset) const {
  float value = 0;
  sim_.GetPort(autopilotPorts_[static_cast<std::size_t>(offset)], value);
  return value;
}

bool SpecialValues::ReadsAutopilotPort(std::size_t offset) {
  switch (offset) {
    case kEngagedPort:
    case kLateralPort:
    case kNavigationPort:
    case kApproachPort:
    case kAltitudeHoldPort:
    case kAltitudePort:
    case kVerticalSpeedPort:
    case kTrimPort:
      return true;
    default:
      return false;
  }
}

void SpecialValues::GetAPvaluesFX() {
  APStatusBits = 0;
  const auto setWhen = [this](bool condition, int bit) {
    if (condition) APStatusBits = static_cast<std::int16_t>(APStatusBits | bit);
  };
  setWhen(AutopilotValue(kEngagedPort) == kEngaged, kLampEngaged);
  setWhen(AutopilotValue(kLateralPort) == kHeadingMode, kLampHeading);
  setWhen(AutopilotValue(kLateralPort) == kNavigationMode, kLampNavigation);
  setWhen(AutopilotValue(kNavigationPort) == 1.0f, kLampNavigation);
  setWhen(AutopilotValue(kApproachPort) != 0.0f, kLampApproach);
  setWhen(AutopilotValue(kAltitudeHoldPort) != 0.0f, kLampAltitudeHold);
  APValue16 = AutopilotValue(kAltitudePort);
  APValue18 = AutopilotValue(kVerticalSpeedPort);
  const double percent = std::clamp(static_cast<double>(AutopilotValue(kTrimPort)), -100.0, 100.0);
  const double trim = percent * kTrimStepsPerPercent;
  APTrim = RoundTo<std::int16_t>(trim).value_or(0);
}

void SpecialValues::GetPortAP(int n) {
  if (n < 0 || n >= kAutopilotPorts || autopilotPorts_[static_cast<std::size_t>(n)] >= sim_.PortCount()) {
    boxes_.Show("Get APPort, OffsetNr: " + std::to_string(n));
    return;
  }
  const float value = AutopilotValue(n);
  if (n == kEngagedPort) {
    APEngaged = value == kEngaged ? 1.0f : 0.0f;
  } else {
    APVariable[static_cast<std::size_t>(n)] = value;
  }
}

void SpecialValues::getRMIData() {
  const auto bearing = [this](float degrees, int bit) {
    return (RmiValid & bit) != 0 ? DialPosition(static_cast<double>(degrees)) : kParkedNeedle;
  };
  const auto angle = [this](std::int16_t turns, int bit) {
    return (RmiValid & bit) != 0 ? AnglePosition(turns) : kParkedNeedle;
  };
  RmiPos1 = RmiPos2 = bearing(RmiBearing1, kRmiBearing1Valid);
  if (RmiHasSecond) RmiPos2 = bearing(RmiBearing2, kRmiBearing2Valid);
  RmiPos3 = RmiPos4 = angle(RmiAngle3, kRmiAngle3Valid);
  if (RmiHasFourth) RmiPos4 = angle(RmiAngle4, kRmiAngle4Valid);
}

}  // namespace tvx
