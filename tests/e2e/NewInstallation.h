// An installation set up from nothing, step by step, through the program's forms alone: a box of instruments
// (the virtual cockpit's hardware on three adapters), an empty folder, and a simulator.
#pragma once

#include "drawn/devices/NeedleDevice.h"
#include "tests/e2e/Flight.h"
#include "tests/e2e/Hands.h"
#include "tests/platform/PluggedIn.h"

namespace tvx::e2e {

// Three adapters with the demonstration's instruments behind them, in an empty folder; a simulator in cruise.
struct BoxOfInstruments {
  explicit BoxOfInstruments(const std::function<void(ConfigModel&)>& change = {},
                            const vc::Traits& traits = vc::Traits::Default());
  const vc::NeedleDevice& Needle(int gaugeID) const;

  const ScratchFolder folder;
  ConfigModel hardware;
  std::unique_ptr<vc::Cockpit> cockpit;
  PluggedIn adapters;
};

class NewInstallation {
 public:
  // `look` is called where there is something to see, with a name for it; forms stand as the user has them
  // then.
  using Look = std::function<void(const char* name)>;
  explicit NewInstallation(Look look = {});

  // All steps, as far as they succeed.
  void Everything();
  const BoxOfInstruments& Box() const { return box_; }
  vc::Cockpit& TheCockpit() { return *box_.cockpit; }
  FakeMessageBoxes boxes;

 private:
  // The steps, in their order.
  void StartWithNothing();
  void AssignAdapters();
  void GiveGroupsTheirPorts();
  void FindTheGauges();
  void DefineAFunction();  // the propeller's speed, from the simulator's lists
  void TestTheFunction();  // while the simulator flies
  void SetUpTheNeedles();  // a standard Function and the one defined, each with a face of its own
  void SetUpTheCluster();  // a needle of the engine cluster, with the second face
  void SaveAndSetAsStartUp();
  void StartAgain();  // as after switching the computer on; the program runs by itself

  void Begin();
  void Seen(const char* name) {
    if (look_) look_(name);
  }
  void OpenGauge(int gaugeID);
  struct Point {
    const char* value;
    int position;
  };
  void MakePlate(const char* name, const std::vector<Point>& points, int gaugeID, const char* picture);

  Look look_;
  BoxOfInstruments box_;
  FakeKeyInjector keys_;
  std::unique_ptr<Program> program_;
};

}  // namespace tvx::e2e
