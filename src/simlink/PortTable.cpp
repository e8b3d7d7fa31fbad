// Opening ports, reading and writing them. PortReceive.cpp holds what arrives.
#include "simlink/PortTable.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "simlink/PortValue.h"

namespace tvx {
namespace {

constexpr int kHighestFunction = kFunctions - 1;
constexpr std::int16_t kMacroShared = 3;   // one value for all ports on such Functions
constexpr std::int16_t kMacroOfPort = 4;   // a value of the port's own
constexpr float kIntegerLimit = 32767.0f;  // ODDITY: on both sides; -32768 is never written
constexpr float kLastCommandEntry = 9.0f;

// A sequence number as it is read everywhere: 0 counts as 1.
Byte EntryOf(Byte sequenceNr) {
  return sequenceNr == 0 ? Byte{1} : sequenceNr;
}

void WarnOfZeroFactors(MessageBoxes& boxes, int function, const FunctionRecord& record) {
  const std::string warning = "Warning: Opening Function number : " + std::to_string(function) + "\r\n";
  if (record.Devider == 0) boxes.Show(warning + "Function contains division by zero.");
  if (record.Multiplier == 0) boxes.Show(warning + "Function contains multiply by zero.");
}

}  // namespace

PortTable::PortTable(const ConfigModel& model, LinkSocket& socket, SubscriptionKeeper& keeper,
                     Subscriptions& subscriptions, MessageBoxes& boxes)
    : model_(model), socket_(socket), keeper_(keeper), subscriptions_(subscriptions), boxes_(boxes) {}

const FunctionRecord& PortTable::FunctionOf(const PortRow& row) const {
  return model_.Functions[static_cast<std::size_t>(row.FunctionNr)];  // 1..300: checked on opening
}

PortRow* PortTable::OpenRow(Port port) {
  return port < rows_.size() ? &rows_[port] : nullptr;
}

const PortRow* PortTable::ReadableRow(Port port) const {
  if (port >= rows_.size()) return nullptr;
  const PortRow& row = rows_[port];
  return row.ReadEnabled && !row.Blocked ? &row : nullptr;
}

void PortTable::OpenSimPort(int function, Byte& sequenceNr, Port& port) {
  if (function > kHighestFunction) return;
  const FunctionRecord* record = function < 1 ? nullptr : model_.FunctionOf(function);
  if (!record || record->ShortName.empty() || PortCount() >= kMaxPorts) {
    port = kNoPort;
    return;
  }
  WarnOfZeroFactors(boxes_, function, *record);
  const Byte sequence = EntryOf(sequenceNr);
  std::optional<std::string_view> dataref;
  const Byte frequency = record->SlotOf(sequence).value;
  if (record->Is(DataType::XplaneDataref) && frequency > 0) {
    dataref = CutEntry(record->FullName, sequence);
    if (!dataref) return;
  }
  sequenceNr = sequence;
  port = static_cast<Port>(rows_.size());
  PortRow& row = rows_.emplace_back();
  row.FunctionNr = static_cast<std::int16_t>(function);
  row.SeqNr = sequence;
  row.OpenedBy = currentOpener_;
  readings_.emplace_back();
  traffic_.emplace_back();
  readers_.emplace_back();
  readersKnown_ = false;
  if (dataref) subscriptions_.Subscribe(port, *dataref, frequency);
  if (portsOpened_ < std::numeric_limits<std::uint16_t>::max()) ++portsOpened_;
}

Port PortTable::OpenSimPort(int function, int sequenceNr) {
  Port port = kNoPort;
  if (sequenceNr < 0 || sequenceNr > 255) return port;
  Byte sequence = static_cast<Byte>(sequenceNr);
  OpenSimPort(function, sequence, port);
  return port;
}

void PortTable::EnableReadSimPort(Port port) {
  PortRow* row = OpenRow(port);
  if (!row) return;
  row->ReadEnabled = true;
  readersKnown_ = false;
  const FunctionRecord& function = FunctionOf(*row);
  if (!function.Is(DataType::XplaneDataref)) subscriptions_.SelectGroup(function.SlotOf(row->SeqNr).index);
}

// ODDITY: port 0 is never disabled, so that the values shared by everyone keep coming.
void PortTable::DisableReadSimPort(Port port) {
  PortRow* row = OpenRow(port);
  if (!row || port == 0) return;
  const FunctionRecord& function = FunctionOf(*row);
  row->ReadEnabled = false;
  readersKnown_ = false;
  if (function.Is(DataType::XplaneDataref)) return;
  const int group = function.SlotOf(row->SeqNr).index;
  subscriptions_.UnselectGroup(group);
  if (IsRead(group)) subscriptions_.SelectGroup(group);  // by another port
}

bool PortTable::IsRead(int group) const {
  return std::any_of(rows_.begin(), rows_.end(), [&](const PortRow& row) {
    const FunctionRecord& function = FunctionOf(row);
    return row.ReadEnabled && !function.Is(DataType::XplaneDataref) &&
           function.SlotOf(row.SeqNr).index == group;
  });
}

void PortTable::NewSeqNr(Port port, Byte sequenceNr) {
  if (PortRow* row = OpenRow(port)) row->SeqNr = sequenceNr;
  readersKnown_ = false;
}

void PortTable::BlockPort(Port port, bool blocked) {
  if (PortRow* row = OpenRow(port)) row->Blocked = blocked;
  readersKnown_ = false;
}

void PortTable::Clear() {
  rows_.clear();
  readings_.clear();
  traffic_.clear();
  readers_.clear();
  readersKnown_ = false;
}

std::optional<float> PortTable::RawOrMacro(const PortRow& row, const FunctionRecord& function) const {
  if (!function.IsMacro()) return RawValue(row, function.ComboDT);
  if (function.BoxMacroNr == kMacroShared) return static_cast<float>(macroValue_);
  if (function.BoxMacroNr == kMacroOfPort) return static_cast<float>(row.IntValue);
  return std::nullopt;
}

bool PortTable::GetPort(Port port, float& value) const {
  const PortRow* row = ReadableRow(port);
  if (!row) return false;
  const FunctionRecord& function = FunctionOf(*row);
  const auto raw = RawOrMacro(*row, function);
  if (raw) value = function.IsMacro() ? *raw : ScaleRead(function, *raw);
  return raw.has_value();
}

bool PortTable::GetPortRaw(Port port, float& value) const {
  const PortRow* row = ReadableRow(port);
  if (!row) return false;
  const auto raw = RawOrMacro(*row, FunctionOf(*row));
  if (raw) value = *raw;
  return raw.has_value();
}

bool PortTable::PutPort(Port port, float& value) {
  PortRow* row = OpenRow(port);
  if (!row) return false;
  // Some data types keep what is written in the slot that the next datagram refreshes.
  if (readings_[port].group >= 0) due_.Add(port);
  const FunctionRecord& function = FunctionOf(*row);
  if (function.IsMacro()) {
    PutMacro(*row, function, value);
    return true;
  }
  const float raw = ScaleWrite(function, value);
  const auto sent = std::isfinite(raw) ? SendRaw(*row, function, raw) : std::nullopt;
  if (sent) value = *sent;
  return sent.has_value();
}

void PortTable::PutMacro(PortRow& row, const FunctionRecord& function, float value) {
  const auto rounded = RoundTo<std::int16_t>(value);
  if (!rounded) return;
  if (function.BoxMacroNr == kMacroShared) macroValue_ = *rounded;
  if (function.BoxMacroNr == kMacroOfPort) row.IntValue = *rounded;
}

// Sends `raw` in the way of the Function's data type. The raw value that was sent; std::nullopt when it does
// not fit.
std::optional<float> PortTable::SendRaw(PortRow& row, const FunctionRecord& function, float raw) {
  const FunctionRecord::Slot slot = function.SlotOf(row.SeqNr);
  if (function.Is(DataType::Integer)) raw = std::clamp(raw, -kIntegerLimit, kIntegerLimit);
  if (function.Is(DataType::XplaneCmnd)) raw = std::min(raw, kLastCommandEntry);
  const auto whole = RoundTo<std::int32_t>(raw);
  const auto byte = RoundTo<Byte>(raw);
  switch (static_cast<DataType>(function.ComboDT)) {
    case DataType::ByteType:
      if (!byte) return std::nullopt;
      row.ByteValue = *byte;
      socket_.SendDataInt(slot.index, slot.value, *byte);
      break;
    case DataType::BcdCode: {
      const auto nibbles = BcdNibbles(raw);
      if (!nibbles || !whole) return std::nullopt;
      // ODDITY: the nibbles are added to those of earlier values, which stay until the simulator sends the
      // group; what is sent is the plain value.
      row.IntValue = static_cast<std::int16_t>(static_cast<std::uint16_t>(row.IntValue) | *nibbles);
      socket_.SendDataInt(slot.index, slot.value, *whole);
      break;
    }
    case DataType::Integer:
    case DataType::UnsignedInt:
      if (!whole) return std::nullopt;
      socket_.SendDataInt(slot.index, slot.value, *whole);
      break;
    case DataType::Long:
    case DataType::Float:
      socket_.SendDataFloat(slot.index, slot.value, raw);
      break;
    case DataType::XplaneCmnd:
      if (!byte) return std::nullopt;
      socket_.SendXplaneCommand(function.FullName, *byte);
      break;
    case DataType::XplaneDataref: {
      const auto dataref = CutEntry(function.FullName, EntryOf(row.SeqNr));
      if (!dataref) return std::nullopt;
      socket_.SendXplaneDREF(*dataref, raw);
      break;
    }
    default:
      break;
  }
  return raw;
}

}  // namespace tvx
