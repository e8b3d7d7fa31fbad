// The panels of the calibration form.
#include <QApplication>
#include <QGridLayout>
#include <QShortcut>

#include "config/FunctionItems.h"
#include "config/plates/PlateLookup.h"
#include "config/plates/forms/CalibrateForm.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"
#include "ui/search/SearchLine.h"

namespace tvx {
namespace {

constexpr int kColumns = 3;

}  // namespace

QPushButton* CalibrateForm::Command(const char* name, const QString& text, const QString& tip,
                                    void (CalibrateForm::*slot)()) {
  QPushButton* button = MakeButton(name, text, tip);
  connect(button, &QPushButton::clicked, this, slot);
  return button;
}

QWidget* CalibrateForm::MakePlatePanel() {
  QFrame* panel = MakePanel("PanelPlates");
  QVBoxLayout* column = MakeTitledColumn(panel, tr("Plates"), "LabelPlates");
  PlateList = new QListWidget;
  PlateList->setObjectName("PlateList");
  PlateList->setToolTip(tr("The Plates of this configuration, by number"));
  PlateList->setMinimumWidth(look::Margin() * 19);
  PlateList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // long names end in dots
  connect(PlateList, &QListWidget::currentRowChanged, this, &CalibrateForm::PickPlate);
  PlateName = new QLineEdit;
  PlateName->setObjectName("PlateName");
  PlateName->setMaxLength(60);
  PlateName->setPlaceholderText(tr("Name"));
  PlateName->setToolTip(tr("Name of the Plate: what the face shows, and its range"));
  connect(PlateName, &QLineEdit::textEdited, this,
          [this](const QString& text) { presenter_.Name = text.toStdString(); });
  column->addWidget(new SearchLine(
      "SearchPlate", tr("The list shows the Plates that hold this, as you type; Enter takes the first one"),
      PlateList));
  column->addWidget(PlateList, 1);
  column->addWidget(PlateName);
  column->addWidget(Command("cmdSetNewName", tr("&Rename"), tr("Gives the chosen Plate this name"),
                            &CalibrateForm::cmdSetNewName_Click));
  column->addWidget(Command("CmdCreateNewPlate", tr("&New Plate"), tr("Empty boxes for a new Plate"),
                            &CalibrateForm::CmdCreateNewPlate_Click));
  cmdUpdate = Command("CmdUpdatePlate", tr("&Edit this Plate"), tr("Lets its points be changed"),
                      &CalibrateForm::CmdUpdatePlate_Click);
  cmdSaveNew = Command("CmdSaveNewPlate", tr("&Save as new Plate"),
                       tr("Adds the points above as a new Plate"), &CalibrateForm::CmdSaveNewPlate_Click);
  cmdSave = Command("cmdSavePlate", tr("&Save the changes"),
                    tr("Replaces the points of this Plate; asks first"), &CalibrateForm::cmdSavePlate_Click);
  for (QPushButton* button : {cmdSaveNew, cmdSave}) look::SetRole(button, "primary");
  for (QPushButton* button : {cmdUpdate, cmdSaveNew, cmdSave}) column->addWidget(button);
  cmdSaveFace = Command("cmdSaveFace", tr("Keep as ready face"),
                        tr("Offers this Plate, with the Function of the needle, as a face in every set-up "
                           "guide of this folder"),
                        &CalibrateForm::cmdSaveFace_Click);
  column->addWidget(cmdSaveFace);
  return panel;
}

QWidget* CalibrateForm::MakePointPanel() {
  QFrame* panel = MakePanel("PanelPoints");
  QVBoxLayout* column = MakeTitledColumn(
      panel, tr("Values of the simulator, and the needle positions that show them"), "LabelPoints");
  auto* grid = new QGridLayout;
  grid->setSpacing(look::Gap() / 2);
  const std::size_t rows = PlateBoxes::kBoxes / kColumns;
  for (int c = 0; c < kColumns; ++c) {
    grid->addWidget(MakeLabel("", tr("Value"), "caption"), 0, c * 4 + 1);
    grid->addWidget(MakeLabel("", tr("Needle"), "caption"), 0, c * 4 + 2);
    if (c > 0) grid->setColumnMinimumWidth(c * 4 - 1, look::Margin());
  }
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    const auto edit = [&](const QString& name, const QString& tip, bool needle) {
      auto* line = new QLineEdit;
      line->setObjectName(name);
      line->setToolTip(tip);
      line->setAlignment(Qt::AlignRight);
      line->setMinimumWidth(look::Margin() * (needle ? 3 : 5));
      line->setMaximumWidth(look::Margin() * (needle ? 4 : 6));
      connect(line, &QLineEdit::textEdited, this, [this, box, needle] { PointEdited(box, needle); });
      return line;
    };
    boxValue[box] =
        edit(box == 0 ? QString("CalMinimumValue") : "boxValue" + QString::number(box),
             tr("Value of the Function, in its own unit; higher from box to box. Empty: not used"), false);
    boxNeedle[box] =
        edit("boxNeedle" + QString::number(box),
             tr("Needle position, 0 to 1079: three to a degree, clockwise, 540 points up"), true);
    const int row = static_cast<int>(box % rows) + 1, at = static_cast<int>(box / rows) * 4;
    grid->addWidget(MakeLabel("", box == 0 ? tr("Min") : QString::number(box), "caption"), row, at,
                    Qt::AlignRight);
    grid->addWidget(boxValue[box], row, at + 1);
    grid->addWidget(boxNeedle[box], row, at + 2);
  }
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
      if (now == boxValue[box] || now == boxNeedle[box]) lastBox_ = box;
    }
  });
  LabelCheck = MakeLabel("LabelCheck");
  LabelCheck->setWordWrap(true);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(look::Gap());
  cmdTake = Command("cmdTakeNeedle", tr("&Take the needle"),
                    tr("Puts the position of the live needle into the box that you were in last"),
                    &CalibrateForm::cmdTakeNeedle_Click);
  cmdLinear = Command("cmdLinearVal", tr("&Linear values"),
                      tr("Fills the values between the minimum and the last used box in equal steps"),
                      &CalibrateForm::cmdLinearVal_Click);
  buttons->addWidget(cmdTake);
  buttons->addWidget(cmdLinear);
  buttons->addWidget(Command("cmdSetCheck", tr("C&heck"),
                             tr("Looks for a value or a position that cannot be right"),
                             &CalibrateForm::cmdSetCheck_Click));
  column->addLayout(grid);
  column->addWidget(LabelCheck);
  column->addStretch(1);
  column->addLayout(buttons);
  return panel;
}

