// Opening and closing a terminal device as a serial line, without ever waiting.
#pragma once

#include <string>

#include "platform/SerialPort.h"
#include "platform/linux/Unmarker.h"

namespace tvx {

struct OpenedTty {
  int fd = -1;  // -1 unless state is Open
  SerialState state = SerialState::Failed;
};

// Opens `path` for this program alone, set to 38400 baud, 8 data bits, no parity, 2 stop bits, no handshake,
// raw, with breaks and faulty bytes marked (see Unmarker).
OpenedTty OpenTty(const std::string& path);

// Closes it. Bytes that have not left yet are given up: to wait for them could take half a minute.
void CloseTty(int fd);

// The group of the device file, by name; "dialout" where it is root's or not known.
std::string GroupOfDevice(const std::string& path);

// The driver's error counters; all 0 where it keeps none.
LineCounts ReadLineCounts(int fd);

}  // namespace tvx
