// An installation set up from nothing, step by step, through the program's forms alone: a box of instruments
// (the virtual cockpit's hardware on three adapters), an empty folder, and a simulator.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "platform/linux/serial/LinuxSerialDevices.h"
#include "tests/e2e/Flight.h"
#include "tests/e2e/Hands.h"
#include "tests/fakes/FakeKeyInjector.h"

namespace tvx::e2e {

// The adapters of the hardware's lines; assigning one is the real thing.
class PluggedIn final : public SerialDevices {
 public:
  void Add(std::string adapter, std::string serialNumber, const std::string& device) {
    SerialDevice added;
    added.path = device;
    added.adapter = std::move(adapter);
    added.serialNumber = std::move(serialNumber);
    added.mayOpen = true;
    devices_.push_back(std::move(added));
  }
  std::vector<SerialDevice> List() const override { return devices_; }
  bool Assign(int comNumber, const SerialDevice& device, std::string& error) override {
    return links_.Assign(comNumber, device, error);
  }

 private:
  std::vector<SerialDevice> devices_;
  LinuxSerialDevices links_;
};

class NewInstallation {
 public:
  // `look` is called where there is something to see, with a name for it; forms stand as the user has them
  // then.
  using Look = std::function<void(const char* name)>;
  explicit NewInstallation(Look look = {});
  ~NewInstallation();

  // All steps, as far as they succeed.
  void Everything();
  // The steps, in their order.
  void StartWithNothing();
  void AssignAdapters();
  void GiveGroupsTheirPorts();
  void FindTheGauges();
  void DefineAFunction();     // the propeller's speed, from the simulator's lists
  void TestTheFunction();     // while the simulator flies
  void SetUpTheAirspeed();    // a standard Function, and a face calibrated against the live needle
  void SetUpTheTachometer();  // the Function defined, and a second face
  void SetUpTheCluster();     // a needle of the engine cluster, with the same face
  void SaveAndSetAsStartUp();
  void StartAgain();  // as after switching the computer on; the program runs by itself

  Program& TheProgram() { return *program_; }
  const ConfigModel& Hardware() const { return hardware_; }
  vc::Cockpit& TheCockpit() { return *cockpit_; }
  FakeMessageBoxes boxes;

 private:
  void Begin();
  void Seen(const char* name) {
    if (look_) look_(name);
  }
  void MakeSimulatorsLists() const;
  void OpenGauge(int gaugeID);
  struct Point {
    const char* value;
    int position;
  };
  void MakePlate(const char* name, const std::vector<Point>& points, int gaugeID, const char* picture);

  Look look_;
  QString before_;
  QTemporaryDir folder_;
  ConfigModel hardware_;
  std::unique_ptr<vc::Cockpit> cockpit_;
  FakeKeyInjector keys_;
  PluggedIn adapters_;
  std::unique_ptr<Program> program_;
};

}  // namespace tvx::e2e
