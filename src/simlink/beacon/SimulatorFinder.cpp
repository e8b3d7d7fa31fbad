#include "simlink/beacon/SimulatorFinder.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace tvx {
namespace {

constexpr std::uint16_t kUsualPort = 49000;

auto Order(const FoundSimulator& simulator) {
  return std::tuple(!simulator.IsMaster(), simulator.beacon.name, simulator.address, simulator.beacon.port);
}

}  // namespace

std::string FoundSimulator::Words() const {
  std::string words = "X-Plane " + XplaneVersionWords(beacon.version);
  if (!beacon.name.empty()) words += " on host " + beacon.name;
  words += " at " + address;
  if (beacon.port != kUsualPort) words += " port " + std::to_string(beacon.port);
  if (beacon.role == static_cast<std::uint32_t>(BeaconRole::ExternalVisual)) words += " (external visual)";
  if (beacon.role == static_cast<std::uint32_t>(BeaconRole::InstructorStation))
    words += " (instructor station)";
  return words;
}

SimulatorFinder::SimulatorFinder(MulticastListener& listener, const Clock& clock)
    : listener_(listener), clock_(clock), home_(std::make_shared<Home>(Home{this})) {
  arrivals_ = listener_.SetHandler(
      [this](ByteView datagram, const MulticastListener::Sender& sender) { OnDatagram(datagram, sender); });
}

SimulatorFinder::~SimulatorFinder() {
  home_->finder = nullptr;
}

Registration SimulatorFinder::Listen(std::function<void()> changed) {
  const bool first = !Listening();
  // The last owner of the callback is its Registration: where that ends, the finder is told.
  std::shared_ptr<const Listener> owned(new Listener(std::move(changed)),
                                        [home = home_](const Listener* listener) {
                                          delete listener;
                                          if (home->finder != nullptr) home->finder->Left();
                                        });
  listeners_.push_back(owned);
  if (first) Open();
  return Registration(std::move(owned));
}

bool SimulatorFinder::Listening() const {
  return std::any_of(listeners_.begin(), listeners_.end(),
                     [](const auto& listener) { return !listener.expired(); });
}

void SimulatorFinder::Left() {
  std::erase_if(listeners_, [](const auto& listener) { return listener.expired(); });
  if (!listeners_.empty()) return;
  listener_.Close();
  found_.clear();
  trouble_.clear();
}

// Again at each tick: a network card may have come up.
void SimulatorFinder::Open() {
  trouble_ = listener_.Open() ? std::string() : listener_.LastError();
}

void SimulatorFinder::Tick() {
  if (!Listening()) return;
  const std::string before = trouble_;
  Open();
  const std::int64_t now = clock_.MonotonicMs();
  const auto gone = std::erase_if(found_, [now](const FoundSimulator& simulator) {
    return now - simulator.heardMs >= kForgottenAfterMs;
  });
  if (gone > 0 || trouble_ != before) Changed();
}

void SimulatorFinder::OnDatagram(ByteView datagram, const MulticastListener::Sender& sender) {
  if (!Listening()) return;
  auto beacon = ReadBeacon(datagram);
  if (!beacon) return;
  const std::int64_t now = clock_.MonotonicMs();
  // Its own loopback leads to this computer also when it has no network any more.
  Add({sender.thisComputer ? "127.0.0.1" : sender.address, std::move(*beacon), now, now});
}

void SimulatorFinder::Add(FoundSimulator heard) {
  const auto known = std::find_if(found_.begin(), found_.end(), [&](const FoundSimulator& simulator) {
    return simulator.address == heard.address && simulator.beacon.port == heard.beacon.port;
  });
  if (known == found_.end()) {
    if (found_.size() >= kMost) return;
    found_.push_back(std::move(heard));
  } else {
    known->heardMs = heard.heardMs;
    if (known->beacon == heard.beacon) return;
    if (known->beacon.name != heard.beacon.name) known->sinceMs = heard.heardMs;
    known->beacon = std::move(heard.beacon);
  }
  std::sort(found_.begin(), found_.end(),
            [](const FoundSimulator& a, const FoundSimulator& b) { return Order(a) < Order(b); });
  Changed();
}

// A callback may end its own Registration or another's, or begin to listen.
void SimulatorFinder::Changed() {
  const auto listeners = listeners_;
  for (const auto& each : listeners) {
    const auto listener = each.lock();
    if (listener && *listener) (*listener)();
  }
}

}  // namespace tvx
