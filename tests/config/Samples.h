// A configuration with another value in every field, and helpers to look at configurations.
#pragma once

#include "config/ConfigFile.h"
#include "config/ValueText.h"
#include "platform/AtomicFile.h"
#include "tests/Test.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx::test {

// Puts the next value of a row into each field that it visits; no two neighbours are alike.
class Filler {
 public:
  void operator()(std::string_view, Byte& v) { v = static_cast<Byte>(++n_ % 251); }
  void operator()(std::string_view, std::int16_t& v) { v = static_cast<std::int16_t>(-16000 + ++n_); }
  void operator()(std::string_view, float& v) { v = static_cast<float>(++n_ % 200) + 0.1f; }
  void operator()(std::string_view, double& v) { v = static_cast<double>(++n_) / 7; }
  void operator()(std::string_view, std::string& v) {
    v = "#1:text, " + std::to_string(++n_) + " 'x';\r\n#2:more\r\n";
  }

 private:
  int n_ = 0;
};

// Every record of the model, each field named, in file order; yoke 2 up to its option bits.
template <typename Model, typename Visit>
void VisitAll(Model& model, Visit&& visit) {
  const auto all = [&](auto& records) {
    for (auto& record : records) std::decay_t<decltype(record)>::Fields(record, visit);
  };
  GeneralRecord::Fields(model.General, visit);
  for (int i = 0; i < model.IOMCount(); ++i)
    IOModuleRecord::Fields(model.IOModuleInputs[static_cast<std::size_t>(i)], visit);
  all(model.Functions);
  all(model.Gaugetypes);
  all(model.Gauges);
  all(model.EngineCluster);
  for (auto& plate : model.Plates) {
    visit("Plate.Name", plate.Name);
    for (int k = 0; k < PlateRecord::kStoredPoints; ++k) {
      visit("Plate.Value", plate.Value[static_cast<std::size_t>(k)]);
      visit("Plate.Position", plate.Position[static_cast<std::size_t>(k)]);
    }
  }
  GeneralFFBRecord::Fields(model.GeneralFFB, visit);
  YokeRecord::Head(model.Yoke1, visit);
  visit("Yoke1.StallMargin", model.Yoke1.StallMargin);
  visit("Yoke1.GustTime", model.Yoke1.GustTime);
  YokeRecord::TailNumbers(model.Yoke1, visit);
  for (auto& effect : model.Yoke1.Effects) {
    visit("Yoke1.Effects.Frequency", effect.Frequency);
    visit("Yoke1.Effects.Level", effect.Level);
  }
  YokeRecord::Head(model.Yoke2, visit);
}

inline ConfigModel DistinctModel() {
  ConfigModel model;
  model.IOModuleInputs.resize(4);
  model.Plates.resize(3);
  VisitAll(model, Filler());
  model.General.ConfigHeader = BuildConfigHeader("X-Plane", "12.11.00", "2024-03-05 14:30:15");
  model.Yoke2.TailZero = 7;
  model.Yoke2.StallSpeed = 11;
  model.Yoke2.NeverExceedSpeed = 12;
  model.Yoke2.ServoSpeed = 13;
  model.Yoke2.RunwayBumps = 14;
  for (std::size_t i = 0; i < 12; ++i) {
    model.Yoke2.Effects[i] = {100.25f + static_cast<float>(i), static_cast<Byte>(30 + i)};
  }
  return model;
}

// The name and text of every field.
inline std::vector<std::pair<std::string, std::string>> AllFields(const ConfigModel& model) {
  std::vector<std::pair<std::string, std::string>> fields;
  VisitAll(model, [&](std::string_view name, const auto& value) {
    std::string text;
    AppendValue(text, value);
    fields.emplace_back(name, text);
  });
  return fields;
}

inline const Texts kSections = {
    "General", "IOM",        "Functions", "Gaugetypes", "Gauges", "Engine Cluster Settings",
    "Plates",  "GeneralFFB", "Yoke1",     "Yoke2"};

// The model's file, cut into its sections.
inline std::map<std::string, std::string> Sections(const ConfigModel& model) {
  const std::string text = WriteConfigText(model);
  std::map<std::string, std::string> sections;
  std::size_t end = text.rfind("\"end\"");
  for (auto name = kSections.rbegin(); name != kSections.rend(); ++name) {
    const std::size_t begin = text.find('"' + *name + "\"\r\n");
    if (begin == std::string::npos) continue;
    sections[*name] = text.substr(begin, end - begin);
    end = begin;
  }
  return sections;
}

// `text` with the first `from` replaced; fails the test where there is none.
inline std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

inline std::string FileContent(const std::filesystem::path& path) {
  std::string error;
  return ReadWholeFile(path.string(), error).value_or("(none)");
}

// A test that works in a new, empty folder.
struct InEmptyFolder : testing::Test, protected ScratchFolder {
  // How many entries the folder has; hidden ones count too.
  static auto Entries() {
    return std::distance(std::filesystem::directory_iterator("."), std::filesystem::directory_iterator());
  }
};

}  // namespace tvx::test
