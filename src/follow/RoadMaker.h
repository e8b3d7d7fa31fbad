// Puts a road together: station after station, and keeps where the value stops first.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/ProcessCycle.h"
#include "ffb/YokePair.h"
#include "follow/Road.h"
#include "hwbus/cluster/EngineCluster.h"
#include "hwbus/iomodule/IOModule.h"

namespace tvx {

// What a value's road leads through.
struct FollowedParts {
  const ConfigModel& Model;
  const SimCom& Sim;
  const Serial& Bus;
  const HardwarePorts& Lines;
  const ProcessCycle& Cycle;
  std::array<const IOModule*, 2> Modules;
  const EngineCluster& Cluster;
  const YokePair& Yokes;
  const Clock& Time;
  std::function<bool()> Running;
};

class RoadMaker {
 public:
  RoadMaker(const FollowedParts& parts, std::string title);

  const FollowedParts& Parts() const { return parts_; }
  bool Running() const { return running_; }
  std::int64_t NowMs() const { return nowMs_; }
  Road& TheRoad() { return road_; }

  Station& Add(std::string name, std::string value = {});
  // The value stops at the last station: whatever runs, or (while the program is halted there is nothing to
  // say) only in flight. The first of a road is its diagnosis.
  void Stop(const std::string& why);
  void StopInFlight(const std::string& why) {
    if (running_) Stop(why);
  }
  // The stations from X-Plane's name to the scaled value. The value; std::nullopt where it has none.
  std::optional<double> AddReading(int function, int sequence, Port port);
  // The same for a value that goes to X-Plane: what it was sent last, and what it says. `written`: the port
  // that is written.
  void AddWriting(int function, int sequence, Port written);
  // The stations of a Plate and its needle. The position; std::nullopt where there is none.
  std::optional<int> AddNeedle(int plate, std::optional<double> value);
  void AddLine(HardwareGroup group, const std::string& name);
  Road Finish();

 private:
  bool AddSource(int functionNr, const FunctionRecord* function, Byte sequence, Port port);
  void TellAnswers(const FunctionRecord& function, Byte sequence, Port port);
  void TellSilence(const std::string& source, Port port);
  void TellWhetherTaken(const SimCom::Written& sent, Port read);

  const FollowedParts& parts_;
  const bool running_;
  const std::int64_t nowMs_;
  Road road_;
};

// An open port of the Function that is read, else any one of it; kNoPort where none is open.
Port PortFor(const SimCom& sim, int function, int sequence);

}  // namespace tvx
