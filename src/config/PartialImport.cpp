#include "config/PartialImport.h"

#include <algorithm>
#include <memory>

#include "config/FunctionNumbers.h"

namespace tvx {
namespace {

void TakeOver(const ConfigModel& read, const ImportChoice& chosen, ConfigModel& model) {
  const auto isChosen = [&chosen](ImportChapter chapter) {
    return chosen[static_cast<std::size_t>(chapter)];
  };
  const auto userFunctions = read.Functions.begin() + functions::kFirstOfUser;
  if (isChosen(ImportChapter::General)) model.General = read.General;
  if (isChosen(ImportChapter::IOModules)) model.IOModuleInputs = read.IOModuleInputs;
  if (isChosen(ImportChapter::StandardFunctions)) {
    std::copy(read.Functions.begin(), userFunctions, model.Functions.begin());
  }
  if (isChosen(ImportChapter::UserFunctions)) {
    std::copy(userFunctions, read.Functions.end(), model.Functions.begin() + functions::kFirstOfUser);
  }
  if (isChosen(ImportChapter::Gaugetypes)) model.Gaugetypes = read.Gaugetypes;
  if (isChosen(ImportChapter::Gauges)) model.Gauges = read.Gauges;
  if (isChosen(ImportChapter::Plates)) model.Plates = read.Plates;
  if (isChosen(ImportChapter::EngineCluster)) model.EngineCluster = read.EngineCluster;
}

}  // namespace

ConfigReadResult ImportConfigText(std::string_view text, const ImportChoice& chosen, ConfigModel& model,
                                  MessageBoxes& boxes, std::string& error, ImportReport& report) {
  // What the file does not reach stays as the model has it.
  const auto read = std::make_unique<ConfigModel>(model);
  ConfigSections sections;
  const ConfigReadResult result =
      ReadConfigText(text, *read, boxes, error, ConfigReadExtent::UpToPlates, &sections);
  model.LastAnswer = read->LastAnswer;
  if (result == ConfigReadResult::Loaded || result == ConfigReadResult::Failed) {
    TakeOver(*read, chosen, model);
    const ImportChoice whole{sections.General,   sections.IOModules,    sections.Functions,
                             sections.Functions, sections.Gaugetypes,   sections.Gauges,
                             sections.Plates,    sections.EngineCluster};
    for (std::size_t i = 0; i < kImportChapters; ++i) {
      report.taken[i] = chosen[i] && whole[i];
      report.missing[i] = chosen[i] && !whole[i];
    }
  }
  return result;
}

}  // namespace tvx
