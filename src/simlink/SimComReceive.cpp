// The receive path of the link. Nothing here allocates or throws.
#include <algorithm>
#include <limits>

#include "simlink/PortValue.h"
#include "simlink/SimCom.h"

namespace tvx {
namespace {

// The port that an answer belongs to: the one with the identifier as its number. Where there is no such port,
// the one whose request carried that identifier: from 129 on a request's second byte is rounded up, and the
// simulator answers with a number 256 too high. -1 for an identifier that nobody asked with.
int PortOfIdentifier(int identifier, int portCount) {
  if (identifier < portCount) return identifier;
  const int rounded = identifier - 256;
  const bool asked = rounded >= 0 && rounded < portCount && RrefIdentifierOnWire(rounded) == identifier;
  return asked ? rounded : -1;
}

}  // namespace

void SimCom::WinsockUDP_DataArrival(std::size_t bytesTotal) {
  const std::int32_t sender = UdpMonitorMode != 0 && monitor_ ? socket_.WaitingSenderPort() : 0;
  received_ = std::min(socket_.Receive(buffer_), buffer_.size());
  DataReceived = 1;
  lastArrivalMs_ = clock_.MonotonicMs();
  if (UdpMonitorMode != 0) {
    PacketArrived = 1;
    CountPacket();
    if (monitor_) monitor_(LastDatagram(), sender);
    return;
  }
  if (bytesTotal < 6) return;
  // Counting is the last step: a datagram that is abandoned on the way is not counted.
  bool whole = true;
  switch (Classify(LastDatagram())) {
    case DatagramKind::TooShort:
      return;
    case DatagramKind::Rref:
      whole = DecodeRref();
      break;
    case DatagramKind::Data:
      whole = DecodeData();
      break;
    case DatagramKind::Dref:
    case DatagramKind::Other:
      break;
  }
  if (whole) CountPacket();
}

bool SimCom::DecodeRref() {
  const ByteView datagram = LastDatagram();
  const int records = RecordCount(datagram.size(), kRrefRecordSize);
  for (int i = 0; i < records; ++i) {
    const auto record = ReadRrefRecord(datagram, i);
    const int port = record ? PortOfIdentifier(record->identifier, PortCount()) : -1;
    if (port < 0) return false;
    ports_[static_cast<std::size_t>(port)].FloatValue = record->value;
    ports_[static_cast<std::size_t>(port)].Answered = 1;
  }
  return true;
}

bool SimCom::DecodeData() {
  const ByteView datagram = LastDatagram();
  const int groups = RecordCount(datagram.size(), kDataGroupSize);
  for (int i = 0; i < groups; ++i) {
    const auto group = ReadDataGroup(datagram, i);
    if (!group || group->index >= kDataGroups) return false;
    dataValues_[static_cast<std::size_t>(group->index)] = group->values;
    arrivedGroups_.set(static_cast<std::size_t>(group->index));
  }
  return RefreshPorts();
}

bool SimCom::RefreshPorts() {
  const std::size_t open = ports_.size() - 1;
  for (std::size_t i = 0; i < open; ++i) {
    PortRow& row = ports_[i];
    if (row.ReadEnabled != 1 || row.Blocked != 0) continue;
    const FunctionRecord& function = FunctionOf(row);
    if (!ReadsDataGroup(function.ComboDT)) continue;
    // Looked up anew each time, since a Function can be edited while its port is open.
    const FunctionRecord::Slot slot = function.SlotOf(row.SeqNr);
    if (slot.index < 0 || slot.index >= kDataGroups || slot.value >= kDataValuesPerGroup) return false;
    if (!StoreDataValue(row, function.ComboDT,
                        dataValues_[static_cast<std::size_t>(slot.index)][slot.value])) {
      return false;
    }
  }
  return true;
}

void SimCom::CountPacket() {
  if (PacketsReceived < std::numeric_limits<std::int16_t>::max()) ++PacketsReceived;
}

float SimCom::DataValue(int group, int valueNumber) const {
  if (group < 0 || group >= kDataGroups || valueNumber < 0 || valueNumber >= kDataValuesPerGroup) return 0;
  return dataValues_[static_cast<std::size_t>(group)][static_cast<std::size_t>(valueNumber)];
}

bool SimCom::HasArrived(Port port) const {
  if (port >= PortCount()) return false;
  const PortRow& row = PortAt(port);
  const FunctionRecord& function = FunctionOf(row);
  if (!ReadsDataGroup(function.ComboDT)) return row.Answered != 0;
  const int group = function.SlotOf(row.SeqNr).index;
  return group >= 0 && group < kDataGroups && arrivedGroups_[static_cast<std::size_t>(group)];
}

std::optional<std::int64_t> SimCom::SilentForMs() const {
  if (!lastArrivalMs_) return std::nullopt;
  return clock_.MonotonicMs() - *lastArrivalMs_;
}

}  // namespace tvx
