#include "virtualcockpit/sim/Peer.h"

#include <charconv>

namespace tvx::vc {
namespace {

// A whole number and nothing else, 0..`most`.
std::optional<std::uint32_t> NumberOf(std::string_view text, std::uint32_t most) {
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || number > most)
    return std::nullopt;
  return number;
}

}  // namespace

std::string PeerText(const Peer& peer) {
  const auto part = [&peer](int shift) { return std::to_string((peer.address >> shift) & 0xFF); };
  return part(24) + "." + part(16) + "." + part(8) + "." + part(0) + ":" + std::to_string(peer.port);
}

std::optional<Peer> PeerOf(std::string_view address, std::string_view port) {
  Peer peer;
  for (int i = 0; i < 4; ++i) {
    const std::size_t end = i < 3 ? address.find('.') : address.size();
    if (end == std::string_view::npos) return std::nullopt;
    const auto part = NumberOf(address.substr(0, end), 255);
    if (!part) return std::nullopt;
    peer.address = peer.address << 8 | *part;
    address.remove_prefix(i < 3 ? end + 1 : end);
  }
  const auto number = NumberOf(port, 65535);
  if (!number || *number == 0) return std::nullopt;
  peer.port = static_cast<std::uint16_t>(*number);
  return peer;
}

}  // namespace tvx::vc
