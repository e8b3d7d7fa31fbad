// The Function editor's panels; what they do is in FunctionEditorForm.cpp.
#include "simlink/functions/forms/FunctionEditorForm.h"
#include "ui/Look.h"
#include "ui/NumberBox.h"

namespace tvx {
namespace {

constexpr int kSources = 4;

}  // namespace

QString FunctionEditorForm::CaptionOfLines(DataType type) {
  if (type == DataType::XplaneDataref) {
    return tr("Data r&eferences, one line \"#sequence number:path\" each");
  }
  if (type == DataType::XplaneCmnd) {
    return tr("Commands, one line \"#value:path\" each; the value written chooses");
  }
  return tr("D&escription");
}

QWidget* FunctionEditorForm::MakeFunctionPanel() {
  QFrame* panel = MakePanel("PanelFunctions");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Functions: number, setting, short name"));
  SearchFunction = new QLineEdit;
  SearchFunction->setObjectName("SearchFunction");
  SearchFunction->setPlaceholderText(tr("Number or part of the name"));
  SearchFunction->setToolTip(
      tr("The list shows the Functions that hold this, as you type; Enter goes to it"));
  SearchFunction->setClearButtonEnabled(true);
  ListFunctions = new LineList(
      "ListFunctions", [this] { return numbers_.size(); },
      [this](std::size_t line) { return ToText(presenter_.Line(numbers_[line])); });
  ListFunctions->setSelectionMode(QAbstractItemView::SingleSelection);
  ListFunctions->setMinimumSize(look::Margin() * 17, look::Margin() * 12);
  ListFunctions->setToolTip(tr("51 to 269 are yours to define"));
  grid->addWidget(SearchFunction, 1, 0);
  grid->addWidget(ListFunctions, 2, 0);
  grid->setRowStretch(2, 1);
  connect(SearchFunction, &QLineEdit::textChanged, this, &FunctionEditorForm::FillNumbers);
  connect(SearchFunction, &QLineEdit::returnPressed, this, [this] {
    if (ListFunctions->Row() < 0) ListFunctions->SetRow(0);
    ListFunctions->setFocus();
  });
  connect(ListFunctions->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& now) {
            if (!loading_ && now.isValid()) Choose(numbers_[static_cast<std::size_t>(now.row())]);
          });
  return panel;
}

QComboBox* FunctionEditorForm::AddChoice(QGridLayout* grid, int row, int column, const char* name,
                                         const QString& caption, const QString& toolTip) {
  auto* box = new QComboBox;
  box->setObjectName(QString::fromLatin1(name));
  box->setToolTip(toolTip);
  box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  grid->addWidget(MakeCaption(box, caption), row, column);
  grid->addWidget(box, row, column + 1);
  connect(box, &QComboBox::currentIndexChanged, this, [this, name](int index) {
    if (index >= 0) TakeField(name, QString::number(index));
  });
  choices_.push_back(box);
  return box;
}

QLineEdit* FunctionEditorForm::AddField(QGridLayout* grid, int row, int column, const char* name,
                                        const QString& caption, const QString& toolTip) {
  QLineEdit* field = AddEdit(grid, row, column, name, caption, toolTip);
  connect(field, &QLineEdit::textEdited, this, [this, name](const QString& text) { TakeField(name, text); });
  fields_.push_back(field);
  return field;
}

QWidget* FunctionEditorForm::MakeFieldsPanel() {
  QFrame* panel = MakePanel("PanelFields");
  auto* column = new QVBoxLayout(panel);
  SpacePanel(column);
  LabelNumber = MakeLabel("LabelNumber", {}, "title");
  column->addWidget(LabelNumber);
  for (const auto add :
       {&FunctionEditorForm::AddNames, &FunctionEditorForm::AddSources, &FunctionEditorForm::AddNumbers}) {
    auto* grid = new QGridLayout;
    grid->setSpacing(look::Gap());
    (this->*add)(grid);
    column->addLayout(grid, add == &FunctionEditorForm::AddNames ? 1 : 0);
  }
  return panel;
}

void FunctionEditorForm::AddNames(QGridLayout* grid) {
  AddField(grid, 0, 0, "ShortName", tr("S&hort name"), tr("Shown in the gauge list; needed"));
  QComboBox* type = AddChoice(grid, 1, 0, "ComboDT", tr("&Data type"),
                              tr("A number of a data group (Byte to BCD code), a command, or a data "
                                 "reference"));
  for (const std::string_view name : kDataTypeNames) type->addItem(ToText(name));
  QComboBox* use = AddChoice(grid, 1, 2, "FuncType", tr("&Used as"), tr("What the Function is used for"));
  for (const std::string_view name : kSignalTypes) use->addItem(ToText(name));
  QComboBox* category = AddChoice(grid, 0, 2, "ComboClass", tr("Catego&ry"), tr("To find it in the list"));
  for (const std::string& name : model_.Categories)
    category->addItem(name.empty() ? tr("(none)") : ToText(name));
  FullName = new QPlainTextEdit;
  FullName->setObjectName("FullName");
  FullName->setTabChangesFocus(true);
  FullName->setLineWrapMode(QPlainTextEdit::NoWrap);
  FullName->setMinimumHeight(FullName->fontMetrics().lineSpacing() * 5);
  LabelFullName = MakeCaption(FullName, {});
  // As wide as its widest text, so that another data type never makes the form wider.
  for (const DataType lines : {DataType::XplaneDataref, DataType::XplaneCmnd}) {
    LabelFullName->setText(CaptionOfLines(lines));
    LabelFullName->setMinimumWidth(
        std::max(LabelFullName->minimumWidth(), LabelFullName->sizeHint().width()));
  }
  grid->addWidget(LabelFullName, 2, 0, 1, 4);
  grid->addWidget(FullName, 3, 0, 1, 4);
  grid->setRowStretch(3, 1);
  connect(FullName, &QPlainTextEdit::textChanged, this,
          [this] { TakeField("FullName", FullName->toPlainText()); });
}

