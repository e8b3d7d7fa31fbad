// What looks at the run from beside it: the ports, the cockpit on one page, one value's road; and the trace.
#pragma once

#include "follow/forms/CockpitForm.h"
#include "follow/forms/FollowForm.h"
#include "simlink/overview/forms/PortsForm.h"
#include "trace/TraceRing.h"

namespace tvx {

class WatchForms {
 public:
  WatchForms(FollowedParts parts, ConfigModel& model, SimCom& sim, const TraceRing& trace,
             MessageBoxes& boxes, const Clock& clock)
      : roads_(std::move(parts)), model_(model), sim_(sim), trace_(trace), boxes_(boxes), clock_(clock) {}

  void ShowPorts();
  void ShowCockpit();
  void ShowRoad(const Subject& subject);
  // A road is one of the configuration in use: it goes when that goes.
  void UnloadRoad() { follow_.Unload(); }
  void Unload();

  // The forms; nullptr while one is not open.
  PortsForm* Ports() const { return ports_.Get(); }
  CockpitForm* Cockpit() const { return cockpit_.Get(); }
  FollowForm* Road() const { return follow_.Get(); }

 private:
  void WriteTrace();

  Follower roads_;
  ConfigModel& model_;
  SimCom& sim_;
  const TraceRing& trace_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  FormHolder<PortsForm> ports_;
  FormHolder<CockpitForm> cockpit_;
  FormHolder<FollowForm> follow_;
};

}  // namespace tvx
