// The roads to needles and displays: of the gauge bus and of the engine cluster.
#include <algorithm>
#include <array>

#include "core/BusWords.h"
#include "follow/FollowWords.h"
#include "follow/Follower.h"
#include "hwbus/GaugeFrame.h"
#include "instruments/kinds/ParkOld.h"
#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kCommands = 16;
constexpr std::int64_t kWaitsLongMs = 1000;

std::string GaugeNumber(int gaugeID) {
  return FormatNumberText(gaugeID, "000");
}

// "First needle" from "first needle"
std::string Capitalised(std::string_view words) {
  std::string text(words);
  if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
  return text;
}

std::string ShortNameOf(const ConfigModel& model, int number) {
  const FunctionRecord* function = model.FunctionOf(number);
  return function == nullptr ? FunctionWords(number) : function->ShortName;
}

const GaugeHealth* HealthOf(const BusHealth& health, int gaugeID) {
  const auto& gauges = health.Gauges();
  const auto found = std::find_if(gauges.begin(), gauges.end(),
                                  [gaugeID](const GaugeHealth& gauge) { return gauge.gaugeID == gaugeID; });
  return found == gauges.end() ? nullptr : &*found;
}

// "; its neighbours answer"
std::string NeighbourWords(const BusHealth& health) {
  const std::size_t silent = static_cast<std::size_t>(std::ranges::count_if(
      health.Gauges(), [](const GaugeHealth& g) { return g.missedInARow >= BusHealth::kSilentAfterMissed; }));
  if (health.Gauges().size() < 2) return "";
  return silent < health.Gauges().size() ? "; its neighbours answer" : "; no other instrument answers either";
}

// The command of a gauge that left last, its questions and its lighting apart.
int LastCommand(const ProcessCycle& cycle, int gaugeID) {
  int last = -1;
  std::int64_t leftMs = -1;
  for (int command = 0; command < kCommands; ++command) {
    if (command == kCommandReportState || command == kCommandLighting) continue;
    const auto told = cycle.ToldOf(gaugeID, command);
    if (!told || !told->value || told->leftMs <= leftMs) continue;
    leftMs = told->leftMs;
    last = command;
  }
  return last;
}

}  // namespace

const ActiveGauge* Follower::Active(int gaugeID) const {
  for (const ActiveGauge& gauge : parts_.Cycle.ActiveGauges()) {
    if (gauge.GaugeID == gaugeID) return &gauge;
  }
  return nullptr;
}

// Those that are open: all are closed with the link, and others may have their numbers then.
std::vector<Port> Follower::PortsOf(int gaugeID) const {
  std::vector<Port> ports;
  const ActiveGauge* active = Active(gaugeID);
  if (active == nullptr || active->Driver == nullptr) return ports;
  for (const Port port : active->Driver->Ports()) {
    if (port < parts_.Sim.PortCount() && parts_.Sim.PortAt(port).OpenedBy == gaugeID) ports.push_back(port);
  }
  return ports;
}

// A knob's or a button's own Function, which no needle shows: nothing need come from X-Plane.
bool Follower::OnlySetByHand(const Part& part, Port port) const {
  if (part.plate >= 0) return false;
  if (part.function == 0) return true;
  const FunctionRecord* function = parts_.Model.FunctionOf(part.function);
  if (function == nullptr || function->ShortName.empty()) return false;
  const bool neverAsked =
      function->Is(DataType::XplaneDataref) && function->SlotOf(static_cast<Byte>(part.sequence)).value == 0;
  return port == kNoPort || function->Is(DataType::XplaneCmnd) || neverAsked;
}

std::vector<Follower::Part> Follower::PartsOf(int gaugeID) const {
  std::vector<Part> parts;
  const GaugeRecord& gauge = parts_.Model.Gauges[static_cast<std::size_t>(gaugeID)];
  const Instrument* kind = gauge.GaugeType == 0 ? nullptr : InstrumentOf(gauge.GaugeType);
  if (kind == nullptr) return parts;
  const InstrumentDescription description = kind->Describe(gauge.GaugeType);
  for (std::size_t i = 0; i < description.plates.size(); ++i) {
    const auto [function, sequence] = kind->NeedleShows(gauge, i);
    const int plate = i == 0 ? gauge.GaugeSetting3 : gauge.GaugeSetting4;
    parts.push_back({Capitalised(description.plates[i].label), function, std::max(sequence, 1), plate,
                     description.plates[i].command});
  }
  for (const int function : description.own) parts.push_back({ShortNameOf(parts_.Model, function), function});
  const std::array<const FunctionField*, 2> fields{&description.function1, &description.function2};
  for (std::size_t i = description.plates.size(); i < fields.size(); ++i) {
    if (fields[i]->label.empty() || !fields[i]->number) continue;
    const int chosen = i == 0 ? gauge.GaugeFunction1 : gauge.GaugeFunction2;
    const int sequence = i == 0 ? gauge.GaugeInstance1 : gauge.GaugeInstance2;
    Part part{.label = std::string(fields[i]->label), .sequence = std::max(sequence, 1)};
    if (fields[i]->instead != 0) {
      if (chosen == 0) continue;  // not switched on
      part.function = fields[i]->instead;
      part.sequence = 1;
    } else if (chosen != 0) {
      part.function = chosen + fields[i]->offset;
    }
    parts.push_back(std::move(part));
  }
  AddOpenPorts(gaugeID, parts);
  return parts;
}

