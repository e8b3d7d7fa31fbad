// The receiving half of Packets.h.
#include "simlink/Packets.h"

namespace tvx {
namespace {

constexpr std::size_t kHeaderSize = 5;
constexpr std::size_t kSmallestDatagram = 6;

// A record of `size` bytes, or nothing when the datagram ends before it does.
std::optional<ByteView> RecordAt(ByteView datagram, int record, std::size_t size) {
  if (record < 0) return std::nullopt;
  const std::size_t at = kHeaderSize + static_cast<std::size_t>(record) * size;
  if (at > datagram.size() || datagram.size() - at < size) return std::nullopt;
  return datagram.subspan(at, size);
}

}  // namespace

DatagramKind Classify(ByteView datagram) {
  if (datagram.size() < kSmallestDatagram) return DatagramKind::TooShort;
  // The fifth byte differs between versions of the simulator and means nothing here.
  const std::array<char, 4> tag{static_cast<char>(datagram[0]), static_cast<char>(datagram[1]),
                                static_cast<char>(datagram[2]), static_cast<char>(datagram[3])};
  const std::string_view text(tag.data(), tag.size());
  if (text == "DATA") return DatagramKind::Data;
  if (text == "RREF") return DatagramKind::Rref;
  if (text == "DREF") return DatagramKind::Dref;
  return DatagramKind::Other;
}

int RecordCount(std::size_t bytes, std::size_t recordSize) {
  if (bytes < kHeaderSize || recordSize == 0) return 0;
  const std::size_t whole = (bytes - kHeaderSize) / recordSize;
  const std::size_t rest = (bytes - kHeaderSize) % recordSize;
  const bool up = 2 * rest > recordSize || (2 * rest == recordSize && whole % 2 == 1);
  return static_cast<int>(up ? whole + 1 : whole);
}

std::optional<RrefValue> ReadRrefRecord(ByteView datagram, int record) {
  const auto bytes = RecordAt(datagram, record, kRrefRecordSize);
  if (!bytes) return std::nullopt;
  return RrefValue{(*bytes)[0] + 256 * (*bytes)[1], FloatFromLittleEndian(bytes->subspan<4, 4>())};
}

std::optional<DataGroup> ReadDataGroup(ByteView datagram, int group) {
  const auto bytes = RecordAt(datagram, group, kDataGroupSize);
  if (!bytes) return std::nullopt;
  DataGroup result;
  result.index = (*bytes)[0];
  for (std::size_t k = 0; k < result.values.size(); ++k) {
    result.values[k] = FloatFromLittleEndian(bytes->subspan(4 + 4 * k).first<4>());
  }
  return result;
}

}  // namespace tvx
