// What hangs on the parts of an engine cluster and of an IO module, by the configuration.
#pragma once

#include <QString>
#include <array>
#include <vector>

#include "config/Model.h"
#include "drawn/units/IOModuleState.h"

namespace tvx::drawn {

struct ClusterLegend {
  struct Dial {
    int channel, needle;
    QString name;  // of its Function
    bool operator==(const Dial&) const = default;
  };
  std::vector<Dial> dials;  // of the channels that are enabled
  bool operator==(const ClusterLegend&) const = default;
};
ClusterLegend LegendOfCluster(const ConfigModel& model);

// The names are empty where there is no definition.
struct IOModuleLegend {
  std::array<QString, IOModuleState::kSwitches> switches;
  std::array<QString, IOModuleState::kAxes> axes;
  std::array<QString, IOModuleState::kLamps> lamps;
  // By switch: 0 no encoder; otherwise 1 + the first half of its encoder.
  std::array<int, IOModuleState::kSwitches> encoder{};
  bool operator==(const IOModuleLegend&) const = default;
};
// `module`: 1 or 2.
IOModuleLegend LegendOfModule(const ConfigModel& model, int module);

}  // namespace tvx::drawn
