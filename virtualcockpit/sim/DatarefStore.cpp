#include "virtualcockpit/sim/DatarefStore.h"

#include <charconv>
#include <cmath>

#include "virtualcockpit/sim/DatarefTable.h"

namespace tvx::vc {
namespace {

constexpr std::size_t kLongestName = 400;
constexpr int kArrayLimit = 256;

struct Element {
  std::string_view array;
  int number;
};
// "name[7]" in its two parts; std::nullopt for any other text.
std::optional<Element> SplitElement(std::string_view name) {
  const std::size_t open = name.rfind('[');
  if (open == std::string_view::npos || open == 0 || name.back() != ']') return std::nullopt;
  const std::string_view digits = name.substr(open + 1, name.size() - open - 2);
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  if (number < 0 || number >= kArrayLimit) return std::nullopt;
  return Element{name.substr(0, open), number};
}

bool Usable(std::string_view name) {
  return !name.empty() && name.size() <= kLongestName;
}

}  // namespace

DatarefStore::DatarefStore() {
  for (const DatarefRow& row : BuiltInDatarefs()) {
    Entry entry;
    entry.member = row.member;
    entry.scale = row.scale;
    entry.source = row.source;
    entry.value = entry.first = row.member ? 0 : row.scale;
    Add(std::string(row.name), entry);
  }
  for (const TwinRow& row : BuiltInTwins()) {
    const int one = Find(row.one);
    const int other = Find(row.other);
    if (one == kNone || other == kNone) continue;
    entries_[static_cast<std::size_t>(one)].twin = other;
    entries_[static_cast<std::size_t>(one)].twinScale = row.scale;
    entries_[static_cast<std::size_t>(other)].twin = one;
    entries_[static_cast<std::size_t>(other)].twinScale = 1 / row.scale;
  }
}

int DatarefStore::Add(std::string name, const Entry& entry) {
  if (entries_.size() >= kLimit) return kNone;
  const int place = static_cast<int>(entries_.size());
  if (!places_.emplace(std::move(name), place).second) return kNone;
  entries_.push_back(entry);
  return place;
}

int DatarefStore::Find(std::string_view name) {
  const int place = PlaceOf(name);
  return place == kNone || !Present(place) ? kNone : place;
}

void DatarefStore::SetPresent(std::string_view name, bool present) {
  const int place = PlaceOf(name);
  if (place != kNone) entries_[static_cast<std::size_t>(place)].present = present;
}

void DatarefStore::MakeAllPresent() {
  for (Entry& entry : entries_) entry.present = true;
}

void DatarefStore::Reset() {
  for (Entry& entry : entries_) {
    entry.written = false;
    if (!entry.member) entry.value = entry.first;
  }
}

int DatarefStore::PlaceOf(std::string_view name) {
  if (!Usable(name)) return kNone;
  if (const auto found = places_.find(std::string(name)); found != places_.end()) return found->second;
  const auto element = SplitElement(name);
  if (!element) {
    const auto first = places_.find(std::string(name) + "[0]");
    return first == places_.end() ? kNone : first->second;
  }
  const auto first = places_.find(std::string(element->array) + "[0]");
  if (first == places_.end()) return kNone;
  Entry entry;
  entry.defined = entries_[static_cast<std::size_t>(first->second)].defined;
  return Add(std::string(name), entry);
}

void DatarefStore::Define(std::string_view name) {
  if (!Usable(name) || PlaceOf(name) != kNone) return;
  Entry entry;
  entry.defined = true;
  Add(std::string(name), entry);
}

double DatarefStore::TwinValue(const Entry& entry) {
  const double value = entry.value * entry.twinScale;
  return entry.twinScale < 1 ? std::floor(value) : value;  // the coarser name has no room for the rest
}

bool DatarefStore::Write(int place, double value) {
  if (place < 0 || place >= static_cast<int>(entries_.size()) || !std::isfinite(value)) return false;
  Entry& entry = entries_[static_cast<std::size_t>(place)];
  if (entry.source == Source::Flown) return false;
  entry.value = value;
  entry.written = true;
  if (entry.twin != kNone) entries_[static_cast<std::size_t>(entry.twin)].value = TwinValue(entry);
  if (entry.source != Source::Scripted) return true;
  // The older and the newer name of one switch go together.
  for (Entry& twin : entries_) {
    if (twin.source != Source::Scripted || twin.member != entry.member) continue;
    twin.value = value / entry.scale * twin.scale;
    twin.written = true;
  }
  return true;
}

std::optional<double> DatarefStore::ValueOf(std::string_view name) {
  const int place = Find(name);
  if (place == kNone) return std::nullopt;
  return Value(place);
}

void DatarefStore::Refresh(const FlightState& state) {
  for (Entry& entry : entries_) {
    if (!entry.member || entry.written) continue;
    entry.value = state.*entry.member * entry.scale;
  }
}

void DatarefStore::ReleaseScripted() {
  for (Entry& entry : entries_) {
    if (entry.source == Source::Scripted) entry.written = false;
  }
}

}  // namespace tvx::vc
