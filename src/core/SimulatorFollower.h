// Follows a simulator whose computer gets another address.
#pragma once

#include "config/Model.h"
#include "simlink/SimCom.h"
#include "simlink/beacon/SimulatorFinder.h"

namespace tvx {

// Where the configuration has the setting kFollowSetting, it listens to beacons. When the configured address
// is silent, in its beacon as in the link, and the X-Plane of the host that the setting names is heard at one
// other address for some seconds, that address and port are put into the configuration, which counts as
// changed, and the link is opened again. Nothing is followed from a host name: that is looked up.
class SimulatorFollower {
 public:
  static constexpr std::int64_t kSettledMs = 3000;  // heard for so long before it is followed
  static constexpr std::int64_t kLinkSilentMs = 2000;

  SimulatorFollower(ConfigModel& model, SimCom& sim, SimulatorFinder& finder, const Clock& clock)
      : model_(model), sim_(sim), finder_(finder), clock_(clock) {}

  // About once a second. `mayFollow`: the user is not editing the configuration.
  void Tick(bool mayFollow);

 private:
  const FoundSimulator* Moved(const std::string& host) const;  // null: there is none to follow

  ConfigModel& model_;
  SimCom& sim_;
  SimulatorFinder& finder_;
  const Clock& clock_;
  Registration listening_;
  bool listens_ = false;
};

}  // namespace tvx
