#include "app/peripherals/IOModulePeripheral.h"

namespace tvx {

IOModulePeripheral::IOModulePeripheral(ConfigModel& model, SimCom& sim, Serial& serial,
                                       Keystrokes& keystrokes, MessageBoxes& boxes, const Clock& clock,
                                       const IOModuleParameters& parameters,
                                       std::function<std::int32_t()> lightingWord)
    : model_(model),
      serial_(serial),
      boxes_(boxes),
      lightingWord_(std::move(lightingWord)),
      processTimer_(QStringLiteral("IOM%1.ProcessTimer").arg(parameters.Number)),
      writeTimer_(QStringLiteral("IOM%1.WriteCmdDuringConfig").arg(parameters.Number)),
      secondsTimer_(QStringLiteral("IOM%1.TimerSeconds").arg(parameters.Number)),
      module_(model, sim, serial.Ports(), keystrokes, boxes, clock, parameters,
              {processTimer_, writeTimer_, secondsTimer_}) {
  commands_ = serial_.SetModuleCommand(
      parameters.Group,
      [this](int gaugeID, int command, std::int32_t value) { module_.ComposeCmd(gaugeID, command, value); });
  processTicks_ = processTimer_.OnTick([this] {
    module_.SetLighting(lightingWord_());
    module_.ProcessTimer_Tick();
  });
  writeTicks_ = writeTimer_.OnTick([this] { module_.WriteCmdDuringConfig_Tick(); });
  secondsTicks_ = secondsTimer_.OnTick([this] { module_.TimerSeconds_Tick(); });
}

void IOModulePeripheral::StopTimers() {
  for (QtTimer* timer : {&processTimer_, &writeTimer_, &secondsTimer_}) timer->SetEnabled(false);
}

void IOModulePeripheral::Load() {
  module_.TakeDefinitions();
  writeTimer_.SetEnabled(true);
  const auto make = [this] {
    return new IOModuleStatusForm(module_, model_, [this] { ShowConfiguration(form_.Get()); });
  };
  form_.GetOrMake(make).show();
}

void IOModulePeripheral::ConfigurationReplaced() {
  if (form_ || configuration_) module_.TakeDefinitions();
}

void IOModulePeripheral::Unload() {
  if (module_.Running()) module_.cmdStop_Click();
  module_.ForgetPorts();
  StopTimers();
  form_.Unload();
  configuration_.Unload();
}

void IOModulePeripheral::Show() {
  if (form_) form_->BringToFront();
}

ConfigIOMForm* IOModulePeripheral::MakeConfiguration(QWidget* parent) {
  auto* form = new ConfigIOMForm(model_, module_, boxes_, parent);
  QObject::connect(form, &Form::Closed, form, [this] {
    if (form_) return;  // the module serves a run
    StopTimers();
    serial_.Ports().PortOf(module_.Parameters().Group).Close();
  });
  if (!serial_.Ports().PortOf(module_.Parameters().Group).IsOpen()) module_.OpenCommPort();
  writeTimer_.SetEnabled(!module_.Running());
  return form;
}

void IOModulePeripheral::ShowConfiguration(QWidget* parent) {
  configuration_.GetOrMake([&] { return MakeConfiguration(parent); }).BringToFront();
}

}  // namespace tvx
