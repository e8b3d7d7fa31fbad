#include "app/ConfigurationForms.h"

#include <filesystem>
#include <system_error>

#include "instruments/setup/CalibrationTargets.h"
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
    opened_ = PortNumbers();
    listed_ = parts_.devices.List();
  }
  ShowForm(main_, parts_.model, parts_.boxes, main_ ? MainConfigureForm::Surroundings{} : MainSurroundings(),
           parent);
}

MainConfigureForm::Surroundings ConfigurationForms::MainSurroundings() {
  MainConfigureForm::Surroundings s;
  s.deviceOf = [this](int comNumber) { return DeviceOf(comNumber); };
  s.troubleOf = [this](int group) { return TroubleOf(static_cast<HardwareGroup>(group)); };
  s.lookAgain = [this] { listed_ = parts_.devices.List(); };
  s.withPortsClosed = [this](const std::function<void()>& change) {
    search_.Cancel();
    parts_.serial.CloseComPorts();
    change();
    parts_.serial.OpenComPorts();
    opened_ = PortNumbers();
  };
  s.busWords = [this] { return BusWords(); };
  s.tick = [this] { parts_.serial.TickReplyCountdown(); };
  s.startSearch = [this] {
    parts_.serial.Ports().ReopenLost();  // an adapter that was plugged in since
    search_.Start();
  };
  s.cancelSearch = [this] { search_.Cancel(); };
  s.openGauge = [this](int gaugeID) { OpenGauge(gaugeID); };
  s.saveConfig = [this] {
    search_.Cancel();
    ShowForm(
        saveForm_, parts_.model, save_, [this] { FileChanged(); }, main_);
  };
  s.plates = [this] { OpenPlates(CalibrationTargets(parts_.model), {}, main_); };
  s.testGauges = [this] {
    search_.Cancel();
    ShowForm(testForm_, parts_.model, console_,
             TestGaugesForm::Surroundings{[this] { return BusWords(); }, [this] { Refresh(); }}, main_);
  };
  s.adapters = [this] {
    ShowForm(adaptersForm_,
             AdaptersForm::Surroundings{parts_.devices,
                                        [this](const SerialDevice& device) { return ComNumbersOf(device); },
                                        [this] { ReopenPorts(); }},
             parts_.boxes, main_);
  };
  s.functions = OpenFunctions;
  s.testXplane = OpenXplaneTest;
  s.ioModule1 = PeripheralOpener(PeripheralKind::IOModule1);
  s.ioModule2 = PeripheralOpener(PeripheralKind::IOModule2);
  s.engineCluster = PeripheralOpener(PeripheralKind::EngineCluster);
  s.yokes = PeripheralOpener(PeripheralKind::Yokes);
  s.closed = [this] {
    LeaveBus();
    parts_.closed();
  };
  return s;
}

std::function<void()> ConfigurationForms::PeripheralOpener(PeripheralKind kind) {
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

bool ConfigurationForms::LeadsTo(int comNumber, const SerialDevice& device) {
  const ComPortTarget target = FindComPort(comNumber);
  std::error_code error;
  const std::string link = std::filesystem::read_symlink(target.path, error).string();
  const std::string real = std::filesystem::canonical(target.path, error).string();
  const auto isIt = [&device](const std::string& path) {
    return !path.empty() && (path == device.path || path == device.stableName);
  };
  return isIt(target.path) || isIt(link) || isIt(real);
}

// The device behind a COM number, and how it stands; empty where there is none.
std::string ConfigurationForms::DeviceOf(int comNumber) const {
  if (comNumber < 1) return {};
  for (const SerialDevice& device : listed_) {
    if (LeadsTo(comNumber, device)) return device.Words() + ", " + device.StateWords();
  }
  const ComPortTarget target = FindComPort(comNumber);
  std::error_code error;
  if (std::filesystem::exists(target.path, error)) return target.device;
  return target.linked ? target.device + ", not there" : std::string();
}

std::vector<int> ConfigurationForms::ComNumbersOf(const SerialDevice& device) const {
  std::vector<int> numbers;
  for (int number = 1; number <= kHighestComNumber; ++number) {
    if (LeadsTo(number, device)) numbers.push_back(number);
  }
  return numbers;
}

std::string ConfigurationForms::TroubleOf(HardwareGroup group) const {
  const HardwarePorts& ports = parts_.serial.Ports();
  return ports.InTrouble(group) ? ports.WordsOf(group) : std::string();
}

std::string ConfigurationForms::BusWords() const {
  return parts_.serial.LineWords();
}

void ConfigurationForms::OpenGauge(int gaugeID) {
  search_.Cancel();
  instrument_.Open(gaugeID);
  ShowForm(instrumentForm_, parts_.model, instrument_,
           InstrumentForm::Surroundings{[this](int id, int needle) {
                                          OpenPlates(CalibrationTargets(parts_.model),
                                                     {.gaugeID = id, .needle = needle}, instrumentForm_);
                                        },
                                        [this] { Refresh(); }},
           main_);
}

// It may be opened while the gauge bus is not this configuration's to send on.
void ConfigurationForms::OpenClusterPlates(int channel, QWidget* parent) {
  auto targets = CalibrationTargets(parts_.model);
  std::erase_if(targets, [](const CalibrationTarget& target) { return !target.IsEngineCluster(); });
  OpenPlates(std::move(targets), {.channel = channel}, parent);
}

void ConfigurationForms::OpenPlates(std::vector<CalibrationTarget> targets, const CalibrationTarget& first,
                                    QWidget* parent) {
  search_.Cancel();
  CalibrateForm::Surroundings s;
  s.targets = std::move(targets);
  s.moveNeedle = [this](const CalibrationTarget& target, int position) {
    if (!target.IsEngineCluster()) {
      needle_.Move(target.gaugeID, target.command, position);
    } else if (MoveClusterNeedle) {
      MoveClusterNeedle(target.channel, position);
    }
  };
  s.closed = [this] {
    if (instrumentForm_ && !instrumentForm_->Unloading()) instrumentForm_->Refresh();
    Refresh();
  };
  ShowForm(calibrateForm_, parts_.model, parts_.boxes, std::move(s), first, parent);
}

void ConfigurationForms::ReopenPorts() {
  search_.Cancel();
  parts_.serial.CloseComPorts();
  parts_.serial.OpenComPorts();
  Refresh();
}

// A file that was loaded or imported may name other ports; the lines that are open would be the old ones.
void ConfigurationForms::FileChanged() {
  if (opened_ != PortNumbers()) {
    opened_ = PortNumbers();
    ReopenPorts();
  } else {
    Refresh();
  }
}

std::array<int, kHardwareGroups> ConfigurationForms::PortNumbers() const {
  std::array<int, kHardwareGroups> numbers{};
  for (std::size_t group = 0; group < kHardwareGroups; ++group)
    numbers[group] = parts_.serial.Ports().ComNumber(static_cast<HardwareGroup>(group));
  return numbers;
}

void ConfigurationForms::Refresh() {
  listed_ = parts_.devices.List();
  if (main_ && !main_->Unloading()) main_->Rebuild();
  if (ModelChanged) ModelChanged();
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
