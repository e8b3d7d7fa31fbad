// A multicast group without a network.
#pragma once

#include <string>
#include <string_view>

#include "platform/MulticastListener.h"

namespace tvx {

class FakeMulticastListener final : public MulticastListener {
 public:
  bool open = false;
  std::string openError;  // not empty: Open fails, and this is why

  // Reaches the program only while it listens, as on a network.
  void Deliver(std::string_view bytes, const std::string& from, bool thisComputer = false) {
    if (open) RaiseArrival({reinterpret_cast<const Byte*>(bytes.data()), bytes.size()}, {from, thisComputer});
  }

  bool Open() override {
    open = openError.empty();
    return open;
  }
  void Close() override { open = false; }
  std::string LastError() const override { return openError; }
};

// The beacon of X-Plane 12.1.1 by hand: label, layout 1.2, host 1, version, role, port, name, RakNet port.
inline std::string BeaconBytes(std::string_view name, Byte role = 1, std::uint16_t port = 49000) {
  std::string bytes("BECN\0\1\2\1\0\0\0\x0C\xD9\1\0", 15);
  bytes += static_cast<char>(role);
  bytes += std::string(3, '\0');
  bytes += static_cast<char>(port & 0xFF);
  bytes += static_cast<char>(port >> 8);
  bytes += name;
  return bytes + std::string("\0\x72\xBF", 3);
}

}  // namespace tvx
