// The system calls on a terminal device that may wait for its adapter: a stuck one holds them up for seconds
// or half a minute. Only the process that keeps a line calls them, except where it says otherwise.
#pragma once

#include <optional>
#include <string>

#include "platform/TtyDevice.h"

namespace tvx {

struct OpenedTty {
  int fd = -1;  // -1 unless state is Open
  SerialState state = SerialState::Failed;
};

// Opens `path` for this program alone, set to 38400 baud, 8 data bits, no parity, 2 stop bits, no handshake,
// raw, with breaks and faulty bytes marked (see Unmarker), and discards input that waits.
OpenedTty OpenTty(const std::string& path);

// Has the adapter hand on what it receives at once, where it can. Most USB adapters collect bytes for 16 ms.
// `sysClass` is the kernel's list of terminal devices.
void SetLowLatency(int fd, const std::string& path, const std::string& sysClass = "/sys/class/tty");

// The carrier-detect line; std::nullopt where the device has none.
std::optional<bool> ReadCarrier(int fd);

// Closes it. Output gets 0.2 s to leave; what has not left by then is given up where the driver lets that be.
void CloseTty(int fd);

// The group of the device file, by name; "dialout" where it is root's or not known. Does not wait for the
// adapter.
std::string GroupOfDevice(const std::string& path);

// The driver's error counters, from memory: does not wait for the adapter.
LineCounts ReadLineCounts(int fd);

}  // namespace tvx
