#include "simlink/references/forms/ReferencePanel.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QShortcut>

#include "simlink/references/ReferenceListImport.h"
#include "ui/Look.h"

namespace tvx {
namespace {

// The simulator's installer notes in these files where it put the simulator.
QString InstalledFolder() {
  for (const char* note : {"/.x-plane/x-plane_install_12.txt", "/.x-plane/x-plane_install_11.txt"}) {
    QFile file(QDir::homePath() + QString::fromLatin1(note));
    if (!file.open(QFile::ReadOnly)) continue;
    const QString folder = QString::fromUtf8(file.readLine(4096)).trimmed();
    if (QDir(folder).exists()) return folder;
  }
  return QDir::homePath();
}

}  // namespace

QString ChooseXplaneFolder(QWidget* parent) {
  return QFileDialog::getExistingDirectory(
      parent, QFileDialog::tr("The folder in which X-Plane is installed"), InstalledFolder());
}

ReferencePanel::ReferencePanel(MessageBoxes& boxes, ChooseFolder chooseFolder)
    : boxes_(boxes), chooseFolder_(std::move(chooseFolder)) {
  setObjectName("PanelReferences");
  look::SetRole(this, "panel");
  LabelList = MakeLabel("LabelList", {}, "caption");
  ComboFilter = new QComboBox;
  ComboFilter->setObjectName("ComboFilter");
  ComboFilter->setToolTip(tr("Shows only paths that begin so"));
  for (const std::string_view filter : kReferenceFilters) ComboFilter->addItem(ToText(filter));
  SearchText = new QLineEdit;
  SearchText->setObjectName("SearchText");
  SearchText->setPlaceholderText(tr("Search as you type"));
  SearchText->setToolTip(
      tr("The list shows the paths that hold every word typed, for example: airspeed pilot (Ctrl+F)"));
  SearchText->setClearButtonEnabled(true);
  QPushButton* search = MakeButton("Cmdsearch", tr("Search"), tr("Goes to the first path found (Enter)"));
  QPushButton* reset = MakeButton("cmdResetSearch", tr("Show all"), tr("Without search and filter"));
  QPushButton* abort = MakeButton("cmdAbortSearch", tr("End search"), tr("Without search; the filter stays"));
  QPushButton* import =
      MakeButton("cmdImportLists", tr("Import from &X-Plane..."),
                 tr("Makes both lists anew of DataRefs.txt and Commands.txt, in X-Plane's folder or in any "
                    "other that holds copies of them"));
  ListXplaneReferences = new LineList(
      "ListXplaneReferences", [this] { return list_.Lines(); },
      [this](std::size_t line) { return ToText(list_.Line(line)); });
  ListXplaneReferences->setSelectionMode(QAbstractItemView::SingleSelection);
  ListXplaneReferences->setToolTip(tr("Number and path of each entry; Ctrl+F searches"));
  ListXplaneReferences->setMinimumSize(look::Margin() * 24, look::Margin() * 8);
  LabelFound = MakeLabel("LabelFound", tr("X-Plane's own lists can be imported:"), "caption");
  LabelList->setBuddy(ListXplaneReferences);

  auto* searchRow = new QHBoxLayout;
  searchRow->addWidget(SearchText, 1);
  for (QPushButton* button : {search, abort, reset}) {
    look::SetRole(button, "small");
    searchRow->addWidget(button);
  }
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(LabelFound, 1);
  bottom->addWidget(import);
  auto* top = new QHBoxLayout;
  top->addWidget(LabelList, 1);
  top->addWidget(ComboFilter);
  auto* column = new QVBoxLayout(this);
  SpacePanel(column);
  column->addLayout(top);
  column->addLayout(searchRow);
  column->addWidget(ListXplaneReferences, 1);
  column->addLayout(bottom);
  setTabOrder(ComboFilter, SearchText);

  auto* find = new QShortcut(QKeySequence::Find, this, nullptr, nullptr, Qt::WindowShortcut);
  connect(find, &QShortcut::activated, this, [this] {
    SearchText->setFocus();
    SearchText->selectAll();
  });
  connect(SearchText, &QLineEdit::textChanged, this, &ReferencePanel::Search);
  connect(ComboFilter, &QComboBox::currentIndexChanged, this, &ReferencePanel::Search);
  const auto goToList = [this] {
    ListXplaneReferences->SetRow(0);
    ListXplaneReferences->setFocus();
  };
  connect(search, &QPushButton::clicked, this, goToList);
  connect(SearchText, &QLineEdit::returnPressed, this, goToList);
  connect(abort, &QPushButton::clicked, SearchText, &QLineEdit::clear);
  connect(reset, &QPushButton::clicked, this, [this] {
    ComboFilter->setCurrentIndex(0);
    SearchText->clear();
  });
  connect(import, &QPushButton::clicked, this, &ReferencePanel::Import);
  connect(ListXplaneReferences->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &ReferencePanel::PathChosen);
  connect(ListXplaneReferences, &QListView::activated, this, &ReferencePanel::PathActivated);
}

void ReferencePanel::Show(const ListFile& file, std::string_view missing) {
  file_ = file;
  missing_ = missing;
  list_.Load(file_, missing_);
  LabelList->setText(ToText(file_.caption));
  // The filter's beginnings are those of data references; commands are sorted otherwise.
  const bool references = file_.title == kReferencesFile.title;
  ComboFilter->setVisible(references);
  if (!references) ComboFilter->setCurrentIndex(0);
  Search();
}

void ReferencePanel::Search() {
  const std::string filter =
      ComboFilter->currentIndex() > 0 ? ComboFilter->currentText().toStdString() : std::string();
  list_.Filter(filter, SearchText->text().toStdString());
  ListXplaneReferences->SetRow(-1);
  ListXplaneReferences->Refresh();
  ListXplaneReferences->scrollToTop();
  ShowCount();
  emit PathChosen();
}

void ReferencePanel::ShowCount() {
  if (!list_.Found()) {
    LabelFound->setText(tr("X-Plane's own lists can be imported:"));
    return;
  }
  QString text = tr("%1 of %2").arg(list_.PathAt(0) ? list_.Lines() : 0).arg(list_.Entries());
  if (list_.Short() > 0) text += tr(" (the file promised %1 more)").arg(list_.Short());
  LabelFound->setText(text);
}

void ReferencePanel::Import() {
  const QString folder = chooseFolder_(window());
  if (folder.isEmpty()) return;
  const ImportResult result = ImportXplaneLists(folder.toStdString());
  if (result.references + result.commands > 0) Show(file_, std::string(missing_));
  boxes_.Show(result.words);
}

std::optional<std::string> ReferencePanel::Path() const {
  const int row = ListXplaneReferences->Row();
  const auto path = row < 0 ? std::nullopt : list_.PathAt(static_cast<std::size_t>(row));
  return path ? std::optional(std::string(*path)) : std::nullopt;
}

}  // namespace tvx
