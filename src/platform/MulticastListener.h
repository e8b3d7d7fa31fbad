// Hears what computers of the network tell a group.
#pragma once

#include <functional>
#include <string>

#include "base/Bytes.h"
#include "base/Registration.h"

namespace tvx {

// A socket that shares its port with other programs, for listening only. No operation waits.
class MulticastListener {
 public:
  struct Sender {
    std::string address;        // dotted IPv4
    bool thisComputer = false;  // the address is one of this computer's own
  };
  // Called from the event loop for each datagram.
  using Handler = std::function<void(ByteView datagram, const Sender& sender)>;

  virtual ~MulticastListener() = default;

  // In force until its Registration ends, or another handler is set.
  Registration SetHandler(Handler handler) { return arrival_.Give(std::move(handler)); }
  // Joins the group on every network card that is up. May be called again at any time, and then joins on
  // those that have come up since. False where nothing can be heard; LastError() says why.
  virtual bool Open() = 0;
  virtual void Close() = 0;
  // In words; empty after an Open that succeeded.
  virtual std::string LastError() const = 0;

 protected:
  void RaiseArrival(ByteView datagram, const Sender& sender) const { arrival_(datagram, sender); }

 private:
  Callback<ByteView, const Sender&> arrival_;
};

}  // namespace tvx
