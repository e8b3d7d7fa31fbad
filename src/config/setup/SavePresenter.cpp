#include "config/setup/SavePresenter.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "base/NumberText.h"
#include "base/Rounding.h"
#include "config/StartFile.h"
#include "config/setup/KeptFiles.h"
#include "platform/AtomicFile.h"

namespace tvx {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kEnding = ".cfg";
constexpr std::string_view kDelayPrompt =
    "Give autostart time delay (standard =10 seconds).\r\n"
    "Delay is the time (in seconds) the program waits with start-up after simulator is detected as running.";

// What stands under a name; links are followed.
enum class Found { Nothing, File, NoFile };
Found Look(const std::string& name) {
  std::error_code code;
  const auto status = fs::status(name, code);
  if (fs::is_regular_file(status)) return Found::File;
  return status.type() == fs::file_type::not_found ? Found::Nothing : Found::NoFile;
}

// What is kept of a file for as long as its replacing may still fail.
class Copy {
 public:
  // False: there is a file, and it could not be kept.
  bool Keep(const std::string& name, KeptAs as) {
    if (Look(name) == Found::Nothing) return true;
    std::string error;
    const auto old = ReadWholeFile(name, error);
    const std::string copy = NextKeptName(name, as);
    if (!old || !CreateNewFile(copy, *old, error)) return false;
    made_ = copy;
    return true;
  }
  void Withdraw() {
    std::error_code code;
    if (!made_.empty()) fs::remove(made_, code);
  }

 private:
  std::string made_;
};

// What the user types for a time: a number of seconds.
std::optional<std::int16_t> SecondsOf(std::string_view text) {
  const auto number = TypedReal<double>(text);
  const auto seconds = number ? RoundTo<std::int16_t>(*number) : std::nullopt;
  return seconds && *seconds >= 0 ? seconds : std::nullopt;
}

std::string Listed(const ImportChoice& chapters) {
  std::string names;
  for (std::size_t i = 0; i < kImportChapters; ++i) {
    if (chapters[i]) names.append(names.empty() ? "" : "; ").append(kImportChapterNames[i]);
  }
  return names;
}

// What an import took, on lines of their own.
std::string ImportWords(const ImportReport& report, bool readToItsEnd) {
  const std::string taken = Listed(report.taken), missing = Listed(report.missing);
  if (taken.empty() && missing.empty()) return "\r\nTaken: none, as none was ticked.";
  std::string words = "\r\nTaken: " + (taken.empty() ? "none" : taken) + '.';
  if (missing.empty()) return words;
  return words +
         (readToItsEnd ? "\r\nNot in the file, left as it was: "
                       : "\r\nNot taken, or only up to the error: ") +
         missing + '.';
}

// A file's own questions are no matter for a check of what was written.
class Unasked final : public MessageBoxes {
 public:
  void Show(std::string_view) override {}
  int Ask(std::string_view) override { return kAnswerYes; }
};

// Whether the model, written down, can be read again.
bool ReadsBack(const ConfigModel& model) {
  const auto read = std::make_unique<ConfigModel>();
  Unasked boxes;
  std::string error;
  return ReadConfigText(WriteConfigText(model), *read, boxes, error, ConfigReadExtent::UpToPlates) ==
             ConfigReadResult::Loaded &&
         read->IOModuleInputs.size() == model.IOModuleInputs.size() &&
         read->Plates.size() == model.Plates.size();
}

}  // namespace

bool IsConfigFileName(const std::string& name) {
  if (name.size() < kEnding.size()) return false;
  return std::equal(kEnding.rbegin(), kEnding.rend(), name.rbegin(), [](char expected, char found) {
    return expected == std::tolower(static_cast<unsigned char>(found));
  });
}

