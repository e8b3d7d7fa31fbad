#include "config/setup/ConfigurationHistory.h"

#include <utility>

#include "config/setup/ConfigurationChanges.h"

namespace tvx {
namespace {

constexpr std::size_t kFirstOwnFunction = 51, kLastOwnFunction = 269;

}  // namespace

void ConfigurationHistory::Begin() {
  now_ = Now();
  saved_ = model_.ConfigChanged ? nullptr : now_;
  done_.clear();
  undone_.clear();
}

// The Functions outside the user's own are the program's: it defines some of them itself when hardware that
// needs them is opened. That is no step.
bool ConfigurationHistory::ByTheProgram() const {
  if (model_.ConfigChanged != now_->ConfigChanged) return false;
  auto rest = std::make_unique<ConfigModel>(model_);
  for (std::size_t i = 0; i < rest->Functions.size(); ++i) {
    if (i < kFirstOwnFunction || i > kLastOwnFunction) rest->Functions[i] = now_->Functions[i];
  }
  return SameConfiguration(*rest, *now_);
}

bool ConfigurationHistory::Look() {
  const bool otherFile = model_.ConfigFileName != now_->ConfigFileName;
  if (SameConfiguration(*now_, model_)) {
    if (otherFile) now_ = Now();  // saved under another name
    if (!model_.ConfigChanged) saved_ = now_;
    return false;
  }
  if (!otherFile && ByTheProgram()) {
    now_ = Now();
    return false;
  }
  std::string name = otherFile ? "loading of " + model_.ConfigFileName : ConfigurationChanges(*now_, model_);
  if (name.empty()) name = "order of the inputs";
  const std::int64_t ms = clock_.MonotonicMs();
  const bool sameGo = !done_.empty() && undone_.empty() && !otherFile && done_.back().name == name &&
                      ms - changedMs_ < kOneGoMs;
  if (!sameGo) done_.push_back({std::move(name), now_, otherFile});
  if (done_.size() > kSteps) done_.pop_front();
  undone_.clear();
  changedMs_ = ms;
  now_ = Now();
  if (!model_.ConfigChanged) saved_ = now_;
  return true;
}

bool ConfigurationHistory::Undo() {
  Look();
  return Go(done_, undone_);
}

bool ConfigurationHistory::Redo() {
  Look();
  return Go(undone_, done_);
}

bool ConfigurationHistory::Go(std::deque<Step>& from, std::deque<Step>& to) {
  if (from.empty()) return false;
  Step step = std::move(from.back());
  from.pop_back();
  const State target = std::exchange(step.other, now_);
  Put(*target, step.otherFile);
  to.push_back(std::move(step));
  now_ = Now();
  changedMs_ = 0;
  return true;
}

void ConfigurationHistory::Put(const ConfigModel& state, bool otherFile) {
  if (otherFile) {
    model_.ConfigFileName = state.ConfigFileName;
    model_.ConfigLoadFailed = state.ConfigLoadFailed;
    model_.General.ConfigHeader = state.General.ConfigHeader;
    saved_ = state.ConfigChanged ? nullptr : std::make_shared<const ConfigModel>(state);
  }
  const std::string header = std::move(model_.General.ConfigHeader);
  model_.General = state.General;
  model_.General.ConfigHeader = header;
  model_.IOModuleInputs = state.IOModuleInputs;
  model_.Functions = state.Functions;
  model_.Gaugetypes = state.Gaugetypes;
  model_.Categories = state.Categories;
  model_.Gauges = state.Gauges;
  model_.EngineCluster = state.EngineCluster;
  model_.Plates = state.Plates;
  model_.GeneralFFB = state.GeneralFFB;
  model_.Yoke1 = state.Yoke1;
  model_.Yoke2 = state.Yoke2;
  model_.ConfigChanged = !saved_ || !SameConfiguration(*saved_, model_);
}

}  // namespace tvx
