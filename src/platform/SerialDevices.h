// The serial adapters that this computer has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tvx {

// COM numbers are looked at up to this one for what they lead to; higher ones work, but nobody offers them.
inline constexpr int kHighestComNumber = 99;

struct SerialDevice {
  std::string path;          // "/dev/ttyUSB0"
  std::string byName;        // its name under /dev/serial/by-id, from product and serial number; or empty
  std::string bySocket;      // its name under /dev/serial/by-path, from the socket that it is in; or empty
  std::string adapter;       // what the adapter calls itself; may be empty
  std::string serialNumber;  // the adapter's own; may be empty
  bool twin = false;  // another one has the same product and serial number: only the sockets tell them apart
  std::string group;  // whose members may open it
  bool mayOpen = false;            // this user may
  std::vector<std::string> users;  // the programs that have it open, "name (pid)" or "this program"
  bool allUsersSeen = false;       // no program was hidden from us: without users it is free
  bool usersUnknown = false;       // this system does not say who has it open
  bool foundBusy = false;          // it was refused because somebody has it, even if nobody is seen

  // The name that survives a reboot and replugging: by its serial number, or its socket where there are
  // twins. The path where there is no such name.
  const std::string& LastingName() const;
  // "FT232R USB UART, serial A50285BI, /dev/ttyUSB0".
  std::string Words() const;
  // Whether it can be used now, and if not, what to do about it.
  std::string StateWords() const;
  // Who has it open: "minicom (4711)", "minicom (4711) and this program"; empty where nobody is known.
  std::string UserWords() const;
  // The same without this program.
  std::string OtherUserWords() const;
};

// What a user does who may not open a device that belongs to `group`, in this system's words.
struct PermissionAdvice {
  std::string clause;    // to go on with behind "no permission; "
  std::string sentence;  // the same as a sentence, without its full stop
};
PermissionAdvice AdviceOnPermission(std::string_view group);

class SerialDevices {
 public:
  virtual ~SerialDevices() = default;
  // Those plugged in now: USB adapters first, then the computer's own, each by number.
  virtual std::vector<SerialDevice> List() const = 0;
  // Makes COM `comNumber` (1 or more) lead to the device. False with the reason in `error`; it leads where it
  // led then.
  virtual bool Assign(int comNumber, const SerialDevice& device, std::string& error) = 0;
};

}  // namespace tvx
