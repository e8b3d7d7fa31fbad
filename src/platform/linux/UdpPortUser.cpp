#include "platform/linux/UdpPortUser.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <vector>

namespace tvx {
namespace {

namespace fs = std::filesystem;

// The links of open files that are sockets on the port, "socket:[12345]". A line of the table begins
// "1: 00000000:BF6B 00000000:0000 07 ..."; the second number is the local port, the tenth word the socket's.
std::vector<std::string> SocketsOn(std::int32_t port, const fs::path& table) {
  std::vector<std::string> sockets;
  std::ifstream in(table);
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    std::istringstream words(line);
    std::string number, local, word, inode;
    words >> number >> local;
    for (int skipped = 0; skipped < 7; ++skipped) words >> word;
    words >> inode;
    const std::size_t colon = local.find(':');
    if (!words || colon == std::string::npos) continue;
    std::int32_t found = 0;
    std::from_chars(local.data() + colon + 1, local.data() + local.size(), found, 16);
    if (found == port) sockets.push_back("socket:[" + inode + "]");
  }
  return sockets;
}

bool HasOpen(const fs::path& process, const std::vector<std::string>& sockets) {
  std::error_code code;
  for (fs::directory_iterator entry(process / "fd", code), end; !code && entry != end;
       entry.increment(code)) {
    std::error_code gone;
    const std::string target = fs::read_symlink(entry->path(), gone).string();
    if (std::find(sockets.begin(), sockets.end(), target) != sockets.end()) return true;
  }
  return false;
}

}  // namespace

std::string UserOfUdpPort(std::int32_t port, const std::string& root) {
  const fs::path proc = root + "/proc";
  const std::vector<std::string> sockets = SocketsOn(port, proc / "net" / "udp");
  if (sockets.empty()) return {};
  std::error_code code;
  for (fs::directory_iterator entry(proc, code), end; !code && entry != end; entry.increment(code)) {
    const std::string pid = entry->path().filename().string();
    if (!std::all_of(pid.begin(), pid.end(), [](unsigned char c) { return std::isdigit(c); })) continue;
    if (!HasOpen(entry->path(), sockets)) continue;
    std::string name;
    std::ifstream comm(entry->path() / "comm");
    std::getline(comm, name);
    return name + " (" + pid + ")";
  }
  return {};
}

}  // namespace tvx