QWidget* CalibrateForm::MakePicturePanel() {
  QFrame* panel = MakePanel("PanelPictures");
  QVBoxLayout* column = MakeTitledColumn(panel, tr("The face, and its curve"), "LabelPictures");
  Face = new PlateFace("Face");
  Curve = new PlateCurve("Curve");
  column->addWidget(Face, 1);
  column->addWidget(Curve, 1);
  return panel;
}

QWidget* CalibrateForm::MakeTargetPanel() {
  QFrame* panel = MakePanel("PanelTarget");
  QVBoxLayout* column = MakeTitledColumn(panel, tr("Live needle"), "LabelTarget");
  auto* grid = new QGridLayout;
  grid->setSpacing(look::Gap());
  ComboTarget = new SearchCombo("ComboTarget", tr("The needle that is moved, and that gets the Plate"));
  std::vector<std::pair<int, std::string>> items{{-1, "(none)"}};
  for (std::size_t i = 0; i < targets_.size(); ++i) {
    items.emplace_back(static_cast<int>(i), targets_[i].name);
  }
  ComboTarget->SetItems(items);
  ComboTarget->SetValue(-1);
  ComboTarget->SetPicked([this](int index) {
    presenter_.SetTarget(index < 0 ? CalibrationTarget{} : targets_[static_cast<std::size_t>(index)]);
    const bool viewing = presenter_.CurrentMode() == PlatePresenter::Mode::Viewing;
    if (viewing && !presenter_.Unsaved()) presenter_.Select(presenter_.TargetPlate());
    ShowAll();
  });
  ComboFunction =
      new SearchCombo("ComboFunction", tr("The Function that this needle shows; type a part of its name"));
  ComboFunction->SetItems(FunctionItems(model_));
  ComboFunction->SetPicked([this](int function) {
    presenter_.ChangeFunction(function);
    if (!Unloading()) ShowAll();
  });
  LabelFunction = MakeLabel("LabelFunction");
  LabelAssigned = MakeLabel("LabelAssigned");
  cmdAssign =
      Command("cmdAssignPlate", tr("&Use the chosen Plate"),
              tr("Gives the Plate chosen above to this needle"), &CalibrateForm::cmdAssignPlate_Click);
  QPushButton* calibrate = Command("CmdCalibrateNewPlate", tr("Calibrate a new &Plate"),
                                   tr("Empty boxes for a new Plate, to be filled with the live needle"),
                                   &CalibrateForm::CmdCreateNewPlate_Click);
  QLabel* needle = MakeLabel("ComboTargetCaption", tr("Nee&dle"));
  needle->setBuddy(ComboTarget);
  QLabel* function = MakeLabel("ComboFunctionCaption", tr("&Function"));
  function->setBuddy(ComboFunction);
  grid->addWidget(needle, 0, 0);
  grid->addWidget(ComboTarget, 0, 1);
  grid->addWidget(LabelAssigned, 0, 2);
  grid->addWidget(cmdAssign, 0, 3);
  grid->addWidget(function, 1, 0);
  grid->addWidget(ComboFunction, 1, 1);
  grid->addWidget(LabelFunction, 1, 2);
  grid->addWidget(calibrate, 1, 3);
  grid->setColumnStretch(2, 1);
  ComboTarget->setMinimumContentsLength(40);
  column->addLayout(grid);
  column->addLayout(MakeJog());
  return panel;
}

