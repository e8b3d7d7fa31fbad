#include "hwbus/cluster/EngineClusterPresenter.h"

#include "base/NumberText.h"
#include "config/FunctionItems.h"
#include "config/plates/PlateLookup.h"

namespace tvx {
namespace {

constexpr int kHighestBits = 255;
constexpr int kLightingBits = 3;  // bits 0 and 1 of byte 38 are the cockpit's lighting
constexpr const char* kValueIsPosition = "(the value is the position)";

}  // namespace

const EngineClusterRecord& EngineClusterPresenter::Options() const {
  return model_.EngineCluster[EngineCluster::kOptionsSetting];
}

EngineClusterRecord& EngineClusterPresenter::EditedOptions() {
  return model_.EngineCluster[EngineCluster::kOptionsSetting];
}

void EngineClusterPresenter::Changed() {
  model_.ConfigChanged = true;
  Refresh();
}

void EngineClusterPresenter::Refresh() {
  tried_.reset();
  cluster_.TakeSettings();
  changed_();
}

void EngineClusterPresenter::SetEnabled(int channel, bool on) {
  Edited(channel).Value1 = on ? 1 : 0;
  Changed();
}

void EngineClusterPresenter::SetFunction(int channel, int function) {
  if (model_.FunctionOf(function) == nullptr) return;
  EngineClusterRecord& record = Edited(channel);
  const bool first = record.Value2 == 0;
  // An untouched record names Plate 0, which nobody has chosen.
  if (first && record.Value3 == 0) record.Value3 = kNoPlate;
  if (first || function == 0) record.Value1 = function == 0 ? 0 : 1;
  record.Value2 = static_cast<std::int16_t>(function);
  Changed();
}

void EngineClusterPresenter::SetPlate(int channel, int plate) {
  if (plate != kNoPlate && model_.PlateOf(plate) == nullptr) return;
  Edited(channel).Value3 = static_cast<std::int16_t>(plate);
  Changed();
}

std::vector<std::pair<int, std::string>> EngineClusterPresenter::PlateItemsOf(int channel) const {
  auto items = PlateItems(model_);
  items.insert(items.begin(), {kNoPlate, kValueIsPosition});
  const int plate = PlateOf(channel);
  if (plate != kNoPlate && model_.PlateOf(plate) == nullptr) {
    items.emplace_back(plate, FormatNumberText(plate, "000") + "  (no such Plate)");
  }
  return items;
}

int EngineClusterPresenter::PlateOf(int channel) const {
  const EngineClusterRecord& record = Channel(channel);
  return record.Value2 == 0 && record.Value3 == 0 ? kNoPlate : record.Value3;
}

std::string_view EngineClusterPresenter::Remark(int channel) const {
  const EngineClusterRecord& record = Channel(channel);
  if (record.Value1 == 0) return {};
  if (record.Value2 == 0) return "No Function";
  const FunctionRecord* function = model_.FunctionOf(record.Value2);
  if (function == nullptr || function->ShortName.empty()) return "Function not defined";
  if (function->Is(DataType::XplaneCmnd)) return "A command has no value";
  if (record.Value3 != kNoPlate && model_.PlateOf(record.Value3) == nullptr) return "No such Plate";
  return {};
}

std::string EngineClusterPresenter::NeedleName(int channel) const {
  std::string name = "Needle " + std::to_string(cluster_.NeedleOf(channel));
  if (cluster_.DualEngine()) name += channel < kECChannels / 2 ? ", engine 1" : ", engine 2";
  return name;
}

void EngineClusterPresenter::SetDual(bool dual) {
  EditedOptions().Value1 = dual ? 1 : 0;
  Changed();
}

void EngineClusterPresenter::SetBacklight(bool on) {
  EditedOptions().Value2 = on ? 1 : 0;
  Changed();
}

std::optional<int> EngineClusterPresenter::ReadExtraBits(std::string_view text) {
  return TypedWhole(text, 0, kHighestBits);
}

std::string_view EngineClusterPresenter::ExtraBitsRemark(std::string_view text) {
  const auto bits = ReadExtraBits(text);
  if (!bits) return "A whole number from 0 to 255, please";
  if ((*bits & kLightingBits) != 0)
    return "1 and 2 are the lights and the bus power: they would always be on";
  return {};
}

bool EngineClusterPresenter::SetExtraBits(std::string_view text) {
  const auto bits = ReadExtraBits(text);
  if (!bits) return false;
  EditedOptions().Value3 = static_cast<std::int16_t>(*bits);
  Changed();
  return true;
}

void EngineClusterPresenter::Try(int channel, Spot spot) {
  if (cluster_.Running()) return;
  const PlateRecord* plate = model_.PlateOf(Channel(channel).Value3);
  const auto [lowest, highest] =
      plate == nullptr ? std::pair(0.0, kNeedlePositions - 1.0) : std::pair(plate->Value[2], plate->Value[3]);
  const double value = spot == Spot::Lowest    ? lowest
                       : spot == Spot::Highest ? highest
                                               : lowest + (highest - lowest) / 2;
  MoveNeedle(channel, cluster_.PositionOf(channel, value));
  tried_ = {channel, value};
}

void EngineClusterPresenter::MoveNeedle(int channel, int position) {
  tried_.reset();
  if (!cluster_.Running()) cluster_.MoveSingleNeedle(cluster_.NeedleOf(channel), position);
}

std::string EngineClusterPresenter::Reading(int channel) const {
  std::optional<double> value = cluster_.Value(channel);
  if (!cluster_.Running() && tried_ && tried_->channel == channel) value = tried_->value;
  if (!value) return {};
  return FormatNumberText(*value, "###00.00") + " at " + std::to_string(cluster_.PositionOf(channel, *value));
}

bool EngineClusterPresenter::PasteChannel(int channel) {
  if (!copied_) return false;
  Edited(channel) = *copied_;
  Changed();
  return true;
}

}  // namespace tvx
