// Which instrument stands for which Gaugetype code. A new kind is a line here and a file beside it.
#include "drawn/Gaugetypes.h"
#include "drawn/PlainDevice.h"
#include "drawn/devices/AltimeterDevice.h"
#include "drawn/devices/AudioDevice.h"
#include "drawn/devices/AutopilotDevice.h"
#include "drawn/devices/ClockDevice.h"
#include "drawn/devices/DiscDevices.h"
#include "drawn/devices/DmeDevice.h"
#include "drawn/devices/IOModuleDevice.h"
#include "drawn/devices/NeedleDevice.h"
#include "drawn/devices/RadioDevice.h"
#include "drawn/devices/TransponderDevice.h"
#include "drawn/devices/TrimDevice.h"
#include "drawn/devices/VorDevice.h"

namespace tvx::drawn {
namespace {

template <typename Kind>
std::unique_ptr<Device> Make(const Device::Identity& identity) {
  return std::make_unique<Kind>(identity);
}

struct Row {
  Byte type;
  std::unique_ptr<Device> (*make)(const Device::Identity&);
};
constexpr Row kRows[] = {
    {gaugetype::kSmallNeedle, Make<NeedleDevice>},
    {gaugetype::kNeedleAndDisplay, Make<NeedleDevice>},
    {gaugetype::kTwoNeedlesBeside, Make<NeedleDevice>},
    {gaugetype::kLargeNeedle, Make<NeedleDevice>},
    {gaugetype::kLargeTwoNeedles, Make<NeedleDevice>},
    {gaugetype::kSmallTwoNeedles, Make<NeedleDevice>},
    {gaugetype::kClusterHousing, Make<NeedleDevice>},
    {gaugetype::kIOModule, Make<IOModuleDevice>},
    {gaugetype::kAltimeter, Make<AltimeterDevice>},
    {gaugetype::kAttitude, Make<AttitudeDevice>},
    {gaugetype::kClock, Make<ClockDevice>},
    {gaugetype::kHeading, Make<HeadingDevice>},
    {gaugetype::kVor1, Make<VorDevice>},
    {gaugetype::kVor2, Make<VorDevice>},
    {gaugetype::kAdf, Make<AdfDevice>},
    {gaugetype::kClockWithTemperature, Make<ClockDevice>},
    {gaugetype::kRadioA, Make<RadioDevice>},
    {gaugetype::kRadioB, Make<RadioDevice>},
    {gaugetype::kTransponderA, Make<TransponderDevice>},
    {gaugetype::kDme, Make<DmeDevice>},
    {gaugetype::kTransponderB, Make<TransponderDevice>},
    {gaugetype::kComNav, Make<ComNavDevice>},
    {gaugetype::kAdfRadio, Make<RadioDevice>},
    {gaugetype::kKeyedTransponder, Make<TransponderDevice>},
    {gaugetype::kDmeWithFrequency, Make<DmeDevice>},
    {gaugetype::kAutopilot, Make<AutopilotDevice>},
    {gaugetype::kAudio, Make<AudioDevice>},
    {gaugetype::kRmi, Make<RmiDevice>},
    {gaugetype::kTrim, Make<TrimDevice>},
};

}  // namespace

std::unique_ptr<Device> MakeDevice(const Device::Identity& identity) {
  for (const Row& row : kRows) {
    if (row.type == identity.type) return row.make(identity);
  }
  return std::make_unique<PlainDevice>(identity);
}

}  // namespace tvx::drawn