QLayout* CalibrateForm::MakeJog() {
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap() / 2);
  SliderMoveNeedle = new QSlider(Qt::Horizontal);
  SliderMoveNeedle->setObjectName("SliderMoveNeedle");
  SliderMoveNeedle->setRange(0, kNeedlePositions - 1);
  SliderMoveNeedle->setPageStep(10);
  SliderMoveNeedle->setToolTip(tr("Position of the live needle, 0 to 1079, three to a degree"));
  connect(SliderMoveNeedle, &QSlider::valueChanged, this, &CalibrateForm::MoveNeedle);
  BoxPosition = MakeLabel("BoxPosition", "0", "value");
  BoxPosition->setMinimumWidth(look::Margin() * 5);
  BoxPosition->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  const struct {
    int by;
    const char* name;
    QKeySequence key;
  } jogs[] = {{-100, "cmdJogMinus100", QKeySequence(Qt::ALT | Qt::Key_PageDown)},
              {-10, "cmdJogMinus10", QKeySequence(Qt::ALT | Qt::Key_Down)},
              {-1, "cmdJogMinus1", QKeySequence(Qt::ALT | Qt::Key_Left)},
              {1, "cmdJogPlus1", QKeySequence(Qt::ALT | Qt::Key_Right)},
              {10, "cmdJogPlus10", QKeySequence(Qt::ALT | Qt::Key_Up)},
              {100, "cmdJogPlus100", QKeySequence(Qt::ALT | Qt::Key_PageUp)}};
  for (const auto& jog : jogs) {
    if (jog.by == 1) row->addWidget(SliderMoveNeedle, 1);
    QPushButton* button = MakeButton(
        jog.name, (jog.by > 0 ? "+" : "") + QString::number(jog.by),
        tr("Moves the needle by this many steps (%1)").arg(jog.key.toString(QKeySequence::NativeText)));
    look::SetRole(button, "small");
    button->setAutoRepeat(true);
    // Not the button's own shortcut, which ignores a second press while the button is still drawn pressed.
    connect(new QShortcut(jog.key, this), &QShortcut::activated, this, [this, by = jog.by] { Jog(by); });
    connect(button, &QPushButton::clicked, this, [this, by = jog.by] { Jog(by); });
    row->addWidget(button);
  }
  row->addWidget(BoxPosition);
  return row;
}

}  // namespace tvx
