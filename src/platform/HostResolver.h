// Looks up the address of a computer that is known by its name.
#pragma once

#include <functional>
#include <string>

#include "base/Registration.h"

namespace tvx {

struct HostLookup {
  std::string address;  // dotted IPv4; empty: none was found
  std::string error;    // then the reason in words
};

class HostResolver {
 public:
  using Done = std::function<void(const HostLookup&)>;

  virtual ~HostResolver() = default;
  // Begins to look, and returns: no operation waits. `done` is called once, mostly from the event loop later,
  // unless its Registration has ended by then. A lookup may take many seconds.
  virtual Registration Lookup(const std::string& name, Done done) = 0;
};

}  // namespace tvx
