#include "simlink/beacon/Beacon.h"

#include <algorithm>

namespace tvx {
namespace {

// Where its fields begin.
constexpr std::size_t kMajor = 5, kMinor = 6, kHost = 7, kVersion = 11, kRole = 15, kPort = 19, kName = 21;
constexpr Byte kLayout = 1;
constexpr Byte kMinorWithRakNet = 2;
constexpr std::uint32_t kXplane = 1;  // as host; 2 is Plane Maker
constexpr std::size_t kLongestName = 64;
constexpr std::int32_t kXplane12 = 120000;

// `bytes` holds `size` of them from `at` on; the lowest comes first.
std::uint32_t Number(ByteView bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = size; i > 0; --i) value = (value << 8) | bytes[at + i - 1];
  return value;
}

bool MayStand(Byte c) {
  return c >= ' ' && c != 0x7F && c != '"' && c != ';';
}

std::string PlainName(ByteView bytes) {
  std::string name;
  for (const Byte c : bytes) {
    if (MayStand(c)) name += static_cast<char>(c);
  }
  if (name.size() <= kLongestName) return name;
  // Not within a letter of several bytes.
  std::size_t end = kLongestName;
  while (end > 0 && (static_cast<Byte>(name[end]) & 0xC0) == 0x80) --end;
  return name.substr(0, end);
}

std::string TwoDigits(std::int32_t number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

std::optional<Beacon> ReadBeacon(ByteView datagram) {
  constexpr std::string_view kLabel = "BECN";
  if (datagram.size() < kName || !std::equal(kLabel.begin(), kLabel.end(), datagram.begin()))
    return std::nullopt;
  if (datagram[kMajor] != kLayout || Number(datagram, kHost, 4) != kXplane) return std::nullopt;
  Beacon beacon;
  beacon.version = static_cast<std::int32_t>(Number(datagram, kVersion, 4));
  beacon.role = Number(datagram, kRole, 4);
  beacon.port = static_cast<std::uint16_t>(Number(datagram, kPort, 2));
  if (beacon.port == 0) return std::nullopt;
  ByteView rest = datagram.subspan(kName);
  if (const auto nul = std::find(rest.begin(), rest.end(), Byte{0}); nul != rest.end()) {
    const auto length = static_cast<std::size_t>(nul - rest.begin());
    beacon.name = PlainName(rest.first(length));
    rest = rest.subspan(length + 1);
  } else if (rest.size() > 2) {
    rest = {};  // a name that was cut
  }
  if (datagram[kMinor] >= kMinorWithRakNet && rest.size() >= 2) {
    beacon.rakNetPort = static_cast<std::uint16_t>(Number(rest, 0, 2));
  }
  return beacon;
}

std::string XplaneVersionWords(std::int32_t version) {
  if (version < 10000 || version > 999999) return "of unknown version";
  const std::int32_t major = version / 10000, minor = version / 100 % 100;
  if (version < kXplane12) return std::to_string(major) + "." + TwoDigits(minor);
  const std::string words = std::to_string(major) + "." + std::to_string(minor / 10);
  return minor % 10 == 0 ? words : words + "." + std::to_string(minor % 10);
}

}  // namespace tvx
