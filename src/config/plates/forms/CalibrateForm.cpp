#include "config/plates/forms/CalibrateForm.h"

#include <QApplication>
#include <QGridLayout>
#include <QSignalBlocker>

#include "base/NumberFormat.h"
#include "config/faces/FaceFile.h"
#include "config/plates/PlateLookup.h"
#include "ui/Look.h"
#include "ui/NumberBox.h"

namespace tvx {
namespace {

QString PlateText(int number, const std::string& name) {
  return ToText(FormatNumberText(number, "000")) + "  " + ToText(name);
}

}  // namespace

CalibrateForm::CalibrateForm(ConfigModel& model, MessageBoxes& boxes, std::vector<CalibrationTarget> targets,
                             const CalibrationTarget& first, LiveNeedleAccess& needle, QWidget* parent)
    : Form("frmCalibrate", parent),
      model_(model),
      boxes_(boxes),
      targets_(std::move(targets)),
      needle_(needle),
      presenter_(model, boxes) {
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  auto* grid = new QGridLayout(this);
  SpaceForm(grid);
  grid->addWidget(MakePlatePanel(), 0, 0);
  grid->addWidget(MakePointPanel(), 0, 1);
  grid->addWidget(MakePicturePanel(), 0, 2);
  grid->addWidget(MakeTargetPanel(), 1, 0, 1, 3);
  QPushButton* close = Command("CmdClose", tr("Close"), tr("Back (Escape)"), &CalibrateForm::CloseAsked);
  grid->addWidget(close, 2, 2, Qt::AlignRight);
  grid->setColumnStretch(2, 4);
  grid->setRowStretch(0, 1);
  // Tab goes from a value to its needle position and on.
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    QWidget::setTabOrder(boxValue[box], boxNeedle[box]);
    if (box + 1 < PlateBoxes::kBoxes) QWidget::setTabOrder(boxNeedle[box], boxValue[box + 1]);
  }
  BeginWith(first);
  ShowPlates();
  ShowAll();
  resize(look::Margin() * 96, look::Margin() * 56);
  PlateList->setFocus();
}

void CalibrateForm::BeginWith(const CalibrationTarget& first) {
  for (std::size_t i = 0; i < targets_.size(); ++i) {
    const CalibrationTarget& target = targets_[i];
    if (!target.SameNeedle(first)) continue;
    presenter_.SetTarget(target);
    ComboTarget->SetValue(static_cast<int>(i));
    presenter_.Select(presenter_.TargetPlate());
    return;
  }
  presenter_.Select(0);
}

// What is being worked on in the boxes stays there.
void CalibrateForm::ConfigurationReplaced() {
  const bool gone = presenter_.PlateNumber() >= model_.PlateCount();
  if (gone || presenter_.CurrentMode() == PlatePresenter::Mode::Viewing)
    presenter_.Select(presenter_.PlateNumber());
  ShowPlates();
  ShowAll();
}

void CalibrateForm::ShowAll() {
  ShowBoxes();
  ShowTarget();
  ShowMode();
}

void CalibrateForm::ShowPlates() {
  const QSignalBlocker quiet(PlateList);
  PlateList->clear();
  for (int i = 0; i < model_.PlateCount(); ++i) {
    const QString text = PlateText(i, model_.Plates[static_cast<std::size_t>(i)].Name);
    PlateList->addItem(text);
    PlateList->item(i)->setToolTip(text);
  }
}

void CalibrateForm::ShowBoxes() {
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    boxValue[box]->setText(ToText(presenter_.Boxes.value[box]));
    boxNeedle[box]->setText(ToText(presenter_.Boxes.needle[box]));
  }
  PlateName->setText(ToText(presenter_.Name));
  ShowPoints();
}

// The first fault stands below the boxes while the user types; the button Check shows it in a message box.
void CalibrateForm::ShowPoints() {
  std::vector<FacePoint> points;
  const PlateBoxes filled = FilledIn(presenter_.Boxes);
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    const auto value = BoxNumber(presenter_.Boxes.value[box]);
    const auto needle = NeedleInBox(presenter_.Boxes.needle[box]);
    if (value && needle) points.push_back({*value, static_cast<double>(*needle)});
    MarkWrong(boxValue[box], !value && !boxValue[box]->text().trimmed().isEmpty());
    MarkWrong(boxNeedle[box], !needle && !boxNeedle[box]->text().trimmed().isEmpty());
    boxValue[box]->setPlaceholderText(ToText(filled.value[box]));
    boxNeedle[box]->setPlaceholderText(ToText(filled.needle[box]));
  }
  Curve->SetPoints(points);
  Face->SetPoints(points);
  const bool empty = presenter_.Boxes == PlateBoxes{};
  const PlateVerdict verdict = CheckPlateBoxes(presenter_.Boxes);
  SetTextIfChanged(LabelCheck, empty || verdict.good ? QString() : ToText(verdict.text));
}