// The ports of the parts, and as further parts what the kind opens by itself. A part whose port is open and
// not among those of the driver is one that nobody sees as the gauge is set up.
void Follower::AddOpenPorts(int gaugeID, std::vector<Part>& parts) const {
  std::vector<Port> ports = PortsOf(gaugeID);
  const auto isOf = [this](const Part& part, const PortRow& row) {
    return row.FunctionNr == part.function && std::max<int>(row.SeqNr, 1) == part.sequence;
  };
  std::erase_if(parts, [&](Part& part) {
    const auto own =
        std::ranges::find_if(ports, [&](Port port) { return isOf(part, parts_.Sim.PortAt(port)); });
    if (own != ports.end()) {
      part.port = *own;
      ports.erase(own);
      return false;
    }
    for (int port = 0; port < parts_.Sim.PortCount(); ++port) {
      const PortRow& row = parts_.Sim.PortAt(port);
      if (row.OpenedBy == gaugeID && isOf(part, row)) return true;
    }
    return false;
  });
  for (const Port port : ports) {
    const PortRow& row = parts_.Sim.PortAt(port);
    parts.push_back({ShortNameOf(parts_.Model, row.FunctionNr), row.FunctionNr, row.SeqNr, -1, -1, port});
  }
}

// A second needle without a Function is one that is not used.
void Follower::AddGaugesInUse(std::vector<Subject>& subjects) const {
  for (int id = 0; id < kGauges; ++id) {
    if (parts_.Model.Gauges[static_cast<std::size_t>(id)].GaugeType == 0) continue;
    const auto parts = PartsOf(id);
    subjects.push_back({Subject::Kind::Gauge, id});
    for (std::size_t part = 1; part < parts.size(); ++part) {
      if (parts[part].function != 0) subjects.push_back({Subject::Kind::Gauge, id, static_cast<int>(part)});
    }
  }
}

Road Follower::GaugeRoad(const Subject& subject) const {
  RoadMaker road(parts_, TitleOf(subject));
  const int id = subject.number;
  if (id < 0 || id >= kGauges || parts_.Model.Gauges[static_cast<std::size_t>(id)].GaugeType == 0) {
    road.Add("Instrument");
    road.Stop("No instrument is configured at " + GaugeNumber(id));
    return road.Finish();
  }
  const auto parts = PartsOf(id);
  const auto index = static_cast<std::size_t>(subject.part);
  const Part part = index < parts.size() ? parts[index] : Part{};
  if (index < parts.size()) {
    const Port port = part.port != kNoPort ? part.port : PortFor(parts_.Sim, part.function, part.sequence);
    std::optional<double> value;
    if (OnlySetByHand(part, port)) {
      road.Add("Set by hand", part.label).Note =
          part.function == 0 ? "it has no Function"
                             : FunctionWords(part.function) + ", which is only written";
    } else {
      value = road.AddReading(part.function, part.sequence, port);
    }
    const GaugeRecord& record = parts_.Model.Gauges[static_cast<std::size_t>(id)];
    const bool parked = ParksOld(record.GaugeSetting5, parts_.Sim, part.port);
    if (part.plate >= 0) {
      road.AddNeedle(part.plate, parked ? std::nullopt : value);
      if (parked && part.function != 0)
        road.TheRoad().Stations.back().Note = "parked, since its value is old";
    }
  }
  AddFrame(road, id, part);
  road.AddLine(HardwareGroup::GaugeBus, "The gauge bus");
  AddInstrument(road, id);
  if (parts_.Sim.LastWritten(part.port)) road.AddWriting(part.function, part.sequence, part.port);
  return road.Finish();
}

