#include "ffb/TakenControls.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <utility>

#include "platform/HostName.h"
#include "simlink/datagrams/Packets.h"

namespace tvx {
namespace {

constexpr std::string_view kWords =
    "The yokes of the program in this folder have taken these controls of the simulator.\n"
    "Start it here again, and it gives them back.\n";

std::string TextOf(const UdpTarget& target) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    text += std::to_string(target.address >> shift & 255u);
    text += shift > 0 ? '.' : ' ';
  }
  return text + std::to_string(target.port);
}

std::optional<UdpTarget> ReadTarget(std::string_view line) {
  const std::size_t blank = line.find(' ');
  if (blank == std::string_view::npos) return std::nullopt;
  const auto address = ParseIPv4(line.substr(0, blank));
  UdpTarget target;
  const std::string_view port = line.substr(blank + 1);
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), target.port);
  const bool whole = error == std::errc() && end == port.data() + port.size();
  if (!address || !whole || target.port < 1 || target.port > 65535) return std::nullopt;
  target.address = *address;
  return target;
}

std::vector<std::string_view> OverridesOf(TakenGroups groups) {
  std::vector<std::string_view> overrides;
  if (groups.yoke) overrides.insert(overrides.end(), kYokeOverrides.begin(), kYokeOverrides.end());
  if (groups.pedals) overrides.insert(overrides.end(), kPedalOverrides.begin(), kPedalOverrides.end());
  return overrides;
}

}  // namespace

TakenControls::TakenControls(LastWords& words, std::string note) : words_(words), note_(std::move(note)) {
  ReadNote();
}

// Of what stands there only the program's own overrides count.
void TakenControls::ReadNote() {
  std::ifstream in(note_);
  std::optional<UdpTarget> target;
  std::string line;
  while (std::getline(in, line)) {
    if (!target) target = ReadTarget(line);
    for (const std::string_view known : OverridesOf({true, true})) {
      if (line == known) noted_.overrides.push_back(known);
    }
  }
  if (!target) noted_.overrides.clear();
  if (noted_.overrides.empty()) return;
  noted_.target = *target;
  left_ = noted_;
}

// Not brought to the disk, which may take long: it is there for whoever is killed, not for a power cut, and
// forces must not wait for it.
void TakenControls::WriteNote() {
  std::ofstream out(note_, std::ios::trunc);
  out << kWords << TextOf(noted_.target) << '\n';
  for (const std::string_view override : noted_.overrides) out << override << '\n';
}

void TakenControls::SendBack(const Held& held) {
  for (const std::string_view override : held.overrides) {
    Datagram datagram;
    if (BuildDREF(override, 0, datagram)) words_.Send(held.target, datagram.View());
  }
}

void TakenControls::Hold(TakenGroups groups) {
  const auto target = words_.Target();
  if (groups == now_ && target.value_or(UdpTarget{}) == nowAt_) return;
  now_ = groups;
  nowAt_ = target.value_or(UdpTarget{});
  const auto overrides = OverridesOf(groups);
  if (overrides.empty() || !target) {
    words_.Prepare({}, {});
    return;
  }
  // What was left, and is not taken again now, still goes back.
  if (left_) SendBack(*std::exchange(left_, std::nullopt));
  std::array<Datagram, LastWords::kMost> datagrams;
  std::vector<ByteView> views;
  for (const std::string_view override : overrides) {
    Datagram& datagram = datagrams[views.size()];
    if (BuildDREF(override, 0, datagram)) views.push_back(datagram.View());
  }
  words_.Prepare(*target, views);
  const std::size_t before = noted_.overrides.size();
  for (const std::string_view override : overrides) {
    const auto& known = noted_.overrides;
    if (std::find(known.begin(), known.end(), override) == known.end()) noted_.overrides.push_back(override);
  }
  if (noted_.overrides.size() == before && noted_.target == *target) return;
  noted_.target = *target;
  WriteNote();
}

void TakenControls::LetGo() {
  now_ = {};
  nowAt_ = {};
  words_.Prepare({}, {});
  if (left_ || noted_.overrides.empty()) return;
  noted_ = {};
  std::remove(note_.c_str());
}

void TakenControls::Tick(bool simulatorHeard) {
  if (!left_) return;
  if (simulatorHeard || attempts_++ < kAttempts) SendBack(*left_);
  if (!simulatorHeard) return;
  left_.reset();
  LetGo();
}

}  // namespace tvx
