#include "config/setup/UnsavedWork.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <system_error>

#include "config/setup/KeptFiles.h"
#include "platform/AtomicFile.h"
#include "platform/LocalTime.h"

namespace tvx {

namespace fs = std::filesystem;

namespace {

std::string UnsavedOf(const std::string& configFile) {
  return configFile + ".unsaved";
}

// A link, a folder or a pipe of that name is none of ours.
bool IsThere(const std::string& configFile) {
  std::error_code code;
  return fs::is_regular_file(fs::symlink_status(UnsavedOf(configFile), code));
}

std::string DateOf(const std::string& path) {
  std::error_code code;
  const auto written = fs::last_write_time(path, code);
  if (code) return {};
  const auto onTheClock = std::chrono::floor<std::chrono::seconds>(std::chrono::file_clock::to_sys(written));
  const std::time_t when = std::chrono::system_clock::to_time_t(onTheClock);
  const std::tm local = LocalTimeOf(when);
  char text[32];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local)};
}

// The questions about title and version were answered when the file itself was loaded.
class Unasked final : public MessageBoxes {
 public:
  void Show(std::string_view) override {}
  int Ask(std::string_view) override { return kAnswerYes; }
};

}  // namespace

bool UnsavedWork::Keep() {
  if (!model_.ConfigChanged) return true;
  std::string text = WriteConfigText(model_);
  // Another file may be the one in use by now, with nothing changed since.
  if (text == oursText_) return true;
  const std::string& file = model_.ConfigFileName;
  const std::string name = UnsavedOf(file);
  std::string error;
  if (IsThere(file) && ReadWholeFile(name, error) == text) return true;
  if (IsThere(file) && ours_ != file) MoveToNewName(name, NextKeptName(file, KeptAs::Unsaved), error);
  const bool kept = IsThere(file) ? ReplaceFile(name, text, error) : CreateNewFile(name, text, error);
  if (!kept) return false;
  ours_ = file;
  oursText_ = std::move(text);
  return true;
}

void UnsavedWork::Follow() {
  if (model_.ConfigChanged) {
    Keep();
  } else if (ours_ == model_.ConfigFileName && IsThere(ours_)) {
    std::error_code code;
    fs::remove(UnsavedOf(ours_), code);
    ours_.clear();
    oursText_.clear();
  }
}

std::string UnsavedWork::Words(const std::string& configFile) const {
  if (!IsThere(configFile)) return {};
  return "Changes to " + configFile + " of " + DateOf(UnsavedOf(configFile)) + " were not saved.";
}

bool UnsavedWork::Take(const std::string& configFile) {
  std::string error;
  const auto text = ReadWholeFile(UnsavedOf(configFile), error);
  const auto read = std::make_unique<ConfigModel>(model_);
  Unasked boxes;
  if (!text || ReadConfigText(*text, *read, boxes, error) != ConfigReadResult::Loaded) {
    boxes_.Show("The unsaved changes cannot be read: " + error);
    return false;
  }
  read->ConfigFileName = configFile;
  read->ConfigLoadFailed = false;
  read->ConfigChanged = true;
  model_ = *read;
  ours_ = configFile;
  oursText_ = WriteConfigText(model_);
  return true;
}

bool UnsavedWork::Discard(const std::string& configFile) {
  std::string error;
  const bool moved = MoveToNewName(UnsavedOf(configFile), NextKeptName(configFile, KeptAs::Backup), error);
  if (moved) KeepTenBackups(configFile);
  if (!moved) boxes_.Show("The unsaved changes cannot be put aside: " + error);
  return moved;
}

}  // namespace tvx
