// The calibration form: Plates, their points, and the live needle that shows them.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QSlider>
#include <array>
#include <functional>
#include <vector>

#include "config/plates/PlatePresenter.h"
#include "ui/Form.h"
#include "ui/PlatePictures.h"
#include "ui/SearchCombo.h"
#include "ui/Widgets.h"

namespace tvx {

class CalibrateForm : public Form {
  Q_OBJECT
 public:
  struct Surroundings {
    std::vector<CalibrationTarget> targets;
    // Moves the target's live needle to a position 0..1079; never waits.
    std::function<void(const CalibrationTarget&, int)> moveNeedle;
    std::function<void()> closed;
  };
  // `first`: the needle to begin with, one of the targets; another one: none.
  CalibrateForm(ConfigModel& model, MessageBoxes& boxes, Surroundings surroundings,
                const CalibrationTarget& first, QWidget* parent);

 protected:
  void CloseAsked() override { CmdClose_Click(); }
  void EscapePressed() override { CmdClose_Click(); }

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
  void CmdClose_Click();

  ConfigModel& model_;
  MessageBoxes& boxes_;
  Surroundings surroundings_;
  PlatePresenter plates_;
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
              *cmdAssign = nullptr, *cmdTake = nullptr;
};

}  // namespace tvx
