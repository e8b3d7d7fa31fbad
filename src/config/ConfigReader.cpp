#include "config/ConfigReader.h"

#include <cstddef>
#include <string>

namespace tvx {
namespace {

constexpr std::string_view kTitleQuestion =
    "The selected Configuration file is possibly not compatible with this program.\r\n"
    "In case a config from a previous version, ignore errors save it again.\r\n"
    "Continue?";
constexpr std::string_view kVersionQuestion =
    "The version of selected Configuration file differs from program version.\r\n"
    "Possibly the functions differ or are missing. Partially import the functions if needed.\r\n"
    "Correct and/or check and (re)save the configuration file.\r\n"
    "Continue?";

constexpr std::string_view kNoPlates =
    "The file has no Plates.\r\n"
    "All that stands in front of them was read; the settings of the yokes behind them were not.\r\n"
    "To repair it, open Configure and save the configuration: the Plates in use are put into the file.";

// Where the header, built by BuildConfigHeader, has title and version; characters counted from 1.
constexpr std::size_t kTitleAt = 15;
constexpr std::size_t kTitleCompared = 35;
constexpr std::size_t kVersionAt = 70;
constexpr std::size_t kVersionCompared = 10;

// Characters from `first` (counted from 1); fewer where the text ends before.
std::string_view Characters(std::string_view text, std::size_t first, std::size_t count) {
  return first > text.size() ? std::string_view() : text.substr(first - 1, count);
}

}  // namespace

ConfigReadResult ConfigReader::Read() {
  in_.ExpectKeyword("General");
  in_.Fields(model_.General);
  sections_.General = true;
  if (!TitleAccepted()) return ConfigReadResult::RefusedTitle;
  if (!VersionAccepted()) return ConfigReadResult::RefusedVersion;
  ReadTables();
  ReadPlates();
  return ConfigReadResult::Loaded;
}

bool ConfigReader::TitleAccepted() {
  return Characters(model_.General.ConfigHeader, kTitleAt, kTitleCompared) ==
             Characters(model_.ProgramTitle, 1, kTitleCompared) ||
         Ask(kTitleQuestion);
}

bool ConfigReader::VersionAccepted() {
  std::string_view version = Characters(model_.General.ConfigHeader, kVersionAt, kVersionCompared);
  while (!version.empty() && version.back() == ' ') version.remove_suffix(1);
  return version == kProgramVersion || Ask(kVersionQuestion);
}

bool ConfigReader::Ask(std::string_view question) {
  const int answer = boxes_.AskToGoOn(question);
  model_.LastAnswer = std::to_string(answer);
  return answer != kAnswerNo;
}

void ConfigReader::ReadTables() {
  in_.ExpectKeyword("IOM");
  const std::size_t count = in_.Count("IOMCount");
  model_.IOModuleInputs.assign(count + 1, IOModuleRecord{});
  for (std::size_t i = 0; i < count; ++i) in_.Fields(model_.IOModuleInputs[i]);
  sections_.IOModules = true;

  in_.ExpectKeyword("Functions");
  for (auto& record : model_.Functions) in_.Fields(record);
  sections_.Functions = true;
  in_.ExpectKeyword("Gaugetypes");
  for (auto& record : model_.Gaugetypes) in_.Fields(record);
  sections_.Gaugetypes = true;
  in_.ExpectKeyword("Gauges");
  for (auto& record : model_.Gauges) in_.Fields(record);
  sections_.Gauges = true;
  in_.ExpectKeyword("Engine Cluster Settings");
  for (auto& record : model_.EngineCluster) in_.Fields(record);
  sections_.EngineCluster = true;
}

void ConfigReader::ReadPlates() {
  const std::string_view keyword = in_.AnyKeyword();
  if (keyword == "Plates") {
    const std::size_t count = in_.Count("PlateCount");
    model_.Plates.assign(count, PlateRecord{});
    for (auto& plate : model_.Plates) {
      in_.BeginLine();
      in_.Value("Name", plate.Name);
      for (std::size_t k = 0; k < PlateRecord::kStoredPoints; ++k) in_.Value("Value", plate.Value[k]);
      in_.EndLine();
      in_.BeginLine();
      for (std::size_t k = 0; k < PlateRecord::kStoredPoints; ++k) in_.Value("Position", plate.Position[k]);
      in_.EndLine();
    }
    sections_.Plates = true;
  } else if (keyword != "GeneralFFB" && keyword != "end") {
    throw ConfigReadError("");
  }
  if (extent_ == ConfigReadExtent::UpToPlates) return;
  // ODDITY: where the section of Plates is absent, the keyword above was that of the next section and is used
  // up, so what follows takes that section's first value for a keyword and the load fails there. Files
  // without Plates have always ended so; their force-feedback settings are never taken over.
  try {
    ReadForceFeedback();
  } catch (const ConfigReadError&) {
    if (sections_.Plates) throw;
    throw ConfigReadError(std::string(kNoPlates));
  }
}

void ConfigReader::ReadForceFeedback() {
  const std::string_view keyword = in_.AnyKeyword();
  if (keyword == "end") return;
  if (keyword != "GeneralFFB") throw ConfigReadError("");
  in_.EachOnItsLine([this](auto&& visit) { GeneralFFBRecord::Fields(model_.GeneralFFB, visit); });

  in_.ExpectKeyword("Yoke1");
  in_.EachOnItsLine([this](auto&& visit) { YokeRecord::Head(model_.Yoke1, visit); });
  ReadYoke1Tail(model_.Yoke1);

  in_.ExpectKeyword("Yoke2");
  in_.EachOnItsLine([this](auto&& visit) { YokeRecord::Head(model_.Yoke2, visit); });
  ReadYoke2Tail(model_.Yoke2);
}

void ConfigReader::ReadYoke1Tail(YokeRecord& yoke) {
  in_.Single("StallMargin", yoke.StallMargin);
  in_.Single("GustTime", yoke.GustTime);
  in_.EachOnItsLine([&](auto&& visit) { YokeRecord::TailNumbers(yoke, visit); });
  for (auto& effect : yoke.Effects) {
    in_.Single("Effects.Frequency", effect.Frequency);
    in_.Single("Effects.Level", effect.Level);
  }
}

// ODDITY: the reader takes one line more than the writer gives here (a byte and an integer for one integer),
// so every later value comes from the line before its own, and the last byte from the closing "end", where it
// is 0. Files in use depend on both sides staying as they are.
void ConfigReader::ReadYoke2Tail(YokeRecord& yoke) {
  in_.Single("StallMargin", yoke.StallMargin);
  in_.Single("TailZero", yoke.TailZero);
  in_.EachOnItsLine([&](auto&& visit) { YokeRecord::TailNumbers(yoke, visit); });
  for (std::size_t i = 0; i + 1 < yoke.Effects.size(); ++i) {
    in_.Single("Effects.Frequency", yoke.Effects[i].Frequency);
    in_.Single("Effects.Level", yoke.Effects[i].Level);
  }
  in_.Single("Effects.Frequency", yoke.Effects.back().Frequency);
  in_.SingleOrText("Effects.Level", yoke.Effects.back().Level, "end");
}

}  // namespace tvx
