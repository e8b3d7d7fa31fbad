#include "guide/NeedleSteps.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/NumberFormat.h"
#include "config/ValueText.h"
#include "config/faces/FaceFile.h"
#include "instruments/setup/CalibrationTargets.h"
#include "instruments/setup/GaugeWork.h"

namespace tvx {
namespace {

constexpr int kHighestPosition = 1079;
constexpr int kSwingLow = 400, kSwingHigh = 680;  // of the needle that is asked for
constexpr int kSwingTicks = 50;                   // from one end to the other
constexpr int kSwingEvery = 5;                    // ticks

constexpr Byte kClusterHousing = 8;
constexpr int kFirstOfHousing = 51, kValuesOfHousing = 8;  // standard Functions of the housings, in a row
constexpr std::int16_t kHousingMask = 3;
// The mode by the place of the pair of values: fuel, oil, exhaust and flow, vacuum and amperes.
constexpr std::array<std::int16_t, 4> kModeOfPair{1, 2, 3, 0};

}  // namespace

void NeedleSteps::Refresh() {
  const CalibrationTarget chosen =
      current_ >= 0 ? needles_[static_cast<std::size_t>(current_)] : CalibrationTarget{};
  needles_ = CalibrationTargets(model_);
  faces_ = AllFaces();
  int again = -1;
  for (std::size_t i = 0; i < needles_.size(); ++i) {
    if (current_ >= 0 && needles_[i].SameNeedle(chosen)) again = static_cast<int>(i);
  }
  if (again < 0) tuning_ = false;
  current_ = again;
  if (!tuning_) return;
  const CalibrationTarget& target = needles_[static_cast<std::size_t>(current_)];
  tuning_ = NeedleFunction(model_, target) == givenFunction_ && NeedlePlate(model_, target) == givenPlate_ &&
            model_.PlateOf(givenPlate_) != nullptr;
}

void NeedleSteps::NoteGiven() {
  const CalibrationTarget& target = needles_[static_cast<std::size_t>(current_)];
  givenFunction_ = NeedleFunction(model_, target);
  givenPlate_ = NeedlePlate(model_, target);
}

std::string NeedleSteps::StateOf(std::size_t needle) const {
  const CalibrationTarget& target = needles_[needle];
  std::string fault = NeedleFault(model_, target);
  if (!fault.empty()) return fault;
  return model_.PlateOf(NeedlePlate(model_, target))->Name;
}

bool NeedleSteps::NeedsWork(std::size_t needle) const {
  return !NeedleFault(model_, needles_[needle]).empty();
}

int NeedleSteps::LeftToDo() const {
  int left = 0;
  for (std::size_t i = 0; i < needles_.size(); ++i) left += NeedsWork(i) ? 1 : 0;
  return left;
}

void NeedleSteps::Select(int needle) {
  current_ = needle >= 0 && static_cast<std::size_t>(needle) < needles_.size() ? needle : -1;
  tuning_ = false;
  ownPlate_ = -1;
  ticks_ = 0;
}

void NeedleSteps::SelectNext() {
  const std::size_t count = needles_.size();
  const std::size_t from = current_ < 0 ? 0 : static_cast<std::size_t>(current_) + 1;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t needle = (from + i) % count;
    if (NeedsWork(needle)) return Select(static_cast<int>(needle));
  }
  Select(-1);
}

std::string NeedleSteps::TakeFace(std::size_t face) {
  if (current_ < 0 || face >= faces_.size()) return {};
  const ReadyFace chosen = faces_[face];
  std::string refused = Assign(chosen);
  if (!refused.empty()) return refused;
  marks_ = chosen.marks;
  points_ = {0, marks_.size() / 2, marks_.size() - 1};
  if (marks_.size() < 3) points_ = {0, marks_.size() - 1};
  offsets_.clear();
  point_ = 0;
  ownPlate_ = -1;
  tuning_ = true;
  NoteGiven();
  ShowPoint();
  return {};
}

// A housing of the engine cluster shows a pair of eight values in a row; its mode says which.
std::string NeedleSteps::Assign(const ReadyFace& face) {
  const CalibrationTarget& target = needles_[static_cast<std::size_t>(current_)];
  int place = -1;
  GaugeRecord* housing = nullptr;
  if (target.IsGauge()) {
    GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(target.gaugeID)];
    if (gauge.GaugeType == kClusterHousing) housing = &gauge;
  }
  if (housing != nullptr) {
    place = face.function - kFirstOfHousing;
    if (place < 0 || place >= kValuesOfHousing || place % 2 != target.needle - 1)
      return "This needle of the housing shows one of: fuel left, oil temperature, exhaust temperature, "
             "vacuum "
             "(first needle); fuel right, oil pressure, fuel flow, amperes (second needle).";
  }
  const int function = FunctionForFace(model_, face);
  if (function == 0)
    return "The Function of this face, " + face.functionName + ", is not in the configuration.";
  if (housing != nullptr && StandardFunctionIn(model_, kFirstOfHousing) != function - place)
    return "The eight Functions of the housings do not stand in a row.";
  const int plate = PlateForFace(model_, face);
  if (plate < 0) return "A gauge can have one of 256 Plates only, and all of them are there.";
  if (housing == nullptr) {
    Put(function, plate);
    return {};
  }
  housing->GaugeFunction1 = static_cast<std::int16_t>(function - place);
  housing->GaugeInstance1 = 1;
  const auto mode = kModeOfPair[static_cast<std::size_t>(place / 2)];
  housing->GaugeSetting5 = static_cast<std::int16_t>((housing->GaugeSetting5 & ~kHousingMask) | mode);
  Put(0, plate);
  return {};
}

