#include "follow/CockpitMirror.h"

#include <algorithm>

#include "config/FunctionNumbers.h"
#include "instruments/kinds/Registry.h"

namespace tvx {

std::vector<CockpitMirror::Likeness> CockpitMirror::Likenesses() const {
  std::vector<Likeness> all;
  for (int id = 1; id < kGauges; ++id) {
    const GaugeRecord& record = parts_.Model.Gauges[static_cast<std::size_t>(id)];
    if (record.GaugeType == 0) continue;
    Likeness& one = all.emplace_back();
    one.gaugeID = id;
    one.record = record;
    const Instrument* kind = InstrumentOf(record.GaugeType);
    for (std::size_t i = 0; kind != nullptr && i < one.plates.size(); ++i) {
      const int plate = i == 0 ? record.GaugeSetting3 : record.GaugeSetting4;
      if (const PlateRecord* found = parts_.Model.PlateOf(plate)) one.plates[i] = *found;
      if (const FunctionRecord* shown = parts_.Model.FunctionOf(kind->NeedleShows(record, i).number))
        one.names[i] = shown->ShortName;
    }
  }
  return all;
}

bool CockpitMirror::Outdated() const {
  const std::vector<Likeness> now = Likenesses();
  return !std::ranges::equal(now, made_, {}, {}, &Made::likeness);
}

void CockpitMirror::Rebuild() {
  made_.clear();
  const bool voltageKnown = !parts_.Model.Functions[functions::kVoltage].ShortName.empty();
  for (Likeness& likeness : Likenesses()) {
    const GaugeRecord& record = likeness.record;
    Made& made = made_.emplace_back();
    made.device = drawn::MakeDevice({static_cast<Byte>(likeness.gaugeID), record.GaugeType,
                                     record.GaugeSetting1, record.GaugeSetting2, record.GaugeSetting5});
    made.device->SetTraits({.handRules = false, .startsAnew = false});
    made.device->FollowBuses(voltageKnown && (record.GaugeSetting5 & kOptionUnlit) == 0);
    made.likeness = std::move(likeness);
  }
}

void CockpitMirror::Refresh() {
  for (Made& made : made_) {
    for (int command = 0; command < drawn::Device::kCommands; ++command) {
      const auto told = parts_.Cycle.ToldOf(made.likeness.gaugeID, command);
      if (!told || !told->value) continue;
      auto& seen = made.told[static_cast<std::size_t>(command)];
      const std::pair now(*told->value, told->leftMs);
      if (seen == now) continue;
      seen = now;
      made.device->Receive(command, *told->value);
    }
    TakeAnswer(made);
  }
}

void CockpitMirror::TakeAnswer(Made& made) {
  for (const ActiveGauge& gauge : parts_.Cycle.ActiveGauges()) {
    if (gauge.GaugeID != made.likeness.gaugeID || !gauge.Answer || made.answer == gauge.Answer) continue;
    made.answer = gauge.Answer;
    made.device->TakeAnswer(*made.answer);
  }
}

}  // namespace tvx
