#include "virtualcockpit/sim/Simulator.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tvx::vc {
namespace {

constexpr double kLongestStep = 0.5;  // s
constexpr double kSlowest = 0.1, kFastest = 50;
constexpr std::size_t kLongestText = 400;

constexpr std::string_view kBarometer = "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot";
constexpr std::string_view kCourse1 = "sim/cockpit/radios/nav1_obs_degm";
constexpr std::string_view kCourse2 = "sim/cockpit/radios/nav2_obs_degm";
constexpr std::string_view kPaused = "sim/time/paused";
constexpr std::string_view kDataRate = "sim/network/dataout/network_data_rate";
constexpr std::string_view kOutputBoxes = "sim/network/dataout/data_to_internet[";
constexpr double kSecondMs = 1000;
constexpr double kSlowestRate = 1, kFastestRate = 99;  // of the data groups, a second

// Whether it is the turn of something that comes every `periodMs`. The next turn is counted from this one,
// but what came too late is not made up for.
bool TakeTurn(double& dueMs, double periodMs, std::int64_t nowMs) {
  const auto now = static_cast<double>(nowMs);
  if (now < dueMs) return false;
  dueMs = dueMs == 0 || dueMs + periodMs < now ? now + periodMs : dueMs + periodMs;
  return true;
}

}  // namespace

Simulator::Simulator(Send send) : send_(std::move(send)) {
  Refresh();
  NameAircraft("C172", "Aircraft/Trainers/trainer.acf");
}

void Simulator::OnDatagram(ByteView datagram, const Peer& from) {
  ++counters_.received;
  const Request request = ParseRequest(datagram);
  std::visit([this, &from](const auto& r) { On(r, from); }, request);
}

void Simulator::On(const UnknownRequest&, const Peer&) {
  ++counters_.unknown;
}

void Simulator::Select(std::int32_t group, bool select) {
  if (group < 0 || group >= kDataGroups) {
    ++counters_.refused;
    return;
  }
  ++counters_.selections;
  if (select) {
    selected_.insert(group);
  } else {
    selected_.erase(group);
  }
}

void Simulator::On(const SelectRequest& request, const Peer& from) {
  if (request.select) client_ = from;
  for (const std::int32_t group : request.groups) Select(group, request.select);
}

void Simulator::On(const OutputTargetRequest& request, const Peer&) {
  const auto target = PeerOf(request.address, request.port);
  if (!target) {
    ++counters_.refused;
    return;
  }
  output_.target = target;
  output_.enabled = request.enable;
}

// The screen's boxes can be ticked by name: "...data_to_internet[17]".
bool Simulator::WriteOutputSelection(std::string_view name, float value) {
  if (!name.starts_with(kOutputBoxes) || !name.ends_with(']')) return false;
  name.remove_prefix(kOutputBoxes.size());
  name.remove_suffix(1);
  int group = -1;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), group);
  if (error != std::errc() || end != name.data() + name.size()) return false;
  Select(group, value != 0);
  return true;
}

void Simulator::On(const WriteGroupsRequest& request, const Peer&) {
  for (const WriteGroup& group : request.groups) {
    for (int slot = 0; slot < kGroupValues; ++slot) {
      const auto& value = group.values[static_cast<std::size_t>(slot)];
      if (!value) continue;
      ++counters_.groupWrites;
      lastGroupWrite_ = {group.group, slot, *value, group.integers};
      if (!groups_.Write(group.group, slot, *value)) ++counters_.refused;
    }
  }
}

void Simulator::On(const CharacterRequest& request, const Peer&) {
  ++counters_.characters;
  lastCharacter_ = request.character;
}

void Simulator::On(const CommandRequest& request, const Peer&) {
  ++counters_.commands;
  lastCommand_.assign(request.name.substr(0, kLongestText));
  RunSimCommand(request.name, *this);
}

void Simulator::On(const WriteDatarefRequest& request, const Peer&) {
  ++counters_.datarefWrites;
  lastDatarefWrite_ = {std::string(request.name.substr(0, kLongestText)), request.value};
  if (WriteOutputSelection(request.name, request.value)) return;
  const int place = store_.Find(request.name);
  if (place == DatarefStore::kNone || !store_.Write(place, static_cast<double>(request.value))) {
    ++counters_.refused;
    return;
  }
  if (request.name == kPaused) SetPaused(request.value != 0);
}

void Simulator::On(const SubscribeRequest& request, const Peer& from) {
  if (request.frequency == 0) {
    ++counters_.cancellations;
    Cancel(from, request.index);
    return;
  }
  const int place = store_.Find(request.name);
  if (request.frequency < 0 || place == DatarefStore::kNone || subscriptions_.size() >= kMostSubscriptions) {
    ++counters_.refused;
    return;
  }
  ++counters_.subscriptions;
  Cancel(from, request.index);
  const Subscription subscription{
      from, request.index, place, std::string(request.name), kSecondMs / request.frequency, 0};
  const auto after = std::upper_bound(subscriptions_.begin(), subscriptions_.end(), from,
                                      [](const Peer& p, const Subscription& s) { return p < s.peer; });
  subscriptions_.insert(after, subscription);
}

void Simulator::Cancel(const Peer& from, std::int32_t index) {
  std::erase_if(subscriptions_, [&](const Subscription& s) { return s.peer == from && s.index == index; });
}

