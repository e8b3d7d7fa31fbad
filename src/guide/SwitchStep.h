// Switches, encoders and axes of the IO modules: whatever is moved is chosen, and gets one of the usual uses.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "guide/UsualUses.h"
#include "hwbus/iomodule/IOModule.h"
#include "hwbus/iomodule/IOModulePresenter.h"

namespace tvx {

class SwitchStep {
 public:
  static constexpr std::int64_t kTogetherMs = 3000;  // the two halves of an encoder move within it

  SwitchStep(ConfigModel& model, MessageBoxes& boxes, const Clock& clock, std::array<IOModule*, 2> modules)
      : model_(model), presenter_(model, boxes), clock_(clock), modules_(modules) {}

  // Listens to the modules that have a port, from now on; each is asked for its report ten times a second.
  void Start();
  void Stop();
  // About every 20 ms.
  void Tick();
  bool AnyModule() const;
  // Called after every change of what follows.
  Registration SetChanged(std::function<void()> changed) { return changed_.Give(std::move(changed)); }

  // What was moved last; std::nullopt before.
  const std::optional<IOModuleInput>& Chosen() const { return chosen_; }
  bool IsEncoder() const { return encoder_; }
  // "Switch A1 of IO module 1 moved: Landing lights."; what to do before that.
  std::string Words() const;
  // The places in UsualUses() of those that fit what was moved.
  std::vector<std::size_t> Uses() const;
  // The place in UsualUses() of the one that what was moved has already.
  std::optional<std::size_t> UseNow() const;
  // Gives what was moved this use. False, with a message, where that cannot be.
  bool Take(std::size_t use);
  // How many inputs are defined.
  int Defined() const { return model_.IOMCount(); }

 private:
  void OnReport(std::size_t module, const IOModuleReport& report);
  void TakeDefinitions();

  ConfigModel& model_;
  IOModulePresenter presenter_;
  const Clock& clock_;
  std::array<IOModule*, 2> modules_;
  std::array<Registration, 2> reports_;
  std::array<std::optional<IOModuleTouch>, 2> touch_;
  Callback<> changed_;
  int ticks_ = 0;
  std::optional<IOModuleInput> chosen_;
  bool encoder_ = false;
  std::int64_t movedMs_ = 0;
};

}  // namespace tvx
