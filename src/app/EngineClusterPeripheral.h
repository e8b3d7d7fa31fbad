// The engine cluster as run control reaches it: the cluster, its timers and its forms.
#pragma once

#include <QPointer>
#include <functional>

#include "core/Peripheral.h"
#include "hwbus/EngineCluster.h"
#include "hwbus/forms/EngineClusterForm.h"
#include "hwbus/forms/TestEngineClusterForm.h"
#include "platform/qt/QtHost.h"

namespace tvx {

class EngineClusterPeripheral final : public Peripheral {
 public:
  EngineClusterPeripheral(ConfigModel& model, SimCom& sim, Serial& serial, MessageBoxes& boxes,
                          std::function<std::int32_t()> lightingWord);
  ~EngineClusterPeripheral() override;

  bool Configured() const override { return cluster_.Configured(); }
  void Load() override;
  void Unload() override;
  void Show() override;
  void OpenPorts() override { cluster_.OpenPorts(); }
  void Run() override { cluster_.cmdRun_Click(); }
  void Stop() override { cluster_.cmdStop_Click(); }

  void ShowTest();
  void StopTimers();

  EngineCluster& Cluster() { return cluster_; }
  EngineClusterForm* Form() const { return form_; }
  TestEngineClusterForm* TestForm() const { return test_; }

 private:
  ConfigModel& model_;
  std::function<std::int32_t()> lightingWord_;
  QtTimer processTimer_{QStringLiteral("EC.ProcessTimer")}, secondTimer_{QStringLiteral("EC.Timer1000ms")};
  EngineCluster cluster_;
  QPointer<EngineClusterForm> form_;
  QPointer<TestEngineClusterForm> test_;
};

}  // namespace tvx
