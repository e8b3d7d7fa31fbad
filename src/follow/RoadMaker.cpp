#include "follow/RoadMaker.h"

#include "config/plates/PlateLookup.h"
#include "follow/FollowWords.h"

namespace tvx {
namespace {

constexpr std::size_t kLowest = 2, kHighest = 3;  // entries of a Plate
constexpr double kStepsPerDegree = 3.0;

}  // namespace

RoadMaker::RoadMaker(const FollowedParts& parts, std::string title)
    : parts_(parts), running_(parts.Running()), nowMs_(parts.Time.MonotonicMs()) {
  road_.Title = std::move(title);
}

Station& RoadMaker::Add(std::string name, std::string value) {
  Station& station = road_.Stations.emplace_back();
  station.Name = std::move(name);
  station.Value = std::move(value);
  return station;
}

void RoadMaker::Stop(const std::string& why) {
  Station& station = road_.Stations.back();
  station.Note = why;
  station.Stops = true;
  if (road_.Trouble) return;
  road_.Trouble = true;
  road_.Diagnosis = why;
}

std::optional<int> RoadMaker::AddNeedle(int number, std::optional<double> value) {
  const PlateRecord* plate = parts_.Model.PlateOf(number);
  Station& station = Add("Plate", "Plate " + std::to_string(number));
  if (plate == nullptr) {
    Stop("Plate " + std::to_string(number) + " does not exist");
    return std::nullopt;
  }
  const double lowest = plate->Value[kLowest], highest = plate->Value[kHighest];
  station.Value += " " + plate->Name;
  station.Note = "from " + NumberWords(lowest) + " to " + NumberWords(highest);
  if (lowest == highest) Stop("Plate " + std::to_string(number) + " has no points: it is not calibrated");
  if (value && lowest != highest) {
    const std::string is = "; the value is " + NumberWords(*value);
    if (*value > highest) StopInFlight("The Plate ends at " + NumberWords(highest) + is);
    if (*value < lowest) StopInFlight("The Plate begins at " + NumberWords(lowest) + is);
  }
  const int position = NeedlePosition(*plate, value.value_or(0.0));
  road_.Needle = std::to_string(position);
  Add("Needle", road_.Needle).Note = NumberWords(position / kStepsPerDegree) + "° of the turn";
  return position;
}

void RoadMaker::AddLine(HardwareGroup group, const std::string& name) {
  const std::string words = parts_.Lines.WordsOf(group);
  Add("Line", words);
  if (!parts_.Lines.Configured(group)) {
    Stop(name + " has no COM port");
  } else if (parts_.Lines.InTrouble(group) || !parts_.Lines.PortOf(group).IsOpen()) {
    StopInFlight(name + ": " + words);
  }
}

Road RoadMaker::Finish() {
  if (road_.Diagnosis.empty())
    road_.Diagnosis = running_ ? "All is well" : "Halted: press Run, then values flow";
  return std::move(road_);
}

}  // namespace tvx
