// What the program works with and does not own where somebody gives it: the machine, message boxes, keys, and
// the place where simulators tell of themselves. A test gives its own.
#pragma once

#include <memory>

#include "core/watch/SaidLog.h"
#include "platform/KeyInjector.h"
#include "platform/machine/Machine.h"
#include "platform/qt/QtMulticastListener.h"

namespace tvx {

class Surroundings {
 public:
  // What was given must live longer; a null pointer stands for this computer's own.
  struct Given {
    MessageBoxes* boxes;
    KeyInjector* keys;
    SerialDevices* devices;
    Machine* machine;
    MulticastListener* beacons;
  };
  explicit Surroundings(const Given& given);

  Machine& TheMachine() { return machine_; }
  const Clock& Clocks() const { return machine_.Clocks(); }
  // All that is put up or asked is noted in Said().
  NotedBoxes& Boxes() { return boxes_; }
  SaidLog& Said() { return said_; }
  KeyInjector& Keys() { return keys_; }
  SerialDevices& Adapters() { return adapters_; }
  MulticastListener& Beacons() { return beacons_; }

 private:
  std::unique_ptr<Machine> ownMachine_;
  Machine& machine_;
  SaidLog said_{Clocks()};
  std::unique_ptr<MessageBoxes> ownBoxes_;
  NotedBoxes boxes_;
  std::unique_ptr<KeyInjector> ownKeys_;
  KeyInjector& keys_;
  SerialDevices& adapters_;
  QtMulticastListener ownBeacons_;
  MulticastListener& beacons_;
};

}  // namespace tvx
