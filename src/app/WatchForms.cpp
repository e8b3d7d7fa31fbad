#include "app/WatchForms.h"

#include "config/ConfigFile.h"
#include "platform/AtomicFile.h"

namespace tvx {
namespace {

constexpr const char* kTraceFile = "TVXTrace.txt";

}  // namespace

void WatchForms::ShowPorts() {
  if (ports_) ports_->Refresh();
  ports_.GetOrMake([this] { return new PortsForm(model_, sim_); }).BringToFront();
}

void WatchForms::ShowCockpit() {
  const auto make = [this] { return new CockpitForm(roads_, [this] { WriteTrace(); }); };
  cockpit_.GetOrMake(make).BringToFront();
}

void WatchForms::ShowRoad(const Subject& subject) {
  FollowForm& form = follow_.GetOrMake([this] { return new FollowForm(roads_); });
  form.Choose(subject);
  form.BringToFront();
}

void WatchForms::Unload() {
  ports_.Unload();
  cockpit_.Unload();
  follow_.Unload();
}

void WatchForms::WriteTrace() {
  const std::string text = trace_.FileText(WriteConfigText(model_), clock_.MonotonicMs());
  std::string error;
  const bool written = ReplaceFile(kTraceFile, text, error);
  boxes_.Show(written ? "What happened in the last five minutes is in " + std::string(kTraceFile) +
                            ", with the configuration. Send it along when you ask for help."
                      : "The trace could not be written: " + error);
}

}  // namespace tvx
