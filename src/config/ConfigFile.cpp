#include "config/ConfigFile.h"

#include <string>

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

}  // namespace

ConfigReadResult ReadConfigText(std::string_view text, ConfigModel& model, MessageBoxes& boxes,
                                std::string& error, ConfigReadExtent extent) {
  error.clear();
  try {
    return ConfigReader(text, model, boxes, extent).Read();
  } catch (const ConfigReadError& e) {
    error = e.what();
    return ConfigReadResult::Failed;
  }
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
  if (result == ConfigReadResult::Loaded) model_.ConfigChanged = false;
  lastLoad_ = result;
  if (failed) boxes_.Show(std::string(kError) + error);
}

bool ConfigFile::SaveConfigFile() {
  std::string error;
  if (!ReplaceFile(model_.ConfigFileName, WriteConfigText(model_), error)) return false;
  model_.ConfigChanged = false;
  return true;
}

}  // namespace tvx
