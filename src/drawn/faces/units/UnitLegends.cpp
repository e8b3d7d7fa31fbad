#include "drawn/faces/units/UnitLegends.h"

#include "hwbus/iomodule/IOModuleInput.h"

namespace tvx::drawn {
namespace {

constexpr int kChannels = 8, kEngineSetting = 8, kDual = 1;

// In the dual version the second engine's needles stand eight further on.
int NeedleOf(int channel, bool dual) {
  return dual && channel >= 4 ? channel + 4 : channel;
}

QString NameOf(const ConfigModel& model, int function) {
  const FunctionRecord* record = function < 1 ? nullptr : model.FunctionOf(function);
  return record == nullptr ? QString() : QString::fromStdString(record->ShortName);
}

}  // namespace

ClusterLegend LegendOfCluster(const ConfigModel& model) {
  ClusterLegend legend;
  const bool dual = model.EngineCluster[kEngineSetting].Value1 == kDual;
  for (int channel = 0; channel < kChannels; ++channel) {
    const EngineClusterRecord& record = model.EngineCluster[static_cast<std::size_t>(channel)];
    if (record.Value1 != 0)
      legend.dials.push_back({channel, NeedleOf(channel, dual), NameOf(model, record.Value2)});
  }
  return legend;
}

IOModuleLegend LegendOfModule(const ConfigModel& model, int module) {
  IOModuleLegend legend;
  for (int i = 0; i < model.IOMCount(); ++i) {
    const IOModuleRecord& record = model.IOModuleInputs[static_cast<std::size_t>(i)];
    const auto input = IOModuleInputOf(record.Input);
    if (!input || input->Module != module) continue;
    const auto index = static_cast<std::size_t>(input->Index);
    const QString name = NameOf(model, record.FunctionNr);
    if (input->Kind == IOModuleKind::Analogue) legend.axes[index] = name;
    if (input->Kind == IOModuleKind::Lamp) legend.lamps[index] = name;
    if (input->Kind != IOModuleKind::Switch) continue;
    const bool key = record.ActionKind == static_cast<Byte>(IOModuleAction::Keystroke);
    legend.switches[index] = key ? QStringLiteral("keystroke") : name;
    const auto type = static_cast<IOModuleSwitchType>(record.SwitchType);
    if (type == IOModuleSwitchType::EncoderA) legend.encoder[index] = 1 + input->Index;
    if (type == IOModuleSwitchType::EncoderB && input->Index > 0) legend.encoder[index] = input->Index;
  }
  return legend;
}

}  // namespace tvx::drawn
