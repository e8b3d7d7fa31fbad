// The engine cluster as run control reaches it: the cluster, its timers and its forms.
#pragma once

#include <functional>

#include "core/Peripheral.h"
#include "hwbus/cluster/EngineCluster.h"
#include "hwbus/cluster/EngineClusterPresenter.h"
#include "hwbus/cluster/forms/ConfigEngineClusterForm.h"
#include "hwbus/cluster/forms/EngineClusterForm.h"
#include "hwbus/cluster/forms/TestEngineClusterForm.h"
#include "platform/qt/QtHost.h"

namespace tvx {

// Opens the Plates for the needle of a channel of the engine cluster, over `parent`: the other channels can
// be chosen too, no gauge.
class ClusterPlates {
 public:
  virtual ~ClusterPlates() = default;
  virtual void OpenClusterPlates(int channel, QWidget* parent) = 0;
};

class EngineClusterPeripheral final : public Peripheral, private EngineClusterWindows {
 public:
  EngineClusterPeripheral(ConfigModel& model, SimCom& sim, HardwarePorts& hardware, MessageBoxes& boxes,
                          const Clock& clock, std::function<std::int32_t()> lightingWord);
  ~EngineClusterPeripheral() override { StopTimers(); }

  bool Configured() const override { return cluster_.Configured(); }
  void Load() override;
  void Unload() override;
  void Show() override;
  void OpenPorts() override { cluster_.OpenPorts(); }
  void Run() override { cluster_.cmdRun_Click(); }
  void Stop() override { cluster_.cmdStop_Click(); }

  // To be set before the forms are shown.
  void SetPlates(ClusterPlates& plates) { plates_ = &plates; }

  void ShowTest() override;
  // Opens the set-up, `frmConfigEC`; the cluster's port is open as long as it stands.
  void ShowSetUp() override;
  // The configuration was edited elsewhere.
  void Refresh() { presenter_.Refresh(); }
  // Moves a channel's needle while it is calibrated.
  void MoveNeedle(int channel, int position) { presenter_.MoveNeedle(channel, position); }
  void StopTimers();

  EngineCluster& Cluster() { return cluster_; }
  EngineClusterForm* Form() const { return form_.Get(); }
  TestEngineClusterForm* TestForm() const { return test_.Get(); }
  ConfigEngineClusterForm* ConfigurationForm() const { return configuration_.Get(); }

 private:
  void ShowPlates(int channel) override;
  void ShowEdited();

  ConfigModel& model_;
  MessageBoxes& boxes_;
  std::function<std::int32_t()> lightingWord_;
  ClusterPlates* plates_ = nullptr;
  QtTimer processTimer_{QStringLiteral("EC.ProcessTimer")}, secondTimer_{QStringLiteral("EC.Timer1000ms")};
  EngineCluster cluster_;
  EngineClusterPresenter presenter_{model_, cluster_};
  Registration processTicks_, secondTicks_, edits_;
  FormHolder<EngineClusterForm> form_;
  FormHolder<TestEngineClusterForm> test_;
  FormHolder<ConfigEngineClusterForm> configuration_;
};

}  // namespace tvx
