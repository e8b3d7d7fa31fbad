#include "platform/linux/serial/LinuxSerialDevices.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>
#include <utility>

#include "platform/linux/serial/DeviceUsers.h"
#include "platform/linux/serial/TtyCalls.h"

namespace tvx {

namespace fs = std::filesystem;

namespace {

std::string FirstLine(const fs::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  line.resize(std::min<std::size_t>(line.size(), 200));
  return line;
}

template <typename Visit>
void ForEachEntry(const fs::path& folder, Visit&& visit) {
  std::error_code code;
  for (fs::directory_iterator entry(folder, code), end; !code && entry != end; entry.increment(code)) {
    visit(entry->path());
  }
}

bool AllDigits(const std::string& text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c); });
}

// Of the computer's own ports the driver lists more than there are; those without a chip have type 0.
bool IsAdapter(const std::string& name, const fs::path& sysClass) {
  if (name.starts_with("ttyUSB") || name.starts_with("ttyACM")) return true;
  if (!name.starts_with("ttyS") || !AllDigits(name.substr(4))) return false;
  const std::string type = FirstLine(sysClass / name / "type");
  return !type.empty() && type != "0";
}

// The adapter's own description is in the folder of its USB device, some levels above that of the line.
// Returns all that tells it from another, as far as it does so itself: maker, product, serial number, and
// which of the adapter's lines this is.
std::string ReadAdapter(SerialDevice& device, const fs::path& sysClass, const std::string& name) {
  std::error_code code;
  fs::path folder = fs::canonical(sysClass / name / "device", code);
  std::string likeness;
  for (int up = 0; !code && up < 6 && folder.has_relative_path(); ++up, folder = folder.parent_path()) {
    for (const char* part : {"port_number", "bInterfaceNumber"}) likeness += FirstLine(folder / part) + '/';
    if (!fs::exists(folder / "product", code) && !fs::exists(folder / "idVendor", code)) continue;
    device.adapter = FirstLine(folder / "product");
    device.serialNumber = FirstLine(folder / "serial");
    return likeness + FirstLine(folder / "idVendor") + '/' + FirstLine(folder / "idProduct") + '/' +
           device.adapter + '/' + device.serialNumber;
  }
  return {};
}

bool IsBuiltIn(const SerialDevice& device) {
  return device.path.starts_with("/dev/ttyS");
}

// "/dev/ttyUSB10" behind "/dev/ttyUSB9".
bool ComesBefore(const SerialDevice& a, const SerialDevice& b) {
  if (IsBuiltIn(a) != IsBuiltIn(b)) return IsBuiltIn(b);
  return std::pair(a.path.size(), a.path) < std::pair(b.path.size(), b.path);
}

// Fills a name of every device from the links in `folder`. Of several names the shortest counts: systemd adds
// longer ones over time.
void ReadNames(std::vector<SerialDevice>& devices, const fs::path& root, const std::string& folder,
               std::string SerialDevice::*name) {
  ForEachEntry(root.string() + folder, [&](const fs::path& link) {
    std::error_code code;
    const fs::path target = fs::read_symlink(link, code);
    for (SerialDevice& device : devices) {
      if (code || target.filename() != fs::path(device.path).filename()) continue;
      const std::string found = folder + "/" + link.filename().string();
      std::string& kept = device.*name;
      if (kept.empty() || std::pair(found.size(), found) < std::pair(kept.size(), kept)) kept = found;
    }
  });
}

}  // namespace

std::vector<SerialDevice> LinuxSerialDevices::List() const {
  const fs::path sysClass = root_ + "/sys/class/tty";
  std::vector<SerialDevice> devices;
  std::map<std::string, std::vector<std::string>>
      alike;  // paths of the adapters that say the same of themselves
  ForEachEntry(root_ + "/dev", [&](const fs::path& file) {
    const std::string name = file.filename().string();
    if (!IsAdapter(name, sysClass)) return;
    SerialDevice device;
    device.path = "/dev/" + name;
    device.group = GroupOfDevice(file.string());
    device.mayOpen = ::access(file.c_str(), R_OK | W_OK) == 0;
    const std::string likeness = ReadAdapter(device, sysClass, name);
    if (!likeness.empty()) alike[likeness].push_back(device.path);
    devices.push_back(device);
  });
  for (const auto& [likeness, paths] : alike) {
    for (SerialDevice& device : devices)
      device.twin |= paths.size() > 1 && std::find(paths.begin(), paths.end(), device.path) != paths.end();
  }
  ReadNames(devices, root_, "/dev/serial/by-id", &SerialDevice::byName);
  ReadNames(devices, root_, "/dev/serial/by-path", &SerialDevice::bySocket);
  FindUsers(devices, root_);
  std::sort(devices.begin(), devices.end(), ComesBefore);
  return devices;
}

bool LinuxSerialDevices::Assign(int comNumber, const SerialDevice& device, std::string& error) {
  if (comNumber < 1) {
    error = "there is no COM " + std::to_string(comNumber);
    return false;
  }
  const fs::path link = "comports/com" + std::to_string(comNumber);
  const fs::path made = link.string() + ".new";
  std::error_code code;
  fs::create_directory("comports", code);
  fs::remove(made, code);
  fs::create_symlink(device.LastingName(), made, code);
  if (!code) fs::rename(made, link, code);
  if (!code) return true;
  error = link.string() + ": " + code.message();
  fs::remove(made, code);
  return false;
}

}  // namespace tvx
