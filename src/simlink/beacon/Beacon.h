// The beacon by which X-Plane tells the network that it is there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Bytes.h"

namespace tvx {

// Where it is sent to, about once a second.
inline constexpr std::string_view kBeaconGroup = "239.255.1.1";
inline constexpr std::uint16_t kBeaconPort = 49707;

enum class BeaconRole : std::uint32_t { Master = 1, ExternalVisual = 2, InstructorStation = 3 };

struct Beacon {
  std::int32_t version = 0;  // 121100 for 12.1.1, 115501 for 11.55
  std::uint32_t role = 0;    // a BeaconRole
  std::uint16_t port = 0;    // where that X-Plane listens, 1..65535
  std::string name;          // of its computer, at most 64 bytes; may be empty
  std::optional<std::uint16_t> rakNetPort;

  bool operator==(const Beacon&) const = default;
};

// The beacon in a datagram. std::nullopt for anything else: another label, fewer than 21 bytes, another
// layout (a major version other than 1), another program than X-Plane, a port of 0. A name without its NUL
// counts as empty. What could not stand in a line of text or in the configuration file is left out of the
// name.
std::optional<Beacon> ReadBeacon(ByteView datagram);

// The version as X-Plane writes it: "12.1.1", "12.1", "11.55", "10.41".
std::string XplaneVersionWords(std::int32_t version);

}  // namespace tvx