std::vector<std::string> ConfigFilesIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code code;
  for (fs::directory_iterator entry(folder.empty() ? "." : folder, code), end; !code && entry != end;
       entry.increment(code)) {
    const std::string name = entry->path().filename().string();
    std::error_code ignored;
    if (IsConfigFileName(name) && entry->is_regular_file(ignored)) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

SavePresenter::SavePresenter(ConfigModel& model, ConfigFile& file, MessageBoxes& boxes,
                             std::function<std::string()> header)
    : model_(model), file_(file), boxes_(boxes), header_(std::move(header)) {}

bool SavePresenter::NameAccepted(const std::string& name) {
  if (name.empty()) {
    boxes_.Show("No filename");
    return false;
  }
  if (IsConfigFileName(name)) return true;
  boxes_.Show("Filetype incorrect or missing; must be: ****.cfg");
  return false;
}

KeptAs SavePresenter::KindOfCopy(const std::string& name) const {
  return file_.NotReadWholly(name) ? KeptAs::Unread : KeptAs::Backup;
}

std::string SavePresenter::SaveWords(const std::string& name) const {
  if (!IsConfigFileName(name)) return {};
  switch (Look(name)) {
    case Found::Nothing:
      return "Save makes a new file, " + name + ".";
    case Found::NoFile:
      return name + " is no file. Choose another name.";
    default:
      break;
  }
  const std::string copy = fs::path(NextKeptName(name, KindOfCopy(name))).filename().string();
  if (!file_.NotReadWholly(name)) {
    return "Save replaces " + name + ", whose old content is kept as " + copy + ".";
  }
  return name + " was not read wholly. Save replaces it by what was read; all of it is kept as " + copy +
         ", which no later Save touches.";
}

bool SavePresenter::Save(const std::string& name) {
  if (!Store(name)) return false;
  boxes_.Show("File saved as: " + name);
  return true;
}

bool SavePresenter::Store(const std::string& name) {
  if (!NameAccepted(name)) return false;
  const std::string oldHeader = model_.General.ConfigHeader;
  const std::string oldName = model_.ConfigFileName;
  model_.ConfigLoadFailed = false;
  model_.General.ConfigHeader = header_();
  model_.ConfigFileName = name;
  if (!WriteKeepingOld()) {
    model_.General.ConfigHeader = oldHeader;
    model_.ConfigFileName = oldName;
    return false;
  }
  return true;
}

// The check comes first: a configuration that could not be read again must not replace one that can.
bool SavePresenter::WriteKeepingOld() {
  model_.ConfigLoadFailed = !ReadsBack(model_);
  if (model_.ConfigLoadFailed) {
    boxes_.Show("Configuration corrupt; Cannot save");
    return false;
  }
  const std::string& name = model_.ConfigFileName;
  Copy copy;
  if (!copy.Keep(name, KindOfCopy(name)) || !file_.SaveConfigFile()) {
    copy.Withdraw();
    boxes_.Show("file cannot be overwritten");
    return false;
  }
  KeepTenBackups(name);
  return true;
}

bool SavePresenter::Load(const std::string& name) {
  if (name.empty()) {
    boxes_.Show("No filename");
    return false;
  }
  if (boxes_.Ask("This will overwrite the current configuration! Continue?") == kAnswerNo) return false;
  const std::string before = std::exchange(model_.ConfigFileName, name);
  file_.LoadConfigFile();
  if (file_.LastLoad() == ConfigReadResult::Unopened) {
    model_.ConfigFileName = before;
  } else if (file_.LastLoad() != ConfigReadResult::Loaded) {
    // After half a load the model is neither the old configuration nor the file's.
    model_.ConfigChanged = true;
  }
  return !model_.ConfigLoadFailed;
}

bool SavePresenter::Delete(const std::string& name) {
  if (!NameAccepted(name)) return false;
  if (boxes_.Ask("This will delete the file: " + name + " ; Are you sure? ") == kAnswerNo) return false;
  std::string error;
  const bool moved = MoveToNewName(name, NextKeptName(name, KindOfCopy(name)), error);
  if (moved) KeepTenBackups(name);
  if (!moved) boxes_.Show("File cannot be deleted: " + name);
  return moved;
}

bool SavePresenter::SetAsStartup(const std::string& name) {
  if (name.empty()) {
    boxes_.Show("File Name missing.");
    return false;
  }
  if (Look(name) == Found::NoFile) {
    boxes_.Show("Error in file/time input");
    return false;
  }
  const auto answer = boxes_.AskText(kDelayPrompt, std::to_string(model_.StartDelay));
  if (!answer) return false;
  const auto seconds = SecondsOf(*answer);
  const std::int16_t before = model_.StartDelay;
  if (seconds) model_.StartDelay = *seconds;
  if (seconds && WriteStartFile(model_, name)) return true;
  model_.StartDelay = before;
  boxes_.Show("Error in file/time input");
  return false;
}

bool SavePresenter::ImportPartial(const std::string& name, const ImportChoice& chosen) {
  if (name.empty()) {
    boxes_.Show("No file selected");
    return false;
  }
  if (boxes_.Ask("This will overwrite the selected sections in the currently loaded configuration!\r\n"
                 "Configuration chapters will be imported from: " +
                 name + "\r\nContinue?") == kAnswerNo) {
    return false;
  }
  std::string error;
  ImportReport report;
  const auto text = ReadWholeFile(name, error);
  const auto result =
      text ? ImportConfigText(*text, chosen, model_, boxes_, error, report) : ConfigReadResult::Failed;
  // A read error may come after sections that were taken over.
  const bool any = std::find(chosen.begin(), chosen.end(), true) != chosen.end();
  const bool reached = text && (result == ConfigReadResult::Loaded || result == ConfigReadResult::Failed);
  if (any && reached) model_.ConfigChanged = true;
  if (result == ConfigReadResult::Failed) {
    if (!error.empty()) error = "\r\n" + error;
    boxes_.Show("Error in Configuration file" + error +
                (reached ? ImportWords(report, false) : std::string()));
  }
  if (result != ConfigReadResult::Loaded) return false;
  boxes_.Show("Configuration chapters imported into file: " + model_.ConfigFileName +
              ImportWords(report, true));
  return true;
}

}  // namespace tvx