void Follower::AddFrame(RoadMaker& road, int gaugeID, const Part& part) const {
  Station& station = road.Add("Frame");
  const int command = part.command >= 0 ? part.command : LastCommand(parts_.Cycle, gaugeID);
  const auto told = command < 0 ? std::nullopt : parts_.Cycle.ToldOf(gaugeID, command);
  const ActiveGauge* active = Active(gaugeID);
  const bool held = active != nullptr && active->Driver != nullptr &&
                    !active->Driver->Hold().Over(parts_.Cycle.TickNumber());
  if (told && told->value) {
    station.Value = HexWords(gaugeID, command, *told->value);
    station.Age = AgeWords(road.NowMs() - told->leftMs);
    station.Note = (part.command >= 0 ? "" : "the last one, of any value; ") + std::string("command ") +
                   std::to_string(command) + ", value " + std::to_string(*told->value);
  }
  if (held) {
    station.Note += "; held: a hand turned its knob a moment ago";
  } else if (told && told->waiting) {
    const std::int64_t waits = road.NowMs() - told->sinceMs;
    station.Note += "; the newest waits for room on the line";
    if (waits > kWaitsLongMs) road.StopInFlight("The line is full: the value waits since " + AgeWords(waits));
  } else if (told && told->value) {
    station.Note += "; unchanged since";
  } else if (part.command >= 0) {
    road.StopInFlight("No frame was sent to " + GaugeNumber(gaugeID) + " yet");
  } else {
    station.Note = "none of a single value";
  }
}

void Follower::AddInstrument(RoadMaker& road, int gaugeID) const {
  Station& station = road.Add("Instrument", GaugeWords(parts_.Model, gaugeID));
  const GaugeHealth* health = HealthOf(parts_.Cycle.Health(), gaugeID);
  const GaugeConnection found = parts_.Model.GaugeState[static_cast<std::size_t>(gaugeID)];
  if (InstrumentOf(parts_.Model.Gauges[static_cast<std::size_t>(gaugeID)].GaugeType) == nullptr) {
    road.Stop("No instrument of this kind is known");
  } else if (health == nullptr || !road.Running()) {
    station.Note = found == GaugeConnection::Connected ? "it answered when it was looked for" : "";
    if (road.Running()) station.Note += (station.Note.empty() ? "" : "; ") + std::string("it is not asked");
    if (found == GaugeConnection::NotConnected)
      road.Stop("No answer from " + GaugeNumber(gaugeID) + " when it was looked for");
    road.TheRoad().LastAnswer = found == GaugeConnection::Connected ? "found" : "";
  } else {
    station.Age = health->everAnswered ? AgeWords(road.NowMs() - health->answeredMs) : "never";
    station.Note = std::to_string(health->AnswersInLastMinute(road.NowMs())) + " answers in the last minute";
    road.TheRoad().LastAnswer = health->everAnswered ? station.Age + " ago" : "none yet";
    if (health->missedInARow >= BusHealth::kSilentAfterMissed) {
      road.StopInFlight("No answer from " + GaugeNumber(gaugeID) + " since " +
                        AgeWords(road.NowMs() - health->answeredMs) + NeighbourWords(parts_.Cycle.Health()));
    }
  }
}

Road Follower::ChannelRoad(const Subject& subject) const {
  RoadMaker road(parts_, TitleOf(subject));
  const int channel = std::clamp(subject.number, 0, kECChannels - 1);
  const EngineCluster& cluster = parts_.Cluster;
  const EngineClusterRecord& record = parts_.Model.EngineCluster[static_cast<std::size_t>(channel)];
  if (!cluster.ChannelEnabled(channel)) {
    road.Add("Channel");
    road.Stop("The channel is not in use");
    return road.Finish();
  }
  const Port port = cluster.PortOf(channel);
  const auto value = road.AddReading(record.Value2, 1, port < parts_.Sim.PortCount() ? port : kNoPort);
  road.AddNeedle(record.Value3, value);
  road.Add("Frame", "needle " + std::to_string(cluster.NeedleOf(channel)) + " at " +
                        std::to_string(cluster.Position(channel)))
      .Note = cluster.Recalibrating() ? "the cluster recalibrates" : "all needles in one frame, each tick";
  road.AddLine(HardwareGroup::EngineCluster, "The engine cluster");
  road.Add("Instrument", "Engine cluster").Note = cluster.boxUnitReply();
  road.TheRoad().LastAnswer = cluster.boxUnitReply();
  if (cluster.boxUnitReply().empty()) road.TheRoad().Stations.back().Note = "it has not answered yet";
  return road.Finish();
}

}  // namespace tvx
