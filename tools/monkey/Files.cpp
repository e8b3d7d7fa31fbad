#include "tools/monkey/Files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "config/ConfigFile.h"
#include "config/StartFile.h"

namespace tvx::monkey {
namespace fs = std::filesystem;
namespace {

constexpr const char* kConfig = "Default.cfg";
const std::string kStart(kStartFileName);

std::string Content(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::string& name, const std::string& content) {
  std::ofstream(name, std::ios::binary | std::ios::trunc) << content;
}

// Questions that a file asks are answered with yes.
class Yes final : public MessageBoxes {
 public:
  void Show(std::string_view) override {}
  int Ask(std::string_view) override { return kAnswerYes; }
};

bool CanBeRead(const std::string& text, ConfigReadExtent extent, ConfigModel& model) {
  Yes boxes;
  std::string error;
  return ReadConfigText(text, model, boxes, error, extent) == ConfigReadResult::Loaded;
}

std::string TroubleOfConfig(const std::string& text) {
  const auto whole = std::make_unique<ConfigModel>();
  if (CanBeRead(text, ConfigReadExtent::Whole, *whole)) return {};
  // A configuration without Plates is read up to them.
  const auto part = std::make_unique<ConfigModel>();
  if (CanBeRead(text, ConfigReadExtent::UpToPlates, *part) && whole->Plates.empty()) return {};
  return "is no configuration that can be read";
}

// A start-up file that was read, and written again, is the same.
std::string TroubleOfStart(const std::string& text) {
  ConfigModel model;
  const std::string path = ReadStartFile(model);
  const bool same = WriteStartFile(model, path) && Content(kStart) == text;
  WriteFile(kStart, text);
  return same ? std::string() : "is no start-up file";
}

// Lists as a simulator brings them.
void MakeSimulator() {
  const fs::path folder = "X-Plane/Resources/plugins";
  fs::create_directories(folder);
  std::string datarefs = "2 1210 Mon Nov 24 10:10:21 2025\n\n";
  for (const char* name : {"flightmodel/position/elevation", "cockpit2/engine/indicators/prop_speed_rpm"})
    datarefs += std::string("sim/") + name + "\tfloat[8]\ty\trpm\tA value\n";
  for (int i = 0; i < 300; ++i)
    datarefs +=
        "sim/multiplayer/position/plane" + std::to_string(i) + "_throttle\tfloat\ty\tratio\tThrottle\n";
  WriteFile(folder / "DataRefs.txt", datarefs);
  WriteFile(folder / "Commands.txt", "sim/autopilot/heading                Autopilot heading-hold.\n");
}

std::string Garbled(std::string text, const Dice& dice) {
  for (int i = 0; i < 20 && !text.empty(); ++i) {
    const std::string draw = "byte " + std::to_string(i);
    text[static_cast<std::size_t>(dice.Below(static_cast<int>(text.size()), draw))] =
        static_cast<char>(dice.Below(256, draw + " value"));
  }
  return text;
}

}  // namespace

void Files::Put(const std::string& name, const std::string& content) {
  put_.insert(content);
  WriteFile(name, content);
}

void Files::Install(const Dice& dice, const ConfigModel& model) {
  config_ = WriteConfigText(model);
  ConfigModel start;
  start.StartDelay = 1;
  WriteStartFile(start, kConfig);
  start_ = Content(kStart);
  MakeSimulator();
  const double kind = dice.Of("installation");
  if (kind < 0.10) {  // a new installation
    fs::remove(kStart);
    return;
  }
  Put(kConfig, config_);
  if (kind < 0.15) Damage(dice);
}

std::string Files::Damage(const Dice& dice) {
  const bool isStart = dice.Chance(0.3, "which file");
  const std::string name = isStart ? kStart : kConfig;
  const std::string& whole = isStart ? start_ : config_;
  switch (dice.Below(6, "damage")) {
    case 0:
      Put(name, whole.substr(0, static_cast<std::size_t>(dice.Below(static_cast<int>(whole.size()), "cut"))));
      return name + " half written";
    case 1:
      Put(name, {});
      return name + " empty";
    case 2:
      Put(name, Garbled(whole, dice));
      return name + " garbled";
    case 3:
      fs::remove(name);
      return name + " removed";
    case 4:
      Put(name, std::string(3000, static_cast<char>(dice.Below(256, "filling"))));
      return name + " filled with rubbish";
    default:
      Put(name, whole);
      return name + " as it was";
  }
}

std::string Files::TroubleOf(const std::string& name) const {
  if (name.find(".saving-") != std::string::npos) return "is the rest of a saving";
  const std::string text = Content(name);
  if (put_.count(text) > 0) return {};
  if (name == kStart) return TroubleOfStart(text);
  return name.find(".cfg") == std::string::npos ? std::string() : TroubleOfConfig(text);
}

std::string Files::Trouble() const {
  for (const auto& entry : fs::directory_iterator(".")) {
    if (!entry.is_regular_file()) continue;
    const std::string name = entry.path().filename().string();
    const std::string trouble = TroubleOf(name);
    if (!trouble.empty()) return name + " " + trouble;
  }
  return {};
}

}  // namespace tvx::monkey
