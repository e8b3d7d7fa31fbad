#include "config/plates/forms/CalibrateForm.h"

#include <QApplication>
#include <QGridLayout>
#include <QPointer>
#include <QSignalBlocker>

#include "base/NumberFormat.h"
#include "config/plates/PlateLookup.h"
#include "ui/Look.h"

namespace tvx {
namespace {

QString PlateText(int number, const std::string& name) {
  return ToText(FormatNumberText(number, "000")) + "  " + ToText(name);
}

}  // namespace

CalibrateForm::CalibrateForm(ConfigModel& model, MessageBoxes& boxes, Surroundings surroundings,
                             const CalibrationTarget& first, QWidget* parent)
    : Form("frmCalibrate", parent),
      model_(model),
      boxes_(boxes),
      surroundings_(std::move(surroundings)),
      plates_(model, boxes) {
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(look::Margin(), look::Margin(), look::Margin(), look::Margin());
  grid->setSpacing(look::Gap());
  grid->addWidget(MakePlatePanel(), 0, 0);
  grid->addWidget(MakePointPanel(), 0, 1);
  grid->addWidget(MakePicturePanel(), 0, 2);
  grid->addWidget(MakeTargetPanel(), 1, 0, 1, 3);
  QPushButton* close = Command("CmdClose", tr("Close"), tr("Back (Escape)"), &CalibrateForm::CmdClose_Click);
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
  for (std::size_t i = 0; i < surroundings_.targets.size(); ++i) {
    const CalibrationTarget& target = surroundings_.targets[i];
    if (!target.SameNeedle(first)) continue;
    plates_.SetTarget(target);
    ComboTarget->SetValue(static_cast<int>(i));
    plates_.Select(plates_.TargetPlate());
    return;
  }
  plates_.Select(0);
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
    boxValue[box]->setText(ToText(plates_.Boxes.value[box]));
    boxNeedle[box]->setText(ToText(plates_.Boxes.needle[box]));
  }
  PlateName->setText(ToText(plates_.Name));
  ShowPoints();
}

// The first fault shows while one types; the check itself shows it in a box.
void CalibrateForm::ShowPoints() {
  std::vector<FacePoint> points;
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    const auto value = BoxNumber(plates_.Boxes.value[box]), needle = BoxNumber(plates_.Boxes.needle[box]);
    if (value && needle) points.push_back({*value, *needle});
  }
  Curve->SetPoints(points);
  Face->SetPoints(points);
  const bool empty = plates_.Boxes == PlateBoxes{};
  const PlateVerdict verdict = CheckPlateBoxes(plates_.Boxes);
  SetTextIfChanged(LabelCheck, empty || verdict.good ? QString() : ToText(verdict.text));
}

void CalibrateForm::ShowTarget() {
  const CalibrationTarget& target = plates_.Target();
  const bool any = target.IsGauge() || target.IsEngineCluster();
  const PlateRecord* plate = model_.PlateOf(plates_.TargetPlate());
  SetTextIfChanged(LabelFunction, any ? ToText(plates_.FunctionLabel()) : QString());
  SetTextIfChanged(LabelAssigned, !any ? QString()
                                  : plate == nullptr
                                      ? tr("No Plate")
                                      : tr("Plate ") + PlateText(plates_.TargetPlate(), plate->Name));
  ComboFunction->setEnabled(any);
  ComboFunction->SetValue(plates_.TargetFunction());
}

void CalibrateForm::ShowMode() {
  const auto mode = plates_.CurrentMode();
  const bool editing = mode != PlatePresenter::Mode::Viewing;
  setWindowTitle(QString::fromLatin1(plates_.Caption()));
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    boxValue[box]->setReadOnly(!editing);
    boxNeedle[box]->setReadOnly(!editing);
  }
  cmdUpdate->setEnabled(!editing && plates_.PlateNumber() >= 0);
  cmdSaveNew->setVisible(mode != PlatePresenter::Mode::Updating);
  cmdSaveNew->setEnabled(mode == PlatePresenter::Mode::Creating);
  cmdSave->setVisible(mode == PlatePresenter::Mode::Updating);
  cmdLinear->setEnabled(editing);
  cmdTake->setEnabled(editing);
  cmdAssign->setEnabled(plates_.PlateNumber() >= 0 && ComboTarget->Value() >= 0);
  const QSignalBlocker quiet(PlateList);
  PlateList->setCurrentRow(plates_.PlateNumber());
}

void CalibrateForm::TakeBoxes() {
  for (std::size_t box = 0; box < PlateBoxes::kBoxes; ++box) {
    plates_.Boxes.value[box] = boxValue[box]->text().toStdString();
    plates_.Boxes.needle[box] = boxNeedle[box]->text().toStdString();
  }
}

void CalibrateForm::PointEdited(std::size_t box, bool needle) {
  TakeBoxes();
  ShowPoints();
  lastBox_ = box;
  const auto position = needle ? BoxNumber(plates_.Boxes.needle[box]) : std::nullopt;
  if (position) SliderMoveNeedle->setValue(static_cast<int>(*position));
}

void CalibrateForm::MoveNeedle(int position) {
  SetTextIfChanged(BoxPosition, QString::number(position));
  Face->SetNeedle(position);
  Curve->SetNeedle(position);
  const CalibrationTarget& target = plates_.Target();
  if (target.IsGauge() || target.IsEngineCluster()) surroundings_.moveNeedle(target, position);
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

// True when nothing is lost, or the user does not mind.
bool CalibrateForm::MayLeave() {
  if (asking_) return false;
  asking_ = true;
  const QPointer<CalibrateForm> self(this);
  const bool leave = !plates_.Unsaved() || boxes_.Ask("Updates are not saved; Continue anyway?") != kAnswerNo;
  if (!self || Unloading()) return false;
  asking_ = false;
  return leave;
}

void CalibrateForm::PickPlate(int row) {
  if (MayLeave()) plates_.Select(row);
  if (!Unloading()) ShowAll();
}

void CalibrateForm::CmdCreateNewPlate_Click() {
  if (!MayLeave()) return;
  plates_.CmdCreateNewPlate();
  lastBox_ = 0;
  ShowAll();
  boxValue[0]->setFocus();
}

void CalibrateForm::CmdUpdatePlate_Click() {
  plates_.CmdUpdatePlate();
  ShowMode();
  boxValue[0]->setFocus();
}

void CalibrateForm::CmdSaveNewPlate_Click() {
  TakeBoxes();
  if (!plates_.CmdSaveNewPlate()) return;
  ShowPlates();
  ShowAll();
}

void CalibrateForm::cmdSavePlate_Click() {
  TakeBoxes();
  const QPointer<CalibrateForm> self(this);
  if (plates_.cmdSavePlate() && self && !Unloading()) ShowAll();
}

void CalibrateForm::cmdSetNewName_Click() {
  if (!plates_.cmdSetNewName()) return;
  ShowPlates();
  ShowTarget();
  ShowMode();
}

void CalibrateForm::cmdSetCheck_Click() {
  TakeBoxes();
  plates_.cmdSetCheck();
}

void CalibrateForm::cmdLinearVal_Click() {
  TakeBoxes();
  plates_.cmdLinearVal();
  ShowBoxes();
}

void CalibrateForm::cmdAssignPlate_Click() {
  plates_.Assign();
  ShowTarget();
}

void CalibrateForm::CmdClose_Click() {
  if (!MayLeave()) return;
  Unload();
  surroundings_.closed();
}

}  // namespace tvx
