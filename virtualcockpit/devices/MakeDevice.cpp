// Which instrument stands for which Gaugetype code. A new kind is a line here and a file beside it.
#include "virtualcockpit/devices/AltimeterDevice.h"
#include "virtualcockpit/devices/AudioDevice.h"
#include "virtualcockpit/devices/AutopilotDevice.h"
#include "virtualcockpit/devices/ClockDevice.h"
#include "virtualcockpit/devices/DiscDevices.h"
#include "virtualcockpit/devices/DmeDevice.h"
#include "virtualcockpit/devices/IoModuleDevice.h"
#include "virtualcockpit/devices/NeedleDevice.h"
#include "virtualcockpit/devices/PlainDevice.h"
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
    {1, Make<NeedleDevice>},        {2, Make<NeedleDevice>},      {3, Make<NeedleDevice>},
    {4, Make<NeedleDevice>},        {5, Make<NeedleDevice>},      {6, Make<NeedleDevice>},
    {8, Make<NeedleDevice>},        {10, Make<IoModuleDevice>},   {101, Make<AltimeterDevice>},
    {103, Make<AttitudeDevice>},    {104, Make<ClockDevice>},     {105, Make<HeadingDevice>},
    {106, Make<VorDevice>},         {107, Make<VorDevice>},       {108, Make<AdfDevice>},
    {109, Make<ClockDevice>},       {110, Make<RadioDevice>},     {111, Make<RadioDevice>},
    {112, Make<TransponderDevice>}, {113, Make<DmeDevice>},       {114, Make<TransponderDevice>},
    {120, Make<ComNavDevice>},      {121, Make<RadioDevice>},     {122, Make<TransponderDevice>},
    {123, Make<DmeDevice>},         {124, Make<AutopilotDevice>}, {125, Make<AudioDevice>},
    {130, Make<RmiDevice>},         {140, Make<TrimDevice>},
};

}  // namespace

std::unique_ptr<Device> MakeDevice(const Device::Identity& identity) {
  for (const Row& row : kRows) {
    if (row.type == identity.type) return row.make(identity);
  }
  return std::make_unique<PlainDevice>(identity);
}

}  // namespace tvx::vc
