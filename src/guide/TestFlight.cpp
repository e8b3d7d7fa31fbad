#include "guide/TestFlight.h"

#include "base/NumberFormat.h"
#include "config/setup/GaugeList.h"
#include "instruments/kinds/Registry.h"
#include "instruments/setup/CalibrationTargets.h"
#include "instruments/setup/GaugeWork.h"

namespace tvx {
namespace {

constexpr int kSteps = 12;  // of a sweep
constexpr std::size_t kLowest = 2, kHighest = 3;
constexpr std::int32_t kLargestShown = 9999;  // numbers on displays, where the instrument could show more

}  // namespace

void TestFlight::AddSweep(int gaugeID, int command, std::int32_t from, std::int32_t to) {
  for (int step = 0; step <= kSteps; ++step)
    moves_.push_back({gaugeID, command, from + (to - from) * step / kSteps, {}});
  moves_.push_back({gaugeID, command, from, {}});
}

// Needles by their Plates, everything else by what can be tried on it.
void TestFlight::AddGauge(int gaugeID) {
  const GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(gaugeID)];
  const Instrument* kind = gauge.GaugeType == 0 ? nullptr : InstrumentOf(gauge.GaugeType);
  if (kind == nullptr) return;
  const InstrumentDescription description = kind->Describe(gauge.GaugeType);
  for (const TrialField& trial : description.trials) {
    std::int32_t from = trial.lowest, to = trial.highest;
    for (std::size_t i = 0; i < description.plates.size(); ++i) {
      CalibrationTarget needle;
      needle.gaugeID = gaugeID;
      needle.needle = static_cast<int>(i) + 1;
      const PlateRecord* plate = model_.PlateOf(NeedlePlate(model_, needle));
      if (description.plates[i].command != trial.command || plate == nullptr) continue;
      from = plate->Position[kLowest];
      to = plate->Position[kHighest];
    }
    AddSweep(gaugeID, trial.command, std::max(from, -kLargestShown), std::min(to, kLargestShown));
  }
  moves_.push_back({gaugeID, kCommandReportState, 0, {}});
}

void TestFlight::AddChannels() {
  for (const CalibrationTarget& target : CalibrationTargets(model_)) {
    const PlateRecord* plate =
        target.IsEngineCluster() ? model_.PlateOf(NeedlePlate(model_, target)) : nullptr;
    if (plate == nullptr || NeedleFunction(model_, target) == 0) continue;
    const int from = plate->Position[kLowest], to = plate->Position[kHighest];
    for (int step = 0; step <= kSteps; ++step)
      moves_.push_back({0, 0, from + (to - from) * step / kSteps, target});
    moves_.push_back({0, 0, from, target});
  }
}

void TestFlight::Start() {
  moves_.clear();
  asked_.clear();
  answered_.clear();
  next_ = 0;
  for (int id = 0; id < kGauges; ++id) AddGauge(id);
  AddChannels();
  running_ = !moves_.empty();
  done_ = false;
}

void TestFlight::Tick() {
  if (!running_) return;
  if (next_ == moves_.size()) {
    running_ = false;
    done_ = true;
    return;
  }
  const Move& move = moves_[next_];
  if (move.channel.IsEngineCluster()) {
    hardware_.MoveNeedle(move.channel, move.value);
  } else if (!hardware_.Command(move.gaugeID, move.command, move.value)) {
    return;
  }
  if (!move.channel.IsEngineCluster() && move.command == kCommandReportState) asked_.insert(move.gaugeID);
  ++next_;
}

void TestFlight::OnReply(ReplyView reply) {
  if (running_ || done_) answered_.insert(ReplyGaugeID(reply));
}

int TestFlight::Percent() const {
  if (moves_.empty()) return 0;
  return static_cast<int>(next_ * 100 / moves_.size());
}

std::string TestFlight::Words() const {
  if (running_ && next_ < moves_.size()) {
    const Move& move = moves_[next_];
    if (move.channel.IsEngineCluster()) return move.channel.name + " moves.";
    const Byte type = model_.Gauges[static_cast<std::size_t>(move.gaugeID)].GaugeType;
    std::string name = GaugetypeNameInList(model_, type);
    name.erase(name.find_last_not_of(' ') + 1);
    return FormatNumberText(move.gaugeID, "000") + "  " + name + " moves.";
  }
  if (!done_) return "Every needle and every display is moved once from end to end. Watch the cockpit.";
  std::string silent;
  int answers = 0;
  for (const int id : asked_) {
    if (answered_.count(id) > 0)
      ++answers;
    else
      silent += ' ' + FormatNumberText(id, "000");
  }
  std::string words =
      std::to_string(answers) + " of " + std::to_string(asked_.size()) + " instruments answered.";
  return silent.empty() ? words : words + " Silent:" + silent + '.';
}

}  // namespace tvx
