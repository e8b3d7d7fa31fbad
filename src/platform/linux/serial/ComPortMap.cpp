#include "platform/linux/serial/ComPortMap.h"

#include <filesystem>

namespace tvx {

namespace fs = std::filesystem;

namespace {

std::string DefaultDevice(int comNumber) {
  return comNumber <= 4 ? "/dev/ttyS" + std::to_string(comNumber - 1)
                        : "/dev/ttyUSB" + std::to_string(comNumber - 5);
}

bool NamesAnOrder(const std::string& device) {
  return device.starts_with("/dev/ttyUSB") || device.starts_with("/dev/ttyACM");
}

}  // namespace

ComPortTarget FindComPort(int comNumber) {
  if (comNumber < 1) return {};
  const std::string link = "comports/com" + std::to_string(comNumber);
  std::error_code error;
  const fs::file_status status = fs::symlink_status(link, error);
  if (!fs::exists(status)) {
    const std::string device = DefaultDevice(comNumber);
    return {device, device, false, NamesAnOrder(device)};
  }
  if (!fs::is_symlink(status)) return {link, link, true, false};
  const std::string target = fs::read_symlink(link, error).string();
  if (target.empty()) return {link, link, true, false};
  const bool leadsSomewhere = fs::exists(link, error);
  return {link, leadsSomewhere && target.front() == '/' ? target : link + " -> " + target, true,
          NamesAnOrder(target)};
}

bool LinuxComPorts::LeadsTo(int comNumber, const SerialDevice& adapter) const {
  const std::string path = FindComPort(comNumber).path;
  std::error_code error;
  const std::string link = fs::read_symlink(path, error).string();
  const std::string real = fs::canonical(path, error).string();
  const auto isIt = [&adapter](const std::string& name) {
    return !name.empty() &&
           (name == adapter.path || (!adapter.twin && name == adapter.byName) || name == adapter.bySocket);
  };
  return isIt(path) || isIt(link) || isIt(real);
}

std::string LinuxComPorts::PathOf(int comNumber) const {
  const std::string path = FindComPort(comNumber).path;
  std::error_code error;
  return path.empty() ? path : fs::canonical(path, error).string();
}

std::string LinuxComPorts::DeviceOf(int comNumber) const {
  const ComPortTarget target = FindComPort(comNumber);
  std::error_code error;
  if (fs::exists(target.path, error)) return target.device;
  return target.linked ? target.device + ", not there" : std::string();
}

}  // namespace tvx
