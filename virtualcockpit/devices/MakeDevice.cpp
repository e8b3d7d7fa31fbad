// Which instrument stands for which Gaugetype code. A new kind is a line here and a file beside it.
#include "virtualcockpit/bus/Gaugetypes.h"
#include "virtualcockpit/bus/PlainDevice.h"
#include "virtualcockpit/devices/AltimeterDevice.h"
#include "virtualcockpit/devices/AudioDevice.h"
#include "virtualcockpit/devices/AutopilotDevice.h"
#include "virtualcockpit/devices/ClockDevice.h"
#include "virtualcockpit/devices/DiscDevices.h"
#include "virtualcockpit/devices/DmeDevice.h"
#include "virtualcockpit/devices/IOModuleDevice.h"
#include "virtualcockpit/devices/NeedleDevice.h"
#include "virtualcockpit/devices/RadioDevice.h"
#include "virtualcockpit/devices/TransponderDevice.h"
#include "virtualcockpit/devices/TrimDevice.h"
#include "virtualcockpit/devices/VorDevice.h"

namespace tvx::vc {
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

}  // namespace tvx::vc
