// The simulator ports: opening, enabling, reading and writing.
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/Rounding.h"
#include "simlink/PortValue.h"
#include "simlink/SimCom.h"

namespace tvx {
namespace {

constexpr int kMaxPorts = 32767;
constexpr std::int16_t kMacroShared = 3;   // one value for all ports on such Functions
constexpr std::int16_t kMacroOfPort = 4;   // a value of the port's own
constexpr float kIntegerLimit = 32767.0f;  // ODDITY: on both sides; -32768 is never written
constexpr float kLastCommandEntry = 9.0f;

// A sequence number as it is read everywhere: 0 counts as 1.
int EntryOf(Byte sequenceNr) {
  return sequenceNr == 0 ? 1 : sequenceNr;
}

void WarnOfZeroFactors(MessageBoxes& boxes, int function, const FunctionRecord& record) {
  const std::string warning = "Warning: Opening Function number : " + std::to_string(function) + "\r\n";
  if (record.Devider == 0) boxes.Show(warning + "Function contains division by zero.");
  if (record.Multiplier == 0) boxes.Show(warning + "Function contains multiply by zero.");
}

}  // namespace

const FunctionRecord& SimCom::FunctionOf(const PortRow& row) const {
  return model_.Functions[static_cast<std::size_t>(row.FunctionNr)];  // 1..300: checked on opening
}

PortRow* SimCom::OpenRow(Port port) {
  return port < PortCount() ? &ports_[port] : nullptr;
}

const PortRow* SimCom::ReadableRow(Port port) const {
  if (port >= PortCount()) return nullptr;
  const PortRow& row = ports_[port];
  return row.ReadEnabled != 0 && row.Blocked == 0 ? &row : nullptr;
}

void SimCom::OpenSimPort(int function, Byte& sequenceNr, Port& port) {
  if (function > 300) return;
  const FunctionRecord* record = function < 1 ? nullptr : model_.FunctionOf(function);
  if (!record || record->ShortName.empty() || PortCount() >= kMaxPorts) {
    port = kNoPort;
    return;
  }
  WarnOfZeroFactors(boxes_, function, *record);
  const Byte sequence = static_cast<Byte>(EntryOf(sequenceNr));
  std::optional<std::string_view> dataref;
  const Byte frequency = record->SlotOf(sequence).value;
  if (record->Is(DataType::XplaneDataref) && frequency > 0) {
    dataref = CutEntry(record->FullName, sequence);
    if (!dataref) return;
  }
  sequenceNr = sequence;
  PortRow& row = ports_.back();
  row.FunctionNr = static_cast<std::int16_t>(function);
  row.SeqNr = sequence;
  row.OpenedBy = CurrentOpener;
  ports_.emplace_back();
  port = static_cast<Port>(PortCount() - 1);
  if (dataref) SendXplaneRREF(*dataref, frequency, port, 1);
  if (portsOpened_ < std::numeric_limits<std::uint16_t>::max()) ++portsOpened_;
}

Port SimCom::OpenSimPort(int function, int sequenceNr) {
  Port port = kNoPort;
  if (sequenceNr < 0 || sequenceNr > 255) return port;
  Byte sequence = static_cast<Byte>(sequenceNr);
  OpenSimPort(function, sequence, port);
  return port;
}

void SimCom::EnableReadSimPort(Port port) {
  PortRow* row = OpenRow(port);
  if (!row) return;
  row->ReadEnabled = 1;
  const FunctionRecord& function = FunctionOf(*row);
  if (!function.Is(DataType::XplaneDataref)) SendDSEL(function.SlotOf(row->SeqNr).index);
}

// ODDITY: port 0 is never disabled, so that the values shared by everyone keep coming.
void SimCom::DisableReadSimPort(Port port) {
  PortRow* row = OpenRow(port);
  if (!row || port == 0) return;
  const FunctionRecord& function = FunctionOf(*row);
  if (!function.Is(DataType::XplaneDataref)) SendUSEL(function.SlotOf(row->SeqNr).index);
  row->ReadEnabled = 0;
}

void SimCom::NewSeqNr(Port port, Byte sequenceNr) {
  if (PortRow* row = OpenRow(port)) row->SeqNr = sequenceNr;
}

void SimCom::BlockPort(Port port, Byte blocked) {
  if (PortRow* row = OpenRow(port)) row->Blocked = blocked;
}

std::optional<float> SimCom::RawOrMacro(const PortRow& row) const {
  const FunctionRecord& function = FunctionOf(row);
  if (!function.IsMacro()) return RawValue(row, function.ComboDT);
  if (function.BoxMacroNr == kMacroShared) return static_cast<float>(MacroValue);
  if (function.BoxMacroNr == kMacroOfPort) return static_cast<float>(row.IntValue);
  return std::nullopt;
}

bool SimCom::GetPort(Port port, float& value) const {
  float raw = 0;
  if (!GetPortRaw(port, raw)) return false;
  const FunctionRecord& function = FunctionOf(ports_[port]);
  value = function.IsMacro() ? raw : ScaleRead(function, raw);
  return true;
}

bool SimCom::GetPortRaw(Port port, float& value) const {
  const PortRow* row = ReadableRow(port);
  if (!row) return false;
  const auto raw = RawOrMacro(*row);
  if (raw) value = *raw;
  return raw.has_value();
}

bool SimCom::PutPort(Port port, float& value) {
  PortRow* row = OpenRow(port);
  if (!row) return false;
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

void SimCom::PutMacro(PortRow& row, const FunctionRecord& function, float value) {
  const auto rounded = RoundTo<std::int16_t>(value);
  if (!rounded) return;
  if (function.BoxMacroNr == kMacroShared) MacroValue = *rounded;
  if (function.BoxMacroNr == kMacroOfPort) row.IntValue = *rounded;
}

// Sends `raw` in the way of the Function's data type. Gives the raw value that was sent; nothing when it does
// not fit.
std::optional<float> SimCom::SendRaw(PortRow& row, const FunctionRecord& function, float raw) {
  const FunctionRecord::Slot slot = function.SlotOf(row.SeqNr);
  if (function.Is(DataType::Integer)) raw = std::clamp(raw, -kIntegerLimit, kIntegerLimit);
  if (function.Is(DataType::XplaneCmnd)) raw = std::min(raw, kLastCommandEntry);
  const auto whole = RoundTo<std::int32_t>(raw);
  const auto byte = RoundTo<Byte>(raw);
  switch (static_cast<DataType>(function.ComboDT)) {
    case DataType::ByteType:
      if (!byte) return std::nullopt;
      row.ByteValue = *byte;
      SendDataInt(slot.index, slot.value, *byte);
      break;
    case DataType::BcdCode: {
      const auto nibbles = BcdNibbles(raw);
      if (!nibbles || !whole) return std::nullopt;
      // ODDITY: the nibbles are added to those of earlier values, which nothing clears; the instruments' own
      // value is the plain one that is sent.
      row.IntValue = static_cast<std::int16_t>(static_cast<std::uint16_t>(row.IntValue) | *nibbles);
      SendDataInt(slot.index, slot.value, *whole);
      break;
    }
    case DataType::Integer:
    case DataType::UnsignedInt:
      if (!whole) return std::nullopt;
      SendDataInt(slot.index, slot.value, *whole);
      break;
    case DataType::Long:
    case DataType::Float:
      SendDataFloat(slot.index, slot.value, raw);
      break;
    case DataType::XplaneCmnd:
      if (!byte) return std::nullopt;
      SendXplaneCommand(function.FullName, *byte);
      break;
    case DataType::XplaneDataref: {
      const auto dataref = CutEntry(function.FullName, EntryOf(row.SeqNr));
      if (!dataref) return std::nullopt;
      SendXplaneDREF(*dataref, raw);
      break;
    }
    default:
      break;
  }
  return raw;
}

void SimCom::CloseAllPorts() {
  CommandStopAll();
  ClearAllRREF();
  ports_.assign(1, PortRow{});
}

}  // namespace tvx
