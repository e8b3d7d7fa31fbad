#include "app/ConfigurationForms.h"

#include "instruments/setup/CalibrationTargets.h"

namespace tvx {

ConfigurationForms::ConfigurationForms(const Parts& parts)
    : parts_(parts),
      save_(parts.model, parts.file, parts.boxes, [this] { return parts_.host.HeaderForSaving(); }),
      hardware_(parts.model, parts.serial, parts.boxes, parts.devices, parts.comPorts, parts.cluster),
      console_(parts.model, parts.serial, parts.boxes),
      instrument_(parts.model, parts.serial, parts.boxes,
                  [this] { return parts_.run.Receiver().ReplyText(); }) {
  hardware_.Search().SetChanged([this] { ShowSearch(); });
  parts_.run.Receiver().SetListener([this](std::optional<ReplyView> reply) {
    hardware_.Search().OnReply(reply);
    if (reply) console_.OnReply(*reply);
  });
  parts_.cluster.SetPlates(*this);
}

template <typename FormType, typename... Arguments>
FormType& ConfigurationForms::ShowForm(QPointer<FormType>& form, Arguments&&... arguments) {
  if (!form || form->Unloading()) form = new FormType(std::forward<Arguments>(arguments)...);
  form->BringToFront();
  return *form;
}

void ConfigurationForms::Show(QWidget* parent) {
  if (!main_) hardware_.OpenPorts();
  ShowForm(main_, parts_.model, parts_.boxes, hardware_, hardware_, *this, parent);
}

void ConfigurationForms::Open(ConfigurationWindow window) {
  switch (window) {
    case ConfigurationWindow::SaveAndLoad:
      hardware_.CancelSearch();
      ShowForm(saveForm_, parts_.model, save_, *this, main_);
      break;
    case ConfigurationWindow::Functions:
      parts_.functions.ShowEditor(main_, *this);
      break;
    case ConfigurationWindow::Plates:
      OpenPlates(CalibrationTargets(parts_.model), {}, main_);
      break;
    case ConfigurationWindow::GaugeTest:
      hardware_.CancelSearch();
      ShowForm(testForm_, parts_.model, console_, hardware_, *this, main_);
      break;
    case ConfigurationWindow::Adapters:
      OpenAdapters();
      break;
    case ConfigurationWindow::XplaneTest:
      parts_.functions.ShowConsole(main_);
      break;
    case ConfigurationWindow::IOModule1:
      OpenPeripheral(PeripheralKind::IOModule1);
      break;
    case ConfigurationWindow::IOModule2:
      OpenPeripheral(PeripheralKind::IOModule2);
      break;
    case ConfigurationWindow::EngineCluster:
      OpenPeripheral(PeripheralKind::EngineCluster);
      break;
    case ConfigurationWindow::Yokes:
      OpenPeripheral(PeripheralKind::Yokes);
      break;
  }
}

void ConfigurationForms::OpenAdapters() {
  const bool open = adaptersForm_ && !adaptersForm_->Unloading();
  AdaptersForm& form = ShowForm(adaptersForm_, parts_.devices, parts_.comPorts, parts_.boxes, main_.data());
  if (open) return;
  QObject::connect(&form, &AdaptersForm::Assigned, &form, [this] {
    hardware_.OpenPortsAnew();
    Refresh();
  });
}

void ConfigurationForms::OpenPeripheral(PeripheralKind kind) {
  Peripheral* peripheral = parts_.peripherals[static_cast<std::size_t>(kind)];
  if (peripheral == nullptr) return;
  if (!peripheral->Configured()) {
    parts_.boxes.Show("Give this group its port first.");
    return;
  }
  peripheral->Load();
  peripheral->Show();
}

void ConfigurationForms::OpenGauge(int gaugeID) {
  hardware_.CancelSearch();
  instrument_.Open(gaugeID);
  ShowForm(instrumentForm_, parts_.model, instrument_, *this, *this, main_);
}

void ConfigurationForms::OpenCalibration(int gaugeID, int needle) {
  OpenPlates(CalibrationTargets(parts_.model), {.gaugeID = gaugeID, .needle = needle}, instrumentForm_);
}

// It may be opened while the gauge bus is not this configuration's to send on.
void ConfigurationForms::OpenClusterPlates(int channel, QWidget* parent) {
  auto targets = CalibrationTargets(parts_.model);
  std::erase_if(targets, [](const CalibrationTarget& target) { return !target.IsEngineCluster(); });
  OpenPlates(std::move(targets), {.channel = channel}, parent);
}

void ConfigurationForms::OpenPlates(std::vector<CalibrationTarget> targets, const CalibrationTarget& first,
                                    QWidget* parent) {
  hardware_.CancelSearch();
  const bool open = calibrateForm_ && !calibrateForm_->Unloading();
  CalibrateForm& form =
      ShowForm(calibrateForm_, parts_.model, parts_.boxes, std::move(targets), first, hardware_, parent);
  if (open) return;
  QObject::connect(&form, &Form::Ended, &form, [this] {
    if (instrumentForm_ && !instrumentForm_->Unloading()) instrumentForm_->Refresh();
    Refresh();
  });
}

void ConfigurationForms::ModelChanged() {
  hardware_.FollowPortNumbers();
  Refresh();
}

void ConfigurationForms::Refresh() {
  hardware_.LookAgain();
  if (main_ && !main_->Unloading()) main_->Rebuild();
  parts_.cluster.Refresh();
}

void ConfigurationForms::ShowSearch() {
  if (!main_ || main_->Unloading()) return;
  const GaugeSearch& search = hardware_.Search();
  main_->ShowSearch(
      {search.Running(), search.Done(), GaugeSearch::kAddresses, search.Summary(), search.Remarks()});
}

void ConfigurationForms::Tick() {
  if (main_) hardware_.Tick();
}

void ConfigurationForms::MainFormClosed() {
  main_ = nullptr;
  hardware_.CancelSearch();
  console_.cmdStopPoll();
  for (Peripheral* peripheral : parts_.peripherals) {
    if (peripheral != nullptr) peripheral->Unload();
  }
  parts_.serial.CloseComPorts();
  parts_.host.ConfigurationClosed();
}

void ConfigurationForms::Unload() {
  if (!main_) return;
  const QPointer<MainConfigureForm> form = main_;
  hardware_.CancelSearch();
  console_.cmdStopPoll();
  // The others are its children and go with it.
  if (form) form->Unload();
  main_ = nullptr;
}

}  // namespace tvx
