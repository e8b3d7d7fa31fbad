// Finds what there is: the simulator, what hangs on the serial adapters, the gauges.
#pragma once

#include <string>
#include <vector>

#include "guide/GuideHardware.h"
#include "simlink/beacon/SimulatorFinder.h"

namespace tvx {

// Adapters are asked one after the other, and each is given to the group that answers on it; then every
// address of the gauge bus is asked. A simulator that is alone on the network is taken over at the end, where
// the configuration leads to another one.
class SetUpSearch {
 public:
  SetUpSearch(ConfigModel& model, GuideHardware& hardware, SimulatorFinder& finder)
      : model_(model), hardware_(hardware), finder_(finder) {}

  void Start();
  void Cancel();
  // About every 20 ms.
  void Tick();
  bool Running() const { return state_ != State::Idle; }
  bool Done() const { return done_; }  // it came to its end at least once
  int Percent() const;
  // What was found so far, a line each, and what is being looked for.
  std::string Words() const;

 private:
  enum class State { Idle, Adapters, Gauges };
  void NextAdapter();
  void BeginGauges();
  void End();
  std::string SimulatorWords() const;
  void TakeSimulator();

  ConfigModel& model_;
  GuideHardware& hardware_;
  SimulatorFinder& finder_;
  State state_ = State::Idle;
  bool done_ = false;
  std::vector<SerialDevice> adapters_;
  std::size_t adapter_ = 0;
  std::vector<std::string> adapterLines_;
  std::string simulatorTaken_;
};

}  // namespace tvx
