// What the test console shows of a received datagram. Whatever a datagram holds, the lines are plain ASCII
// and their number is bounded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "base/Bytes.h"

namespace tvx {

// A datagram as it arrived.
struct LoggedDatagram {
  std::string time;  // "14:30:15"
  std::int32_t port = 0;
  std::vector<Byte> bytes;
};

// "Time: ..., Received from port ... . Packet Length: ...".
std::string DatagramHeader(const LoggedDatagram& datagram);

// The log's lines: header, bytes, and what the datagram says by its tag. `reverse`: the values are taken in
// reverse byte order, most significant first. At most 900 lines, the last of them telling of the cut.
std::vector<std::string> DescribeDatagram(const LoggedDatagram& datagram, bool reverse);

// The bytes as rows of 16: offset, hexadecimal, characters. At most 128 rows.
std::string HexDump(ByteView bytes);

// The last 1000 lines of a log.
class LogLines {
 public:
  static constexpr std::size_t kMost = 1000;

  void Append(std::vector<std::string> lines);
  void Clear() { lines_.clear(); }
  std::size_t Size() const { return lines_.size(); }
  const std::string& At(std::size_t line) const { return lines_[line]; }
  // All lines, each ended by CR LF.
  std::string Text() const;

 private:
  std::deque<std::string> lines_;
};

}  // namespace tvx
