// Which instrument stands for which Gaugetype code. A new kind is a line here and a file beside it.
#include "virtualcockpit/devices/AltimeterDevice.h"
#include "virtualcockpit/devices/IoModuleDevice.h"
#include "virtualcockpit/devices/NeedleDevice.h"
#include "virtualcockpit/devices/PlainDevice.h"
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
    {1, Make<NeedleDevice>}, {2, Make<NeedleDevice>},    {3, Make<NeedleDevice>},
    {4, Make<NeedleDevice>}, {5, Make<NeedleDevice>},    {6, Make<NeedleDevice>},
    {8, Make<NeedleDevice>}, {10, Make<IoModuleDevice>}, {101, Make<AltimeterDevice>},
    {106, Make<VorDevice>},
};

}  // namespace

std::unique_ptr<Device> MakeDevice(const Device::Identity& identity) {
  for (const Row& row : kRows) {
    if (row.type == identity.type) return row.make(identity);
  }
  return std::make_unique<PlainDevice>(identity);
}

}  // namespace tvx::vc
