#include "hwbus/iomodule/forms/InputForm.h"

#include <QLocale>

#include "base/NumberText.h"
#include "config/FunctionItems.h"
#include "ui/Look.h"
#include "ui/NumberBox.h"

namespace tvx {

std::optional<double> NumberIn(const QLineEdit* box) {
  return TypedReal<float>(box->text().toStdString());
}

InputForm::InputForm(const char* name, const ConfigModel& model, IOModulePresenter presenter,
                     const IOModuleInput& input, QWidget* parent)
    : Form(name, parent),
      model_(model),
      presenter_(presenter),
      input_(input),
      definition_(presenter_.DefinitionOf(input)),
      rows_(new QFormLayout),
      comboFunction_(new SearchCombo("ComboFunction", tr("Type a part of its number or name"))),
      comboSequence_(new QComboBox),
      preview_(MakeLabel("LabelPreview")) {
  comboFunction_->SetItems(FunctionItems(model_));
  comboFunction_->SetValue(definition_.FunctionNr);
  comboFunction_->SetPicked([this](int) { ShowPreview(); });
  comboSequence_->setObjectName("ComboSequence");
  for (int sequence = 1; sequence <= 4; ++sequence) comboSequence_->addItem(QString::number(sequence));
  comboSequence_->setCurrentIndex(std::clamp<int>(definition_.SequenceNr, 1, 4) - 1);
  rows_->addRow(tr("&Function"), comboFunction_);
  rows_->addRow(tr("Se&quence number"), comboSequence_);
  connect(comboFunction_, &QComboBox::currentIndexChanged, this, [this] { ShowPreview(); });
}

void InputForm::Finish(QLabel* help) {
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addLayout(rows_);
  if (help != nullptr) column->addWidget(help);
  column->addWidget(preview_);
  column->addStretch(1);
  QPushButton* store = MakeButton("cmdStore", tr("&Store"), tr("Checks the definition and keeps it"));
  QPushButton* remove = MakeButton("cmdDelete", tr("&Delete"), tr("Takes the definition away"));
  QPushButton* close = MakeButton("cmdClose", tr("&Close"), tr("Leaves it as it was stored"));
  look::SetRole(store, "primary");
  connect(store, &QPushButton::clicked, this, [this] { Store(); });
  connect(remove, &QPushButton::clicked, this, [this] { Delete(); });
  connect(close, &QPushButton::clicked, this, &InputForm::CloseAsked);
  auto* row = new QHBoxLayout;
  row->addWidget(remove);
  row->addWidget(MakeFollowButton([this] {
    return Subject{Subject::Kind::Input, IOModuleInputNumber(input_)};
  }));
  row->addStretch(1);
  row->addWidget(store);
  row->addWidget(close);
  column->addLayout(row);
  SetDefaultButton(store);
  ShowPreview();
}

QLineEdit* InputForm::NumberBox(const char* name, double value, const QString& toolTip) {
  auto* box = new QLineEdit(QLocale::c().toString(value, 'g', 7));
  box->setObjectName(QString::fromLatin1(name));
  box->setToolTip(toolTip);
  WantReal(box);
  connect(box, &QLineEdit::textChanged, this, [this] { ShowPreview(); });
  return box;
}

QLineEdit* InputForm::AddNumber(const char* name, const QString& caption, double value,
                                const QString& toolTip) {
  QLineEdit* box = NumberBox(name, value, toolTip);
  rows_->addRow(caption, box);
  return box;
}

// A number that no named Function has is shown and kept as it stands.
int InputForm::ChosenFunction() const {
  return comboFunction_->currentIndex() < 0 ? comboFunction_->Value() : comboFunction_->currentData().toInt();
}

bool InputForm::ReadAll(IOModuleRecord& definition) const {
  definition = definition_;
  definition.FunctionNr = static_cast<std::int16_t>(ChosenFunction());
  definition.SequenceNr = static_cast<std::int16_t>(comboSequence_->currentIndex() + 1);
  return ReadControls(definition);
}

void InputForm::ShowPreview() {
  IOModuleRecord definition;
  if (!ReadAll(definition)) {
    SetTextIfChanged(preview_, tr("One of the numbers is not a number yet."));
    return;
  }
  const FunctionRecord* function =
      definition.FunctionNr < 1 ? nullptr : model_.FunctionOf(definition.FunctionNr);
  const std::string_view wrong = presenter_.Check(definition);
  QString text = Preview(definition, function);
  if (!wrong.empty()) text += "\n" + ToText(wrong);
  SetTextIfChanged(preview_, text);
}

void InputForm::Store() {
  IOModuleRecord definition;
  // The check works on numbers; a text that is none gets the message that the check would give.
  if (!ReadAll(definition)) {
    if (Boxes != nullptr) Boxes->Show("One of the definitions is incorrect or out of limits");
    return;
  }
  if (!presenter_.Store(definition)) return;
  definition_ = definition;
  Stored(definition);
  emit DefinitionChanged();
}

void InputForm::Delete() {
  presenter_.Remove(input_);
  emit DefinitionChanged();
  Unload();
}

}  // namespace tvx
