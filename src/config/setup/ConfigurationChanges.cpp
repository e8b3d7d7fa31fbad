#include "config/setup/ConfigurationChanges.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "base/NumberFormat.h"

namespace tvx {
namespace {

constexpr std::size_t kNamedAtMost = 2;  // of a kind; more are counted
constexpr int kECChannels = 8;
constexpr int kInputsOfModule = 1000;

std::string Numbered(const char* kind, std::size_t number, const std::string& name = {}) {
  return kind + (' ' + FormatNumberText(static_cast<double>(number), "000")) +
         (name.empty() ? "" : ' ' + name);
}

// The things of one kind that differ, and what they are called together.
class Kind {
 public:
  Kind(const char* plural, std::vector<std::string>& words) : plural_(plural), words_(words) {}
  ~Kind() {
    if (names_.size() > kNamedAtMost) {
      words_.push_back(std::to_string(names_.size()) + ' ' + plural_);
    } else {
      words_.insert(words_.end(), names_.begin(), names_.end());
    }
  }
  Kind(const Kind&) = delete;
  Kind& operator=(const Kind&) = delete;

  template <typename Record>
  void Look(const Record& before, const Record& after, const std::string& name) {
    if (before == after) return;
    const Record blank{};
    names_.push_back(before == blank ? "new " + name : after == blank ? name + " cleared" : name);
  }

 private:
  const char* plural_;
  std::vector<std::string>& words_;
  std::vector<std::string> names_;
};

void LookAtGeneral(const GeneralRecord& a, const GeneralRecord& b, std::vector<std::string>& words) {
  const auto look = [&](bool differs, const char* name) {
    if (differs) words.emplace_back(name);
  };
  look(a.ComPortGS != b.ComPortGS, "port of the gauge bus");
  look(a.ComPortEC != b.ComPortEC, "port of the engine cluster");
  look(a.ComPortIOM1 != b.ComPortIOM1, "port of IO module 1");
  look(a.ComPortIOM2 != b.ComPortIOM2, "port of IO module 2");
  look(a.ComPortYoke1 != b.ComPortYoke1, "port of yoke 1");
  look(a.ComPortYoke2 != b.ComPortYoke2, "port of yoke 2");
  look(a.TransferInterval != b.TransferInterval, "transfer interval");
  look(a.LightsSetting1 != b.LightsSetting1 || a.LightsSetting2 != b.LightsSetting2,
       "lights of the instruments");
  look(a.RemoteIP != b.RemoteIP || a.RemotePort != b.RemotePort || a.LocalPort != b.LocalPort ||
           a.ByteOrderReverse != b.ByteOrderReverse || a.BlockUSEL != b.BlockUSEL ||
           a.GeneralText6 != b.GeneralText6,
       "link to the simulator");
  look(a.GeneralText2 != b.GeneralText2 || a.GeneralText5 != b.GeneralText5, "general texts");
}

std::string InputName(int input) {
  return "input " + std::to_string(input % kInputsOfModule) + " of IO module " +
         std::to_string(input / kInputsOfModule);
}

// The definitions stand in the order in which they were made.
void LookAtInputs(const ConfigModel& a, const ConfigModel& b, std::vector<std::string>& words) {
  std::map<int, std::pair<IOModuleRecord, IOModuleRecord>> inputs;
  for (int i = 0; i < a.IOMCount(); ++i) {
    const IOModuleRecord& record = a.IOModuleInputs[static_cast<std::size_t>(i)];
    inputs[record.Input].first = record;
  }
  for (int i = 0; i < b.IOMCount(); ++i) {
    const IOModuleRecord& record = b.IOModuleInputs[static_cast<std::size_t>(i)];
    inputs[record.Input].second = record;
  }
  Kind kind("inputs of IO modules", words);
  for (const auto& [input, records] : inputs) kind.Look(records.first, records.second, InputName(input));
}

void LookAtPlates(const ConfigModel& a, const ConfigModel& b, std::vector<std::string>& words) {
  const PlateRecord none;
  Kind kind("Plates", words);
  for (int i = 0; i < std::max(a.PlateCount(), b.PlateCount()); ++i) {
    const PlateRecord* before = a.PlateOf(i);
    const PlateRecord* after = b.PlateOf(i);
    kind.Look(before == nullptr ? none : *before, after == nullptr ? none : *after,
              Numbered("Plate", static_cast<std::size_t>(i), (after == nullptr ? before : after)->Name));
  }
}

void LookAtTables(const ConfigModel& a, const ConfigModel& b, std::vector<std::string>& words) {
  {
    Kind kind("Functions", words);
    for (std::size_t i = 0; i < a.Functions.size(); ++i) {
      const std::string& name = b.Functions[i].ShortName;
      kind.Look(a.Functions[i], b.Functions[i],
                Numbered("Function", i, name.empty() ? a.Functions[i].ShortName : name));
    }
  }
  {
    Kind kind("gauge types", words);
    for (std::size_t i = 0; i < a.Gaugetypes.size(); ++i)
      kind.Look(a.Gaugetypes[i], b.Gaugetypes[i], Numbered("gauge type", i));
  }
  {
    Kind kind("gauges", words);
    for (std::size_t i = 0; i < a.Gauges.size(); ++i)
      kind.Look(a.Gauges[i], b.Gauges[i], Numbered("gauge", i));
  }
  Kind kind("settings of the engine cluster", words);
  for (std::size_t i = 0; i < a.EngineCluster.size(); ++i) {
    kind.Look(a.EngineCluster[i], b.EngineCluster[i],
              i < kECChannels ? "channel " + std::to_string(i + 1) + " of the engine cluster"
                              : "options of the engine cluster");
  }
}

}  // namespace

bool SameConfiguration(const ConfigModel& a, const ConfigModel& b) {
  GeneralRecord general = b.General;
  general.ConfigHeader = a.General.ConfigHeader;
  return a.General == general && a.IOModuleInputs == b.IOModuleInputs &&
         std::equal(a.Functions.begin(), a.Functions.end(), b.Functions.begin()) &&
         a.Gaugetypes == b.Gaugetypes && a.Categories == b.Categories && a.Gauges == b.Gauges &&
         a.EngineCluster == b.EngineCluster && a.Plates == b.Plates && a.GeneralFFB == b.GeneralFFB &&
         a.Yoke1 == b.Yoke1 && a.Yoke2 == b.Yoke2;
}

std::string ConfigurationChanges(const ConfigModel& before, const ConfigModel& after) {
  std::vector<std::string> words;
  LookAtGeneral(before.General, after.General, words);
  LookAtInputs(before, after, words);
  LookAtTables(before, after, words);
  LookAtPlates(before, after, words);
  if (before.Categories != after.Categories) words.emplace_back("categories");
  if (!(before.GeneralFFB == after.GeneralFFB)) words.emplace_back("forces of the yokes");
  if (!(before.Yoke1 == after.Yoke1)) words.emplace_back("yoke 1");
  if (!(before.Yoke2 == after.Yoke2)) words.emplace_back("yoke 2");
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

}  // namespace tvx
