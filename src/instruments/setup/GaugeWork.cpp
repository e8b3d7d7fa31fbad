#include "instruments/setup/GaugeWork.h"

#include "base/NumberFormat.h"
#include "config/ValueText.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr std::size_t kLowest = 2, kHighest = 3;  // entries of a Plate
constexpr std::string_view kOwnValues = "its own values";

std::string Number(double value) {
  std::string text;
  AppendValue(text, value);
  return text;
}

// The needle of a gauge; without the command that moves it.
CalibrationTarget NeedleOf(int gaugeID, int needle) {
  CalibrationTarget target;
  target.gaugeID = gaugeID;
  target.needle = needle;
  return target;
}

}  // namespace

int NeedleFunction(const ConfigModel& model, const CalibrationTarget& needle) {
  if (needle.IsEngineCluster()) {
    const EngineClusterRecord& channel = model.EngineCluster[static_cast<std::size_t>(needle.channel)];
    return channel.Value1 == 0 ? 0 : channel.Value2;
  }
  if (!needle.IsGauge()) return 0;
  const GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(needle.gaugeID)];
  const Instrument* kind = InstrumentOf(gauge.GaugeType);
  return kind == nullptr ? 0 : kind->NeedleShows(gauge, needle.needle == 2 ? 1 : 0).number;
}

int NeedlePlate(const ConfigModel& model, const CalibrationTarget& needle) {
  if (needle.IsEngineCluster()) return model.EngineCluster[static_cast<std::size_t>(needle.channel)].Value3;
  if (!needle.IsGauge()) return -1;
  const GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(needle.gaugeID)];
  return needle.needle == 2 ? gauge.GaugeSetting4 : gauge.GaugeSetting3;
}

std::string RangeWords(const ConfigModel& model, int plateNumber, int functionNumber) {
  const PlateRecord* plate = model.PlateOf(plateNumber);
  const FunctionRecord* function = model.FunctionOf(functionNumber);
  if (plate == nullptr || function == nullptr) return {};
  const double low = function->boxMinimumValue, high = function->boxMaximumValue;
  if (low >= high || (plate->Value[kLowest] <= low && plate->Value[kHighest] >= high)) return {};
  return "Plate " + FormatNumberText(plateNumber, "000") + " goes from " + Number(plate->Value[kLowest]) +
         " to " + Number(plate->Value[kHighest]) + ", its Function from " + Number(low) + " to " +
         Number(high);
}

std::string NeedleFault(const ConfigModel& model, const CalibrationTarget& needle) {
  const int function = NeedleFunction(model, needle), plate = NeedlePlate(model, needle);
  const FunctionRecord* record = function == 0 ? nullptr : model.FunctionOf(function);
  if (record == nullptr || record->ShortName.empty()) return "needs a Function";
  if (model.PlateOf(plate) == nullptr) return "needs a Plate";
  return RangeWords(model, plate, function);
}

std::string GaugeWorkWords(const ConfigModel& model, int gaugeID) {
  const GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(gaugeID)];
  const Instrument* kind = gauge.GaugeType == 0 ? nullptr : InstrumentOf(gauge.GaugeType);
  if (kind == nullptr) return {};
  const InstrumentDescription description = kind->Describe(gauge.GaugeType);
  for (std::size_t i = 0; i < description.plates.size(); ++i) {
    std::string fault = NeedleFault(model, NeedleOf(gaugeID, static_cast<int>(i) + 1));
    if (!fault.empty()) return fault;
  }
  const bool assigns = (!description.function1.label.empty() && description.function1.number) ||
                       !description.function2.label.empty();
  const bool assigned = gauge.GaugeFunction1 != 0 || gauge.GaugeFunction2 != 0;
  return description.plates.empty() && !(assigns && assigned) ? std::string(kOwnValues) : std::string();
}

bool NeedsWork(const ConfigModel& model, int gaugeID) {
  const std::string words = GaugeWorkWords(model, gaugeID);
  return !words.empty() && words != kOwnValues;
}

int InstrumentAdvice::NeedlesOf(int gaugeID) const {
  const int type = model_.Gauges[static_cast<std::size_t>(gaugeID)].GaugeType;
  const Instrument* kind = type == 0 ? nullptr : InstrumentOf(type);
  return kind == nullptr ? 0 : static_cast<int>(kind->Describe(type).plates.size());
}

bool InstrumentAdvice::HasFunction(int gaugeID, int needle) const {
  const int type = model_.Gauges[static_cast<std::size_t>(gaugeID)].GaugeType;
  const Instrument* kind = type == 0 ? nullptr : InstrumentOf(type);
  if (kind == nullptr) return false;
  const InstrumentDescription description = kind->Describe(type);
  const FunctionField& field = needle == 2 ? description.function2 : description.function1;
  // The autopilot panel's numbers are none of Functions.
  return !field.label.empty() && field.number && field.offset == 0;
}

}  // namespace tvx
