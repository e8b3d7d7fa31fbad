#include "instruments/setup/CalibrationTargets.h"

#include "base/NumberFormat.h"
#include "config/setup/GaugeList.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kChannels = 8;

}  // namespace

std::vector<CalibrationTarget> CalibrationTargets(const ConfigModel& model) {
  std::vector<CalibrationTarget> targets;
  for (int id = 0; id < kGauges; ++id) {
    const GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(id)];
    const Instrument* kind = gauge.GaugeType == 0 ? nullptr : InstrumentOf(gauge.GaugeType);
    if (kind == nullptr) continue;
    const InstrumentDescription description = kind->Describe(gauge.GaugeType);
    int needle = 1;
    for (const PlateField& plate : description.plates) {
      CalibrationTarget target;
      target.gaugeID = id;
      target.needle = needle++;
      target.command = plate.command;
      std::string kindName = GaugetypeNameInList(model, gauge.GaugeType);
      kindName.erase(kindName.find_last_not_of(' ') + 1);
      target.name = FormatNumberText(id, "000") + "  " + kindName + ": " + std::string(plate.label);
      targets.push_back(target);
    }
  }
  for (int channel = 0; model.HasEngineCluster() && channel < kChannels; ++channel) {
    CalibrationTarget target;
    target.channel = channel;
    target.name = "Engine cluster, channel " + std::to_string(channel + 1);
    targets.push_back(target);
  }
  return targets;
}

}  // namespace tvx
