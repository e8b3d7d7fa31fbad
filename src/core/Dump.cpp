#include "core/Dump.h"

#include "base/NumberFormat.h"
#include "config/ConfigFile.h"
#include "config/NameTables.h"
#include "config/ValueText.h"

namespace tvx {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr int kTrue = -1;

void AppendRecord(std::string& out, std::string_view text) {
  AppendValue(out, text);
  out += kLineEnd;
}

std::string FloatText(float value) {
  std::string text;
  AppendValue(text, value);
  return text;
}

// A gauge by its address and its kind, anything else by its device code.
std::string UserText(const ConfigModel& model, std::int16_t openedBy) {
  std::string text = opener::Text(openedBy);
  if (openedBy < 0 || openedBy > 255) return text;
  std::string device;
  GetGaugetypeName(model, model.Gauges[static_cast<std::size_t>(openedBy)].GaugeType, device);
  return text + " ,Device: " + device;
}

std::string PortRecord(const ConfigModel& model, const SimCom& sim, int port) {
  const PortRow& row = sim.PortAt(port);
  return "Port= " + std::to_string(port) + " FX= " + std::to_string(row.FunctionNr) +
         " Seq= " + std::to_string(row.SeqNr) + " Rdf= " + std::to_string(row.ReadEnabled) +
         " SdF= " + FloatText(row.FloatValue) + " Used by= " + UserText(model, row.OpenedBy);
}

std::string RrefRecord(const SimCom& sim, std::size_t i) {
  const RrefRow& row = sim.Rrefs()[i];
  const bool open = row.For < sim.PortCount();
  return "RREF#= " + std::to_string(i) + " Freq= " + std::to_string(row.Frequency) +
         " Ident= " + std::to_string(row.Identifier) + " Dataref = " + row.Dataref +
         "; Value = " + FloatText(open ? sim.PortAt(row.For).FloatValue : 0.0f);
}

}  // namespace

std::string DumpText(const DumpCause& cause, const ConfigModel& model, const SimCom& sim) {
  const std::string newLine(kLineEnd);
  std::string out;
  AppendRecord(out, "Dump of Torvex Control Program");
  AppendRecord(out, newLine + "Dump Caused by: Module= " + cause.Module + std::to_string(cause.Code) +
                        ", Value= " + cause.Value);
  AppendRecord(out, newLine + "Activation = " + std::to_string(cause.Activated ? kTrue : 0) +
                        ", running = " + std::to_string(cause.Running ? kTrue : 0));
  AppendRecord(out, newLine + "List of active Ports");
  for (int port = 0; port < sim.PortCount(); ++port) AppendRecord(out, PortRecord(model, sim, port));
  AppendRecord(out, newLine + "List of active RREFs");
  for (std::size_t i = 0; i < sim.Rrefs().size(); ++i) AppendRecord(out, RrefRecord(sim, i));
  AppendRecord(out, newLine + "End of Dump");
  AppendRecord(out, newLine + "========================= CONFIG FILE =======================");
  return out + WriteConfigText(model);
}

}  // namespace tvx
