#include "app/ConfigurationForms.h"

#include "core/forms/StartForm.h"
#include "instruments/setup/CalibrationTargets.h"

namespace tvx {
ConfigurationForms::ConfigurationForms(const Parts& parts)
    : parts_(parts),
      save_(parts.model, parts.file, parts.boxes, [this] { return parts_.host.HeaderForSaving(); }),
      hardware_(parts.model, parts.serial, parts.boxes, parts.devices, parts.comPorts, parts.adapterLine,
                parts.cluster),
      console_(parts.model, parts.serial, parts.boxes),
      instrument_(parts.model, parts.serial, parts.boxes,
                  [this] { return parts_.run.Receiver().ReplyText(); }),
      guide_({parts.model, hardware_, parts.finder, parts.boxes, parts.clock, parts.modules,
              [this] { return save_.Store(parts_.model.ConfigFileName); }}) {
  searchChanged_ = hardware_.Search().SetChanged([this] { ShowSearch(); });
  replies_ = parts_.run.Receiver().SetListener([this](std::optional<ReplyView> reply) {
    hardware_.Search().OnReply(reply);
    if (!reply) return;
    console_.OnReply(*reply);
    guide_.OnReply(*reply);
  });
  parts_.cluster.SetPlates(*this);
}

template <typename FormType, typename... Arguments>
void ConfigurationForms::ShowForm(FormHolder<FormType>& form, Arguments&&... arguments) {
  form.GetOrMake([&] { return new FormType(std::forward<Arguments>(arguments)...); }).BringToFront();
}

void ConfigurationForms::Show(QWidget* parent) {
  const auto make = [&] {
    hardware_.OpenPorts();
    auto* form = new MainConfigureForm(parts_.model, parts_.boxes, hardware_, hardware_, *this, parts_.finder,
                                       advice_, parent);
    QObject::connect(form, &Form::Closed, form, [this] { MainFormClosed(); });
    return form;
  };
  main_.GetOrMake(make).BringToFront();
}

void ConfigurationForms::Open(ConfigurationWindow window) {
  switch (window) {
    case ConfigurationWindow::Guide:
      OpenGuide();
      break;
    case ConfigurationWindow::SaveAndLoad:
      hardware_.CancelSearch();
      ShowForm(saveForm_, parts_.model, save_, *this, main_.Get());
      break;
    case ConfigurationWindow::Functions:
      parts_.functions.ShowEditor(main_.Get(), *this);
      break;
    case ConfigurationWindow::Plates:
      OpenPlates(CalibrationTargets(parts_.model), {}, main_.Get());
      break;
    case ConfigurationWindow::GaugeTest:
      hardware_.CancelSearch();
      ShowForm(testForm_, parts_.model, console_, hardware_, *this, main_.Get());
      break;
    case ConfigurationWindow::Adapters:
      OpenAdapters();
      break;
    case ConfigurationWindow::XplaneTest:
      parts_.functions.ShowConsole(main_.Get());
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
    case ConfigurationWindow::Aircraft:
      ShowForm(aircraftForm_, parts_.aircraft, ConfigurationFiles(), main_.Get());
      break;
  }
}

void ConfigurationForms::OpenGuide() {
  hardware_.CancelSearch();
  const auto make = [this] {
    auto* form = new GuideForm(guide_, parts_.boxes, main_.Get());
    QObject::connect(form, &Form::Closed, form, [this] { Refresh(); });
    return form;
  };
  guideForm_.GetOrMake(make).BringToFront();
}

void ConfigurationForms::OpenAdapters() {
  const auto make = [this] {
    auto* form = new AdaptersForm(parts_.devices, parts_.comPorts, parts_.boxes, main_.Get());
    QObject::connect(form, &AdaptersForm::RoleAsked, form,
                     [this](const SerialDevice& adapter) { hardware_.AskRole(adapter); });
    QObject::connect(form, &AdaptersForm::RoleNotAsked, form, [this] { hardware_.Roles().Cancel(); });
    QObject::connect(form, &Form::Ended, form, [this] { hardware_.Roles().Cancel(); });
    QObject::connect(form, &AdaptersForm::RoleTaken, form, [this](int comNumber) {
      if (const auto offer = hardware_.Roles().Offered()) hardware_.GiveNumber(offer->group, comNumber);
      Refresh();
    });
    QObject::connect(form, &AdaptersForm::Assigned, form, [this] {
      hardware_.OpenPortsAnew();
      Refresh();
    });
    return form;
  };
  adaptersForm_.GetOrMake(make).BringToFront();
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
  ShowForm(instrumentForm_, parts_.model, instrument_, *this, *this, main_.Get());
  ShowLineTrouble();
}

void ConfigurationForms::OpenCalibration(int gaugeID, int needle) {
  OpenPlates(CalibrationTargets(parts_.model), {.gaugeID = gaugeID, .needle = needle}, instrumentForm_.Get());
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
  const auto make = [&] {
    auto* form = new CalibrateForm(parts_.model, parts_.boxes, std::move(targets), first, hardware_, parent);
    QObject::connect(form, &Form::Closed, form, [this] {
      if (instrumentForm_) instrumentForm_->Refresh();
      Refresh();
    });
    return form;
  };
  calibrateForm_.GetOrMake(make).BringToFront();
  ShowLineTrouble();
}

void ConfigurationForms::SaveInUse() {
  save_.Save(parts_.model.ConfigFileName);
  if (main_) main_->Rebuild();
}

void ConfigurationForms::ConfigurationReplaced() {
  if (main_) hardware_.FollowPortNumbers();
  Refresh();
}

void ConfigurationForms::ModelChanged() {
  hardware_.FollowPortNumbers();
  Refresh();
}

void ConfigurationForms::Refresh() {
  hardware_.LookAgain();
  if (main_) main_->Rebuild();
  parts_.cluster.Refresh();
}

void ConfigurationForms::ShowSearch() {
  if (!main_) return;
  const GaugeSearch& search = hardware_.Search();
  main_->ShowSearch(
      {search.Running(), search.Done(), GaugeSearch::kAddresses, search.Summary(), search.Remarks()});
}

void ConfigurationForms::Tick() {
  if (!main_) return;
  hardware_.Tick();
  guide_.Tick();
  if (hardware_.Roles().Changed()) ShowRole();
  if (!hardware_.LinesChanged()) return;
  main_->ShowLines();
  if (testForm_) testForm_->ShowView();
  ShowLineTrouble();
}

// On the forms that send to the gauges and have no line of their own for how the bus stands.
void ConfigurationForms::ShowLineTrouble() {
  const QString trouble = ToText(hardware_.BusTrouble());
  if (instrumentForm_) instrumentForm_->ShowNotice(trouble);
  if (calibrateForm_) calibrateForm_->ShowNotice(trouble);
}

void ConfigurationForms::ShowRole() {
  if (!adaptersForm_) return;
  AdaptersForm::Role role{ToText(hardware_.Roles().Words()), {}, 0, hardware_.Roles().Running()};
  if (const auto offer = hardware_.Roles().Offered()) {
    role.group = kGroupNames[static_cast<std::size_t>(offer->group)];
    role.comNumber = offer->comNumber;
  }
  adaptersForm_->ShowRole(role);
}

void ConfigurationForms::MainFormClosed() {
  hardware_.CancelSearch();
  hardware_.Roles().Cancel();
  for (Peripheral* peripheral : parts_.peripherals) {
    if (peripheral != nullptr) peripheral->Unload();
  }
  parts_.serial.CloseComPorts();
  parts_.host.ConfigurationClosed();
}

// The other forms stand above the main form, and end with it.
void ConfigurationForms::Unload() {
  hardware_.CancelSearch();
  main_.Unload();
}

}  // namespace tvx
