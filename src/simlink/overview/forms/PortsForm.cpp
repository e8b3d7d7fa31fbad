#include "simlink/overview/forms/PortsForm.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QShortcut>
#include <algorithm>

#include "simlink/overview/PortListing.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr const char* kWidestValue = "-1234567.8901";
constexpr int kLettersWide = 84, kLinesHigh = 24;

}  // namespace

PortsForm::PortsForm(const ConfigModel& model, const SimCom& sim)
    : Form("frmPorts"), model_(model), sim_(sim), lines_(model, sim, this) {
  setWindowTitle(tr("Simulator ports"));
  LabelPorts = MakeLabel("LabelPorts", tr("Active Ports and Functions"), "title");
  MakeTable();
  LabelDetails = MakeLabel("LabelDetails");
  LabelDetails->setWordWrap(true);
  LabelDetails->setTextInteractionFlags(Qt::TextSelectableByMouse);
  LabelDetails->setMinimumHeight(LabelDetails->fontMetrics().lineSpacing() * 5);
  LabelDetails->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  QPushButton* copy =
      MakeButton("cmdCopyPorts", tr("C&opy"),
                 tr("Copies the chosen lines, or all that are shown where none is chosen (Ctrl+C)"));
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Closes this list (Escape)"));
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(MakeFollowButton([this] {
    const int line = std::max(OffsetsList->currentIndex().row(), 0);
    const bool any = lines_.Overview().Lines() > 0;
    return Subject{Subject::Kind::OpenPort,
                   any ? lines_.Overview().PortOf(static_cast<std::size_t>(line)) : 0};
  }));
  buttons->addStretch(1);
  buttons->addWidget(copy);
  buttons->addWidget(close);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(LabelPorts);
  column->addLayout(MakeSearch());
  column->addWidget(OffsetsList, 1);
  column->addWidget(LabelDetails);
  column->addLayout(buttons);
  connect(copy, &QPushButton::clicked, this, &PortsForm::CopyChosen);
  connect(close, &QPushButton::clicked, this, &PortsForm::CloseAsked);
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) Refresh();
  });
  timer_.start(kRefreshMs);
  Refresh();
  OpenWide(this, kLettersWide);
  OffsetsList->setAccessibleName(tr("Simulator ports in use"));
  OffsetsList->setFocus();
}

QLayout* PortsForm::MakeSearch() {
  SearchPorts = new QLineEdit;
  SearchPorts->setObjectName("SearchPorts");
  SearchPorts->setPlaceholderText(tr("Search as you type"));
  SearchPorts->setToolTip(
      tr("The list shows the ports that hold every word typed, for example: id:007 nav1 (Ctrl+F)"));
  SearchPorts->setClearButtonEnabled(true);
  LabelCount = MakeLabel("LabelCount", {}, "caption");
  auto* row = new QHBoxLayout;
  row->addWidget(SearchPorts, 1);
  row->addWidget(LabelCount);
  connect(SearchPorts, &QLineEdit::textChanged, this, &PortsForm::Search);
  connect(SearchPorts, &QLineEdit::returnPressed, this, [this] {
    OffsetsList->setCurrentIndex(lines_.index(0, 0));
    OffsetsList->setFocus();
  });
  auto* find = new QShortcut(QKeySequence::Find, this, nullptr, nullptr, Qt::WindowShortcut);
  connect(find, &QShortcut::activated, this, [this] {
    SearchPorts->setFocus();
    SearchPorts->selectAll();
  });
  return row;
}

void PortsForm::MakeTable() {
  OffsetsList = new QTreeView;
  OffsetsList->setObjectName("OffsetsList");
  OffsetsList->setModel(&lines_);
  OffsetsList->setRootIsDecorated(false);
  OffsetsList->setUniformRowHeights(true);
  OffsetsList->setAllColumnsShowFocus(true);
  OffsetsList->setSelectionMode(QAbstractItemView::ExtendedSelection);
  OffsetsList->setSortingEnabled(true);
  OffsetsList->sortByColumn(0, Qt::AscendingOrder);
  OffsetsList->setMinimumSize(look::Margin() * 46, look::Margin() * kLinesHigh);
  connect(OffsetsList->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &PortsForm::ShowDetails);
  auto* copy = new QShortcut(QKeySequence::Copy, OffsetsList, nullptr, nullptr, Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, &PortsForm::CopyChosen);
}

// Values that change get room for the longest, so that no column moves.
void PortsForm::FitColumns() {
  fitted_ = lines_.Overview().Ports();
  const QFontMetrics letters = OffsetsList->fontMetrics();
  const int value = letters.horizontalAdvance(QString::fromLatin1(kWidestValue)) + look::Margin();
  for (int column = 0; column < lines_.columnCount(); ++column) {
    OffsetsList->resizeColumnToContents(column);
    const auto which = static_cast<PortColumn>(column);
    if (which == PortColumn::Raw || which == PortColumn::Value) OffsetsList->setColumnWidth(column, value);
  }
}

void PortsForm::Refresh() {
  lines_.Refresh();
  if (fitted_ != lines_.Overview().Ports()) FitColumns();
  Search();
}

void PortsForm::Search() {
  lines_.Search(SearchPorts->text());
  const PortOverview& overview = lines_.Overview();
  SetTextIfChanged(LabelCount, overview.Lines() == overview.Ports()
                                   ? tr("%1 ports").arg(overview.Ports())
                                   : tr("%1 of %2 ports").arg(overview.Lines()).arg(overview.Ports()));
  ShowDetails();
}

void PortsForm::ShowDetails() {
  const QModelIndex current = OffsetsList->currentIndex();
  QStringList lines;
  if (current.isValid()) {
    const int port = lines_.Overview().PortOf(static_cast<std::size_t>(current.row()));
    for (const std::string& line : PortDetails(model_, sim_, port)) lines.append(ToText(line));
  }
  SetTextIfChanged(LabelDetails, lines.isEmpty() ? tr("Choose a line to see where its value comes from.")
                                                 : lines.join('\n'));
}

void PortsForm::CopyChosen() {
  std::vector<std::size_t> chosen;
  for (const QModelIndex& line : OffsetsList->selectionModel()->selectedRows()) {
    chosen.push_back(static_cast<std::size_t>(line.row()));
  }
  std::sort(chosen.begin(), chosen.end());
  QApplication::clipboard()->setText(ToText(lines_.Overview().Text(chosen)));
}

}  // namespace tvx
