// The form of one yoke: its mode and state, its calibration, forces, buttons, options and joystick. The same
// class for both, as frmConfigY1 and frmConfigY2.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>
#include <array>
#include <vector>

#include "ffb/YokePresenter.h"
#include "ffb/forms/ForceChain.h"
#include "ffb/forms/ForceCurveWidget.h"
#include "ffb/forms/YokePicture.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class YokeConfigForm : public Form {
  Q_OBJECT
 public:
  YokeConfigForm(ConfigModel& model, YokePair& pair, MessageBoxes& boxes, JoystickDevice& joystick,
                 int which);

  // Shows what the logic holds now. Called ten times a second while the form can be seen.
  void Refresh();
  void ConfigurationReplaced() override;
  static constexpr int kRefreshMs = 100;

 private:
  // YokeConfigForm.cpp
  QWidget* MakeModePage();
  QWidget* MakeCalibrationPage();
  QWidget* MakeJoystickPage();
  void RefreshCalibration();
  void RefreshJoystick();
  void ShowJoysticks();
  void LoadJoystick();
  QPushButton* MakePlaceButton(const YokePresenter::Place& place);
  // YokeConfigPages.cpp
  QWidget* MakeForcesPage();
  QWidget* MakeLevels();
  QWidget* MakeButtonsPage();
  QWidget* MakeOptionsPage();
  // YokeEffectsPage.cpp
  QWidget* MakeEffectsPage();
  void LoadEffects();
  void LoadPages();
  void ShowCurve();

  struct Level {
    QSpinBox* box;
    Byte GeneralFFBRecord::*field;
  };
  struct EffectLine {
    QSpinBox *frequency, *level;
  };
  struct SharedLine {
    QSpinBox* box;
    std::int16_t YokeRecord::*field;
  };
  struct ButtonLine {
    QLabel* lamp;
    QComboBox* action;
    QLineEdit* text;
  };
  struct PlaceLine {
    const YokePresenter::Place* place;
    QLabel* stored;
  };

  YokePair& pair_;
  YokePresenter presenter_;
  QTimer timer_{this};
  bool loading_ = false;

  std::array<QRadioButton*, 5> modes_{};
  QLabel *ModeIndicator, *LabelState, *LabelRole, *ReceivedMessage, *LabelActivity;
  ValueBox *boxBank, *boxPitch, *boxRollLoad, *boxPitchLoad;
  YokePicture *PictureMode, *PictureCalibration;
  ForceChain* ChainMode;
  std::vector<PlaceLine> places_;
  QLabel* LabelCalibrated;
  QComboBox *ComboJoystick, *ComboRudderAxis, *ComboLeftBrakeAxis, *ComboRightBrakeAxis;
  QLabel* LabelJoystick;
  QPushButton* cmdUseJoystick;
  std::array<QProgressBar*, 3> pedals_{};
  QRadioButton *OptionCurveRoll, *OptionCurvePitch;
  ForceCurveWidget* ForceCurvePicture;
  std::vector<Level> levels_;
  std::vector<EffectLine> effects_;  // by place in the record
  std::vector<SharedLine> shared_;
  QSpinBox *boxGripThreshold, *boxForceLevel, *boxAddress;
  std::vector<ButtonLine> buttons_;
  std::vector<std::pair<int, QCheckBox*>> options_;
  QComboBox* ComboStartMode;
  std::int32_t colour_ = -1;
};

// The layouts that all pages share.
QGridLayout* PageGrid(QWidget* page);
QVBoxLayout* PageColumn(QWidget* page);

}  // namespace tvx
