// Follows values: where each comes from, how far it gets, and, in one sentence, why no further.
#pragma once

#include <string>
#include <vector>

#include "base/Subject.h"
#include "follow/Road.h"
#include "follow/RoadMaker.h"

namespace tvx {

// Looks at the program's parts, and changes nothing. Cheap enough for a few hundred roads a second.
class Follower {
 public:
  explicit Follower(FollowedParts parts) : parts_(std::move(parts)) {}

  // The road of a value as it stands now. A subject that does not exist says so.
  Road Follow(const Subject& subject) const;
  // Everything that the configuration uses: gauges, channels, inputs, lamps and the yokes' axes, in this
  // order.
  std::vector<Subject> InUse() const;
  // Whose value it is, in a few words.
  std::string TitleOf(const Subject& subject) const;
  const FollowedParts& Parts() const { return parts_; }
  // Who opened an open port; the port's Function where that is nobody with a road of its own.
  Subject OwnerOf(int port) const;

 private:
  // One value of a gauge.
  struct Part {
    std::string label;
    int function = 0;
    int sequence = 1;
    int plate = -1;    // -1: no needle of a Plate
    int command = -1;  // that carries it; -1: not known
    Port port = kNoPort;
  };
  std::vector<Part> PartsOf(int gaugeID) const;
  void AddOpenPorts(int gaugeID, std::vector<Part>& parts) const;
  bool OnlySetByHand(const Part& part, Port port) const;
  const ActiveGauge* Active(int gaugeID) const;
  std::vector<Port> PortsOf(int gaugeID) const;
  void AddGaugesInUse(std::vector<Subject>& subjects) const;
  const IOModuleRecord* DefinitionOf(int input, int& number) const;

  Road GaugeRoad(const Subject& subject) const;
  void AddFrame(RoadMaker& road, int gaugeID, const Part& part) const;
  void AddInstrument(RoadMaker& road, int gaugeID) const;
  Road ChannelRoad(const Subject& subject) const;
  Road InputRoad(const Subject& subject) const;
  void AddLamp(RoadMaker& road, const IOModule& module, const IOModuleRecord& definition, int number) const;
  void AddHand(RoadMaker& road, const IOModule& module, const IOModuleRecord& definition, int number) const;
  void AddAction(RoadMaker& road, const IOModule& module, const IOModuleRecord& definition, int number) const;
  Road AxisRoad(const Subject& subject) const;
  Road FunctionRoad(const Subject& subject) const;

  FollowedParts parts_;
};

}  // namespace tvx
