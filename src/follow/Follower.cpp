#include "follow/Follower.h"

#include "core/BusWords.h"
#include "follow/FollowWords.h"

namespace tvx {

Road Follower::Follow(const Subject& subject) const {
  switch (subject.kind) {
    case Subject::Kind::Gauge:
      return GaugeRoad(subject);
    case Subject::Kind::Channel:
      return ChannelRoad(subject);
    case Subject::Kind::Input:
      return InputRoad(subject);
    case Subject::Kind::YokeAxis:
      return AxisRoad(subject);
    case Subject::Kind::Function:
      return FunctionRoad(subject);
    case Subject::Kind::OpenPort:
      return Follow(OwnerOf(subject.number));
  }
  return {};
}

std::string Follower::TitleOf(const Subject& subject) const {
  switch (subject.kind) {
    case Subject::Kind::Gauge: {
      const auto parts = PartsOf(subject.number);
      const auto part = static_cast<std::size_t>(subject.part);
      const std::string gauge = GaugeWords(parts_.Model, subject.number);
      return part < parts.size() ? gauge + ": " + parts[part].label : gauge;
    }
    case Subject::Kind::Channel:
      return "Engine cluster, channel " + std::to_string(subject.number + 1);
    case Subject::Kind::Input:
      return InputWords(subject.number);
    case Subject::Kind::YokeAxis:
      return "Yoke " + std::to_string(subject.number) + (subject.part == 0 ? ", roll" : ", pitch");
    case Subject::Kind::Function: {
      const FunctionRecord* function = parts_.Model.FunctionOf(subject.number);
      return FunctionWords(subject.number) + (function == nullptr ? "" : " " + function->ShortName);
    }
    case Subject::Kind::OpenPort:
      return TitleOf(OwnerOf(subject.number));
  }
  return {};
}

std::vector<Subject> Follower::InUse() const {
  std::vector<Subject> subjects;
  AddGaugesInUse(subjects);
  for (int channel = 0; parts_.Model.HasEngineCluster() && channel < kECChannels; ++channel) {
    if (parts_.Cluster.ChannelEnabled(channel)) subjects.push_back({Subject::Kind::Channel, channel});
  }
  for (int i = 0; i < parts_.Model.IOMCount(); ++i) {
    const int input = parts_.Model.IOModuleInputs[static_cast<std::size_t>(i)].Input;
    if (IOModuleInputOf(input)) subjects.push_back({Subject::Kind::Input, input});
  }
  for (const int which : {1, 2}) {
    if (!parts_.Yokes.Configured(which)) continue;
    for (const int axis : {0, 1}) subjects.push_back({Subject::Kind::YokeAxis, which, axis});
  }
  return subjects;
}

Subject Follower::OwnerOf(int port) const {
  if (port < 0 || port >= parts_.Sim.PortCount()) return {};
  const PortRow& row = parts_.Sim.PortAt(port);
  for (const Subject& subject : InUse()) {
    if (subject.kind == Subject::Kind::Gauge) {
      const auto parts = PartsOf(subject.number);
      const auto part = static_cast<std::size_t>(subject.part);
      if (part < parts.size() && parts[part].port == port) return subject;
    } else if (subject.kind == Subject::Kind::Channel) {
      if (row.OpenedBy == opener::kEngineCluster && parts_.Cluster.PortOf(subject.number) == port)
        return subject;
    } else if (subject.kind == Subject::Kind::Input) {
      int number = 0;
      const bool first = subject.number < opener::kIOModule2;
      const bool own = row.OpenedBy == (first ? opener::kIOModule1 : opener::kIOModule2);
      if (own && DefinitionOf(subject.number, number) != nullptr &&
          parts_.Modules[first ? 0 : 1]->PortOf(number) == port)
        return subject;
    }
  }
  return {Subject::Kind::Function, row.FunctionNr, row.SeqNr};
}

Road Follower::FunctionRoad(const Subject& subject) const {
  RoadMaker road(parts_, TitleOf(subject));
  const int sequence = subject.part == 0 ? 1 : subject.part;
  const Port port = PortFor(parts_.Sim, subject.number, sequence);
  road.AddReading(subject.number, sequence, port);
  if (parts_.Sim.LastWritten(port)) road.AddWriting(subject.number, sequence, port);
  return road.Finish();
}

Road Follower::AxisRoad(const Subject& subject) const {
  const int which = subject.number == 2 ? 2 : 1;
  const bool pitch = subject.part != 0;
  const std::string name = "Yoke " + std::to_string(which);
  const YokePair& pair = parts_.Yokes;
  const Yoke& yoke = pair.Of(which);
  RoadMaker road(parts_, TitleOf(subject));
  road.AddLine(which == 2 ? HardwareGroup::Yoke2 : HardwareGroup::Yoke1, name);

  const auto age = yoke.Line().ReplyAgeMs();
  const YokeReply& reply = yoke.Line().LastReply();
  Station& report = road.Add("Report");
  if (age) report.Value = "raw " + std::to_string(pitch ? reply.rawPitch : reply.rawRoll);
  report.Age = age ? AgeWords(*age) : "never";
  road.TheRoad().LastAnswer = report.Age;
  constexpr std::int64_t kAnswerMs = 1000;
  if (!age) {
    road.StopInFlight(name + " has not answered yet");
  } else if (*age > kAnswerMs) {
    road.StopInFlight("No answer from yoke " + std::to_string(which) + " since " + AgeWords(*age));
  }
  const int place = pitch ? yoke.Line().PitchPosition() : yoke.Line().RollPosition();
  road.Add("Calibration", std::to_string(place)).Note = "-511 to 511";
  if (!yoke.Settings().calibrated) road.Stop(name + " is not calibrated");
  road.TheRoad().Needle = std::to_string(place);

  road.Add("Role", pair.RoleText(which)).Note = pair.StateText(which);
  if (!yoke.Settings().Has(yokeoption::kSendPositions)) {
    road.Stop(name + " is set not to fly: tick \"This yoke flies the simulator\"");
  } else if (pair.IsSlave(which)) {
    road.TheRoad().Stations.back().Note += "; the other yoke flies";
  }
  Station& sent = road.Add("To X-Plane");
  const auto axis = static_cast<std::size_t>(pitch ? Axis::Pitch : Axis::Roll);
  const bool flies = pair.Controls().YokeTaken();
  if (flies) sent.Value = NumberWords(pair.Controls().YokeRatios()[axis]);
  if (!flies) sent.Note = "X-Plane has its own controls";
  road.TheRoad().Value = sent.Value;
  return road.Finish();
}

}  // namespace tvx
