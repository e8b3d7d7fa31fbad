// Every datagram that goes to the simulator or comes from it, as pure functions over bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/Bytes.h"

namespace tvx {

inline constexpr std::size_t kDselSize = 9;
inline constexpr std::size_t kDataSize = 41;
inline constexpr std::size_t kCharSize = 21;
inline constexpr std::size_t kDrefSize = 509;
inline constexpr std::size_t kRrefSize = 413;
inline constexpr std::size_t kIse4Size = 37;
inline constexpr std::size_t kDrefPathLimit = 500;
inline constexpr std::size_t kRrefPathLimit = 400;
inline constexpr std::size_t kCommandPathLimit = 1400;  // what fits one unfragmented datagram
inline constexpr int kDataValuesPerGroup = 8;
// In a DATA packet: leave this value as it is.
inline constexpr int kLeaveUnchanged = -999;

// A datagram being built, in place. No operation allocates.
struct Datagram {
  std::array<Byte, 1500> bytes;
  std::size_t size = 0;
  ByteView View() const { return {bytes.data(), size}; }
};

// Each returns false, and leaves `out` unusable, when an argument does not fit the packet.
bool BuildDSEL(int group, Datagram& out);  // group 0..255
bool BuildUSEL(int group, Datagram& out);  // group 0..255
// group 0..255, value number 0..7; the other seven values are -999.
bool BuildDataFloat(int group, int valueNumber, float value, Datagram& out);       // singles, little-endian
bool BuildDataInt(int group, int valueNumber, std::int32_t value, Datagram& out);  // integers, big-endian
bool BuildCHAR(int character, std::string_view remoteHost, Datagram& out);         // character 0..255
bool BuildCMND(std::string_view path, Datagram& out);
// Where the simulator sends its data groups: IPv4 address and port as texts of at most 15 and 7 characters.
bool BuildISE4(std::string_view address, std::string_view port, Datagram& out);
bool BuildDREF(std::string_view path, float value, Datagram& out);
// The identifier as its two bytes in the request carry it: exact up to 128, then with a second byte that is
// rounded.
int RrefIdentifierOnWire(std::int32_t identifier);
bool BuildRREF(std::string_view path, std::int32_t frequency, std::int32_t identifier, Datagram& out);

// The text of entry `number` in a list of "#number:text" lines, each ended by CR LF: what stands from 3
// characters after the key to the next CR LF, searched from 2 characters after it. std::nullopt when the key
// or the line end is missing. The fixed distance of 3 fits numbers 1..9; a longer number keeps its ":" in
// front.
std::optional<std::string_view> CutEntry(std::string_view lines, int number);

// --- what the simulator sends ---

inline constexpr std::size_t kHeaderSize = 5;
inline constexpr std::size_t kSmallestDatagram = kHeaderSize + 1;
// Sizes of one record of an RREF reply and of one group of a DATA datagram.
inline constexpr std::size_t kRrefRecordSize = 8;
inline constexpr std::size_t kDataGroupSize = 4 + 4 * kDataValuesPerGroup;

// What a datagram is, by its first four bytes.
enum class DatagramKind { TooShort, Dref, Rref, Data, Other };
DatagramKind Classify(ByteView datagram);

// Number of records that a datagram of `bytes` bytes holds with `recordSize` bytes each after its header: the
// quotient rounded to nearest, halves to even. It can point past the end.
int RecordCount(std::size_t bytes, std::size_t recordSize);

// Record `record` of `size` bytes each; std::nullopt when it does not lie wholly within the datagram.
inline std::optional<ByteView> RecordAt(ByteView datagram, int record, std::size_t size) {
  if (record < 0) return std::nullopt;
  const std::size_t at = kHeaderSize + static_cast<std::size_t>(record) * size;
  if (at > datagram.size() || datagram.size() - at < size) return std::nullopt;
  return datagram.subspan(at, size);
}

// One record of an RREF reply; std::nullopt as above.
struct RrefValue {
  int identifier;  // 0..65535
  float value;
};
inline std::optional<RrefValue> ReadRrefRecord(ByteView datagram, int record) {
  const auto bytes = RecordAt(datagram, record, kRrefRecordSize);
  if (!bytes) return std::nullopt;
  return RrefValue{(*bytes)[0] + 256 * (*bytes)[1], FloatFromLittleEndian(bytes->subspan<4, 4>())};
}

// One group of a DATA datagram; std::nullopt as above.
struct DataGroup {
  int index;  // 0..255
  std::array<float, kDataValuesPerGroup> values;
};
inline std::optional<DataGroup> ReadDataGroup(ByteView datagram, int group) {
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
