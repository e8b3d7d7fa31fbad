#include "simlink/console/LinkConsoleTexts.h"

#include "config/ValueText.h"
#include "simlink/references/ReferenceList.h"

namespace tvx {
namespace {

constexpr std::string_view kHelpLines[] = {
    "== Short Explanation of X-Plane interface using UDP ==",
    "- Send Data To Xplane refers to the 'General Data Output' as given in",
    "  Data Output tab in Xplane.",
    "- By DSEL Xplane is commanded to return the Index + 8 values at",
    "  selected UDP Rate in Packets/sec.",
    "- By USEL the transfer of this Index is stopped.",
    "- Writing DATA to an Index Value can be done using 'Send Data(float)'. ",
    "- Character and Integer data formats are not used here.  ",
    "- DREF and RREF are used to exchange data by Data References. ",
    "- They refer to the 'Dataref Read/Write' of the Xplane Data Output tab. ",
    "- To set data select the Data Reference from the list and fill the Value.",
    "- RREF is the other way around. At the given frequency X-Plane will",
    "  transfer the value of that reference.",
    "- X-Plane will not return the full Data Reference Text but uses an",
    "  Identifier that you can freely define.",
    "- To Test the UDP interface best use the DSEL and USEL functions.",
    "  Check for 'Network via UDP' box in Xplane and returned data.",
};

constexpr ConsoleBox kBoxes[] = {consolebox::kRemotePort,     consolebox::kLocalPort,  consolebox::kIndex,
                                 consolebox::kReferenceIndex, consolebox::kIdentifier, consolebox::kFrequency,
                                 consolebox::kFunctionNr};

}  // namespace

std::string ConsoleHelp() {
  std::string help;
  for (const std::string_view line : kHelpLines) {
    if (!help.empty()) help += "\r\n";
    help += line;
  }
  return help;
}

std::optional<std::int32_t> WholeNumber(std::string_view text, const ConsoleBox& box) {
  const auto number = TypedReal<double>(text);
  if (!number || *number < static_cast<double>(box.lowest) || *number > static_cast<double>(box.highest) ||
      *number != static_cast<double>(static_cast<std::int64_t>(*number))) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(*number);
}

std::string ConsoleProblem(std::string_view box, std::string_view text) {
  for (const ConsoleBox& known : kBoxes) {
    if (known.name == box && !WholeNumber(text, known)) {
      return WholeNumberWords(static_cast<int>(known.lowest), static_cast<int>(known.highest));
    }
  }
  if ((box == "boxValue" || box == "boxDREFValue") && !TypedReal<float>(text)) {
    return std::string(kRealNumberWords);
  }
  if (box == "SelectedReference" && !IsEntry(text)) return "a path without blanks, such as sim/time/paused";
  return {};
}

}  // namespace tvx
