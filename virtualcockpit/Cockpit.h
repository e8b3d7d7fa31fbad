// The whole virtual cockpit without its window: simulator, gauge bus and instruments of one configuration.
#pragma once

#include <QObject>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "config/Model.h"
#include "virtualcockpit/Traits.h"
#include "virtualcockpit/bus/GaugeBusLine.h"
#include "virtualcockpit/lines/ClusterUnit.h"
#include "virtualcockpit/lines/IOModuleUnit.h"
#include "virtualcockpit/lines/UnitLine.h"
#include "virtualcockpit/sim/SimulatorService.h"

namespace tvx::vc {

// Reads a configuration file; questions are answered with yes. False with the reason in words; what was read
// before an error stays in the model.
bool LoadConfiguration(const std::string& file, ConfigModel& model, std::string& error);
// The same from the text of such a file; `error` is why.
bool LoadConfigurationText(std::string_view text, ConfigModel& model, std::string& error);
// The file that the start-up file in the working folder names, otherwise "Default.cfg".
std::string DefaultConfiguration();

class Cockpit : public QObject {
 public:
  struct Settings {
    // Where the simulator listens, 0 for any free port. std::nullopt: the configuration's remote port,
    // otherwise 49000.
    std::optional<int> port;
    std::string folder = ".";  // where comports/ is
    bool links = true;         // whether comports/com<n> is made
    vc::Traits traits = vc::Traits::Default();
    bool simulator = true;  // false: it stays off until it is switched on
  };

  // Makes the instruments that the configuration names, and every dataref that it needs. Nothing runs yet.
  // The model must outlive the cockpit.
  Cockpit(const ConfigModel& model, Settings settings, QObject* parent = nullptr);

  // Counts at once, but for what needs a start of the simulator or of an instrument.
  void SetTraits(const Traits& traits);
  const vc::Traits& Traits() const { return settings_.traits; }
  // The power of every instrument, IO module and engine cluster.
  void SetPower(bool on);
  bool Powered() const { return gaugeLine_.Bus().Powered(); }

  // Starts the simulator, unless it is to stay off, and the gauge bus. False when one of them could not
  // start; the other runs all the same.
  bool Start();
  // Stops both; the link is taken away.
  void Stop();

  const ConfigModel& Model() const { return model_; }
  SimulatorService& Simulation() { return simulation_; }
  Simulator& Sim() { return simulation_.Sim(); }
  GaugeBusLine& GaugeLine() { return gaugeLine_; }
  GaugeBus& Gauges() { return gaugeLine_.Bus(); }
  const GaugeBus& Gauges() const { return gaugeLine_.Bus(); }
  // IO module 1 or 2 and the engine cluster; their lines are nullptr where the configuration names no port.
  IOModuleUnit& IOModuleOf(int module) { return ioModules_[module == 1 ? 0 : 1]; }
  ClusterUnit& Cluster() { return cluster_; }
  UnitLine* IOModuleLine(int module) { return ioModuleLines_[module == 1 ? 0 : 1].get(); }
  UnitLine* ClusterLine() { return clusterLine_.get(); }
  // False where the configuration names no port for the gauges: there is no line then.
  bool HasGaugeBus() const { return model_.General.ComPortGS > 0; }

 private:
  std::vector<UnitLine*> UnitLines() const;

  const ConfigModel& model_;
  Settings settings_;
  SimulatorService simulation_;
  GaugeBusLine gaugeLine_;
  std::array<IOModuleUnit, 2> ioModules_;
  ClusterUnit cluster_;
  std::array<std::unique_ptr<UnitLine>, 2> ioModuleLines_;
  std::unique_ptr<UnitLine> clusterLine_;
};

}  // namespace tvx::vc
