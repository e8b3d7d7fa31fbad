#include "app/IOModulePeripheral.h"

namespace tvx {

IOModulePeripheral::IOModulePeripheral(ConfigModel& model, SimCom& sim, Serial& serial,
                                       Keystrokes& keystrokes, MessageBoxes& boxes, EventLoop& loop,
                                       const IOModuleParameters& parameters,
                                       std::function<std::int32_t()> lightingWord)
    : model_(model),
      serial_(serial),
      boxes_(boxes),
      lightingWord_(std::move(lightingWord)),
      processTimer_(QStringLiteral("IOM%1.ProcessTimer").arg(parameters.Number)),
      writeTimer_(QStringLiteral("IOM%1.WriteCmdDuringConfig").arg(parameters.Number)),
      secondsTimer_(QStringLiteral("IOM%1.TimerSeconds").arg(parameters.Number)),
      module_(model, sim, serial.Ports(), keystrokes, boxes, loop, parameters,
              {processTimer_, writeTimer_, secondsTimer_}) {
  serial_.SetModuleCommand(parameters.Group, [this](int gaugeID, int command, std::int32_t value) {
    module_.ComposeCmd(gaugeID, command, value);
  });
  processTimer_.OnTick([this] {
    module_.SetLighting(lightingWord_());
    module_.ProcessTimer_Tick();
  });
  writeTimer_.OnTick([this] { module_.WriteCmdDuringConfig_Tick(); });
  secondsTimer_.OnTick([this] { module_.TimerSeconds_Tick(); });
}

IOModulePeripheral::~IOModulePeripheral() {
  StopTimers();
  serial_.SetModuleCommand(module_.Parameters().Group, {});
  module_.SetReportObserver({});
  delete form_;
  delete configuration_;
}

void IOModulePeripheral::StopTimers() {
  for (QtTimer* timer : {&processTimer_, &writeTimer_, &secondsTimer_}) timer->SetEnabled(false);
}

void IOModulePeripheral::Load() {
  module_.ReadDefinitions();
  writeTimer_.SetEnabled(true);
  if (!form_) form_ = new IOModuleStatusForm(module_, model_, [this] { ShowConfiguration(form_); });
  form_->show();
}

void IOModulePeripheral::Unload() {
  if (module_.Running()) module_.cmdStop_Click();
  StopTimers();
  if (form_) form_->Unload();
  form_ = nullptr;
  if (configuration_) configuration_->Unload();
  configuration_ = nullptr;
}

void IOModulePeripheral::Show() {
  if (form_) form_->BringToFront();
}

void IOModulePeripheral::ShowConfiguration(QWidget* parent) {
  if (!configuration_) {
    configuration_ = new ConfigIOMForm(
        model_, module_, boxes_,
        [this] {
          configuration_ = nullptr;
          if (form_) return;  // the module serves a run
          StopTimers();
          serial_.Ports().PortOf(module_.Parameters().Group).Close();
        },
        parent);
    if (!serial_.Ports().PortOf(module_.Parameters().Group).IsOpen()) module_.OpenCommPort();
    writeTimer_.SetEnabled(!module_.Running());
  }
  configuration_->BringToFront();
}

}  // namespace tvx
