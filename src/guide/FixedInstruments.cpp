#include "guide/FixedInstruments.h"

#include "config/faces/ReadyFaces.h"

namespace tvx {
namespace {

constexpr Byte kGenericRadio = 110, kControlHead = 111;
constexpr std::int16_t kSendStandby = 4;
constexpr std::int16_t kKindMask = 3;

// What a type is given. Functions are standard ones, found by what they read; of the autopilot panel the
// plain numbers, which count from Function 90.
struct Fixed {
  Byte type;
  std::int16_t function1, function2;
  Byte sequence;
  std::int16_t options;
};
constexpr Fixed kFixed[] = {
    {10, 64, 0, 1, 0},                       // lamps: low volts
    {101, 2, 8, 1, 0},                       // altimeter, with its pressure
    {105, 67, 68, 1, 1},                     // heading indicator: bug and correction, from its knobs
    {106, 66, 0, 1, 0},                      // VOR indicators: the course of their receiver
    {107, 66, 0, 2, 0},  {112, 0, 0, 0, 1},  // transponders: mode, identification
    {113, 0, 71, 1, 0},  {114, 0, 0, 0, 1 | 4}, {120, 0, 0, 1, 4}, {121, 69, 70, 1, kSendStandby},
    {122, 0, 0, 0, 4},   {123, 0, 0, 0, 2},     {130, 0, 0, 0, 2},  // first pointer VOR, second ADF
};
constexpr Byte kAutopilot = 124;
constexpr std::int16_t kAutopilotBlock = 1, kAutopilotPreselect = 22;

bool Untouched(const GaugeRecord& gauge) {
  return gauge.GaugeFunction1 == 0 && gauge.GaugeFunction2 == 0 && gauge.GaugeSetting5 == 0;
}

// The number of a standard Function in this configuration.
std::int16_t Standard(ConfigModel& model, int number) {
  return number == 0 ? std::int16_t{0} : static_cast<std::int16_t>(StandardFunctionIn(model, number));
}

}  // namespace

int FillFixedInstruments(ConfigModel& model) {
  int filled = 0;
  for (GaugeRecord& gauge : model.Gauges) {
    if (gauge.GaugeType == 0 || !Untouched(gauge)) continue;
    if (gauge.GaugeType == kAutopilot) {
      gauge.GaugeFunction1 = kAutopilotBlock;
      gauge.GaugeFunction2 = kAutopilotPreselect;
      gauge.GaugeInstance1 = gauge.GaugeInstance2 = 1;
      ++filled;
      continue;
    }
    for (const Fixed& fixed : kFixed) {
      if (fixed.type != gauge.GaugeType) continue;
      gauge.GaugeFunction1 = Standard(model, fixed.function1);
      gauge.GaugeFunction2 = Standard(model, fixed.function2);
      gauge.GaugeInstance1 = fixed.sequence;
      gauge.GaugeInstance2 = fixed.function2 == 0 ? Byte{0} : fixed.sequence;
      gauge.GaugeSetting5 = fixed.options;
      ++filled;
    }
  }
  if (filled > 0) model.ConfigChanged = true;
  return filled;
}

bool IsRadio(int gaugetype) {
  return gaugetype == kGenericRadio || gaugetype == kControlHead;
}

bool GiveRadioRole(ConfigModel& model, int gaugeID, std::size_t role) {
  if (gaugeID < 0 || gaugeID >= kGauges || role >= kRadioRoles.size()) return false;
  GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(gaugeID)];
  if (!IsRadio(gauge.GaugeType)) return false;
  const RadioRole& wanted = kRadioRoles[role];
  gauge.GaugeFunction1 = Standard(model, wanted.active);
  gauge.GaugeFunction2 = Standard(model, wanted.standby);
  gauge.GaugeInstance1 = gauge.GaugeInstance2 = wanted.sequence;
  gauge.GaugeSetting5 = static_cast<std::int16_t>((gauge.GaugeSetting5 & ~(kKindMask | kSendStandby)) |
                                                  wanted.kind | kSendStandby);
  model.ConfigChanged = true;
  return true;
}

std::string RadioRoleOf(const ConfigModel& model, int gaugeID) {
  const GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(gaugeID)];
  if (!IsRadio(gauge.GaugeType) || gauge.GaugeFunction1 == 0) return {};
  const FunctionRecord* function = model.FunctionOf(gauge.GaugeFunction1);
  for (const RadioRole& role : kRadioRoles) {
    const bool same = function != nullptr && ReadsAsStandard(*function, role.active);
    if (same && (gauge.GaugeSetting5 & kKindMask) == role.kind &&
        (gauge.GaugeInstance1 == role.sequence || (gauge.GaugeInstance1 == 0 && role.sequence == 1)))
      return std::string(role.name);
  }
  return function == nullptr ? std::string() : function->ShortName;
}

}  // namespace tvx
