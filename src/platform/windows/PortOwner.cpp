#include "platform/windows/PortOwner.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/windows/calls/WinApi.h"
//
#include <iphlpapi.h>

namespace tvx {
namespace {

std::string NameOf(DWORD process) {
  const Handle open(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
  std::array<wchar_t, 1024> path{};
  auto length = static_cast<DWORD>(path.size());
  if (!open || QueryFullProcessImageNameW(open.Get(), 0, path.data(), &length) == 0) return "a program";
  const std::string name = Utf8({path.data(), length});
  return name.substr(name.find_last_of("/\\") + 1);
}

}  // namespace

std::string OwnerOfUdpPort(std::int32_t port) {
  ULONG size = 0;
  std::vector<std::uint64_t> room;  // in units that the table's alignment asks for
  for (int tries = 0; tries < 4; ++tries) {
    const DWORD code = GetExtendedUdpTable(room.empty() ? nullptr : room.data(), &size, FALSE, AF_INET,
                                           UDP_TABLE_OWNER_PID, 0);
    if (code == NO_ERROR && !room.empty()) break;
    if (code != ERROR_INSUFFICIENT_BUFFER) return {};
    room.assign(size / sizeof(std::uint64_t) + 64, 0);  // more may come meanwhile
    size = static_cast<ULONG>(room.size() * sizeof(std::uint64_t));
  }
  if (room.empty()) return {};
  const auto* table = reinterpret_cast<const MIB_UDPTABLE_OWNER_PID*>(room.data());
  for (DWORD i = 0; i < table->dwNumEntries; ++i) {
    const MIB_UDPROW_OWNER_PID& row = table->table[i];
    if (ntohs(static_cast<u_short>(row.dwLocalPort)) != port) continue;
    return NameOf(row.dwOwningPid) + " (" + std::to_string(row.dwOwningPid) + ")";
  }
  return {};
}

}  // namespace tvx
