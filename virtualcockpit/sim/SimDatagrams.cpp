#include "virtualcockpit/sim/SimDatagrams.h"

#include <algorithm>
#include <string>

namespace tvx::vc {
namespace {

constexpr std::size_t kHeader = 5;
constexpr std::size_t kOutputTargetSize = 37;
constexpr std::int32_t kDataOutput = 64;  // the kind of target that an ISE4 sets
constexpr std::size_t kGroupSize = 4 + 4 * kGroupValues;

std::uint32_t U32(ByteView bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value |= static_cast<std::uint32_t>(bytes[at + i]) << (8 * i);
  return value;
}
std::int32_t I32(ByteView bytes, std::size_t at) {
  return static_cast<std::int32_t>(U32(bytes, at));
}
std::int32_t I32BigEndian(ByteView bytes, std::size_t at) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes[at]) << 24 |
                                   static_cast<std::uint32_t>(bytes[at + 1]) << 16 |
                                   static_cast<std::uint32_t>(bytes[at + 2]) << 8 | bytes[at + 3]);
}
float F32(ByteView bytes, std::size_t at) {
  return FloatFromLittleEndian(bytes.subspan(at).first<4>());
}

// The text up to the first zero byte, without the blanks at its end.
std::string_view Text(ByteView bytes) {
  const auto end = std::find(bytes.begin(), bytes.end(), Byte{0});
  std::string_view text(reinterpret_cast<const char*>(bytes.data()),
                        static_cast<std::size_t>(end - bytes.begin()));
  while (!text.empty() && (text.back() == ' ' || text.back() == '\r' || text.back() == '\n')) {
    text.remove_suffix(1);
  }
  return text;
}

Request ParseSelect(ByteView datagram, bool select) {
  const std::size_t body = datagram.size() - kHeader;
  if (body == 0 || body % 4 != 0) return UnknownRequest{};
  SelectRequest request{select, {}};
  for (std::size_t at = kHeader; at < datagram.size(); at += 4) request.groups.push_back(I32(datagram, at));
  return request;
}

// A group in whole numbers gives itself away: as such numbers most values read "leave alone", as singles
// none.
bool HoldsIntegers(ByteView eight) {
  int wholes = 0;
  for (std::size_t k = 0; k < kGroupValues; ++k) {
    if (F32(eight, 4 * k) == kLeaveAlone) return false;
    if (I32BigEndian(eight, 4 * k) == static_cast<std::int32_t>(kLeaveAlone)) ++wholes;
  }
  return wholes > 0;
}

Request ParseWriteGroups(ByteView datagram) {
  const std::size_t body = datagram.size() - kHeader;
  if (body == 0 || body % kGroupSize != 0) return UnknownRequest{};
  WriteGroupsRequest request;
  for (std::size_t at = kHeader; at < datagram.size(); at += kGroupSize) {
    const ByteView eight = datagram.subspan(at + 4, 4 * kGroupValues);
    WriteGroup group{I32(datagram, at), {}, HoldsIntegers(eight)};
    for (std::size_t k = 0; k < kGroupValues; ++k) {
      const double value =
          group.integers ? I32BigEndian(eight, 4 * k) : static_cast<double>(F32(eight, 4 * k));
      if (value != static_cast<double>(kLeaveAlone)) group.values[k] = value;
    }
    request.groups.push_back(group);
  }
  return request;
}

void PutHeader(std::vector<Byte>& out, std::string_view header) {
  out.assign(header.begin(), header.end());
}
void PutU32(std::vector<Byte>& out, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<Byte>(value >> (8 * i)));
}
void PutU16(std::vector<Byte>& out, std::uint16_t value) {
  out.push_back(static_cast<Byte>(value & 0xFF));
  out.push_back(static_cast<Byte>(value >> 8));
}
void PutF32(std::vector<Byte>& out, float value) {
  PutU32(out, std::bit_cast<std::uint32_t>(value));
}

}  // namespace

Request ParseRequest(ByteView datagram) {
  if (datagram.size() <= kHeader) return UnknownRequest{};
  const std::string_view tag(reinterpret_cast<const char*>(datagram.data()), 4);
  const ByteView body = datagram.subspan(kHeader);
  if (tag == "DSEL") return ParseSelect(datagram, true);
  if (tag == "USEL") return ParseSelect(datagram, false);
  if (tag == "DATA") return ParseWriteGroups(datagram);
  if (tag == "CHAR") return CharacterRequest{body[0]};
  if (tag == "CMND") {
    const std::string_view name = Text(body);
    if (name.empty()) return UnknownRequest{};
    return CommandRequest{name};
  }
  if (tag == "DREF" && datagram.size() == kWriteDatarefSize) {
    return WriteDatarefRequest{Text(body.subspan(4)), F32(datagram, kHeader)};
  }
  if (tag == "RREF" && datagram.size() == kSubscribeSize) {
    return SubscribeRequest{I32(datagram, 5), I32(datagram, 9), Text(datagram.subspan(13))};
  }
  if (tag == "ISE4" && datagram.size() == kOutputTargetSize && I32(datagram, kHeader) == kDataOutput) {
    return OutputTargetRequest{Text(datagram.subspan(9, 16)), Text(datagram.subspan(25, 8)),
                               I32(datagram, 33) != 0};
  }
  return UnknownRequest{};
}

std::vector<Byte> BuildBeacon(std::int32_t version, std::uint16_t port, std::string_view name) {
  constexpr Byte kMajor = 1, kMinor = 2;
  constexpr std::uint32_t kIsXPlane = 1, kMaster = 1;
  constexpr std::uint16_t kRakNetPort = 49010;
  std::vector<Byte> out;
  PutHeader(out, std::string_view("BECN\0", kHeader));
  out.push_back(kMajor);
  out.push_back(kMinor);
  PutU32(out, kIsXPlane);
  PutU32(out, static_cast<std::uint32_t>(version));
  PutU32(out, kMaster);
  PutU16(out, port);
  out.insert(out.end(), name.begin(), name.end());
  out.push_back(0);
  PutU16(out, kRakNetPort);
  return out;
}

std::vector<Byte> BuildData(std::span<const GroupValues> groups) {
  std::vector<Byte> out;
  out.reserve(kHeader + groups.size() * kGroupSize);
  PutHeader(out, "DATA*");
  for (const GroupValues& group : groups.first(std::min(groups.size(), kGroupsPerDatagram))) {
    PutU32(out, static_cast<std::uint32_t>(group.group));
    for (const float value : group.values) PutF32(out, value);
  }
  return out;
}

std::vector<Byte> BuildValues(std::span<const IndexedValue> values) {
  std::vector<Byte> out;
  out.reserve(kHeader + values.size() * 8);
  PutHeader(out, "RREF,");
  for (const IndexedValue& value : values.first(std::min(values.size(), kValuesPerDatagram))) {
    PutU32(out, static_cast<std::uint32_t>(value.index));
    PutF32(out, value.value);
  }
  return out;
}

}  // namespace tvx::vc