void CalibrateForm::ShowTarget() {
  const CalibrationTarget& target = presenter_.Target();
  const bool any = target.IsGauge() || target.IsEngineCluster();
  const PlateRecord* plate = model_.PlateOf(presenter_.TargetPlate());
  SetTextIfChanged(LabelFunction, any ? ToText(presenter_.FunctionLabel()) : QString());
  SetTextIfChanged(LabelAssigned, !any ? QString()
                                  : plate == nullptr
                                      ? tr("No Plate")
                                      : tr("Plate ") + PlateText(presenter_.TargetPlate(), plate->Name));
  ComboFunction->setEnabled(any);
  ComboFunction->SetValue(presenter_.TargetFunction());
}

void CalibrateForm::ShowMode() {
  const auto mode = presenter_.CurrentMode();
  const bool editing = mode != PlatePresenter::Mode::Viewing;
  setWindowTitle(QString::fromLatin1(presenter_.Caption()));
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    boxValue[box]->setReadOnly(!editing);
    boxNeedle[box]->setReadOnly(!editing);
  }
  cmdUpdate->setEnabled(!editing && presenter_.PlateNumber() >= 0);
  cmdSaveNew->setVisible(mode != PlatePresenter::Mode::Updating);
  cmdSaveNew->setEnabled(mode == PlatePresenter::Mode::Creating);
  cmdSave->setVisible(mode == PlatePresenter::Mode::Updating);
  cmdLinear->setEnabled(editing);
  cmdTake->setEnabled(editing);
  cmdSaveFace->setVisible(presenter_.CurrentMode() == PlatePresenter::Mode::Viewing);
  cmdSaveFace->setEnabled(presenter_.PlateNumber() >= 0);
  cmdAssign->setEnabled(presenter_.PlateNumber() >= 0 && ComboTarget->Value() >= 0);
  const QSignalBlocker quiet(PlateList);
  PlateList->setCurrentRow(presenter_.PlateNumber());
}

void CalibrateForm::TakeBoxes() {
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    presenter_.Boxes.value[box] = boxValue[box]->text().toStdString();
    presenter_.Boxes.needle[box] = boxNeedle[box]->text().toStdString();
  }
}

void CalibrateForm::PointEdited(std::size_t box, bool needle) {
  TakeBoxes();
  ShowPoints();
  lastBox_ = box;
  const auto position = needle ? NeedleInBox(presenter_.Boxes.needle[box]) : std::nullopt;
  if (position) SliderMoveNeedle->setValue(*position);
}

void CalibrateForm::MoveNeedle(int position) {
  SetTextIfChanged(BoxPosition, QString::number(position));
  Face->SetNeedle(position);
  Curve->SetNeedle(position);
  const CalibrationTarget& target = presenter_.Target();
  if (target.IsGauge() || target.IsEngineCluster()) needle_.MoveNeedle(target, position);
}

void CalibrateForm::Jog(int by) {
  SliderMoveNeedle->setValue(SliderMoveNeedle->value() + by);
}

void CalibrateForm::cmdTakeNeedle_Click() {
  boxNeedle[lastBox_]->setText(QString::number(SliderMoveNeedle->value()));
  TakeBoxes();
  ShowPoints();
  if (lastBox_ + 1 < PlateBoxes::kBoxes) boxValue[lastBox_ + 1]->setFocus();
}

// True where no edit would be lost, or the user agrees to lose it.
bool CalibrateForm::MayLeave() {
  if (asking_) return false;
  asking_ = true;
  const bool leave =
      !presenter_.Unsaved() || boxes_.Ask("Updates are not saved; Continue anyway?") != kAnswerNo;
  asking_ = false;
  return leave && !Unloading();
}

void CalibrateForm::PickPlate(int row) {
  if (MayLeave()) presenter_.Select(row);
  if (!Unloading()) ShowAll();
}

void CalibrateForm::CmdCreateNewPlate_Click() {
  if (!MayLeave()) return;
  presenter_.CmdCreateNewPlate();
  lastBox_ = 0;
  ShowAll();
  boxValue[0]->setFocus();
}

void CalibrateForm::CmdUpdatePlate_Click() {
  presenter_.CmdUpdatePlate();
  ShowMode();
  boxValue[0]->setFocus();
}

void CalibrateForm::CmdSaveNewPlate_Click() {
  TakeBoxes();
  if (!presenter_.CmdSaveNewPlate()) return;
  ShowPlates();
  ShowAll();
}

void CalibrateForm::cmdSavePlate_Click() {
  TakeBoxes();
  if (presenter_.cmdSavePlate() && !Unloading()) ShowAll();
}

void CalibrateForm::cmdSetNewName_Click() {
  if (!presenter_.cmdSetNewName()) return;
  ShowPlates();
  ShowTarget();
  ShowMode();
}

void CalibrateForm::cmdSetCheck_Click() {
  TakeBoxes();
  presenter_.cmdSetCheck();
}

void CalibrateForm::cmdLinearVal_Click() {
  TakeBoxes();
  presenter_.cmdLinearVal();
  ShowBoxes();
}

void CalibrateForm::cmdAssignPlate_Click() {
  presenter_.Assign();
  ShowTarget();
}

void CalibrateForm::cmdSaveFace_Click() {
  const PlateRecord* plate = model_.PlateOf(presenter_.PlateNumber());
  if (plate == nullptr) return;
  const std::string refused = SaveFace(FaceOf(model_, *plate, presenter_.TargetFunction()));
  boxes_.Show(refused.empty() ? "Kept as a ready face: " + plate->Name : refused);
}

}  // namespace tvx
