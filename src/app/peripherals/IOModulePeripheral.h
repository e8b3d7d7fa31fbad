// One IO module as run control reaches it: the module, its timers and its forms.
#pragma once

#include <functional>

#include "core/Peripheral.h"
#include "hwbus/gaugebus/Serial.h"
#include "hwbus/iomodule/IOModule.h"
#include "hwbus/iomodule/forms/ConfigIOMForm.h"
#include "hwbus/iomodule/forms/IOModuleStatusForm.h"
#include "platform/qt/QtHost.h"

namespace tvx {

class IOModulePeripheral final : public Peripheral {
 public:
  // `lightingWord`: the cockpit's lighting as the gauges get it.
  IOModulePeripheral(ConfigModel& model, SimCom& sim, Serial& serial, Keystrokes& keystrokes,
                     MessageBoxes& boxes, const Clock& clock, const IOModuleParameters& parameters,
                     std::function<std::int32_t()> lightingWord);
  ~IOModulePeripheral() override { StopTimers(); }

  bool Configured() const override { return module_.Configured(); }
  void Load() override;
  void Unload() override;
  void Show() override;
  void OpenPorts() override { module_.OpenPorts(); }
  void Run() override { module_.cmdRun_Click(); }
  void Stop() override { module_.cmdStop_Click(); }

  // Opens the module's set-up, `ConfigIOM`, over `parent`; the module's port is open as long as it stands.
  void ShowConfiguration(QWidget* parent);
  void StopTimers();
  // The configuration was put back or forward.
  void ConfigurationReplaced();

  IOModule& Module() { return module_; }
  IOModuleStatusForm* Form() const { return form_.Get(); }
  ConfigIOMForm* ConfigurationForm() const { return configuration_.Get(); }

 private:
  ConfigIOMForm* MakeConfiguration(QWidget* parent);

  ConfigModel& model_;
  Serial& serial_;
  MessageBoxes& boxes_;
  std::function<std::int32_t()> lightingWord_;
  QtTimer processTimer_, writeTimer_, secondsTimer_;
  IOModule module_;
  Registration commands_, processTicks_, writeTicks_, secondsTicks_;
  FormHolder<IOModuleStatusForm> form_;
  FormHolder<ConfigIOMForm> configuration_;
};

}  // namespace tvx
