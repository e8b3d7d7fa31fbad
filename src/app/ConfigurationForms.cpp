#include "app/ConfigurationForms.h"

#include <filesystem>
#include <system_error>

#include "hwbus/SerialWords.h"
#include "instruments/Description.h"
#include "platform/linux/ComPortMap.h"

namespace tvx {

ConfigurationForms::ConfigurationForms(Parts parts)
    : parts_(std::move(parts)),
      save_(parts_.model, parts_.file, parts_.boxes, parts_.header),
      search_(parts_.model, parts_.serial, parts_.boxes),
      console_(parts_.model, parts_.serial, parts_.boxes),
      needle_(parts_.serial),
      instrument_(parts_.model, parts_.serial, parts_.boxes,
                  [this] { return parts_.run.Receiver().ReplyText(); }) {
  search_.SetChanged([this] { ShowSearch(); });
  parts_.run.Receiver().SetListener([this](std::optional<ReplyView> reply) {
    search_.OnReply(reply);
    if (reply) console_.OnReply(*reply);
  });
}

template <typename FormType, typename... Arguments>
void ConfigurationForms::ShowForm(QPointer<FormType>& form, Arguments&&... arguments) {
  if (!form || form->Unloading()) form = new FormType(std::forward<Arguments>(arguments)...);
  form->show();
  form->raise();
  form->activateWindow();
}

void ConfigurationForms::Show(QWidget* parent) {
  if (!main_) {
    parts_.serial.OpenComPorts();
    devices_ = parts_.devices.List();
  }
  ShowForm(main_, parts_.model, parts_.boxes, main_ ? MainConfigureForm::Surroundings{} : MainSurroundings(),
           parent);
}

MainConfigureForm::Surroundings ConfigurationForms::MainSurroundings() {
  MainConfigureForm::Surroundings s;
  s.deviceOf = [this](int comNumber) { return DeviceOf(comNumber); };
  s.withPortsClosed = [this](const std::function<void()>& change) {
    search_.Cancel();
    parts_.serial.CloseComPorts();
    change();
    parts_.serial.OpenComPorts();
  };
  s.busWords = [this] { return BusWords(); };
  s.tick = [this] { parts_.serial.TickReplyCountdown(); };
  s.startSearch = [this] { search_.Start(); };
  s.cancelSearch = [this] { search_.Cancel(); };
  s.openGauge = [this](int gaugeID) { OpenGauge(gaugeID); };
  s.saveConfig = [this] {
    search_.Cancel();
    ShowForm(
        saveForm_, parts_.model, save_, [this] { Refresh(); }, main_);
  };
  s.plates = [this] { OpenPlates(-1, 1, main_); };
  s.testGauges = [this] {
    search_.Cancel();
    ShowForm(testForm_, parts_.model, console_,
             TestGaugesForm::Surroundings{[this] { return BusWords(); }, [this] { Refresh(); }}, main_);
  };
  s.adapters = [this] {
    const auto reopen = [this] {
      search_.Cancel();
      parts_.serial.CloseComPorts();
      parts_.serial.OpenComPorts();
      Refresh();
    };
    ShowForm(adaptersForm_, parts_.devices, parts_.boxes, reopen, main_);
  };
  s.functions = OpenFunctions;
  s.testXplane = OpenXplaneTest;
  s.ioModule1 = PeripheralOpener(PeripheralKind::IOModule1, parts_.model.HasIOModule1());
  s.ioModule2 = PeripheralOpener(PeripheralKind::IOModule2, parts_.model.HasIOModule2());
  s.engineCluster = PeripheralOpener(PeripheralKind::EngineCluster, parts_.model.HasEngineCluster());
  s.yokes = PeripheralOpener(PeripheralKind::Yokes, parts_.model.HasYoke1() || parts_.model.HasYoke2());
  s.closed = [this] {
    LeaveBus();
    parts_.closed();
  };
  return s;
}

std::function<void()> ConfigurationForms::PeripheralOpener(PeripheralKind kind, bool) {
  Peripheral* peripheral = parts_.peripherals[static_cast<std::size_t>(kind)];
  if (peripheral == nullptr) return {};
  return [this, peripheral] {
    if (!peripheral->Configured()) {
      parts_.boxes.Show("Give this group its port first.");
      return;
    }
    peripheral->Load();
    peripheral->Show();
  };
}

// The device behind a COM number, and how it stands; empty where there is none.
std::string ConfigurationForms::DeviceOf(int comNumber) const {
  const ComPortTarget target = FindComPort(comNumber);
  std::error_code error;
  const std::string real = std::filesystem::canonical(target.path, error).string();
  if (error) return target.linked ? target.device + ", not there" : std::string();
  for (const SerialDevice& device : devices_) {
    if (device.path == real) return device.Words() + ", " + device.StateWords();
  }
  return target.device;
}

std::string ConfigurationForms::BusWords() const {
  return SerialWords(parts_.serial.ComNumber(HardwareGroup::GaugeBus),
                     parts_.serial.PortOf(HardwareGroup::GaugeBus));
}

void ConfigurationForms::OpenGauge(int gaugeID) {
  search_.Cancel();
  instrument_.Open(gaugeID);
  ShowForm(
      instrumentForm_, parts_.model, instrument_,
      InstrumentForm::Surroundings{[this](int id, int needle) { OpenPlates(id, needle, instrumentForm_); },
                                   [this] { Refresh(); }},
      main_);
}

void ConfigurationForms::OpenPlates(int gaugeID, int needle, QWidget* parent) {
  search_.Cancel();
  CalibrateForm::Surroundings s;
  s.targets = CalibrationTargets(parts_.model);
  s.moveNeedle = [this](const CalibrationTarget& target, int position) {
    needle_.Move(target.gaugeID, target.command, position);
  };
  s.closed = [this] {
    if (instrumentForm_ && !instrumentForm_->Unloading()) instrumentForm_->Refresh();
    Refresh();
  };
  ShowForm(calibrateForm_, parts_.model, parts_.boxes, std::move(s), gaugeID, needle, parent);
}

void ConfigurationForms::Refresh() {
  devices_ = parts_.devices.List();
  if (main_ && !main_->Unloading()) main_->Rebuild();
}

void ConfigurationForms::ShowSearch() {
  if (!main_ || main_->Unloading()) return;
  main_->ShowSearch(
      {search_.Running(), search_.Done(), GaugeSearch::kAddresses, search_.Summary(), search_.Remarks()});
}

void ConfigurationForms::Tick() {
  if (!main_) return;
  search_.Tick();
  if (!search_.Running()) needle_.Tick();
}

void ConfigurationForms::LeaveBus() {
  main_ = nullptr;
  search_.Cancel();
  console_.cmdStopPoll();
  for (Peripheral* peripheral : parts_.peripherals) {
    if (peripheral != nullptr) peripheral->Unload();
  }
  parts_.serial.CloseComPorts();
}

void ConfigurationForms::Unload() {
  if (!main_) return;
  const QPointer<MainConfigureForm> form = main_;
  search_.Cancel();
  console_.cmdStopPoll();
  // The others are its children and go with it.
  if (form) form->Unload();
  main_ = nullptr;
}

}  // namespace tvx
