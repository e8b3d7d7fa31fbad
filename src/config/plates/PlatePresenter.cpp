#include "config/plates/PlatePresenter.h"

#include "base/NumberFormat.h"

namespace tvx {
namespace {

constexpr int kMostPlates = 32767;       // what the file's count announces
constexpr int kHighestAssignable = 255;  // what a gauge's record holds

}  // namespace

const char* PlatePresenter::Caption() const {
  switch (mode_) {
    case Mode::Creating:
      return "Creating New Plate Calibration";
    case Mode::Updating:
      return "Updating Current Plate Calibration";
    default:
      return "Current Plate Calibration Settings";
  }
}

bool PlatePresenter::Unsaved() const {
  if (mode_ == Mode::Creating) return Boxes != PlateBoxes{} || !Name.empty();
  const PlateRecord* stored = model_.PlateOf(plate_);
  if (stored == nullptr) return false;
  return Name != stored->Name || (mode_ == Mode::Updating && Boxes != BoxesOfPlate(*stored));
}

void PlatePresenter::Select(int plate) {
  const PlateRecord* stored = model_.PlateOf(plate);
  plate_ = stored == nullptr ? -1 : plate;
  Boxes = stored == nullptr ? PlateBoxes{} : BoxesOfPlate(*stored);
  Name = stored == nullptr ? std::string() : stored->Name;
  mode_ = Mode::Viewing;
}

void PlatePresenter::CmdCreateNewPlate() {
  Select(-1);
  mode_ = Mode::Creating;
}

void PlatePresenter::CmdUpdatePlate() {
  if (model_.PlateOf(plate_) != nullptr) mode_ = Mode::Updating;
}

bool PlatePresenter::Storable() {
  const std::string words = UnusableBox(Boxes);
  if (!words.empty()) boxes_.Show(words);
  return words.empty();
}

bool PlatePresenter::CmdSaveNewPlate() {
  if (Name.find_first_not_of(' ') == std::string::npos) {
    boxes_.Show("Platename missing");
    return false;
  }
  if (!PlateNameUsable(Name) || model_.PlateCount() >= kMostPlates) {
    boxes_.Show("Plate name missing or incorrect");
    return false;
  }
  if (!Storable()) return false;
  model_.Plates.push_back(PlateOfBoxes(Boxes, Name));
  Stored(model_.PlateCount() - 1);
  return true;
}

bool PlatePresenter::cmdSavePlate() {
  if (model_.PlateOf(plate_) == nullptr || !Storable()) return false;
  if (boxes_.Ask("This will update the current plate settings. Continue?") == kAnswerNo) return false;
  PlateRecord& plate = model_.Plates[static_cast<std::size_t>(plate_)];
  plate = PlateOfBoxes(Boxes, plate.Name);
  // A new name that was typed stays in its box until it is given with cmdSetNewName.
  const std::string typed = Name;
  Stored(plate_);
  Name = typed;
  return true;
}

void PlatePresenter::Stored(int plate) {
  model_.ConfigChanged = true;
  Select(plate);
}

bool PlatePresenter::cmdSetNewName() {
  if (model_.PlateOf(plate_) == nullptr || !PlateNameUsable(Name)) {
    boxes_.Show("Plate name missing or incorrect");
    return false;
  }
  model_.Plates[static_cast<std::size_t>(plate_)].Name = Name;
  model_.ConfigChanged = true;
  return true;
}

void PlatePresenter::cmdSetCheck() {
  boxes_.Show(CheckPlateBoxes(Boxes).text);
}

void PlatePresenter::cmdLinearVal() {
  const PlateVerdict verdict = FillLinear(Boxes);
  if (!verdict.good) boxes_.Show(verdict.text);
}

bool PlatePresenter::Assign() {
  if (target_.IsEngineCluster()) {
    boxes_.Show("Plate selection in Engine Cluster can only be changed in the Engine Cluster Config page.");
    return false;
  }
  if (!target_.IsGauge() || model_.PlateOf(plate_) == nullptr) return false;
  if (plate_ > kHighestAssignable) {
    boxes_.Show("A gauge can only have one of the Plates 0 to 255. This is Plate " + std::to_string(plate_) +
                ".");
    return false;
  }
  GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(target_.gaugeID)];
  (target_.needle == 2 ? gauge.GaugeSetting4 : gauge.GaugeSetting3) = static_cast<Byte>(plate_);
  model_.ConfigChanged = true;
  return true;
}

bool PlatePresenter::ChangeFunction(int function) {
  if (model_.FunctionOf(function) == nullptr || function == TargetFunction()) return false;
  if (!target_.IsGauge() && !target_.IsEngineCluster()) return false;
  if (boxes_.Ask("This will modify the function definition\r\nAre you sure?") == kAnswerNo) return false;
  const auto number = static_cast<std::int16_t>(function);
  if (target_.IsEngineCluster()) {
    model_.EngineCluster[static_cast<std::size_t>(target_.channel)].Value2 = number;
  } else {
    GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(target_.gaugeID)];
    (target_.needle == 2 ? gauge.GaugeFunction2 : gauge.GaugeFunction1) = number;
  }
  model_.ConfigChanged = true;
  return true;
}

int PlatePresenter::TargetFunction() const {
  if (target_.IsEngineCluster()) {
    return model_.EngineCluster[static_cast<std::size_t>(target_.channel)].Value2;
  }
  if (!target_.IsGauge()) return 0;
  const GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(target_.gaugeID)];
  return target_.needle == 2 ? gauge.GaugeFunction2 : gauge.GaugeFunction1;
}

int PlatePresenter::TargetPlate() const {
  if (target_.IsEngineCluster()) {
    return model_.EngineCluster[static_cast<std::size_t>(target_.channel)].Value3;
  }
  if (!target_.IsGauge()) return -1;
  const GaugeRecord& gauge = model_.Gauges[static_cast<std::size_t>(target_.gaugeID)];
  return target_.needle == 2 ? gauge.GaugeSetting4 : gauge.GaugeSetting3;
}

std::string PlatePresenter::FunctionLabel() const {
  return "Simulator Function Nr: " + FormatNumberText(TargetFunction(), "000");
}

}  // namespace tvx
