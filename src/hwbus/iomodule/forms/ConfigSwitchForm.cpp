#include "hwbus/iomodule/forms/ConfigSwitchForm.h"

#include <exception>

#include "hwbus/iomodule/IOModuleActions.h"
#include "hwbus/iomodule/forms/IOModuleStatusForm.h"
#include "ui/Look.h"

namespace tvx {
namespace {

struct OfferedAction {
  const char* text;
  IOModuleAction action;
};
// The second one is named after the Function's data type, "Data Byte" to "Data BCD".
constexpr int kWriteValue = 1;
constexpr OfferedAction kActions[] = {{"No Action ", IOModuleAction::NoAction},
                                      {"Data Float", IOModuleAction::WriteValue},
                                      {"Xplane CMND", IOModuleAction::Command},
                                      {"KB Stroke", IOModuleAction::Keystroke},
                                      {"Not Used", IOModuleAction::NotUsed}};
constexpr const char* kTypeNames[] = {"Toggle switch", "Encoder A", "Encoder B"};

}  // namespace

ConfigSwitchForm::ConfigSwitchForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes,
                                   const IOModuleInput& input, QWidget* parent)
    : InputForm("ConfigSwitch", model, IOModulePresenter(model, boxes), input, parent), module_(module) {
  Boxes = &boxes;
  setWindowTitle(tr("Switch %1 of IO module %2").arg(SwitchName(input.Index)).arg(input.Module));
  MakeAction();
  MakeType();
  Finish(help_);
}

void ConfigSwitchForm::MakeAction() {
  const IOModuleRecord& definition = Definition();
  comboAction_ = new QComboBox;
  comboAction_->setObjectName("ComboAction");
  for (const OfferedAction& offered : kActions) comboAction_->addItem(tr(offered.text));
  for (int i = 0; i < comboAction_->count(); ++i) {
    if (kActions[i].action == ActionOf(definition)) comboAction_->setCurrentIndex(i);
  }
  connect(comboAction_, &QComboBox::currentIndexChanged, this, [this] { ShowPreview(); });
  Rows()->insertRow(0, tr("&Action"), comboAction_);
  const QString words =
      tr("A percentage of the Function's range; what is added where it is a step; the entry of an "
         "X-Plane command; -1: send nothing");
  BoxOffOnValue_ = NumberBox("BoxOffOnValue", static_cast<double>(definition.OffOnValue), words);
  boxOnOffValue_ = NumberBox("boxOnOffValue", static_cast<double>(definition.OnOffValue), words);
  const QString added = tr("Each time, the value is added to what X-Plane has, instead of replacing it");
  CheckStepOffOn_ = new QCheckBox(tr("as a step"));
  CheckStepOffOn_->setToolTip(added);
  CheckStepOffOn_->setObjectName("CheckStepOffOn");
  CheckStepOffOn_->setChecked((definition.IncrementFlags & kIOModuleStepOffOn) != 0);
  CheckStepOnOff_ = new QCheckBox(tr("as a step"));
  CheckStepOnOff_->setToolTip(added);
  CheckStepOnOff_->setObjectName("CheckStepOnOff");
  CheckStepOnOff_->setChecked((definition.IncrementFlags & kIOModuleStepOnOff) != 0);
  KeytopKeyOn_ = new KeytopEdit(QStringLiteral("KeytopKeyOn"));
  KeytopKeyOff_ = new KeytopEdit(QStringLiteral("KeytopKeyOff"));
  KeytopKeyOn_->SetCode(definition.OnKeystroke);
  KeytopKeyOff_->SetCode(definition.OffKeystroke);
  const auto addEdge = [this](const QString& caption, QLineEdit* box, QCheckBox* step) {
    auto* row = new QHBoxLayout;
    row->addWidget(box, 1);
    row->addWidget(step);
    Rows()->addRow(caption, row);
    connect(step, &QCheckBox::toggled, this, [this] { ShowPreview(); });
  };
  addEdge(tr("Off->On value"), BoxOffOnValue_, CheckStepOffOn_);
  addEdge(tr("On->Off value"), boxOnOffValue_, CheckStepOnOff_);
  Rows()->addRow(tr("Key Off->On"), KeytopKeyOn_);
  Rows()->addRow(tr("Key On->Off"), KeytopKeyOff_);
  for (KeytopEdit* edit : {KeytopKeyOn_, KeytopKeyOff_}) edit->SetChanged([this] { ShowPreview(); });
}

