#include "tools/monkey/World.h"

#include <unistd.h>

#include <QUdpSocket>
#include <filesystem>

#include "demo/DemoConfig.h"
#include "platform/linux/serial/LinuxSerialDevices.h"
#include "virtualcockpit/yokes/YokeWindow.h"

namespace tvx::monkey {
namespace fs = std::filesystem;
namespace {

constexpr std::int16_t kSecondModule = 10;  // a COM number that the demonstration leaves free

quint16 FreePort() {
  QUdpSocket probe;
  probe.bind(QHostAddress::LocalHost, 0);
  return probe.localPort();
}

// Mostly none, so that faults do not pile up until every device is silent.
template <typename Faults>
auto Draw(const Faults& faults, const Dice& dice) {
  return dice.Chance(0.5, "mended") ? faults[0] : dice.OneOf(faults, "fault");
}

}  // namespace

// The lines that are plugged in now, as adapters; assigning one is the real thing.
class World::PluggedIn final : public SerialDevices {
 public:
  explicit PluggedIn(const std::vector<Plug>& plugs) : plugs_(plugs) {}
  std::vector<SerialDevice> List() const override {
    std::vector<SerialDevice> devices;
    for (const Plug& plug : plugs_) {
      if (!plug.line->Line().Plugged()) continue;
      SerialDevice& device = devices.emplace_back();
      device.path = plug.line->Line().Device();
      device.adapter = "Torvex " + plug.name;
      device.serialNumber = std::to_string(plug.comNumber);
      device.mayOpen = true;
    }
    return devices;
  }
  bool Assign(int comNumber, const SerialDevice& device, std::string& error) override {
    return links_.Assign(comNumber, device, error);
  }

