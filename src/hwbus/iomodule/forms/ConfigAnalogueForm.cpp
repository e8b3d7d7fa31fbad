#include "hwbus/iomodule/forms/ConfigAnalogueForm.h"

#include <cmath>

#include "hwbus/iomodule/IOModuleActions.h"

namespace tvx {

ConfigAnalogueForm::ConfigAnalogueForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes,
                                       const IOModuleInput& input, QWidget* parent)
    : InputForm("ConfigAnalogue", model, IOModulePresenter(model, boxes), input, parent),
      raw_(module.AnalogueValue()[static_cast<std::size_t>(input.Index)]) {
  Boxes = &boxes;
  setWindowTitle(tr("Axis %1 of IO module %2").arg(input.Index + 1).arg(input.Module));
  const IOModuleRecord& definition = Definition();
  boxRawMinimum_ = NumberBox("boxRawMinimum", static_cast<double>(definition.OffOnValue), tr("0 to 4095"));
  boxRawCentre_ = NumberBox("boxRawCentre", static_cast<double>(definition.OnOffValue),
                            tr("Where the axis rests in its middle; 0: it has no middle"));
  boxRawMaximum_ = NumberBox("boxRawMaximum", static_cast<double>(definition.RawMaximum), tr("1 to 4095"));
  AddTake(tr("Raw minimum"), boxRawMinimum_);
  AddTake(tr("Raw centre"), boxRawCentre_);
  AddTake(tr("Raw maximum"), boxRawMaximum_);
  boxDeadBand_ = AddNumber("boxDeadBand", tr("Dead &band"), definition.DeadBand,
                           tr("The largest change, in raw steps, that is ignored"));
  Finish();
}

// A box, and a button that puts in where the axis stands now.
void ConfigAnalogueForm::AddTake(const QString& caption, QLineEdit* box) {
  auto* row = new QHBoxLayout;
  QPushButton* take = MakeButton("", tr("Take"), tr("Puts in where the axis stands now"));
  take->setObjectName(QStringLiteral("cmdTake_") + box->objectName());
  connect(take, &QPushButton::clicked, this, [this, box] { box->setText(QString::number(raw_)); });
  row->addWidget(box, 1);
  row->addWidget(take);
  Rows()->addRow(caption, row);
}

void ConfigAnalogueForm::TakeReport(const IOModuleReport& report) {
  const int raw = report.Analogue[static_cast<std::size_t>(Input().Index)];
  if (raw == raw_) return;
  raw_ = raw;
  ShowPreview();
}

bool ConfigAnalogueForm::ReadControls(IOModuleRecord& definition) const {
  const auto minimum = NumberIn(boxRawMinimum_), centre = NumberIn(boxRawCentre_);
  const auto maximum = NumberIn(boxRawMaximum_), deadBand = NumberIn(boxDeadBand_);
  if (!minimum || !centre || !maximum || !deadBand || *deadBand != std::floor(*deadBand)) return false;
  definition.OffOnValue = static_cast<float>(*minimum);
  definition.OnOffValue = static_cast<float>(*centre);
  definition.RawMaximum = static_cast<float>(*maximum);
  definition.DeadBand = static_cast<std::int16_t>(std::clamp(*deadBand, -1.0, 32767.0));
  return true;
}

QString ConfigAnalogueForm::Preview(const IOModuleRecord& definition, const FunctionRecord* function) const {
  return ToText(AnaloguePreview(definition, function, raw_));
}

ConfigLampForm::ConfigLampForm(ConfigModel& model, IOModule&, MessageBoxes& boxes, const IOModuleInput& input,
                               QWidget* parent)
    : InputForm("ConfigLamp", model, IOModulePresenter(model, boxes), input, parent) {
  Boxes = &boxes;
  setWindowTitle(tr("Lamp %1 of IO module %2").arg(input.Index + 1).arg(input.Module));
  const IOModuleRecord& definition = Definition();
  const QString captions[] = {tr("at the Function's minimum"), tr("at its maximum"),
                              tr("at this percentage of its range or above"), tr("at this value")};
  for (std::size_t i = 0; i < CheckCondition_.size(); ++i) {
    CheckCondition_[i] = new QCheckBox(captions[i]);
    CheckCondition_[i]->setObjectName(QStringLiteral("CheckCondition%1").arg(i));
    CheckCondition_[i]->setChecked((definition.IncrementFlags >> i & 1) != 0);
    connect(CheckCondition_[i], &QCheckBox::toggled, this, [this] { ShowPreview(); });
    Rows()->addRow(i == 0 ? tr("Lit") : QString(), CheckCondition_[i]);
    if (i == 2)
      boxPercentage_ =
          AddNumber("boxPercentage", {}, static_cast<double>(definition.OffOnValue), tr("0 to 100"));
    if (i == 3)
      boxValue_ = AddNumber("boxValue", {}, static_cast<double>(definition.OnOffValue), tr("Any number"));
  }
  Finish();
}

bool ConfigLampForm::ReadControls(IOModuleRecord& definition) const {
  const auto percentage = NumberIn(boxPercentage_), value = NumberIn(boxValue_);
  if (!percentage || !value) return false;
  definition.OffOnValue = static_cast<float>(*percentage);
  definition.OnOffValue = static_cast<float>(*value);
  int conditions = 0;
  for (std::size_t i = 0; i < CheckCondition_.size(); ++i)
    conditions |= CheckCondition_[i]->isChecked() ? 1 << i : 0;
  definition.IncrementFlags = static_cast<std::int16_t>(conditions);
  return true;
}

QString ConfigLampForm::Preview(const IOModuleRecord& definition, const FunctionRecord* function) const {
  if (function == nullptr) return tr("never lit");
  const auto lit = [&](float value) {
    return LampLit(definition, *function, static_cast<double>(value)) ? tr("lit") : tr("dark");
  };
  const float middle = (function->boxMinimumValue + function->boxMaximumValue) / 2;
  return tr("at minimum %1, in the middle %2, at maximum %3")
      .arg(lit(function->boxMinimumValue), lit(middle), lit(function->boxMaximumValue));
}

}  // namespace tvx
