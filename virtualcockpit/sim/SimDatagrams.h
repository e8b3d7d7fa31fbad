// The datagrams of the simulator's side: what a client asks, and what the simulator sends.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Bytes.h"
#include "virtualcockpit/sim/DataGroups.h"

namespace tvx::vc {

inline constexpr std::size_t kLargestDatagram = 1472;  // bytes that pass an ordinary network in one piece
inline constexpr std::size_t kGroupsPerDatagram = 40;
inline constexpr std::size_t kValuesPerDatagram = 183;
inline constexpr std::size_t kSubscribeSize = 413;
inline constexpr std::size_t kWriteDatarefSize = 509;

// DSEL, USEL. The indices are as they came, any number.
struct SelectRequest {
  bool select;
  std::vector<std::int32_t> groups;
};
// DATA: one group of eight values; a value that is to be left alone is std::nullopt.
struct WriteGroup {
  std::int32_t group;
  std::array<std::optional<double>, kGroupValues> values;
  bool integers;  // the values came as whole numbers, most significant byte first
};
struct WriteGroupsRequest {
  std::vector<WriteGroup> groups;
};
struct CharacterRequest {
  Byte character;
};
struct CommandRequest {
  std::string_view name;  // points into the datagram
};
struct WriteDatarefRequest {
  std::string_view name;  // points into the datagram
  float value;
};
struct SubscribeRequest {
  std::int32_t frequency;  // 0 cancels
  std::int32_t index;
  std::string_view name;  // points into the datagram
};
// ISE4: where the data groups go.
struct OutputTargetRequest {
  std::string_view address, port;  // texts; they point into the datagram
  bool enable;
};
struct UnknownRequest {};

using Request = std::variant<UnknownRequest, SelectRequest, WriteGroupsRequest, CharacterRequest,
                             CommandRequest, WriteDatarefRequest, SubscribeRequest, OutputTargetRequest>;

// What a client's datagram asks for. Anything that is not exactly a known request is UnknownRequest.
Request ParseRequest(ByteView datagram);

struct GroupValues {
  int group;
  std::array<float, kGroupValues> values;
};
// "DATA*" with the groups, at most kGroupsPerDatagram of them.
std::vector<Byte> BuildData(std::span<const GroupValues> groups);

// "BECN": a simulator of that version, the only one there, takes requests on `port` of the computer `name`.
std::vector<Byte> BuildBeacon(std::int32_t version, std::uint16_t port, std::string_view name);

struct IndexedValue {
  std::int32_t index;
  float value;
};
// "RREF," with the values, at most kValuesPerDatagram of them.
std::vector<Byte> BuildValues(std::span<const IndexedValue> values);

}  // namespace tvx::vc
