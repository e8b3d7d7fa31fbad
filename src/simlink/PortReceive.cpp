// How what arrives reaches the ports. No part of it allocates or throws.
//
// A datagram of data groups refreshes every enabled port, in their order, and is abandoned at the first one
// whose value does not fit. Only ports whose slot may have become stale need work: those that read a group of
// the datagram, those that were written, and those that an abandoned datagram did not reach. They are "due".
#include <numeric>

#include "simlink/PortTable.h"
#include "simlink/PortValue.h"

namespace tvx {

bool PortTable::DecodeRref(ByteView datagram, std::int64_t nowMs) {
  const int records = RecordCount(datagram.size(), kRrefRecordSize);
  for (int i = 0; i < records; ++i) {
    const auto record = ReadRrefRecord(datagram, i);
    if (!record) return GiveUp(kNoPort);
    // An answer that nobody asked for still reaches the port with its number.
    const Port asker = subscriptions_.AskedWith(record->identifier);
    const std::size_t port = asker != kNoPort ? asker : static_cast<std::size_t>(record->identifier);
    keeper_.DatarefAnswered(record->identifier);
    if (port >= rows_.size()) {
      if (others_ != nullptr && others_->Take(record->identifier, record->value)) continue;
      RefuseFrom(datagram, i);
      return GiveUp(kNoPort);
    }
    rows_[port].FloatValue = record->value;
    traffic_[port].Note(nowMs);
    if (readings_[port].group >= 0) due_.Add(static_cast<Port>(port));
  }
  return true;
}

// Its rest is lost each time, so what nobody asks for has to stop.
void PortTable::RefuseFrom(ByteView datagram, int first) {
  for (int i = first; const auto record = ReadRrefRecord(datagram, i); ++i) {
    if (subscriptions_.AskedWith(record->identifier) == kNoPort) keeper_.Unasked(record->identifier);
  }
}

bool PortTable::DecodeData(ByteView datagram, std::int64_t nowMs) {
  if (!readersKnown_ || readersRevision_ != model_.Functions.Revision()) FindReaders();
  const int groups = RecordCount(datagram.size(), kDataGroupSize);
  for (int i = 0; i < groups; ++i) {
    const auto group = ReadDataGroup(datagram, i);
    if (!group || group->index >= kDataGroups) return GiveUp(kNoPort);
    const auto index = static_cast<std::size_t>(group->index);
    dataValues_[index] = group->values;
    groupTraffic_[index].Note(nowMs);
    keeper_.GroupAnswered(group->index);
    for (const Port port : ReadersOf(index)) due_.Add(port);
  }
  return due_.WorkOff([this](Port port) { return Refresh(port) || GiveUp(port); });
}

bool PortTable::GiveUp(Port port) {
  ++givenUp_.datagrams;
  givenUp_.port = port;
  return false;
}

bool PortTable::Refresh(Port port) {
  const Reading& reading = readings_[port];
  if (reading.group < 0) return reading.group == Reading::kNoGroup;
  return StoreDataValue(rows_[port], reading.dataType,
                        dataValues_[static_cast<std::size_t>(reading.group)][reading.value]);
}

PortTable::Reading PortTable::ReadingOf(const PortRow& row) const {
  Reading reading;
  const FunctionRecord& function = FunctionOf(row);
  if (!row.ReadEnabled || row.Blocked || !ReadsDataGroup(function.ComboDT)) return reading;
  const FunctionRecord::Slot slot = function.SlotOf(row.SeqNr);
  const bool inTable = slot.index >= 0 && slot.index < kDataGroups && slot.value < kDataValuesPerGroup;
  reading.group = inTable ? slot.index : Reading::kOutsideTheTable;
  reading.value = slot.value;
  reading.dataType = function.ComboDT;
  return reading;
}

// Sorts the ports by group: counts them, adds the counts up to each group's end, and fills from there down.
void PortTable::FindReaders() {
  readersEnd_.fill(0);
  due_.Clear();
  for (std::size_t port = 0; port < rows_.size(); ++port) {
    const Reading reading = readings_[port] = ReadingOf(rows_[port]);
    if (reading.group != Reading::kNoGroup) due_.Add(static_cast<Port>(port));
    if (reading.group >= 0) ++readersEnd_[static_cast<std::size_t>(reading.group)];
  }
  std::partial_sum(readersEnd_.begin(), readersEnd_.end(), readersEnd_.begin());
  auto next = readersEnd_;
  for (std::size_t port = rows_.size(); port-- > 0;) {
    const std::int16_t group = readings_[port].group;
    if (group >= 0) readers_[--next[static_cast<std::size_t>(group)]] = static_cast<Port>(port);
  }
  readersKnown_ = true;
  readersRevision_ = model_.Functions.Revision();
}

std::span<const Port> PortTable::ReadersOf(std::size_t group) const {
  const std::size_t first = group == 0 ? 0 : readersEnd_[group - 1];
  return std::span(readers_).subspan(first, readersEnd_[group] - first);
}

float PortTable::DataValue(int group, int valueNumber) const {
  if (group < 0 || group >= kDataGroups || valueNumber < 0 || valueNumber >= kDataValuesPerGroup) return 0;
  return dataValues_[static_cast<std::size_t>(group)][static_cast<std::size_t>(valueNumber)];
}

std::uint64_t PortTable::ValuesLost() const {
  const auto add = [](std::uint64_t sum, const PortTraffic& traffic) { return sum + traffic.Lost(); };
  return std::accumulate(traffic_.begin(), traffic_.end(), std::uint64_t{0}, add) +
         std::accumulate(groupTraffic_.begin(), groupTraffic_.end(), std::uint64_t{0}, add);
}

const PortTraffic& PortTable::TrafficOf(Port port) const {
  static constexpr PortTraffic kNever;
  if (port >= PortCount()) return kNever;
  const PortRow& row = PortAt(port);
  const FunctionRecord& function = FunctionOf(row);
  if (!ReadsDataGroup(function.ComboDT)) return traffic_[port];
  const int group = function.SlotOf(row.SeqNr).index;
  return group >= 0 && group < kDataGroups ? groupTraffic_[static_cast<std::size_t>(group)] : kNever;
}

}  // namespace tvx
