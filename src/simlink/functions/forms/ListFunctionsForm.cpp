#include "simlink/functions/forms/ListFunctionsForm.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QShortcut>
#include <QSignalBlocker>

#include "simlink/functions/FunctionDraft.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kNumberRole = Qt::UserRole;
constexpr int kLineRole = Qt::UserRole + 1;

template <typename Names>
void Offer(QComboBox* box, const Names& names) {
  for (const auto& name : names) box->addItem(name.empty() ? QString("(none)") : ToText(name));
}

}  // namespace

ListFunctionsForm::ListFunctionsForm(ConfigModel& model, MessageBoxes& boxes, QWidget* parent)
    : Form("frmListFunctions", parent), model_(model), presenter_(model, boxes) {
  setWindowTitle(tr("List of Functions"));
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(MakeFilterPanel());
  column->addWidget(MakeList(), 1);
  column->addWidget(MakeEditPanel());
  column->addLayout(MakeButtons());
  Refresh();
  ShowFilters();
  for (int i = 0; i < 5; ++i) ListFunctions->resizeColumnToContents(i);
  ListFunctions->setColumnWidth(2, look::Margin() * 26);
  KeepWide(this);
  ListFunctions->setFocus();
}

QWidget* ListFunctionsForm::MakeFilterPanel() {
  QFrame* panel = MakePanel("PanelFilter");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Show only"));
  ComboFilterClass = new QComboBox;
  ComboFilterClass->setObjectName("ComboFilterClass");
  ComboFilterClass->setToolTip(tr("Which category is shown while its filter is on"));
  Offer(ComboFilterClass, model_.Categories);
  CmdFilterClassOn = MakeButton("CmdFilterClassOn", tr("On"), tr("Shows this category only"));
  cmdFilterClassOff = MakeButton("cmdFilterClassOff", tr("Off"), tr("Shows every category"));
  ComboFilterType = new QComboBox;
  ComboFilterType->setObjectName("ComboFilterType");
  ComboFilterType->setToolTip(tr("Which signal type is shown while its filter is on"));
  Offer(ComboFilterType, kSignalTypes);
  CmdFilterTypeOn = MakeButton("CmdFilterTypeOn", tr("On"), tr("Shows this signal type only"));
  CmdFilterTypeOff = MakeButton("CmdFilterTypeOff", tr("Off"), tr("Shows every signal type"));
  CheckDefinedOnly = new QCheckBox(tr("Functions that have a &name"));
  CheckDefinedOnly->setObjectName("CheckDefinedOnly");
  CheckDefinedOnly->setToolTip(tr("Without it, free numbers are shown as well"));
  CheckDefinedOnly->setChecked(true);
  int at = 0;
  for (QWidget* widget : std::initializer_list<QWidget*>{
           MakeCaption(ComboFilterClass, tr("Ca&tegory")), ComboFilterClass, CmdFilterClassOn,
           cmdFilterClassOff, MakeCaption(ComboFilterType, tr("Si&gnal type")), ComboFilterType,
           CmdFilterTypeOn, CmdFilterTypeOff}) {
    grid->addWidget(widget, 1, at++);
  }
  grid->addWidget(CheckDefinedOnly, 2, 0, 1, 4);
  grid->setColumnStretch(at, 1);
  const auto set = [this](bool& filter, bool on) {
    return [this, &filter, on] {
      filter = on;
      ShowFilters();
      Refresh();
    };
  };
  connect(CmdFilterClassOn, &QPushButton::clicked, this, set(byClass_, true));
  connect(cmdFilterClassOff, &QPushButton::clicked, this, set(byClass_, false));
  connect(CmdFilterTypeOn, &QPushButton::clicked, this, set(byType_, true));
  connect(CmdFilterTypeOff, &QPushButton::clicked, this, set(byType_, false));
  for (QComboBox* box : {ComboFilterClass, ComboFilterType}) {
    connect(box, &QComboBox::currentIndexChanged, this, &ListFunctionsForm::Refresh);
  }
  connect(CheckDefinedOnly, &QCheckBox::toggled, this, &ListFunctionsForm::Refresh);
  return panel;
}

