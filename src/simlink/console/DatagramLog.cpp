#include "simlink/console/DatagramLog.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "simlink/PortValue.h"
#include "simlink/datagrams/Packets.h"

namespace tvx {
namespace {

constexpr std::size_t kLinesOfOne = 900;
constexpr std::size_t kBytesPerLine = 32;
constexpr std::size_t kBytesInLog = 512;
constexpr std::size_t kBytesPerRow = 16;
constexpr std::size_t kRows = 128;
constexpr std::size_t kDrefValueAt = 5;
constexpr std::size_t kDrefPathAt = 9;

void AppendHex(std::string& out, Byte byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  out += kDigits[byte >> 4];
  out += kDigits[byte & 15];
}

char Visible(Byte byte) {
  return byte >= ' ' && byte < 0x7F ? static_cast<char>(byte) : '.';
}

float Ordered(float value, bool reverse) {
  if (!reverse) return value;
  std::array<Byte, 4> bytes{};
  FloatToLittleEndian(value, bytes);
  std::reverse(bytes.begin(), bytes.end());
  return FloatFromLittleEndian(bytes);
}

// Collects the lines of one datagram, and cuts them with a remark when there are too many.
class Lines {
 public:
  bool Add(std::string line) {
    if (lines_.size() + 1 < kLinesOfOne) {
      lines_.push_back(std::move(line));
      return true;
    }
    if (lines_.size() < kLinesOfOne) lines_.push_back("=== The rest of this datagram is not shown ===");
    return false;
  }
  std::vector<std::string> Take() { return std::move(lines_); }

 private:
  std::vector<std::string> lines_;
};

void AddBytes(Lines& lines, ByteView bytes) {
  lines.Add("Data:");
  for (std::size_t at = 0; at < std::min(bytes.size(), kBytesInLog); at += kBytesPerLine) {
    std::string line;
    for (const Byte byte : bytes.subspan(at, std::min(kBytesPerLine, bytes.size() - at))) {
      if (!line.empty()) line += ' ';
      AppendHex(line, byte);
    }
    lines.Add(std::move(line));
  }
  if (bytes.size() > kBytesInLog) {
    lines.Add("... and " + std::to_string(bytes.size() - kBytesInLog) + " more bytes");
  }
}

void AddDref(Lines& lines, ByteView bytes, bool reverse) {
  lines.Add("DREF package received:");
  ByteReader reader(bytes);
  reader.Skip(kDrefValueAt);
  const auto value = reader.FloatLE();
  if (!value) return;
  lines.Add("Data Value: " + ValueText(Ordered(*value, reverse)));
  std::string path;
  for (const Byte byte : bytes.subspan(kDrefPathAt, std::min(kDrefPathLimit, bytes.size() - kDrefPathAt))) {
    if (byte == 0) break;
    path += Visible(byte);
  }
  while (path.ends_with(' ')) path.pop_back();
  lines.Add("Data Reference: " + path);
}

void AddRref(Lines& lines, ByteView bytes, bool reverse) {
  int count = 0;
  while (ReadRrefRecord(bytes, count)) ++count;
  lines.Add("RREF package received, containing " + std::to_string(count) + " Values:");
  for (int i = 0; i < count; ++i) {
    const auto record = ReadRrefRecord(bytes, i);
    if (!lines.Add("--Identifier: " + std::to_string(record->identifier) +
                   ", Data Value: " + ValueText(Ordered(record->value, reverse)))) {
      return;
    }
  }
}

void AddData(Lines& lines, ByteView bytes, bool reverse) {
  for (int i = 0;; ++i) {
    const auto group = ReadDataGroup(bytes, i);
    if (!group || !lines.Add("Data Package received, Index: " + std::to_string(group->index))) return;
    for (std::size_t value = 0; value < group->values.size(); ++value) {
      lines.Add("--Value #" + std::to_string(value) + "= " +
                ValueText(Ordered(group->values[value], reverse)));
    }
  }
}

}  // namespace

std::string DatagramHeader(const LoggedDatagram& datagram) {
  return "Time: " + datagram.time + ", Received from port " + std::to_string(datagram.port) +
         ". Packet Length: " + std::to_string(datagram.bytes.size());
}

std::vector<std::string> DescribeDatagram(const LoggedDatagram& datagram, bool reverse) {
  const ByteView bytes = datagram.bytes;
  Lines lines;
  lines.Add(DatagramHeader(datagram));
  AddBytes(lines, bytes);
  switch (Classify(bytes)) {
    case DatagramKind::Dref:
      AddDref(lines, bytes, reverse);
      break;
    case DatagramKind::Rref:
      AddRref(lines, bytes, reverse);
      break;
    case DatagramKind::Data:
      AddData(lines, bytes, reverse);
      break;
    default:
      break;
  }
  return lines.Take();
}

std::string HexDump(ByteView bytes) {
  std::string dump;
  const std::size_t shown = std::min(bytes.size(), kRows * kBytesPerRow);
  for (std::size_t at = 0; at < shown; at += kBytesPerRow) {
    const ByteView row = bytes.subspan(at, std::min(kBytesPerRow, shown - at));
    AppendHex(dump, static_cast<Byte>(at >> 8));
    AppendHex(dump, static_cast<Byte>(at));
    dump += ' ';
    std::string characters;
    for (const Byte byte : row) {
      dump += ' ';
      AppendHex(dump, byte);
      characters += Visible(byte);
    }
    dump.append(3 * (kBytesPerRow - row.size()) + 2, ' ');
    dump += characters + '\n';
  }
  if (shown < bytes.size()) dump += "... and " + std::to_string(bytes.size() - shown) + " more bytes\n";
  return dump;
}

void LogLines::Append(std::vector<std::string> lines) {
  for (std::string& line : lines) lines_.push_back(std::move(line));
  while (lines_.size() > kMost) lines_.pop_front();
}

std::string LogLines::Text() const {
  std::string text;
  for (const std::string& line : lines_) text += line + "\r\n";
  return text;
}

}  // namespace tvx