 private:
  const std::vector<Plug>& plugs_;
  LinuxSerialDevices links_;
};

World::World(const Dice& dice) : model_(demo::YokesConfig()) {
  model_.General.RemoteIP = "127.0.0.1";
  model_.General.LocalPort = std::to_string(FreePort());
  if (dice.Chance(0.5, "a second IO module")) model_.General.ComPortIOM2 = kSecondModule;
  model_.General.TransferInterval = 10 + static_cast<std::int16_t>(dice.Below(90, "interval"));
  for (int number = 1; number <= kHighestComNumber; ++number) LeadNowhere(number);
  cockpit_ =
      std::make_unique<vc::Cockpit>(model_, vc::Cockpit::Settings{.port = 0, .folder = ".", .links = true});
  cockpit_->Start();
  cockpit_->Sim().RestartFlight(dice.Below(300, "flight"));
  yokes_ = vc::MakeYokes(model_, ".", cockpit_->Traits().lines, cockpit_->Traits().yokes);
  const GeneralRecord& general = model_.General;
  plugs_.push_back({"gauge bus", &cockpit_->GaugeLine(), general.ComPortGS});
  for (const int module : {1, 2}) {
    if (vc::UnitLine* line = cockpit_->IOModuleLine(module))
      plugs_.push_back({"IO module " + std::to_string(module), line,
                        module == 1 ? general.ComPortIOM1 : general.ComPortIOM2});
  }
  if (vc::UnitLine* line = cockpit_->ClusterLine())
    plugs_.push_back({"engine cluster", line, general.ComPortEC});
  for (std::size_t i = 0; i < yokes_.size(); ++i) {
    yokes_[i]->Plug();
    plugs_.push_back({"yoke " + std::to_string(i + 1), yokes_[i].get(),
                      i == 0 ? general.ComPortYoke1 : general.ComPortYoke2});
  }
  adapters_ = std::make_unique<PluggedIn>(plugs_);
  model_.General.RemotePort = std::to_string(cockpit_->Simulation().Port());
  files_.Install(dice, model_);
  if (dice.Chance(0.15, "simulator off at first")) cockpit_->Simulation().Stop();
}

World::~World() = default;

void World::LeadNowhere(int comNumber) const {
  const fs::path link = "comports/com" + std::to_string(comNumber);
  std::error_code error;
  fs::create_directories("comports", error);
  if (!fs::exists(fs::symlink_status(link, error))) fs::create_symlink("nowhere", link, error);
}

std::string World::Happen(const Dice& dice) {
  const double what = dice.Of("what happens");
  if (what < 0.30) return TurnLine(dice.OneOf(plugs_, "which line"));
  if (what < 0.36) return TurnAllLines(dice.Chance(0.7, "all in"));
  if (what < 0.48) return TurnSimulator(dice);
  if (what < 0.60) return Fail(dice);
  if (what < 0.72) return UseModule(dice);
  if (what < 0.80) return UseYoke(dice);
  if (what < 0.90) return SendRubbish(dice);
  return files_.Damage(dice);
}

std::string World::TurnLine(const Plug& plug) {
  if (!plug.line->Line().Plugged()) {
    plug.line->Plug();
    return plug.name + " plugged in";
  }
  plug.line->Unplug();
  LeadNowhere(plug.comNumber);
  return plug.name + " pulled";
}

std::string World::TurnAllLines(bool in) {
  for (const Plug& plug : plugs_) {
    if (plug.line->Line().Plugged() != in) TurnLine(plug);
  }
  return in ? "all lines plugged in" : "all lines pulled";
}

std::string World::TurnSimulator(const Dice& dice) {
  vc::SimulatorService& simulation = cockpit_->Simulation();
  if (!simulation.Present()) {
    simulation.Return();
    return "simulator on";
  }
  simulation.Stop();
  if (dice.Chance(0.3, "only a moment")) {
    simulation.Return();
    return "simulator started again";
  }
  return "simulator off";
}

std::string World::Fail(const Dice& dice) {
  const vc::DeviceFault fault = Draw(vc::kDeviceFaults, dice);
  const std::string words = ": " + std::string(FaultText(fault));
  switch (dice.Below(5, "who fails")) {
    case 0: {
      const auto& devices = cockpit_->Gauges().Devices();
      if (devices.empty()) return "no gauges";
      dice.OneOf(devices, "which gauge")->SetFault(fault);
      return "a gauge" + words;
    }
    case 1: {
      const vc::LineFault lineFault = Draw(vc::kLineFaults, dice);
      cockpit_->Gauges().SetFault(lineFault);
      return "the gauge bus: " + std::string(vc::FaultText(lineFault));
    }
    case 2:
      cockpit_->IOModuleOf(1).SetFault(fault);
      return "IO module 1" + words;
    case 3:
      cockpit_->IOModuleOf(2).SetFault(fault);
      return "IO module 2" + words;
    default:
      cockpit_->Cluster().SetFault(fault);
      return "the engine cluster" + words;
  }
}

std::string World::UseModule(const Dice& dice) {
  vc::IOModuleUnit& unit = cockpit_->IOModuleOf(1 + dice.Below(2, "which module"));
  for (int i = 0; i <= dice.Below(6, "how often"); ++i) {
    const std::string draw = "use " + std::to_string(i);
    const int input = dice.Below(vc::IOModuleUnit::kSwitches, draw);
    if (dice.Chance(0.25, draw + " axis")) {
      unit.SetAxis(input % vc::IOModuleUnit::kAxes, dice.Below(vc::IOModuleUnit::kTop + 1, draw + " place"));
    } else if (dice.Chance(0.25, draw + " click")) {
      unit.Click(input, dice.Chance(0.5, draw + " clockwise"));
    } else {
      unit.SetSwitch(input, !unit.Switch(input));
    }
  }
  return "switches and axes of an IO module moved";
}

std::string World::UseYoke(const Dice& dice) {
  if (yokes_.empty()) return "no yokes";
  vc::YokeDevice& yoke = dice.OneOf(yokes_, "which yoke")->Device();
  switch (dice.Below(4, "with the yoke")) {
    case 0:
      yoke.Grip(static_cast<std::size_t>(dice.Below(2, "axis")), dice.Of("place") * 2 - 1);
      return "a yoke gripped";
    case 1:
      yoke.Let();
      return "a yoke let go";
    case 2:
      yoke.SetButton(1 + dice.Below(16, "button"), dice.Chance(0.5, "down"));
      return "a yoke's button";
    default:
      yoke.SetFault(Draw(vc::kYokeFaults, dice));
      return "a yoke: " + std::string(vc::FaultText(yoke.Fault()));
  }
}

std::string World::SendRubbish(const Dice& dice) {
  QByteArray bytes = dice.Chance(0.5, "a known kind") ? "DATA*" : "RREF,";
  for (int i = dice.Below(200, "length"); i > 0; --i)
    bytes += static_cast<char>(dice.Below(256, "rubbish " + std::to_string(i)));
  const Plug& plug = dice.OneOf(plugs_, "on which line");
  if (dice.Chance(0.5, "on a line") && plug.line->Line().Plugged()) {
    [[maybe_unused]] const auto sent =
        ::write(plug.line->Line().Handle(), bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return "rubbish from " + plug.name;
  }
  const auto port = static_cast<quint16>(std::stoi(model_.General.LocalPort));
  QUdpSocket().writeDatagram(bytes, QHostAddress::LocalHost, port);
  return "a stranger's datagram";
}

}  // namespace tvx::monkey
