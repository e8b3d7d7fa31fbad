// The calibration form: Plates, their points, and the live needle that shows them.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QSlider>
#include <array>
#include <vector>

#include "config/plates/LiveNeedleAccess.h"
#include "config/plates/PlatePresenter.h"
#include "ui/Form.h"
#include "ui/PlatePictures.h"
#include "ui/Widgets.h"
#include "ui/search/SearchCombo.h"

namespace tvx {

class CalibrateForm : public Form {
  Q_OBJECT
 public:
  // `targets`: the needles to choose from. `first`: the one to begin with; no needle where it is none of
  // them.
  CalibrateForm(ConfigModel& model, MessageBoxes& boxes, std::vector<CalibrationTarget> targets,
                const CalibrationTarget& first, LiveNeedleAccess& needle, QWidget* parent);

 protected:
  bool MayEnd() override { return MayLeave(); }
  void ConfigurationReplaced() override;

 private:
  QWidget* MakePlatePanel();
  QWidget* MakePointPanel();
  QWidget* MakePicturePanel();
  QWidget* MakeTargetPanel();
  QLayout* MakeJog();
  QPushButton* Command(const char* name, const QString& text, const QString& tip,
                       void (CalibrateForm::*slot)());
  void BeginWith(const CalibrationTarget& first);
  void ShowAll();
  void ShowPlates();
  void ShowBoxes();
  void ShowPoints();
  void ShowTarget();
  void ShowMode();
  void TakeBoxes();
  void PointEdited(std::size_t box, bool needle);
  void MoveNeedle(int position);
  void Jog(int by);
  bool MayLeave();
  void PickPlate(int row);
  void cmdTakeNeedle_Click();
  void CmdCreateNewPlate_Click();
  void CmdUpdatePlate_Click();
  void CmdSaveNewPlate_Click();
  void cmdSavePlate_Click();
  void cmdSetNewName_Click();
  void cmdSetCheck_Click();
  void cmdLinearVal_Click();
  void cmdAssignPlate_Click();
  void cmdSaveFace_Click();

  ConfigModel& model_;
  MessageBoxes& boxes_;
  const std::vector<CalibrationTarget> targets_;
  LiveNeedleAccess& needle_;
  PlatePresenter presenter_;
  std::size_t lastBox_ = 0;  // the point that was worked on last
  bool asking_ = false;

  QListWidget* PlateList = nullptr;
  QLineEdit* PlateName = nullptr;
  std::array<QLineEdit*, PlateBoxes::kBoxes> boxValue{}, boxNeedle{};
  QLabel *LabelCheck = nullptr, *LabelFunction = nullptr, *LabelAssigned = nullptr, *BoxPosition = nullptr;
  PlateCurve* Curve = nullptr;
  PlateFace* Face = nullptr;
  SearchCombo *ComboTarget = nullptr, *ComboFunction = nullptr;
  QSlider* SliderMoveNeedle = nullptr;
  QPushButton *cmdUpdate = nullptr, *cmdSaveNew = nullptr, *cmdSave = nullptr, *cmdLinear = nullptr,
              *cmdAssign = nullptr, *cmdTake = nullptr, *cmdSaveFace = nullptr;
};

}  // namespace tvx
