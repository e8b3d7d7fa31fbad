#include "simlink/overview/PortListing.h"

#include <array>

#include "config/NameTables.h"
#include "simlink/PortValue.h"

namespace tvx {
namespace {

std::string_view PathOf(const FunctionRecord& function, Byte sequenceNr) {
  return CutEntry(function.FullName, sequenceNr == 0 ? 1 : sequenceNr).value_or(std::string_view());
}

// The lines of a command list, one after the other.
std::string InOneLine(std::string_view lines) {
  std::string text;
  for (const char c : lines) {
    if (c == '\n' && !text.empty()) text += ' ';
    if (c >= ' ') text += c;
  }
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace

std::string_view DataTypeLabel(Byte dataType) {
  static constexpr std::array<std::string_view, 8> kLabels{
      "Byte          ",         "Integer       ", "Unsigned Int. ", "Long          ",
      "--------Float---------", "BCD code      ", "Xplane CMND   ", "Xplane Dataref ",
  };
  return dataType < kLabels.size() ? kLabels[dataType] : "Not used";
}

std::string UserText(const ConfigModel& model, const PortRow& row) {
  if (row.OpenedBy < 0 || row.OpenedBy >= kGauges) return "Gauge type: " + opener::Text(row.OpenedBy);
  std::string name;
  GetGaugetypeName(model, model.Gauges[static_cast<std::size_t>(row.OpenedBy)].GaugeType, name);
  return "Used by Gauge Type: " + name;
}

std::string SourceText(const FunctionRecord& function, Byte sequenceNr) {
  if (function.IsMacro()) return "Macro " + std::to_string(function.BoxMacroNr);
  if (function.Is(DataType::XplaneCmnd)) return InOneLine(function.FullName);
  const FunctionRecord::Slot slot = function.SlotOf(sequenceNr);
  if (function.Is(DataType::XplaneDataref)) {
    return std::string(PathOf(function, sequenceNr)) +
           (slot.value == 0 ? ", written only" : ", " + std::to_string(slot.value) + " times a second");
  }
  if (!ReadsDataGroup(function.ComboDT)) return {};
  return "Data group " + std::to_string(slot.index) + ", value " + std::to_string(slot.value);
}

std::vector<std::string> PortDetails(const ConfigModel& model, const SimCom& sim, int port) {
  if (port < 0 || port >= sim.PortCount()) return {};
  const PortRow& row = sim.PortAt(port);
  const FunctionRecord& function = *model.FunctionOf(row.FunctionNr);
  const FunctionRecord::Slot slot = function.SlotOf(row.SeqNr);
  std::vector<std::string> lines{UserText(model, row)};
  if (function.Is(DataType::XplaneCmnd)) {
    lines.push_back("CMND, Dataref= " + function.FullName);
  } else if (!function.Is(DataType::XplaneDataref)) {
    lines.push_back("DATA (float), name: " + function.ShortName);
    lines.push_back("Index Nr: " + std::to_string(slot.index) + " Value Nr: " + std::to_string(slot.value));
  } else if (slot.value == 0) {
    lines.push_back("It is a RREF Write only (DREF).");
  } else {
    lines.push_back("RREF Ident (Port#)= " + std::to_string(port));
    lines.push_back("Frequency =" + std::to_string(slot.value));
    lines.push_back("Dataref= " + std::string(PathOf(function, row.SeqNr)));
  }
  return lines;
}

}  // namespace tvx
