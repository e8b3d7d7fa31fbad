#include "config/setup/GaugeList.h"

#include "base/NumberFormat.h"

namespace tvx {
namespace {

constexpr std::size_t kSearchedSlots = 50;  // Gaugetype slots 1..50
constexpr int kIOModuleCode = 10;
constexpr std::size_t kNameWidth = 14;

// The first characters of a UTF-8 text, never half a character.
std::string Cut(const std::string& text) {
  std::size_t end = 0, characters = 0;
  while (end < text.size() && characters < kNameWidth) {
    ++end;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) ++end;
    ++characters;
  }
  return text.substr(0, end);
}

std::string FunctionName(const ConfigModel& model, int number) {
  const FunctionRecord* function = model.FunctionOf(number);
  return function == nullptr ? "Error" : Cut(function->ShortName);
}

std::string SequenceText(Byte sequenceNr) {
  return sequenceNr > 1 ? std::to_string(sequenceNr) + " #" : std::string();
}

std::string_view ConnectionText(GaugeConnection state) {
  switch (state) {
    case GaugeConnection::NotConnected:
      return "Not Connected";
    case GaugeConnection::Connected:
      return "Connected";
    default:
      return "Unkown";  // ODDITY: spelled so; users search their notes and forums for it
  }
}

std::string GaugeLine(const ConfigModel& model, std::size_t gaugeID) {
  const GaugeRecord& gauge = model.Gauges[gaugeID];
  std::string first, second;
  if (gauge.GaugeType == kIOModuleCode) {
    first = "Input/Switches";
    second = "Output/Leds";
  } else {
    first = gauge.GaugeFunction1 == 0 ? "Not Assigned" : FunctionName(model, gauge.GaugeFunction1);
    second = gauge.GaugeFunction2 == 0 ? std::string() : FunctionName(model, gauge.GaugeFunction2);
  }
  std::string line = FormatNumberText(static_cast<double>(gaugeID), "000");
  for (const std::string& column :
       {GaugetypeNameInList(model, gauge.GaugeType), first, second, SequenceText(gauge.GaugeInstance1),
        SequenceText(gauge.GaugeInstance2), FormatNumberText(gauge.GaugeSetting1, "00"),
        FormatNumberText(gauge.GaugeSetting2, "00"),
        std::string(ConnectionText(model.GaugeState[gaugeID]))}) {
    line += '\t';
    line += column;
  }
  return line;
}

}  // namespace

std::string GaugetypeNameInList(const ConfigModel& model, int code) {
  for (std::size_t slot = 1; slot <= kSearchedSlots; ++slot) {
    if (model.Gaugetypes[slot].Code == code) return model.Gaugetypes[slot].Name;
  }
  return "Unknown";
}

std::vector<std::string> GaugeLines(const ConfigModel& model) {
  std::vector<std::string> lines;
  for (std::size_t gaugeID = 0; gaugeID < model.Gauges.size(); ++gaugeID) {
    if (model.Gauges[gaugeID].GaugeType != 0) lines.push_back(GaugeLine(model, gaugeID));
  }
  return lines;
}

}  // namespace tvx
