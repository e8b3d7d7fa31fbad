// The serial adapters as Windows lists them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/SerialDevices.h"

namespace tvx {

// What Windows' list of devices says of one port.
struct PortEntry {
  std::string port;          // "COM5"
  std::string friendlyName;  // "USB Serial Port (COM5)"; may be empty
  std::string instance;      // "USB\VID_0403&PID_6001\A50285BI"; may be empty
};
// The adapter's name without the port's; its serial number, where it is the adapter's own and not one that
// Windows made up.
SerialDevice DeviceOf(const PortEntry& entry);

class ComDevices final : public SerialDevices {
 public:
  std::vector<SerialDevice> List() const override;
  // True where the number leads to the device already. Otherwise false, and `error` says where to change it:
  // numbers are given in Windows' Device Manager.
  bool Assign(int comNumber, const SerialDevice& device, std::string& error) override;
};

}  // namespace tvx