void Simulator::Tick(std::int64_t nowMs) {
  const double passed = lastTick_ ? static_cast<double>(nowMs - *lastTick_) / 1000 : 0;
  lastTick_ = nowMs;
  const double step = paused_ ? 0 : std::clamp(passed, 0.0, kLongestStep) * speed_;
  seconds_ += step;
  Refresh(step);
  SendGroups(nowMs);
  SendValues(nowMs);
}

void Simulator::Refresh(double seconds) {
  const auto set = [this](std::string_view name) { return store_.Value(store_.PlaceOf(name)); };
  state_ = flight_.StateAt(seconds_, {set(kBarometer), set(kCourse1), set(kCourse2)});
  hand_.Apply(state_,
              {set("sim/operation/override/override_joystick_roll") > 0,
               set("sim/operation/override/override_joystick_pitch") > 0, set("sim/joystick/yoke_roll_ratio"),
               set("sim/joystick/yoke_pitch_ratio")},
              seconds);
  store_.Refresh(state_);
}

void Simulator::SendGroups(std::int64_t nowMs) {
  const std::optional<Peer> to = output_.toWhoeverSelects ? client_
                                 : output_.enabled        ? output_.target
                                                          : std::nullopt;
  const double rate = std::clamp(store_.Value(store_.PlaceOf(kDataRate)), kSlowestRate, kFastestRate);
  if (!TakeTurn(groupsDueMs_, kSecondMs / rate, nowMs) || !to || selected_.empty()) return;
  std::vector<GroupValues> groups;
  groups.reserve(kGroupsPerDatagram);
  for (const int group : selected_) {
    groups.push_back({group, groups_.Values(group)});
    if (groups.size() < kGroupsPerDatagram) continue;
    Transmit(BuildData(groups), *to);
    groups.clear();
  }
  if (!groups.empty()) Transmit(BuildData(groups), *to);
}

void Simulator::SendValues(std::int64_t nowMs) {
  std::vector<IndexedValue> values;
  Peer to;
  for (Subscription& subscription : subscriptions_) {
    if (!TakeTurn(subscription.dueMs, subscription.periodMs, nowMs)) continue;
    if (subscription.peer != to) Flush(values, to);
    to = subscription.peer;
    values.push_back({subscription.index, static_cast<float>(store_.Value(subscription.place))});
    if (values.size() == kValuesPerDatagram) Flush(values, to);
  }
  Flush(values, to);
}

void Simulator::Flush(std::vector<IndexedValue>& values, const Peer& to) {
  if (!values.empty()) Transmit(BuildValues(values), to);
  values.clear();
}

void Simulator::Transmit(ByteView datagram, const Peer& to) {
  ++counters_.sent;
  send_(datagram, to);
}

void Simulator::Restart(bool groups, bool values) {
  client_.reset();
  subscriptions_.clear();
  if (groups) selected_.clear();
  if (!values) return;
  store_.Reset();
  groups_.Reset();
  WriteAircraft();
  SetSpeed(speed_);
  SetPaused(paused_);
}

void Simulator::NameAircraft(std::string_view icao, std::string_view path) {
  aircraftIcao_ = icao;
  aircraftPath_ = path;
  WriteAircraft();
}

void Simulator::WriteAircraft() {
  const auto write = [this](std::string_view array, std::string_view text, int letters) {
    for (int i = 0; i < letters; ++i) {
      const auto at = static_cast<std::size_t>(i);
      const int place = store_.PlaceOf(std::string(array) + "[" + std::to_string(i) + "]");
      store_.Write(place, at < text.size() ? static_cast<Byte>(text[at]) : 0);
    }
  };
  write("sim/aircraft/view/acf_ICAO", aircraftIcao_, 40);
  write("sim/aircraft/view/acf_relative_path", aircraftPath_, 256);
}

void Simulator::ChangeAircraft(std::span<const std::string> missing) {
  store_.MakeAllPresent();
  for (const std::string& name : missing) store_.SetPresent(name, false);
  std::erase_if(subscriptions_, [this](const Subscription& s) { return !store_.Present(s.place); });
}

std::vector<std::string> Simulator::ChangeAircraft(double percentMissing, Chance& chance) {
  std::vector<std::string> missing;
  for (const Subscription& subscription : subscriptions_) {
    if (subscription.name.starts_with("sim/aircraft/view/")) continue;  // every aircraft has a name
    if (chance.Hits(percentMissing)) missing.push_back(subscription.name);
  }
  ChangeAircraft(missing);
  return missing;
}

void Simulator::SetPaused(bool paused) {
  paused_ = paused;
  store_.Write(store_.Find(kPaused), paused ? 1 : 0);
}

void Simulator::SetSpeed(double factor) {
  speed_ = std::isfinite(factor) ? std::clamp(factor, kSlowest, kFastest) : 1;
  store_.Write(store_.Find("sim/time/sim_speed"), speed_);
}

void Simulator::RestartFlight(double atSeconds) {
  seconds_ = std::isfinite(atSeconds) && atSeconds > 0 ? atSeconds : 0;
  store_.ReleaseScripted();
  hand_ = {};
  Refresh();
}

}  // namespace tvx::vc