QWidget* ListFunctionsForm::MakeList() {
  ListFunctions = new QTreeWidget;
  ListFunctions->setObjectName("ListFunctions");
  ListFunctions->setToolTip(
      tr("All Functions; names, category and signal type of 51 to 269 can be changed here"));
  ListFunctions->setRootIsDecorated(false);
  ListFunctions->setAllColumnsShowFocus(true);
  ListFunctions->setUniformRowHeights(true);
  ListFunctions->setSelectionMode(QAbstractItemView::ExtendedSelection);
  ListFunctions->setHeaderLabels(
      {tr("Nr"), tr("Short name"), tr("Full name"), tr("Category"), tr("Signal type")});
  ListFunctions->setMinimumSize(look::Margin() * 54, look::Margin() * 20);
  connect(ListFunctions, &QTreeWidget::currentItemChanged, this, &ListFunctionsForm::ShowChosen);
  connect(ListFunctions, &QTreeWidget::itemActivated, this, [this] {
    if (Chosen() != 0) emit EditAsked(Chosen());
  });
  auto* copy = new QShortcut(QKeySequence::Copy, ListFunctions, nullptr, nullptr, Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, [this] {
    QStringList lines;
    for (const QTreeWidgetItem* item : ListFunctions->selectedItems()) {
      lines.append(item->data(0, kLineRole).toString());
    }
    QApplication::clipboard()->setText(lines.join('\n'));
  });
  return ListFunctions;
}

QWidget* ListFunctionsForm::MakeEditPanel() {
  QFrame* panel = MakePanel("PanelEdit");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Change the chosen Function"));
  LabelChosen = MakeLabel("LabelChosen");
  LabelChosen->setWordWrap(true);
  grid->addWidget(LabelChosen, 1, 0, 1, 4);
  ShortName = AddEdit(grid, 2, 0, "ShortName", tr("Sho&rt name"), tr("Shown in the gauge list"));
  FullName = AddEdit(grid, 3, 0, "FullName", tr("F&ull name"), tr("What the Function is, with its unit"));
  ComboClass = new QComboBox;
  ComboClass->setObjectName("ComboClass");
  ComboClass->setToolTip(tr("To find it in the lists"));
  Offer(ComboClass, model_.Categories);
  FuncType = new QComboBox;
  FuncType->setObjectName("FuncType");
  Offer(FuncType, kSignalTypes);
  FuncType->setToolTip(tr("What the Function is used for"));
  grid->addWidget(MakeCaption(ComboClass, tr("Categor&y")), 2, 2);
  grid->addWidget(ComboClass, 2, 3);
  grid->addWidget(MakeCaption(FuncType, tr("Signal ty&pe")), 3, 2);
  grid->addWidget(FuncType, 3, 3);
  grid->setColumnStretch(1, 1);
  for (QLineEdit* edit : {ShortName, FullName}) {
    connect(edit, &QLineEdit::textEdited, this, &ListFunctionsForm::TakeEdit);
  }
  for (QComboBox* box : {ComboClass, FuncType}) {
    connect(box, &QComboBox::currentIndexChanged, this, &ListFunctionsForm::TakeEdit);
  }
  return panel;
}

QLayout* ListFunctionsForm::MakeButtons() {
  cmdEditFunction =
      MakeButton("cmdEditFunction", tr("Open in the &editor"), tr("Every field of the chosen Function"));
  CmdSave = MakeButton("CmdSave", tr("&Save"), tr("Takes all changes of this list into the configuration"));
  look::SetRole(CmdSave, "primary");
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Back to the editor (Escape)"));
  auto* row = new QHBoxLayout;
  row->addWidget(cmdEditFunction);
  row->addStretch(1);
  row->addWidget(CmdSave);
  row->addWidget(close);
  connect(cmdEditFunction, &QPushButton::clicked, this, [this] {
    if (Chosen() != 0) emit EditAsked(Chosen());
  });
  connect(CmdSave, &QPushButton::clicked, this, &ListFunctionsForm::CmdSave_Click);
  connect(close, &QPushButton::clicked, this, &ListFunctionsForm::CloseAsked);
  return row;
}

