// Where a datagram comes from or goes to.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tvx::vc {

// IPv4 address and port, in the computer's own byte order.
struct Peer {
  std::uint32_t address = 0;
  std::uint16_t port = 0;
  auto operator<=>(const Peer&) const = default;
};

inline constexpr std::uint32_t kThisComputer = 0x7F000001;  // 127.0.0.1
std::string PeerText(const Peer& peer);                     // "127.0.0.1:49003"
// Of four numbers 0..255 with points, and a port 1..65535; std::nullopt for anything else.
std::optional<Peer> PeerOf(std::string_view address, std::string_view port);

}  // namespace tvx::vc
