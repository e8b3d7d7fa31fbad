// The serial adapters that this computer has.
#pragma once

#include <string>
#include <vector>

namespace tvx {

// COM numbers are looked at up to this one for what they lead to; higher ones work, but nobody offers them.
inline constexpr int kHighestComNumber = 99;

struct SerialDevice {
  std::string path;  // "/dev/ttyUSB0"
  std::string
      stableName;       // its name under /dev/serial/by-id, which survives a reboot and replugging; or empty
  std::string adapter;  // what the adapter calls itself; may be empty
  std::string serialNumber;  // the adapter's own; may be empty
  std::string group;         // whose members may open it
  bool mayOpen = false;      // this user may
  std::string user;          // the program that has it open, "name (pid)"; empty: none that is known

  // "FT232R USB UART, serial A50285BI, /dev/ttyUSB0".
  std::string Words() const;
  // Whether it can be used now, and if not, what to do about it.
  std::string StateWords() const;
};

class SerialDevices {
 public:
  virtual ~SerialDevices() = default;
  // Those plugged in now, by path.
  virtual std::vector<SerialDevice> List() const = 0;
  // Makes COM `comNumber` (1 or more) lead to the device: points the link comports/com<n> in the working
  // folder at it, by its stable name where it has one. False with the reason in `error`; the old link stays
  // then.
  virtual bool Assign(int comNumber, const SerialDevice& device, std::string& error) = 0;
};

}  // namespace tvx
