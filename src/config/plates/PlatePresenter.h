// The calibration form's logic.
#pragma once

#include <string>

#include "config/Model.h"
#include "config/plates/PlateEdit.h"
#include "platform/Host.h"

namespace tvx {

// A needle that can be calibrated: of a gauge on the gauge bus, or a channel of the engine cluster.
struct CalibrationTarget {
  int gaugeID = -1;    // -1: none
  int needle = 1;      // 1 or 2
  int command = 0;     // the gauge command that moves it
  int channel = -1;    // of the engine cluster, 0..7; -1: a gauge's needle
  std::string name{};  // what the list shows

  bool IsGauge() const { return gaugeID >= 0 && channel < 0; }
  bool IsEngineCluster() const { return channel >= 0; }
  bool SameNeedle(const CalibrationTarget& other) const {
    return gaugeID == other.gaugeID && needle == other.needle && channel == other.channel;
  }
};

class PlatePresenter {
 public:
  enum class Mode { Viewing, Updating, Creating };

  PlatePresenter(ConfigModel& model, MessageBoxes& boxes) : model_(model), boxes_(boxes) {}

  // What the form shows and lets the user edit.
  PlateBoxes Boxes;
  std::string Name;

  Mode CurrentMode() const { return mode_; }
  int PlateNumber() const { return plate_; }  // -1: none
  const char* Caption() const;
  // True while the boxes or the name hold something that is not stored.
  bool Unsaved() const;

  // Shows a stored Plate; a number that no Plate has shows none.
  void Select(int plate);
  void CmdCreateNewPlate();  // and CmdCalibrateNewPlate: empty boxes for a new Plate
  void CmdUpdatePlate();     // the shown Plate may be edited
  // False, and said why, where a name is missing, or a box holds what cannot be stored (UnusableBox).
  bool CmdSaveNewPlate();
  bool cmdSavePlate();  // asks first
  bool cmdSetNewName();
  void cmdSetCheck();
  void cmdLinearVal();

  // The needle that the calibration is for.
  void SetTarget(const CalibrationTarget& target) { target_ = target; }
  const CalibrationTarget& Target() const { return target_; }
  // Gives the shown Plate to the target's needle. Refused, in words, for the engine cluster, and for a number
  // above 255, which the gauge's record cannot hold.
  bool Assign();
  // Another Function behind the target's needle, 0..300; asks first.
  bool ChangeFunction(int function);
  int TargetFunction() const;  // 0: none
  int TargetPlate() const;     // -1: none
  // "Simulator Function Nr: 007".
  std::string FunctionLabel() const;

 private:
  bool Storable();  // says what is not
  void Stored(int plate);

  ConfigModel& model_;
  MessageBoxes& boxes_;
  CalibrationTarget target_;
  Mode mode_ = Mode::Viewing;
  int plate_ = -1;
};

}  // namespace tvx
