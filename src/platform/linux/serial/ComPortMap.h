// Which device a COM number means.
#pragma once

#include <string>

#include "platform/ComPorts.h"

namespace tvx {

// The path to open for a COM number (1 or more), and the words for it.
struct ComPortTarget {
  std::string path;      // what to open
  std::string device;    // what to show: the device, or "link -> device" for a link that leads nowhere
  bool linked = false;   // by comports/com<n> in the current folder
  bool byOrder = false;  // it counts USB adapters in the order of plugging in: next time it may be another
};

// In this order: the link comports/com<n> in the current folder, if it exists, even where it leads nowhere
// (the user chose that adapter, and it is not plugged in); /dev/ttyS<n-1> for 1..4; /dev/ttyUSB<n-5> for 5
// and more. The path is empty for numbers below 1.
ComPortTarget FindComPort(int comNumber);

// The same as the configuration forms ask for it. Looks at the file system at each call.
class LinuxComPorts final : public ComPorts {
 public:
  bool LeadsTo(int comNumber, const SerialDevice& adapter) const override;
  std::string DeviceOf(int comNumber) const override;
  std::string PathOf(int comNumber) const override;
  bool ByOrder(int comNumber) const override { return FindComPort(comNumber).byOrder; }
};

}  // namespace tvx