FunctionFilter ListFunctionsForm::Filter() const {
  FunctionFilter filter{.definedOnly = CheckDefinedOnly->isChecked()};
  if (byClass_) filter.category = ComboFilterClass->currentIndex();
  if (byType_) filter.use = ComboFilterType->currentIndex();
  return filter;
}

void ListFunctionsForm::ShowFilters() {
  CmdFilterClassOn->setEnabled(!byClass_);
  cmdFilterClassOff->setEnabled(byClass_);
  CmdFilterTypeOn->setEnabled(!byType_);
  CmdFilterTypeOff->setEnabled(byType_);
}

int ListFunctionsForm::Chosen() const {
  const QTreeWidgetItem* item = ListFunctions->currentItem();
  return item == nullptr ? 0 : item->data(0, kNumberRole).toInt();
}

void ListFunctionsForm::Refresh() {
  const int chosen = Chosen();
  {
    const QSignalBlocker quiet(ListFunctions);
    ListFunctions->clear();
    for (const FunctionLine& line : presenter_.Lines(Filter())) {
      const QString text = ToText(line.text);
      auto* item = new QTreeWidgetItem(ListFunctions, text.split('\t'));
      item->setData(0, kNumberRole, line.number);
      item->setData(0, kLineRole, text);
      item->setToolTip(2, item->text(2));
      if (line.number == 0) item->setFirstColumnSpanned(true);
      if (line.number != 0 && line.number == chosen) ListFunctions->setCurrentItem(item);
    }
  }
  ShowChosen();
}

void ListFunctionsForm::ShowChosen() {
  const int number = Chosen();
  const bool editable = FunctionListPresenter::Editable(number);
  const bool description = editable && presenter_.DescriptionEditable(number);
  loading_ = true;
  const ListedFunction fields = number != 0 ? presenter_.Fields(number) : ListedFunction{};
  ShortName->setText(ToText(fields.shortName));
  FullName->setText(ToText(fields.fullName).simplified());
  MarkWrong(ShortName, false);
  ComboClass->setCurrentIndex(number != 0 ? fields.category : -1);
  FuncType->setCurrentIndex(number != 0 ? fields.use : -1);
  loading_ = false;
  for (QWidget* control : std::initializer_list<QWidget*>{ShortName, ComboClass, FuncType}) {
    control->setEnabled(editable);
  }
  FullName->setEnabled(description);
  cmdEditFunction->setEnabled(number != 0);
  LabelChosen->setText(number == 0 ? tr("Choose a line above.")
                       : !editable
                           ? tr("Function %1 serves the program itself and stays as it is.").arg(number)
                       : description ? tr("Function %1").arg(number)
                                     : tr("Function %1; its full name is edited in the editor.").arg(number));
  ShowChanged();
}

void ListFunctionsForm::TakeEdit() {
  const int number = Chosen();
  if (loading_ || number == 0) return;
  presenter_.Edit(number, {ShortName->text().toStdString(), FullName->text().toStdString(),
                           ComboClass->currentIndex(), FuncType->currentIndex()});
  for (const FunctionLine& line : presenter_.Lines({})) {
    if (line.number != number) continue;
    const QStringList columns = ToText(line.text).split('\t');
    QTreeWidgetItem* item = ListFunctions->currentItem();
    for (int i = 0; i < columns.size(); ++i) item->setText(i, columns[i]);
    item->setToolTip(2, item->text(2));
    item->setData(0, kLineRole, ToText(line.text));
  }
  MarkWrong(ShortName, ShortName->text().trimmed().isEmpty());
  ShowChanged();
}

void ListFunctionsForm::ShowChanged() {
  CmdSave->setEnabled(presenter_.Changed());
}

void ListFunctionsForm::CmdSave_Click() {
  const auto bad = presenter_.CmdSave();
  if (!bad) {
    Refresh();
    emit Saved();
    return;
  }
  for (int i = 0; i < ListFunctions->topLevelItemCount(); ++i) {
    QTreeWidgetItem* item = ListFunctions->topLevelItem(i);
    if (item->data(0, kNumberRole).toInt() == *bad) ListFunctions->setCurrentItem(item);
  }
  ShortName->setFocus();
}

}  // namespace tvx
