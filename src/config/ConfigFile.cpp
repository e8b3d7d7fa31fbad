#include "config/ConfigFile.h"

#include <filesystem>
#include <string>
#include <system_error>

#include "config/ConfigReader.h"
#include "platform/AtomicFile.h"

namespace tvx {
namespace {

constexpr std::string_view kError = "Error Configuration file. ";

// Sets a flag for as long as it lives.
class FlagScope {
 public:
  explicit FlagScope(bool& flag) : flag_(flag) { flag_ = true; }
  ~FlagScope() { flag_ = false; }
  FlagScope(const FlagScope&) = delete;
  FlagScope& operator=(const FlagScope&) = delete;

 private:
  bool& flag_;
};

// The same for every way to name a file.
std::string PlaceOf(const std::string& path) {
  std::error_code code;
  const auto place = std::filesystem::weakly_canonical(path, code);
  return code ? path : place.string();
}

}  // namespace

ConfigReadResult ReadConfigText(std::string_view text, ConfigModel& model, MessageBoxes& boxes,
                                std::string& error, ConfigReadExtent extent, ConfigSections* read) {
  error.clear();
  ConfigReader reader(text, model, boxes, extent);
  auto result = ConfigReadResult::Failed;
  try {
    result = reader.Read();
  } catch (const ConfigReadError& e) {
    error = e.what();
  }
  if (read != nullptr) *read = reader.Sections();
  return result;
}

void ConfigFile::LoadConfigFile() {
  if (loading_) return;
  const FlagScope scope(loading_);
  model_.ConfigLoadFailed = false;
  std::string error;
  auto result = ConfigReadResult::Unopened;
  if (const auto text = ReadWholeFile(model_.ConfigFileName, error)) {
    result = ReadConfigText(*text, model_, boxes_, error);
  }
  // ODDITY: a load refused because of the version is no failure, unlike one refused because of the title: the
  // general record that was read stays in force.
  const bool failed = result == ConfigReadResult::Failed || result == ConfigReadResult::Unopened;
  model_.ConfigLoadFailed = failed || result == ConfigReadResult::RefusedTitle;
  if (result == ConfigReadResult::Loaded) {
    model_.ConfigChanged = false;
    notReadWholly_.erase(PlaceOf(model_.ConfigFileName));
  } else if (result != ConfigReadResult::Unopened) {
    notReadWholly_.insert(PlaceOf(model_.ConfigFileName));
  }
  lastLoad_ = result;
  if (failed) boxes_.Show(std::string(kError) + error);
}

bool ConfigFile::SaveConfigFile() {
  std::string error;
  if (!ReplaceFile(model_.ConfigFileName, WriteConfigText(model_), error)) return false;
  model_.ConfigChanged = false;
  notReadWholly_.erase(PlaceOf(model_.ConfigFileName));
  return true;
}

bool ConfigFile::NotReadWholly(const std::string& path) const {
  return notReadWholly_.contains(PlaceOf(path));
}

}  // namespace tvx