void FunctionEditorForm::AddSources(QGridLayout* grid) {
  sources_ = grid;
  LabelXPindex = MakeLabel("LabelXPindex", {}, "caption");
  LabelXPVal = MakeLabel("LabelXPVal", {}, "caption");
  LabelSources = MakeLabel("LabelSources", tr("Sequence number"), "caption");
  grid->addWidget(LabelSources, 0, 0);
  grid->addWidget(LabelXPindex, 0, 1);
  grid->addWidget(LabelXPVal, 0, 3);
  static constexpr const char* kIndexNames[kSources] = {"XPindex1", "XPindex2", "XPindex3", "XPindex4"};
  static constexpr const char* kValueNames[kSources] = {"XPVal1", "XPVal2", "XPVal3", "XPVal4"};
  for (int i = 0; i < kSources; ++i) {
    AddField(grid, i + 1, 0, kIndexNames[i], QString("#%1").arg(i + 1),
             tr("Number of X-Plane's data group, 0 to 150"));
    AddField(grid, i + 1, 2, kValueNames[i], {},
             tr("Data group: number of the value, 0 to 7. Data reference: how many times per second it is "
                "asked for; 0: it is written only"));
  }
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
}

void FunctionEditorForm::AddNumbers(QGridLayout* grid) {
  AddField(grid, 0, 0, "BoxAdd", tr("&Add"), tr("Added to the raw value first"));
  AddField(grid, 1, 0, "Multiplier", tr("Multipl&y"), tr("value = (raw + add) x multiply / divide"));
  AddField(grid, 2, 0, "Devider", tr("Di&vide"), tr("value = (raw + add) x multiply / divide"));
  AddField(grid, 0, 2, "boxMinimumValue", tr("Lo&west value"), tr("In the unit after scaling"));
  AddField(grid, 1, 2, "boxMaximumValue", tr("Hi&ghest value"), tr("In the unit after scaling"));
  AddField(grid, 2, 2, "BoxMacroNr", tr("Ki&nd of Macro"),
           tr("Only of a Macro: 3 keeps one value for all of its ports, 4 one for each"));
  AddField(grid, 3, 2, "FunctionSetting", tr("Sett&ing"),
           tr("A mark of your own, 0 to 99, shown in the list"));
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
}

QWidget* FunctionEditorForm::MakeReferenceColumn() {
  QLabel* words = MakeLabel(
      "LabelNoList", tr("This data type takes its value from a data group of X-Plane: give the group's "
                        "number and the value's number.\n\nFor a data reference or a command choose the data "
                        "type Xplane Dataref or Xplane CMND; their lists appear here."));
  words->setWordWrap(true);
  words->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  words->setAlignment(Qt::AlignTop);
  boxElement = new NumberSpin;
  boxElement->setObjectName("boxElement");
  boxElement->setRange(0, 9999);
  boxElement->setToolTip(tr("Of an array: which element, from 0; for example 1 for the second engine"));
  cmdCopyEntry =
      MakeButton("cmdCopyEntry", tr("C&opy to the Function"),
                 tr("Appends the chosen path as the next line of the description (Enter in the list, or "
                    "a double click)"));
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(look::Gap());
  auto* row = new QHBoxLayout;
  row->addWidget(cmdCopyEntry);
  row->addStretch(1);
  row->addWidget(MakeCaption(boxElement, tr("Ele&ment of an array")));
  row->addWidget(boxElement);
  column->addWidget(references_, 1);
  column->addLayout(row);
  listOrWords_ = new QStackedWidget;
  listOrWords_->setObjectName("ListOrWords");
  QFrame* wordsPanel = MakePanel("PanelNoList");
  QGridLayout* wordsGrid = MakeTitledGrid(wordsPanel, tr("Where the value comes from"));
  wordsGrid->addWidget(words, 1, 0);
  wordsGrid->setRowStretch(1, 1);
  listOrWords_->addWidget(wordsPanel);
  listOrWords_->addWidget(page);
  connect(cmdCopyEntry, &QPushButton::clicked, this, &FunctionEditorForm::CopyEntry);
  connect(references_, &ReferencePanel::PathActivated, this, &FunctionEditorForm::CopyEntry);
  connect(references_, &ReferencePanel::PathChosen, this, &FunctionEditorForm::ShowState);
  return listOrWords_;
}

QLayout* FunctionEditorForm::MakeButtons() {
  QPushButton* list =
      MakeButton("cmdListFunctions", tr("&List of Functions..."), tr("All Functions at a glance"));
  QPushButton* test = MakeButton("cmdTestFunction", tr("&Test..."),
                                 tr("Reads and writes this Function, as it was saved last"));
  CmdSave = MakeButton("CmdSave", tr("&Save"), tr("Takes the Function into the configuration"));
  look::SetRole(CmdSave, "primary");
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Back to the configuration (Escape)"));
  connect(list, &QPushButton::clicked, this, &FunctionEditorForm::ShowList);
  connect(test, &QPushButton::clicked, this, &FunctionEditorForm::ShowTest);
  connect(CmdSave, &QPushButton::clicked, this, &FunctionEditorForm::CmdSave_Click);
  connect(close, &QPushButton::clicked, this, &FunctionEditorForm::CloseAsked);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(list);
  row->addWidget(test);
  row->addWidget(MakeFollowButton([this] {
    return Subject{Subject::Kind::Function, presenter_.Number(), 1};
  }));
  row->addStretch(1);
  row->addWidget(CmdSave);
  row->addWidget(close);
  return row;
}

}  // namespace tvx
