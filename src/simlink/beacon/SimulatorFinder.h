// Which X-Planes are on the network, by their beacons.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Host.h"
#include "platform/MulticastListener.h"
#include "simlink/beacon/Beacon.h"

namespace tvx {

struct FoundSimulator {
  std::string address;  // dotted IPv4; 127.0.0.1 where it runs on this computer
  Beacon beacon;
  std::int64_t sinceMs = 0;  // when it was heard first, and
  std::int64_t heardMs = 0;  // when last, by the clock

  bool IsMaster() const { return beacon.role == static_cast<std::uint32_t>(BeaconRole::Master); }
  // Whether the configuration's texts lead to it.
  bool IsAt(std::string_view remoteIP, std::string_view remotePort) const {
    return address == remoteIP && std::to_string(beacon.port) == remotePort;
  }
  // "X-Plane 12.1 on host NAME at ADDRESS", with its port where that is unusual, and what it is where it
  // shows another one's flight only.
  std::string Words() const;
};

// Listens while somebody wants to know, and else not at all.
class SimulatorFinder {
 public:
  static constexpr std::int64_t kForgottenAfterMs = 5000;  // of silence
  static constexpr std::size_t kMost = 32;                 // those that are heard beyond are not listed

  SimulatorFinder(MulticastListener& listener, const Clock& clock);
  ~SimulatorFinder();
  SimulatorFinder(const SimulatorFinder&) = delete;
  SimulatorFinder& operator=(const SimulatorFinder&) = delete;

  // Listens for as long as the Registration lives, and calls `changed` after every change of Found() or
  // Trouble().
  Registration Listen(std::function<void()> changed = {});
  bool Listening() const;
  // In the order of their names, those that fly before those that only show.
  const std::vector<FoundSimulator>& Found() const { return found_; }
  // Why nothing can be heard, in one line; empty where all is well, or nobody listens.
  const std::string& Trouble() const { return trouble_; }
  // About once a second.
  void Tick();

 private:
  using Listener = std::function<void()>;
  // What a Registration knows of its finder, which it may outlive.
  struct Home {
    SimulatorFinder* finder;
  };

  void OnDatagram(ByteView datagram, const MulticastListener::Sender& sender);
  void Add(FoundSimulator heard);
  void Open();
  void Left();  // a Registration has ended
  void Changed();

  MulticastListener& listener_;
  const Clock& clock_;
  std::shared_ptr<Home> home_;
  std::vector<std::weak_ptr<const Listener>> listeners_;
  Registration arrivals_;
  std::vector<FoundSimulator> found_;
  std::string trouble_;
};

}  // namespace tvx
