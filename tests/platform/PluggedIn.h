// Adapters as a test wants them; assigning one makes the real link.
#pragma once

#include "platform/linux/serial/LinuxSerialDevices.h"

namespace tvx {

struct PluggedIn final : SerialDevices {
  std::vector<SerialDevice> devices;
  SerialDevice& Add(const std::string& path, const std::string& adapter = {},
                    const std::string& serialNumber = {}) {
    SerialDevice& added = devices.emplace_back();
    added.path = path;
    added.adapter = adapter;
    added.serialNumber = serialNumber;
    added.mayOpen = true;
    return added;
  }
  std::vector<SerialDevice> List() const override { return devices; }
  bool Assign(int comNumber, const SerialDevice& device, std::string& error) override {
    return LinuxSerialDevices().Assign(comNumber, device, error);
  }
};

}  // namespace tvx
