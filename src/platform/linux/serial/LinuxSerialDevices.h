// The serial adapters as Linux lists them.
#pragma once

#include "platform/SerialDevices.h"

namespace tvx {

class LinuxSerialDevices final : public SerialDevices {
 public:
  // `root` stands before /dev, /sys and /proc; empty but in tests.
  explicit LinuxSerialDevices(std::string root = {}) : root_(std::move(root)) {}

  // USB adapters (ttyUSB, ttyACM) and the computer's own ports that are really there.
  std::vector<SerialDevice> List() const override;
  // Points the link comports/com<n> in the working folder at the device's lasting name.
  bool Assign(int comNumber, const SerialDevice& device, std::string& error) override;

 private:
  std::string root_;
};

}  // namespace tvx
