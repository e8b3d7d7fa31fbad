// The set-up guide: from nothing to a cockpit that flies, step by step; each step can be taken alone.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "guide/HandWatch.h"
#include "guide/NeedleSteps.h"
#include "guide/SetUpSearch.h"
#include "guide/SwitchStep.h"
#include "guide/TestFlight.h"

namespace tvx {

enum class GuideStep { Find, Radios, Needles, Switches, Flight };
inline constexpr int kGuideSteps = 5;

class Guide {
 public:
  struct Parts {
    ConfigModel& model;
    GuideHardware& hardware;
    SimulatorFinder& finder;
    MessageBoxes& boxes;
    const Clock& clock;
    std::array<IOModule*, 2> modules;
    std::function<bool()> save;  // into the file in use; says itself why it could not
  };
  explicit Guide(const Parts& parts);

  // The guide is opened, and closed. Where nothing is configured yet, it begins to look for everything.
  void Begin();
  void End();
  void Enter(GuideStep step);
  GuideStep Step() const { return step_; }
  // What is to be said of a step in the list of steps: "3 to do", "done", or empty.
  std::string StateOf(GuideStep step) const;
  // About every 20 ms, after Serial::TickTransmit.
  void Tick();
  void OnReply(ReplyView reply);
  // The configuration was changed elsewhere, or put back.
  void Refresh();
  // Called after every change of what the parts below say; a needle that swings is none.
  Registration SetChanged(std::function<void()> changed) { return changed_.Give(std::move(changed)); }

  SetUpSearch& Search() { return search_; }
  HandWatch& Hand() { return hand_; }
  NeedleSteps& Needles() { return needles_; }
  SwitchStep& Switches() { return switches_; }
  TestFlight& Flight() { return flight_; }
  const ConfigModel& Model() const { return parts_.model; }
  // "18 instruments work by themselves."; empty before anything was found.
  std::string FixedWords() const;
  // Gives the radio that moved last this role; false where none did.
  bool GiveRole(std::size_t role);
  // Saves, and makes the file the one that is loaded and run at the start. False where it failed.
  bool SaveAndSetAsStartup();

 private:
  int UndecidedRadios() const;
  bool AnyGauge() const;
  void Changed() { changed_(); }

  Parts parts_;
  SetUpSearch search_;
  HandWatch hand_;
  NeedleSteps needles_;
  SwitchStep switches_;
  TestFlight flight_;
  Registration listening_, simulators_, moved_;
  Callback<> changed_;
  GuideStep step_ = GuideStep::Find;
  bool open_ = false;
  std::string shown_;  // what the running parts said last
};

}  // namespace tvx
