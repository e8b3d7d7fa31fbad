#include "virtualcockpit/Cockpit.h"

#include <charconv>

#include "config/ConfigFile.h"
#include "config/StartFile.h"
#include "platform/AtomicFile.h"

namespace tvx::vc {
namespace {

constexpr int kStandardPort = 49000;
constexpr std::size_t kVoltage = 9;     // the Function of the buses' voltages
constexpr int kTakesNoLighting = 0x80;  // an option of a gauge

// Nobody is there to answer: texts are kept, questions answered with yes.
class UnattendedBoxes : public MessageBoxes {
 public:
  void Show(std::string_view text) override { last = text; }
  int Ask(std::string_view text) override {
    last = text;
    return kAnswerYes;
  }
  std::string last;
};

int PortOf(const ConfigModel& model) {
  const std::string& text = model.General.RemotePort;
  int port = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  const bool usable = error == std::errc() && end == text.data() + text.size() && port > 0 && port <= 65535;
  return usable ? port : kStandardPort;
}

std::string LinkOf(int comNumber, const Cockpit::Settings& settings) {
  if (!settings.links || comNumber <= 0) return {};
  return settings.folder + "/comports/com" + std::to_string(comNumber);
}

// Makes the datarefs of a Function known: its text has a line "#n:name" for each.
void DefineDatarefs(const FunctionRecord& function, DatarefStore& store) {
  if (!function.Is(DataType::XplaneDataref)) return;
  std::string_view text = function.FullName;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    const std::size_t colon = line.find(':');
    if (!line.starts_with('#') || colon == std::string_view::npos) continue;
    store.Define(line.substr(colon + 1));
  }
}

}  // namespace

bool LoadConfiguration(const std::string& file, ConfigModel& model, std::string& error) {
  const auto text = ReadWholeFile(file, error);
  if (!text) return false;
  model.ConfigFileName = file;
  if (LoadConfigurationText(*text, model, error)) return true;
  error = file + ": " + error;
  return false;
}

bool LoadConfigurationText(std::string_view text, ConfigModel& model, std::string& error) {
  UnattendedBoxes boxes;
  std::string reason;
  if (ReadConfigText(text, model, boxes, reason) == ConfigReadResult::Loaded) return true;
  error = reason.empty() ? "is not a configuration file" : reason;
  return false;
}

std::string DefaultConfiguration() {
  ConfigModel model;
  return ReadStartFile(model);
}

Cockpit::Cockpit(const ConfigModel& model, Settings settings, QObject* parent)
    : QObject(parent),
      model_(model),
      settings_(std::move(settings)),
      gaugeLine_(LinkOf(model.General.ComPortGS, settings_)) {
  const auto lineFor = [this](Unit& unit, int comNumber) {
    return comNumber > 0 ? std::make_unique<UnitLine>(unit, LinkOf(comNumber, settings_)) : nullptr;
  };
  ioModuleLines_[0] = lineFor(ioModules_[0], model.General.ComPortIOM1);
  ioModuleLines_[1] = lineFor(ioModules_[1], model.General.ComPortIOM2);
  clusterLine_ = lineFor(cluster_, model.General.ComPortEC);
  const bool voltageKnown = !model.Functions[kVoltage].ShortName.empty();
  for (int id = 1; id < kGauges; ++id) {
    const GaugeRecord& record = model.Gauges[static_cast<std::size_t>(id)];
    if (record.GaugeType == 0) continue;
    Device& device = Gauges().Add(MakeDevice({static_cast<Byte>(id), record.GaugeType, record.GaugeSetting1,
                                              record.GaugeSetting2, record.GaugeSetting5}));
    device.SetTraits(settings_.traits.devices);
    device.PowerUp();
    device.FollowBuses(voltageKnown && (record.GaugeSetting5 & kTakesNoLighting) == 0);
  }
  for (const FunctionRecord& function : model.Functions) DefineDatarefs(function, Sim().Datarefs());
  // As somebody has set it on the simulator's screen: the computer and the port on which the program listens.
  DataOutput output;
  output.target = PeerOf("127.0.0.1", model.General.LocalPort);
  Sim().SetOutput(output);
  SetTraits(settings_.traits);
}

std::vector<UnitLine*> Cockpit::UnitLines() const {
  std::vector<UnitLine*> lines;
  for (UnitLine* line : {ioModuleLines_[0].get(), ioModuleLines_[1].get(), clusterLine_.get()}) {
    if (line != nullptr) lines.push_back(line);
  }
  return lines;
}

void Cockpit::SetTraits(const vc::Traits& traits) {
  settings_.traits = traits;
  simulation_.SetTraits(traits.simulator);
  Sim().Datarefs().SetDefinedExist(!traits.simulator.onlyKnownNames);
  gaugeLine_.SetTraits(traits.lines);
  for (const auto& device : Gauges().Devices()) device->SetTraits(traits.devices);
  // Each line has a chance of its own.
  LineTraits line = traits.lines;
  for (UnitLine* unit : UnitLines()) {
    ++line.seed;
    unit->SetTraits(line);
    unit->Hardware().SetTraits(traits.devices);
  }
}

void Cockpit::SetPower(bool on) {
  Gauges().SetPower(on);
  for (UnitLine* line : UnitLines()) line->Hardware().SetPower(on);
}

bool Cockpit::Start() {
  const int port = settings_.port.value_or(PortOf(model_));
  bool simulator = true;
  if (settings_.simulator) {
    simulator = simulation_.Start(static_cast<std::uint16_t>(port));
  } else {
    simulation_.StayOff(static_cast<std::uint16_t>(port));
  }
  bool lines = !HasGaugeBus() || gaugeLine_.Plug();
  for (UnitLine* line : UnitLines()) lines = line->Plug() && lines;
  return simulator && lines;
}

void Cockpit::Stop() {
  simulation_.Stop();
  gaugeLine_.Unplug();
  for (UnitLine* line : UnitLines()) line->Unplug();
}

}  // namespace tvx::vc
