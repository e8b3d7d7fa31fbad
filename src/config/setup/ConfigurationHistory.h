// Undo and redo over the whole configuration. Steps are found by looking at the model, so that none is
// missed, whatever form or button made it; each is named by what it changed.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "config/Model.h"
#include "platform/Host.h"

namespace tvx {

class ConfigurationHistory {
 public:
  static constexpr std::size_t kSteps = 100;      // the oldest is forgotten
  static constexpr std::int64_t kOneGoMs = 1500;  // changes of the same thing within it are one step

  ConfigurationHistory(ConfigModel& model, const Clock& clock) : model_(model), clock_(clock) { Begin(); }

  // Begins anew, with the configuration as it is now and no step.
  void Begin();
  // Takes what has changed since the last look for a step. True where there was something. A save is none.
  bool Look();
  // What can be undone and redone, by name (ConfigurationChanges); empty: nothing can.
  std::string UndoName() const { return done_.empty() ? std::string() : done_.back().name; }
  std::string RedoName() const { return undone_.empty() ? std::string() : undone_.back().name; }
  // Puts the configuration back by one step, or forward again; looks first. The name of the file in use goes
  // along only where the step was the loading of another file. False where there is no step.
  bool Undo();
  bool Redo();

 private:
  using State = std::shared_ptr<const ConfigModel>;
  struct Step {
    std::string name;
    State other;  // the state on the far side of the step
    bool otherFile = false;
  };

  bool ByTheProgram() const;
  State Now() const { return std::make_shared<const ConfigModel>(model_); }
  bool Go(std::deque<Step>& from, std::deque<Step>& to);
  void Put(const ConfigModel& state, bool otherFile);

  ConfigModel& model_;
  const Clock& clock_;
  State now_;
  std::deque<Step> done_, undone_;
  std::int64_t changedMs_ = 0;
  State saved_;  // what the file in use holds; null where that is not known
};

}  // namespace tvx
