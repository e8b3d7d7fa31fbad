#include "app/Surroundings.h"

#include "platform/qt/QtMessageBoxes.h"
#include "simlink/beacon/Beacon.h"

namespace tvx {

Surroundings::Surroundings(const Given& given)
    : ownMachine_(given.machine == nullptr ? MakeMachine() : nullptr),
      machine_(given.machine == nullptr ? *ownMachine_ : *given.machine),
      ownBoxes_(given.boxes == nullptr ? std::make_unique<QtMessageBoxes>() : nullptr),
      boxes_(given.boxes == nullptr ? *ownBoxes_ : *given.boxes, said_),
      ownKeys_(given.keys == nullptr ? machine_.MakeKeys() : nullptr),
      keys_(given.keys == nullptr ? *ownKeys_ : *given.keys),
      adapters_(given.devices == nullptr ? machine_.Adapters() : *given.devices),
      ownBeacons_(kBeaconGroup, kBeaconPort),
      beacons_(given.beacons == nullptr ? ownBeacons_ : *given.beacons) {}

}  // namespace tvx
