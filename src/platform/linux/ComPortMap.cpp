#include "platform/linux/ComPortMap.h"

#include <filesystem>

namespace tvx {

namespace fs = std::filesystem;

namespace {

std::string DefaultDevice(int comNumber) {
  return comNumber <= 4 ? "/dev/ttyS" + std::to_string(comNumber - 1)
                        : "/dev/ttyUSB" + std::to_string(comNumber - 5);
}

}  // namespace

ComPortTarget FindComPort(int comNumber) {
  if (comNumber < 1) return {};
  const std::string link = "comports/com" + std::to_string(comNumber);
  std::error_code error;
  const fs::file_status status = fs::symlink_status(link, error);
  if (!fs::exists(status)) {
    const std::string device = DefaultDevice(comNumber);
    return {device, device, false};
  }
  if (!fs::is_symlink(status)) return {link, link, true};
  const std::string target = fs::read_symlink(link, error).string();
  if (target.empty()) return {link, link, true};
  const bool leadsSomewhere = fs::exists(link, error);
  return {link, leadsSomewhere && target.front() == '/' ? target : link + " -> " + target, true};
}

}  // namespace tvx
