#include "guide/Guide.h"

#include <algorithm>
#include <utility>

#include "config/StartFile.h"
#include "guide/FixedInstruments.h"
#include "instruments/setup/GaugeWork.h"

namespace tvx {

Guide::Guide(const Parts& parts)
    : parts_(parts),
      search_(parts.model, parts.hardware, parts.finder),
      hand_(parts.model, parts.hardware),
      needles_(parts.model, parts.hardware),
      switches_(parts.model, parts.boxes, parts.clock, parts.modules),
      flight_(parts.model, parts.hardware) {
  moved_ = switches_.SetChanged([this] { Changed(); });
}

bool Guide::AnyGauge() const {
  return std::any_of(parts_.model.Gauges.begin(), parts_.model.Gauges.end(),
                     [](const GaugeRecord& gauge) { return gauge.GaugeType != 0; });
}

void Guide::Begin() {
  if (open_) return;
  open_ = true;
  simulators_ = parts_.finder.Listen([this] { Changed(); });
  needles_.Refresh();
  Enter(GuideStep::Find);
  if (!AnyGauge()) search_.Start();
  Changed();
}

void Guide::End() {
  open_ = false;
  search_.Cancel();
  hand_.Stop();
  switches_.Stop();
  flight_.Stop();
  simulators_.End();
}

void Guide::Enter(GuideStep step) {
  if (step_ == GuideStep::Find && step != step_) search_.Cancel();
  hand_.Stop();
  switches_.Stop();
  flight_.Stop();
  step_ = step;
  needles_.Refresh();
  if (step == GuideStep::Radios) hand_.Start();
  if (step == GuideStep::Switches) switches_.Start();
  if (step == GuideStep::Needles && needles_.Current() < 0) needles_.SelectNext();
  Changed();
}

// The views follow only where there are other words to show.
void Guide::Tick() {
  if (!open_) return;
  const bool searching = search_.Running();
  search_.Tick();
  if (searching && !search_.Running()) {
    FillFixedInstruments(parts_.model);
    needles_.Refresh();
  }
  hand_.Tick();
  if (step_ == GuideStep::Needles) needles_.Tick();
  if (step_ == GuideStep::Switches) switches_.Tick();
  flight_.Tick();
  std::string words;
  if (step_ == GuideStep::Find) words = search_.Words() + std::to_string(search_.Percent());
  if (step_ == GuideStep::Radios) words = std::to_string(hand_.Count());
  if (step_ == GuideStep::Flight) words = flight_.Words() + std::to_string(flight_.Percent());
  if (std::exchange(shown_, words) != words) Changed();
}

void Guide::OnReply(ReplyView reply) {
  if (!open_) return;
  hand_.OnReply(reply);
  flight_.OnReply(reply);
}

void Guide::Refresh() {
  if (!open_) return;
  needles_.Refresh();
  Changed();
}

int Guide::UndecidedRadios() const {
  int undecided = 0;
  for (int id = 0; id < kGauges; ++id) {
    const GaugeRecord& gauge = parts_.model.Gauges[static_cast<std::size_t>(id)];
    undecided += IsRadio(gauge.GaugeType) && gauge.GaugeFunction1 == 0 ? 1 : 0;
  }
  return undecided;
}

std::string Guide::StateOf(GuideStep step) const {
  const auto todo = [](int count) {
    return count == 0 ? std::string("done") : std::to_string(count) + " to do";
  };
  switch (step) {
    case GuideStep::Find:
      return search_.Done() && AnyGauge() ? "done" : std::string();
    case GuideStep::Radios:
      return AnyGauge() ? todo(UndecidedRadios()) : std::string();
    case GuideStep::Needles:
      return AnyGauge() ? todo(needles_.LeftToDo()) : std::string();
    case GuideStep::Switches:
      return switches_.Defined() == 0 ? std::string() : std::to_string(switches_.Defined()) + " assigned";
    case GuideStep::Flight:
      return flight_.Done() ? "done" : std::string();
  }
  return {};
}

std::string Guide::FixedWords() const {
  int fixed = 0;
  for (int id = 0; id < kGauges; ++id) {
    const GaugeRecord& gauge = parts_.model.Gauges[static_cast<std::size_t>(id)];
    const bool needs = NeedsWork(parts_.model, id) || (IsRadio(gauge.GaugeType) && gauge.GaugeFunction1 == 0);
    fixed += gauge.GaugeType != 0 && !needs ? 1 : 0;
  }
  if (fixed == 0) return {};
  return std::to_string(fixed) +
         (fixed == 1 ? " instrument works as it is." : " instruments work as they are.");
}

bool Guide::GiveRole(std::size_t role) {
  if (!GiveRadioRole(parts_.model, hand_.Moved(), role)) return false;
  Changed();
  return true;
}

bool Guide::SaveAndSetAsStartup() {
  if (!parts_.save()) return false;
  if (WriteStartFile(parts_.model, parts_.model.ConfigFileName)) return true;
  parts_.boxes.Show("The configuration is saved, but the start-up file cannot be written.");
  return false;
}

}  // namespace tvx
