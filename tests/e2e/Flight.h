// The real program and the virtual cockpit in one process, in a folder of their own: every byte between them
// travels over a real UDP socket and a real pseudo-terminal.
#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QUdpSocket>

#include "app/Program.h"
#include "config/StartFile.h"
#include "demo/DemoConfig.h"
#include "ffb/YokeSettings.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeKeyInjector.h"
#include "tests/fakes/ScratchFolder.h"
#include "tests/platform/WaitUntil.h"
#include "virtualcockpit/Cockpit.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/yokes/YokeWindow.h"

namespace tvx::e2e {

// WaitUntil, for both programs at work.
template <typename Condition>
bool Eventually(Condition&& condition, std::chrono::seconds deadline = std::chrono::seconds(20)) {
  return WaitUntil(condition, deadline);
}

// A UDP port that nobody has.
inline int FreePort() {
  QUdpSocket probe;
  probe.bind(QHostAddress::LocalHost, 0);
  return probe.localPort();
}

// A yoke as the stand-in's are, ready to fly.
inline void Calibrate(YokeRecord& record, Byte address, int options, YokeMode mode = YokeMode::Ffb) {
  record.Address = address;
  record.StartMode = static_cast<std::int16_t>(mode);
  record.OptionBits = static_cast<std::int16_t>(options);
  constexpr int kCentre = vc::YokeDevice::kRawCentre, kTravel = vc::YokeDevice::kRawTravel;
  record.RollLeft = record.PitchForward = StoredRaw(kCentre - kTravel);
  record.RollCentre = record.PitchCentre = StoredRaw(kCentre);
  record.RollRight = record.PitchBack = StoredRaw(kCentre + kTravel);
}
inline auto YokesOf(const ConfigModel& model, const vc::Cockpit& cockpit) {
  auto yokes = vc::MakeYokes(model, ".", cockpit.Traits().lines, cockpit.Traits().yokes);
  for (const auto& yoke : yokes) EXPECT_TRUE(yoke->Plug()) << yoke->Line().LastError();
  return yokes;
}

class Flight {
 public:
  // `change` may alter the demonstration's configuration before anything starts; `traits` say how the
  // stand-ins behave; `beacons` is where simulators tell of themselves, null for the network.
  template <typename Change>
  explicit Flight(Change&& change, const vc::Traits& traits = vc::Traits::Default(),
                  MulticastListener* beacons = nullptr) {
    model_ = demo::DemoConfig();
    model_.General.TransferInterval = 10;
    model_.General.LocalPort = std::to_string(FreePort());
    change(model_);
    cockpit_ = std::make_unique<vc::Cockpit>(
        model_, vc::Cockpit::Settings{.port = 0, .folder = folder_.Path(), .links = true, .traits = traits});
    EXPECT_TRUE(cockpit_->Start());
    model_.General.RemotePort = std::to_string(cockpit_->Simulation().Port());
    model_.ConfigFileName = "Flight.cfg";
    EXPECT_TRUE(ConfigFile(model_, boxes).SaveConfigFile());
    model_.StartDelay = 1;
    EXPECT_TRUE(WriteStartFile(model_, "Flight.cfg"));
    program_ = std::make_unique<Program>(&boxes, &keys, nullptr, nullptr, beacons);
  }
  Flight() : Flight([](ConfigModel&) {}) {}

  // Starts as a user does who does not wait for the countdown; the status form stays halted.
  void Start() {
    program_->Begin();
    EXPECT_TRUE(Eventually([this] { return !program_->Start().View().FileName.empty(); }));
    program_->Start().butOK_Click();
  }
  void Run() {
    Start();
    program_->Run().cmdRun_Click();
    EXPECT_TRUE(Eventually([this] { return Missing() == 0; })) << Missing() << " datarefs";
  }
  // The datarefs in use that the simulator has and that have not come since `sinceMs`, on the program's
  // clock.
  std::size_t Missing(std::int64_t sinceMs = 0) {
    const SimCom& link = program_->Sim();
    const auto missing = [&](const RrefRow& row) {
      const auto came = link.Keeper().OfDataref(RrefIdentifierOnWire(row.Identifier)).answeredMs;
      const bool exists = Sim().Datarefs().Find(row.Dataref) != vc::DatarefStore::kNone;
      return exists && came.value_or(-1) < sinceMs;
    };
    return static_cast<std::size_t>(std::count_if(link.Rrefs().begin(), link.Rrefs().end(), missing));
  }

  // The cockpit stays, for a program elsewhere.
  void EndProgram() { program_.reset(); }

  Program& TheProgram() { return *program_; }
  vc::Cockpit& TheCockpit() { return *cockpit_; }
  vc::Simulator& Sim() { return cockpit_->Sim(); }
  ConfigModel& Model() { return model_; }
  double Dataref(const char* name) { return Sim().Datarefs().ValueOf(name).value_or(NAN); }
  void SetDataref(const char* name, double value) {
    Sim().Datarefs().Write(Sim().Datarefs().Find(name), value);
  }
  // The instrument at the address as its kind.
  template <typename Kind>
  Kind& Instrument(int gaugeID) {
    auto* device = dynamic_cast<Kind*>(cockpit_->Gauges().Find(gaugeID));
    if (device == nullptr) throw std::runtime_error("no such instrument: " + std::to_string(gaugeID));
    return *device;
  }

  FakeMessageBoxes boxes;
  FakeKeyInjector keys;

 private:
  const ScratchFolder folder_;
  ConfigModel model_;
  std::unique_ptr<vc::Cockpit> cockpit_;
  std::unique_ptr<Program> program_;
};

// One in the air already, with all that it needs.
struct Cruise : Flight {
  template <typename... Arguments>
  explicit Cruise(Arguments&&... arguments) : Flight(std::forward<Arguments>(arguments)...) {
    Sim().RestartFlight(130);
    Run();
  }
};

}  // namespace tvx::e2e
