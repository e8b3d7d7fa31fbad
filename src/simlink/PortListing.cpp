#include "simlink/PortListing.h"

#include <array>

#include "base/NumberFormat.h"
#include "config/NameTables.h"

namespace tvx {
namespace {

constexpr std::string_view kHeader = "Port#    Used by     Func#         Datatype      Func. Name";
// Where the header's columns begin.
constexpr std::size_t kOpenerColumn = 9;
constexpr std::size_t kFunctionColumn = 21;
constexpr std::size_t kTypeColumn = 35;
constexpr std::size_t kNameColumn = 49;

// Goes to a column; text that reaches over it is followed by one blank.
void GoTo(std::string& line, std::size_t column) {
  if (line.size() < column) line.resize(column, ' ');
  if (line.back() != ' ') line += ' ';
}

std::string Line(const PortRow& row, int port, const FunctionRecord& function) {
  std::string line = FormatNumberText(port, "000");
  GoTo(line, kOpenerColumn);
  line += opener::Text(row.OpenedBy);
  GoTo(line, kFunctionColumn);
  line += FormatNumberText(row.FunctionNr, "000");
  GoTo(line, kTypeColumn);
  line += DataTypeLabel(function.ComboDT);
  GoTo(line, kNameColumn);
  return line + function.ShortName;
}

// A gauge is told by the name of its type; the other users have no type but their name.
std::string UserText(const ConfigModel& model, const PortRow& row) {
  if (row.OpenedBy < 0 || row.OpenedBy >= kGauges) return "Gauge type: " + opener::Text(row.OpenedBy);
  std::string name;
  GetGaugetypeName(model, model.Gauges[static_cast<std::size_t>(row.OpenedBy)].GaugeType, name);
  return "Used by Gauge Type: " + name;
}

}  // namespace

std::string_view DataTypeLabel(Byte dataType) {
  static constexpr std::array<std::string_view, 8> kLabels{
      "Byte          ",         "Integer       ", "Unsigned Int. ", "Long          ",
      "--------Float---------", "BCD code      ", "Xplane CMND   ", "Xplane Dataref ",
  };
  return dataType < kLabels.size() ? kLabels[dataType] : "Not used";
}

PortListing ListPorts(const ConfigModel& model, const SimCom& sim) {
  PortListing listing{"Active Ports and Functions", std::string(kHeader), {}};
  for (int port = 0; port < sim.PortCount(); ++port) {
    const PortRow& row = sim.PortAt(port);
    listing.Lines.push_back(Line(row, port, *model.FunctionOf(row.FunctionNr)));
  }
  return listing;
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
    const auto dataref = CutEntry(function.FullName, row.SeqNr == 0 ? 1 : row.SeqNr);
    lines.push_back("RREF Ident (Port#)= " + std::to_string(port));
    lines.push_back("Frequency =" + std::to_string(slot.value));
    lines.push_back("Dataref= " + std::string(dataref.value_or(std::string_view())));
  }
  return lines;
}

}  // namespace tvx