void ConfigSwitchForm::MakeType() {
  auto* row = new QHBoxLayout;
  for (std::size_t i = 0; i < OptionSwitchType_.size(); ++i) {
    OptionSwitchType_[i] = new QRadioButton(tr(kTypeNames[i]));
    OptionSwitchType_[i]->setObjectName(QStringLiteral("OptionSwitchType%1").arg(i));
    OptionSwitchType_[i]->setChecked(Definition().SwitchType == static_cast<std::int16_t>(i));
    row->addWidget(OptionSwitchType_[i]);
    connect(OptionSwitchType_[i], &QRadioButton::toggled, this, [this] { ShowPreview(); });
  }
  Rows()->addRow(tr("Kind"), row);
  boxDebounceTime_ = AddNumber("boxDebounceTime", tr("Debounce &time"), Definition().DebounceTime,
                               tr("0 to 20; how long the switch must rest before it counts"));
  QString words;
  for (const char* line : kEncoderHelp) words += ToText(line) + '\n';
  help_ = MakeLabel("LabelHelp", words + ToText(kToggleHelp), "caption");
  help_->setWordWrap(true);
}

bool ConfigSwitchForm::ReadControls(IOModuleRecord& definition) const {
  definition.ActionKind = static_cast<Byte>(kActions[std::max(0, comboAction_->currentIndex())].action);
  const auto offOn = NumberIn(BoxOffOnValue_), onOff = NumberIn(boxOnOffValue_);
  const auto debounce = NumberIn(boxDebounceTime_);
  if (!offOn || !onOff) return false;
  definition.OffOnValue = static_cast<float>(*offOn);
  definition.OnOffValue = static_cast<float>(*onOff);
  definition.IncrementFlags =
      static_cast<std::int16_t>((CheckStepOffOn_->isChecked() ? kIOModuleStepOffOn : 0) |
                                (CheckStepOnOff_->isChecked() ? kIOModuleStepOnOff : 0));
  definition.OnKeystroke = KeytopKeyOn_->Code();
  definition.OffKeystroke = KeytopKeyOff_->Code();
  // What is no whole number in range is left to the check, which names the debounce time.
  const bool whole =
      debounce && *debounce >= 0 && *debounce <= kIOModuleLongestDebounce && *debounce == int(*debounce);
  definition.DebounceTime = static_cast<std::int16_t>(whole ? static_cast<int>(*debounce) : -1);
  for (std::size_t i = 0; i < OptionSwitchType_.size(); ++i) {
    if (OptionSwitchType_[i]->isChecked()) definition.SwitchType = static_cast<std::int16_t>(i);
  }
  return true;
}

void ConfigSwitchForm::NameData(const FunctionRecord* function) const {
  // A command is written by no value: the item keeps its name then, and the check says what is wrong.
  const bool value = function != nullptr && !function->Is(DataType::XplaneCmnd);
  const auto type = value ? static_cast<DataType>(function->ComboDT) : DataType::Float;
  const QString name = ToText(DataName(type));
  if (comboAction_->itemText(kWriteValue) != name) comboAction_->setItemText(kWriteValue, name);
}

QString ConfigSwitchForm::Preview(const IOModuleRecord& definition, const FunctionRecord* function) const {
  NameData(function);
  const auto current = module_.KnownValue(module_.SwitchDefinitionNr(Input().Index));
  return ToText(ActionName(definition, function)).trimmed() + '\n' +
         ToText(SwitchPreview(definition, function, true, current)) + '\n' +
         ToText(SwitchPreview(definition, function, false, current));
}

void ConfigSwitchForm::Stored(const IOModuleRecord& definition) {
  try {
    module_.ComposeCmd(0, iom_command::kDebounce, Input().Index * 256 + definition.DebounceTime);
  } catch (const std::exception&) {
    // Cannot be: the check let the time through.
  }
}

}  // namespace tvx
