#include "hwbus/gaugebus/GaugeOutbox.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "hwbus/LineBacklog.h"

namespace tvx {
namespace {

constexpr int kCommands = 16;
constexpr std::int32_t kLargestMagnitude = 65535;
// How old a value may be that an answer still speaks of: the line, the instrument and the adapter take their
// time.
constexpr std::int64_t kAnswerMs = 300;
// A value that was never told counts as such a change.
constexpr std::int32_t kUnknownChange = 1000;

// The classes of urgency, above each other.
constexpr std::uint64_t kClass = std::uint64_t{1} << 60;
constexpr std::uint64_t kDueClass = 1 * kClass;  // has waited for a round of all
constexpr std::uint64_t kLightingClass = 2 * kClass;
constexpr std::uint64_t kOverdueClass = 3 * kClass;  // has waited far longer, behind lighting that changes
constexpr double kDueRounds = 0.6;
constexpr std::int64_t kOverdueRounds = 2;

}  // namespace

GaugeOutbox::GaugeOutbox() {
  slots_.reserve(kSlots);
  waiting_.reserve(kSlots);
  ranked_.reserve(kSlots);
  slotOf_.fill(kNoSlot);
}

GaugeOutbox::Slot* GaugeOutbox::Find(int gaugeID, int command) {
  const std::uint16_t slot = slotOf_[KeyOf(gaugeID, command)];
  return slot == kNoSlot ? nullptr : &slots_[slot];
}

const GaugeOutbox::Slot* GaugeOutbox::Find(int gaugeID, int command) const {
  const std::uint16_t slot = slotOf_[KeyOf(gaugeID, command)];
  return slot == kNoSlot ? nullptr : &slots_[slot];
}

GaugeOutbox::Slot& GaugeOutbox::FindOrMake(int gaugeID, int command) {
  std::uint16_t& slot = slotOf_[KeyOf(gaugeID, command)];
  if (slot == kNoSlot) {
    slot = static_cast<std::uint16_t>(slots_.size());
    Slot& made = slots_.emplace_back();
    made.gaugeID = static_cast<Byte>(gaugeID);
    made.command = static_cast<Byte>(command);
  }
  return slots_[slot];
}

bool GaugeOutbox::Put(int gaugeID, int command, std::int32_t value, std::int64_t nowMs) {
  if (gaugeID < 0 || gaugeID > kHighestGaugeID || command < 0 || command >= kCommands) return false;
  if (value > kLargestMagnitude || value < -kLargestMagnitude) return false;
  Slot& slot = FindOrMake(gaugeID, command);
  if (slot.second != second_ && command != kCommandLighting) {
    slot.second = second_;
    ++counts_.wanted;
  }
  if (!slot.waiting) {
    slot.waiting = true;
    slot.sinceMs = nowMs;
    waiting_.push_back(static_cast<std::uint16_t>(&slot - slots_.data()));
  } else if (slot.wanted != value) {
    ++counts_.superseded;
  }
  slot.wanted = value;
  return true;
}

void GaugeOutbox::NoteShown(int gaugeID, int command, std::int32_t value) {
  Slot& slot = FindOrMake(gaugeID, command);
  slot.told = slot.toldBefore = value;
  slot.everTold = true;
  if (!slot.waiting) return;
  slot.waiting = false;
  std::erase(waiting_, static_cast<std::uint16_t>(&slot - slots_.data()));
}

void GaugeOutbox::NoteSent(int gaugeID, int command, std::int32_t value, std::int64_t nowMs) {
  Slot& slot = FindOrMake(gaugeID, command);
  slot.toldBefore = slot.everTold ? slot.told : value;
  slot.told = value;
  slot.leftMs = nowMs;
  slot.everTold = true;
}

bool GaugeOutbox::WasTold(int gaugeID, int command, std::int32_t value, std::int64_t nowMs) const {
  const Slot* slot = Find(gaugeID, command);
  if (slot == nullptr || !slot->everTold) return false;
  return slot->told == value || (slot->toldBefore == value && nowMs - slot->leftMs < kAnswerMs);
}

bool GaugeOutbox::WasToldOther(int gaugeID, int command, std::int32_t value, std::int64_t nowMs) const {
  const Slot* slot = Find(gaugeID, command);
  return slot != nullptr && slot->everTold && !slot->waiting && slot->told != value &&
         nowMs - slot->leftMs >= kAnswerMs;
}

std::optional<GaugeOutbox::Told> GaugeOutbox::ToldOf(int gaugeID, int command) const {
  const Slot* slot = Find(gaugeID, command);
  if (slot == nullptr) return std::nullopt;
  Told told;
  if (slot->everTold) told.value = slot->told;
  told.leftMs = slot->leftMs;
  if (slot->waiting) told.waiting = slot->wanted;
  told.sinceMs = slot->sinceMs;
  return told;
}

void GaugeOutbox::Clear() {
  slots_.clear();
  waiting_.clear();
  slotOf_.fill(kNoSlot);
}

bool GaugeOutbox::ChooseAll(std::size_t bytes) {
  if (WaitingBytes() > bytes) return false;
  for (const std::uint16_t slot : waiting_) {
    slots_[slot].chosen = true;
    slots_[slot].turn = ++turn_;
  }
  return true;
}

std::uint64_t GaugeOutbox::Urgency(const Slot& slot, std::int64_t nowMs, std::int64_t roundMs) const {
  const auto waited = static_cast<std::uint64_t>(std::max<std::int64_t>(nowMs - slot.sinceMs, 0)) + 1;
  const auto round = static_cast<std::uint64_t>(roundMs);
  if (waited > kOverdueRounds * round) return kOverdueClass + waited;
  if (IsLighting(slot)) return kLightingClass + waited;
  if (static_cast<double>(waited) > kDueRounds * static_cast<double>(round)) return kDueClass + waited;
  const std::int32_t change = slot.everTold ? std::abs(slot.wanted - slot.told) : kUnknownChange;
  return static_cast<std::uint64_t>(std::max(change, 1)) * waited;
}

void GaugeOutbox::ChooseSome(std::size_t frames, std::int64_t nowMs) {
  const auto roundMs = static_cast<std::int64_t>(static_cast<double>(WaitingBytes()) / kLineBytesPerMs);
  ranked_.clear();
  for (const std::uint16_t slot : waiting_) ranked_.push_back({Urgency(slots_[slot], nowMs, roundMs), slot});
  // Among equals, whoever had its last turn first.
  const auto turnOf = [this](const Ranked& ranked) { return slots_[ranked.slot].turn; };
  const auto before = [turnOf](const Ranked& a, const Ranked& b) {
    return a.urgency != b.urgency ? a.urgency > b.urgency : turnOf(a) < turnOf(b);
  };
  const auto end = ranked_.begin() + static_cast<std::ptrdiff_t>(frames);  // fewer than there are
  std::nth_element(ranked_.begin(), end, ranked_.end(), before);
  ranked_.erase(end, ranked_.end());
  // In the order of their last turns: so a round takes every needle the same time.
  std::ranges::sort(ranked_, [&](const Ranked& a, const Ranked& b) {
    const bool lightA = IsLighting(slots_[a.slot]), lightB = IsLighting(slots_[b.slot]);
    return lightA != lightB ? lightA : turnOf(a) < turnOf(b);
  });
  for (const Ranked& chosen : ranked_) {
    slots_[chosen.slot].chosen = true;
    slots_[chosen.slot].turn = ++turn_;
  }
}

void GaugeOutbox::Sent(std::int64_t nowMs) {
  for (const std::uint16_t index : waiting_) {
    Slot& slot = slots_[index];
    if (!slot.chosen) continue;
    slot.toldBefore = slot.everTold ? slot.told : slot.wanted;
    slot.told = slot.wanted;
    slot.everTold = true;
    slot.leftMs = nowMs;
    slot.waiting = false;
    if (!IsLighting(slot)) ++counts_.carried;
  }
  std::erase_if(waiting_, [this](std::uint16_t index) { return std::exchange(slots_[index].chosen, false); });
}

void GaugeOutbox::NotSent() {
  for (const std::uint16_t index : waiting_) slots_[index].chosen = false;
}

GaugeOutbox::Counts GaugeOutbox::TakeCounts() {
  ++second_;
  return std::exchange(counts_, {});
}

}  // namespace tvx
