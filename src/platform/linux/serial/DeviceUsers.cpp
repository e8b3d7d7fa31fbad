#include "platform/linux/serial/DeviceUsers.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "platform/linux/serial/LineServer.h"

namespace tvx {

namespace fs = std::filesystem;

namespace {

// What makes two open files the same one: a device's number; in a test, the file itself.
using Identity = std::pair<dev_t, ino_t>;

Identity IdentityOf(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) return {};
  return S_ISCHR(info.st_mode) ? Identity(info.st_rdev, 0) : Identity(info.st_dev, info.st_ino);
}

struct Process {
  std::string pid, name;
  bool IsKeeper() const { return name == kKeeperName; }
};

bool AllDigits(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

Process ProcessAt(const fs::path& folder) {
  Process process{folder.filename(), {}};
  std::ifstream in(folder / "comm");
  std::getline(in, process.name);
  return process;
}

// Whoever holds a file under /dev. Other files are not looked at: one on a dead network disk would hold us
// up.
std::vector<Identity> OpenDevices(const fs::path& process, std::error_code& refused) {
  std::vector<Identity> devices;
  std::error_code end;
  for (fs::directory_iterator file(process / "fd", refused), last; !refused && !end && file != last;
       file.increment(end)) {
    std::error_code code;
    const std::string target = fs::read_symlink(file->path(), code);
    if (!code && target.find("/dev/") != std::string::npos) devices.push_back(IdentityOf(file->path()));
  }
  return devices;
}

// A keeper is only named where its program has gone and the adapter still does not let it end.
std::vector<std::string> Names(const std::vector<Process>& holders) {
  const bool keepersOnly =
      std::all_of(holders.begin(), holders.end(), [](const Process& p) { return p.IsKeeper(); });
  const std::string own = std::to_string(::getpid());
  std::vector<std::string> names;
  for (const Process& holder : holders) {
    if (holder.IsKeeper() && !keepersOnly) continue;
    names.push_back(holder.pid == own ? "this program" : holder.name + " (" + holder.pid + ")");
  }
  return names;
}

}  // namespace

void FindUsers(std::vector<SerialDevice>& devices, const std::string& root) {
  std::vector<Identity> wanted;
  wanted.reserve(devices.size());
  for (const SerialDevice& device : devices) wanted.push_back(IdentityOf(root + device.path));
  std::vector<std::vector<Process>> holders(devices.size());
  // A system may hide the processes of others altogether; then the first one is hidden too.
  bool all = fs::exists(root + "/proc/1/fd");
  std::error_code end;
  for (fs::directory_iterator entry(root + "/proc", end), last; !end && entry != last; entry.increment(end)) {
    if (!AllDigits(entry->path().filename())) continue;
    std::error_code refused;
    std::vector<Identity> open = OpenDevices(entry->path(), refused);
    if (refused == std::errc::permission_denied) all = false;
    std::sort(open.begin(), open.end());
    open.erase(std::unique(open.begin(), open.end()), open.end());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      if (wanted[i] != Identity() && std::binary_search(open.begin(), open.end(), wanted[i]))
        holders[i].push_back(ProcessAt(entry->path()));
    }
  }
  for (std::size_t i = 0; i < devices.size(); ++i) {
    devices[i].users = Names(holders[i]);
    devices[i].allUsersSeen = all && !end;
  }
}

}  // namespace tvx