// Function 0: it stays.
void NeedleSteps::Put(int function, int plate) {
  const CalibrationTarget& target = needles_[static_cast<std::size_t>(current_)];
  const auto number = static_cast<std::int16_t>(function);
  if (target.IsEngineCluster()) {
    EngineClusterRecord& channel = model_.EngineCluster[static_cast<std::size_t>(target.channel)];
    channel.Value1 = 1;
    if (function != 0) channel.Value2 = number;
    channel.Value3 = static_cast<std::int16_t>(plate);
  } else {
    GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(target.gaugeID)];
    const bool second = target.needle == 2;
    if (function != 0) {
      (second ? gauge.GaugeFunction2 : gauge.GaugeFunction1) = number;
      (second ? gauge.GaugeInstance2 : gauge.GaugeInstance1) = 1;
    }
    (second ? gauge.GaugeSetting4 : gauge.GaugeSetting3) = static_cast<Byte>(plate);
  }
  model_.ConfigChanged = true;
}

void NeedleSteps::ShowPoint() {
  const std::size_t mark = points_[point_];
  // The points before it say where this one probably is.
  const int offset = offsets_.empty() ? 0 : offsets_.back();
  MoveTo(marks_[mark].position + offset);
}

std::string NeedleSteps::Question() const {
  if (current_ < 0) return {};
  if (!tuning_) return "Which face moved?";
  std::string value;
  AppendValue(value, marks_[points_[point_]].value);
  return "Does it stand at " + value + '?';
}

void NeedleSteps::MoveTo(int position) {
  position_ = std::clamp(position, 0, kHighestPosition);
  if (current_ >= 0) hardware_.MoveNeedle(needles_[static_cast<std::size_t>(current_)], position_);
}

void NeedleSteps::Yes() {
  if (!tuning_) return;
  offsets_.push_back(position_ - marks_[points_[point_]].position);
  StoreTuned();
  if (++point_ < points_.size()) return ShowPoint();
  SelectNext();
}

void NeedleSteps::SkipTuning() {
  if (tuning_) SelectNext();
}

bool NeedleSteps::UsedElsewhere(int plate) const {
  for (std::size_t i = 0; i < needles_.size(); ++i) {
    if (static_cast<int>(i) != current_ && NeedleFunction(model_, needles_[i]) != 0 &&
        NeedlePlate(model_, needles_[i]) == plate)
      return true;
  }
  return false;
}

// The marks between the points that were asked about move with them, those beyond with the nearest one.
void NeedleSteps::StoreTuned() {
  if (ownPlate_ < 0 && std::all_of(offsets_.begin(), offsets_.end(), [](int by) { return by == 0; })) return;
  const CalibrationTarget& target = needles_[static_cast<std::size_t>(current_)];
  ReadyFace tuned;
  for (std::size_t i = 0; i < marks_.size(); ++i) {
    std::size_t k = 0;
    while (k + 1 < offsets_.size() && points_[k + 1] <= i) ++k;
    double offset = offsets_[k];
    if (k + 1 < offsets_.size() && points_[k] <= i) {
      const double part =
          static_cast<double>(i - points_[k]) / static_cast<double>(points_[k + 1] - points_[k]);
      offset += part * (offsets_[k + 1] - offsets_[k]);
    }
    const auto position =
        std::clamp(static_cast<int>(std::lround(marks_[i].position + offset)), 0, kHighestPosition);
    tuned.marks.push_back({marks_[i].value, static_cast<std::int16_t>(position)});
  }
  const int now = NeedlePlate(model_, target);
  const std::string whose = target.IsEngineCluster() ? "channel " + std::to_string(target.channel + 1)
                                                     : FormatNumberText(target.gaugeID, "000");
  PlateRecord plate = PlateOfFace(tuned);
  if (ownPlate_ >= 0 && ownPlate_ == now && !UsedElsewhere(now)) {
    plate.Name = model_.PlateOf(now)->Name;
    model_.Plates[static_cast<std::size_t>(now)] = plate;
    model_.ConfigChanged = true;
    return;
  }
  plate.Name = model_.PlateOf(now)->Name + " (" + whose + ')';
  ownPlate_ = AddPlate(model_, plate);
  if (ownPlate_ >= 0) Put(0, ownPlate_);
  NoteGiven();
}

void NeedleSteps::Tick() {
  if (current_ < 0 || tuning_ || ++ticks_ % kSwingEvery != 0) return;
  const int phase = ticks_ % (2 * kSwingTicks);
  const int way = phase < kSwingTicks ? phase : 2 * kSwingTicks - phase;
  hardware_.MoveNeedle(needles_[static_cast<std::size_t>(current_)],
                       kSwingLow + way * (kSwingHigh - kSwingLow) / kSwingTicks);
}

}  // namespace tvx
