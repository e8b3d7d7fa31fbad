#include "simlink/functions/forms/FunctionEditorForm.h"

#include <QSignalBlocker>

#include "config/NameTables.h"
#include "simlink/PortValue.h"
#include "simlink/references/FunctionEntries.h"
#include "ui/Look.h"

namespace tvx {

FunctionEditorForm::FunctionEditorForm(ConfigModel& model, SimCom& sim, MessageBoxes& boxes, QWidget* parent,
                                       ReferencePanel::ChooseFolder chooseFolder)
    : Form("frmFunctionEditor", parent), model_(model), sim_(sim), boxes_(boxes), presenter_(model, boxes) {
  setWindowTitle(tr("Function editor"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  FillNameTables(model_);
  references_ = new ReferencePanel(boxes_, std::move(chooseFolder));
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(MakeFunctionPanel());
  row->addWidget(MakeFieldsPanel());
  row->addWidget(MakeReferenceColumn(), 1);
  LampHint = new StateLamp("LampHint");
  LabelHint = MakeLabel("LabelHint");
  LabelHint->setWordWrap(true);
  LabelHint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  LabelHint->setMinimumHeight(LabelHint->fontMetrics().lineSpacing() * 2);
  auto* hint = new QHBoxLayout;
  hint->addWidget(LampHint);
  hint->addWidget(LabelHint, 1);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addLayout(row, 1);
  column->addLayout(hint);
  column->addLayout(MakeButtons());
  FillNumbers();
  LoadFields();
  KeepWide(this);
  OpenWide(this, 105);
  ListFunctions->setFocus();
}

void FunctionEditorForm::FillNumbers() {
  const QString search = SearchFunction->text().trimmed();
  numbers_.clear();
  int row = -1;
  for (int number = 1; number < kFunctions; ++number) {
    if (!search.isEmpty() && !ToText(presenter_.Line(number)).contains(search, Qt::CaseInsensitive)) continue;
    if (number == presenter_.Number()) row = static_cast<int>(numbers_.size());
    numbers_.push_back(number);
  }
  loading_ = true;
  ListFunctions->Refresh();
  ListFunctions->SetRow(row);
  loading_ = false;
}

void FunctionEditorForm::Choose(int function) {
  if (asking_ || function == presenter_.Number()) return;
  asking_ = true;
  const bool went = presenter_.Choose(function);  // may ask the user
  asking_ = false;
  if (Unloading()) return;
  FillNumbers();
  if (!went) return;
  LoadFields();
  if (testForm_) testForm_->Choose(function);
}

void FunctionEditorForm::LoadFields() {
  const FunctionDraft& draft = presenter_.Draft();
  loading_ = true;
  LabelNumber->setText(presenter_.Editable()
                           ? tr("Function %1").arg(presenter_.Number())
                           : tr("Function %1, for the program itself").arg(presenter_.Number()));
  for (QLineEdit* field : fields_) {
    field->setText(ToText(draft.At(field->objectName().toStdString())));
    field->setReadOnly(!presenter_.Editable());
  }
  for (QComboBox* choice : choices_) {
    const int code = ToText(draft.At(choice->objectName().toStdString())).toInt();
    choice->setCurrentIndex(code < choice->count() ? code : -1);
    choice->setEnabled(presenter_.Editable());
  }
  FullName->setPlainText(ToText(draft.At("FullName")));
  FullName->setReadOnly(!presenter_.Editable());
  loading_ = false;
  ShowDataType();
  ShowState();
}

void FunctionEditorForm::TakeField(const char* name, const QString& text) {
  if (loading_) return;
  presenter_.Set(name, text.toStdString());
  ShowDataType();
  ShowState();
}

void FunctionEditorForm::ShowDataType() {
  const Byte type = presenter_.DataTypeCode();
  if (type == shownType_) return;
  shownType_ = type;
  const bool dataref = type == static_cast<Byte>(DataType::XplaneDataref);
  const bool command = type == static_cast<Byte>(DataType::XplaneCmnd);
  LabelFullName->setText(CaptionOfLines(static_cast<DataType>(type)));
  const bool group = ReadsDataGroup(type);
  LabelXPindex->setText(tr("Data group"));
  LabelXPVal->setText(dataref ? tr("Times per second") : tr("Value in it, 0 to 7"));
  LabelXPindex->setVisible(group);
  LabelSources->setVisible(group || dataref);
  LabelXPVal->setVisible(group || dataref);
  for (QLineEdit* field : fields_) {
    const bool index = field->objectName().startsWith("XPindex");
    if (!index && !field->objectName().startsWith("XPVal")) continue;
    field->setVisible(group || (dataref && !index));
    findChild<QLabel*>(field->objectName() + "Caption")->setVisible(group || dataref);
  }
  sources_->setColumnStretch(1, group ? 1 : 0);
  listOrWords_->setCurrentIndex(dataref || command ? 1 : 0);
  if (dataref) references_->Show(kReferencesFile);
  if (command) references_->Show(kCommandsFile);
}

// What a field is called beside its box.
QString FunctionEditorForm::CaptionOf(const QString& field) const {
  if (field.startsWith("XPVal")) {
    const bool group = ReadsDataGroup(presenter_.DataTypeCode());
    return (group ? tr("#%1, value") : tr("#%1, times per second")).arg(field.back());
  }
  const auto* caption = findChild<QLabel*>(field + "Caption");
  return caption == nullptr ? field : caption->text().remove('&');
}

QString FunctionEditorForm::Advice() const {
  const std::string advice = presenter_.Advice();
  const ReferenceList& list = references_->List();
  if (!advice.empty() || EntryLimit(presenter_.DataTypeCode()) == 0 || !list.Found()) return ToText(advice);
  for (const std::string_view path : EntryPaths(presenter_.Draft().At("FullName"))) {
    // An array is listed by its first element.
    if (list.Holds(path) || list.Holds(WithElement(path, 0))) continue;
    return tr("X-Plane's list does not have %1: only a plugin would know it.").arg(ToText(path));
  }
  return {};
}

void FunctionEditorForm::ShowState() {
  const auto path = references_->Path();
  boxElement->setEnabled(path && IsElement(*path));
  cmdCopyEntry->setEnabled(presenter_.Editable());
  CmdSave->setEnabled(presenter_.Editable() && presenter_.Changed());
  const auto problem = presenter_.Editable() ? presenter_.Problem() : std::nullopt;
  QString hint;
  auto lamp = StateLamp::State::Off;
  if (!presenter_.Editable()) {
    hint = tr("This Function serves the program itself; 51 to 269 are yours to define.");
  } else if (problem && presenter_.Changed()) {
    hint = CaptionOf(ToText(problem->field)) + ": " + ToText(problem->words);
    lamp = StateLamp::State::Trouble;
  } else if (const QString advice = problem ? QString() : Advice(); !advice.isEmpty()) {
    hint = advice;
    lamp = StateLamp::State::Trouble;
  } else if (presenter_.Changed()) {
    hint = tr("Not saved yet.");
  }
  for (QLineEdit* field : fields_) {
    MarkWrong(field, problem && presenter_.Changed() && field->objectName() == ToText(problem->field));
  }
  LampHint->SetState(lamp);
  SetTextIfChanged(LabelHint, hint);
}

void FunctionEditorForm::CopyEntry() {
  if (!presenter_.Editable() || !presenter_.CopyEntry(references_->Path(), boxElement->value())) return;
  LoadFields();
}

void FunctionEditorForm::CmdSave_Click() {
  if (const auto problem = presenter_.Save()) {
    if (auto* field = findChild<QWidget*>(ToText(problem->field))) field->setFocus();
    return;
  }
  FillNumbers();
  LoadFields();
  if (listForm_) listForm_->Refresh();
  emit Saved();
}

void FunctionEditorForm::Refresh() {
  presenter_.Refresh();
  FillNumbers();
  LoadFields();
}

void FunctionEditorForm::ShowList() {
  const auto make = [this] {
    auto* list = new ListFunctionsForm(model_, boxes_, this);
    connect(list, &ListFunctionsForm::EditAsked, this, [this](int function) {
      Choose(function);
      if (!Unloading()) BringToFront();
    });
    connect(list, &ListFunctionsForm::Saved, this, [this] {
      Refresh();
      emit Saved();
    });
    return list;
  };
  listForm_.GetOrMake(make).BringToFront();
}

void FunctionEditorForm::ShowTest() {
  TestFunctionForm& form =
      testForm_.GetOrMake([this] { return new TestFunctionForm(model_, sim_, boxes_, this); });
  form.Choose(presenter_.Number());
  form.BringToFront();
}

bool FunctionEditorForm::MayEnd() {
  return presenter_.MayLeave() && (!listForm_ || listForm_->MayClose());
}

}  // namespace tvx
