#include "platform/linux/LinuxSerialDevices.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/linux/TtyDevice.h"

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
void ReadAdapter(SerialDevice& device, const fs::path& sysClass, const std::string& name) {
  std::error_code code;
  fs::path folder = fs::canonical(sysClass / name / "device", code);
  for (int up = 0; !code && up < 6 && folder.has_relative_path(); ++up, folder = folder.parent_path()) {
    if (!fs::exists(folder / "product", code)) continue;
    device.adapter = FirstLine(folder / "product");
    device.serialNumber = FirstLine(folder / "serial");
    return;
  }
}

void ReadUsers(std::vector<SerialDevice>& devices, const fs::path& proc, const std::string& root) {
  ForEachEntry(proc, [&](const fs::path& process) {
    const std::string pid = process.filename().string();
    if (!AllDigits(pid)) return;
    ForEachEntry(process / "fd", [&](const fs::path& handle) {
      std::error_code code;
      const std::string target = fs::read_symlink(handle, code).string();
      if (code || target.empty()) return;
      for (SerialDevice& device : devices) {
        if (target != root + device.path) continue;
        device.user = pid == std::to_string(::getpid()) ? "this program"
                                                        : FirstLine(process / "comm") + " (" + pid + ")";
      }
    });
  });
}

}  // namespace

std::vector<SerialDevice> LinuxSerialDevices::List() const {
  const fs::path sysClass = root_ + "/sys/class/tty";
  std::vector<SerialDevice> devices;
  ForEachEntry(root_ + "/dev", [&](const fs::path& file) {
    const std::string name = file.filename().string();
    if (!IsAdapter(name, sysClass)) return;
    SerialDevice device;
    device.path = "/dev/" + name;
    device.group = GroupOfDevice(file.string());
    device.mayOpen = ::access(file.c_str(), R_OK | W_OK) == 0;
    ReadAdapter(device, sysClass, name);
    devices.push_back(device);
  });
  ForEachEntry(root_ + "/dev/serial/by-id", [&](const fs::path& link) {
    std::error_code code;
    const fs::path target = fs::read_symlink(link, code);
    for (SerialDevice& device : devices) {
      if (!code && target.filename() == fs::path(device.path).filename()) {
        device.stableName = "/dev/serial/by-id/" + link.filename().string();
      }
    }
  });
  ReadUsers(devices, root_ + "/proc", root_);
  std::sort(devices.begin(), devices.end(),
            [](const SerialDevice& a, const SerialDevice& b) { return a.path < b.path; });
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
  fs::create_symlink(device.stableName.empty() ? device.path : device.stableName, made, code);
  if (!code) fs::rename(made, link, code);
  if (!code) return true;
  error = link.string() + ": " + code.message();
  fs::remove(made, code);
  return false;
}

}  // namespace tvx
