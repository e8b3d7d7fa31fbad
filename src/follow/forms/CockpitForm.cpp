#include "follow/forms/CockpitForm.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QShortcut>
#include <algorithm>
#include <optional>

#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kLettersWide = 112, kLinesHigh = 24;
constexpr std::array<const char*, kCockpitColumns> kWidest{"014 Heading Indicator: first needle", "-12345.67",
                                                           "raw 4095", "59.9 min ago", ""};

}  // namespace

CockpitForm::CockpitForm(const Follower& follower, std::function<void()> writeTrace)
    : Form("frmCockpit"),
      list_(follower),
      writeTrace_(std::move(writeTrace)),
      PanelCockpit(new DrawnPanel(follower.Parts())) {
  setWindowTitle(tr("The cockpit on one page"));
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(MakeLabel("LabelCockpit", tr("Everything in use"), "title"));
  column->addLayout(MakeSearch());
  MakeList();
  MakeTabs();
  column->addWidget(TabsCockpit, 1);
  column->addLayout(MakeButtons());
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) Refresh();
  });
  timer_.start(kRefreshMs);
  Refresh();
  if (ListCockpit->topLevelItemCount() > 0)
    ListCockpit->setCurrentItem(ListCockpit->topLevelItem(0), 0, QItemSelectionModel::NoUpdate);
  OpenWide(this, kLettersWide);
  ListCockpit->setFocus();
}

QLayout* CockpitForm::MakeSearch() {
  SearchCockpit = new QLineEdit;
  SearchCockpit->setObjectName("SearchCockpit");
  SearchCockpit->setPlaceholderText(tr("Search as you type"));
  SearchCockpit->setToolTip(tr("Only the lines that hold every word typed are shown (Ctrl+F)"));
  SearchCockpit->setClearButtonEnabled(true);
  LabelCount = MakeLabel("LabelCount", {}, "caption");
  auto* row = new QHBoxLayout;
  row->addWidget(SearchCockpit, 1);
  row->addWidget(LabelCount);
  connect(SearchCockpit, &QLineEdit::textChanged, this, &CockpitForm::Show);
  auto* find = new QShortcut(QKeySequence::Find, this, nullptr, nullptr, Qt::WindowShortcut);
  connect(find, &QShortcut::activated, this, [this] {
    SearchCockpit->setFocus();
    SearchCockpit->selectAll();
  });
  return row;
}

// The drawn panel costs nothing while it is not looked at.
void CockpitForm::MakeTabs() {
  TabsCockpit = new QTabWidget;
  TabsCockpit->setObjectName("TabsCockpit");
  TabsCockpit->setAccessibleName(tr("The cockpit as a list, and drawn"));
  TabsCockpit->setDocumentMode(true);
  TabsCockpit->setUsesScrollButtons(false);
  TabsCockpit->addTab(ListCockpit, tr("&List"));
  TabsCockpit->addTab(PanelCockpit, tr("&Drawn"));
  TabsCockpit->setTabToolTip(0, tr("Everything in use, what is in trouble first"));
  TabsCockpit->setTabToolTip(1, tr("Every part of the cockpit with its face, as it was told last"));
  connect(PanelCockpit, &DrawnPanel::FollowAsked, this, &CockpitForm::FollowAsked);
  connect(&pictures_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) PanelCockpit->Refresh();
  });
  connect(TabsCockpit, &QTabWidget::currentChanged, this, [this] {
    if (!Drawn()) return pictures_.stop();
    PanelCockpit->Refresh();
    PanelCockpit->Show(list_);
    pictures_.start(kPictureMs);
  });
}

void CockpitForm::MakeList() {
  ListCockpit = new QTreeWidget;
  ListCockpit->setObjectName("ListCockpit");
  ListCockpit->setAccessibleName(tr("Everything in use"));
  ListCockpit->setToolTip(tr("A double click, or Enter, follows the value station by station"));
  ListCockpit->setColumnCount(static_cast<int>(kCockpitColumns));
  QStringList headings;
  for (std::size_t c = 0; c < kCockpitColumns; ++c) {
    headings << ToText(CockpitList::Heading(static_cast<CockpitColumn>(c)));
    const QString widest = QString::fromLatin1(kWidest[c]);
    ListCockpit->setColumnWidth(static_cast<int>(c),
                                ListCockpit->fontMetrics().horizontalAdvance(widest) + 2 * look::Margin());
  }
  ListCockpit->setHeaderLabels(headings);
  ListCockpit->setRootIsDecorated(false);
  ListCockpit->setUniformRowHeights(true);
  ListCockpit->setAllColumnsShowFocus(true);
  ListCockpit->setSelectionMode(QAbstractItemView::ExtendedSelection);
  ListCockpit->setMinimumSize(look::Margin() * 46, look::Margin() * kLinesHigh);
  connect(ListCockpit, &QTreeWidget::itemActivated, this, &CockpitForm::Follow);
  auto* copy = new QShortcut(QKeySequence::Copy, ListCockpit, nullptr, nullptr, Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, &CockpitForm::Copy);
}

QLayout* CockpitForm::MakeButtons() {
  QPushButton* follow = MakeButton("cmdFollow", tr("&Follow"), tr("Shows where the chosen value stops"));
  QPushButton* copy =
      MakeButton("cmdCopyCockpit", tr("C&opy"),
                 tr("Copies the chosen lines, or all that are shown where none is chosen (Ctrl+C)"));
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Closes this list (Escape)"));
  QPushButton* trace =
      MakeButton("cmdTrace", tr("&Save what happened"),
                 tr("Writes all datagrams, frames and answers of the last five minutes to TVXTrace.txt; the "
                    "virtual cockpit plays such a file"));
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(follow);
  buttons->addWidget(trace);
  buttons->addStretch(1);
  buttons->addWidget(copy);
  buttons->addWidget(close);
  connect(follow, &QPushButton::clicked, this, &CockpitForm::Follow);
  connect(trace, &QPushButton::clicked, this, [this] { writeTrace_(); });
  connect(copy, &QPushButton::clicked, this, &CockpitForm::Copy);
  connect(close, &QPushButton::clicked, this, &CockpitForm::CloseAsked);
  return buttons;
}

void CockpitForm::Refresh() {
  // Lines move when trouble comes or goes: what is chosen is led to where it has gone.
  std::vector<Subject> chosen;
  std::optional<Subject> current;
  for (int i = 0; i < ListCockpit->topLevelItemCount(); ++i) {
    const Subject& subject = list_.SubjectOf(static_cast<std::size_t>(i));
    if (ListCockpit->topLevelItem(i)->isSelected()) chosen.push_back(subject);
    if (ListCockpit->topLevelItem(i) == ListCockpit->currentItem()) current = subject;
  }
  list_.Refresh();
  Show();
  for (int i = 0; i < ListCockpit->topLevelItemCount(); ++i) {
    const Subject& subject = list_.SubjectOf(static_cast<std::size_t>(i));
    QTreeWidgetItem* item = ListCockpit->topLevelItem(i);
    if (current == subject && ListCockpit->currentItem() != item)
      ListCockpit->setCurrentItem(item, 0, QItemSelectionModel::NoUpdate);
    const bool wanted = std::ranges::find(chosen, subject) != chosen.end();
    if (item->isSelected() != wanted) item->setSelected(wanted);
  }
}

void CockpitForm::Show() {
  list_.Search(SearchCockpit->text().toStdString());
  const int wanted = static_cast<int>(list_.Lines());
  while (ListCockpit->topLevelItemCount() > wanted) delete ListCockpit->takeTopLevelItem(wanted);
  while (ListCockpit->topLevelItemCount() < wanted) new QTreeWidgetItem(ListCockpit);
  if (Drawn()) PanelCockpit->Show(list_);
  for (int i = 0; i < wanted; ++i) ShowLine(*ListCockpit->topLevelItem(i), static_cast<std::size_t>(i));
  const QString all = list_.Lines() == list_.All()
                          ? tr("%1 in use").arg(list_.All())
                          : tr("%1 of %2 in use").arg(list_.Lines()).arg(list_.All());
  SetTextIfChanged(LabelCount, list_.Troubles() == 0 ? all + tr(", none in trouble")
                                                     : all + tr(", %1 in trouble").arg(list_.Troubles()));
}

// What stays is not set again: each setting lays the line out anew.
void CockpitForm::ShowLine(QTreeWidgetItem& item, std::size_t line) {
  for (std::size_t c = 0; c < kCockpitColumns; ++c) {
    const QString text = ToText(list_.Cell(line, static_cast<CockpitColumn>(c)));
    const int column = static_cast<int>(c);
    if (item.text(column) == text) continue;
    item.setText(column, text);
    item.setToolTip(column, text);
  }
  const auto state = static_cast<int>(CockpitColumn::State);
  const look::Colours& colours = look::CurrentColours();
  const QColor colour = list_.InTrouble(line) ? colours.trouble : colours.text;
  if (item.foreground(state).color() != colour) item.setForeground(state, colour);
}

void CockpitForm::Follow() {
  if (Drawn()) {
    if (const auto chosen = PanelCockpit->Chosen()) emit FollowAsked(*chosen);
    return;
  }
  const int line = ListCockpit->indexOfTopLevelItem(ListCockpit->currentItem());
  if (line < 0) return;
  const Subject subject = list_.SubjectOf(static_cast<std::size_t>(line));
  emit FollowAsked(subject);
}

void CockpitForm::Copy() {
  std::vector<std::size_t> chosen;
  for (int i = 0; i < ListCockpit->topLevelItemCount(); ++i) {
    if (ListCockpit->topLevelItem(i)->isSelected()) chosen.push_back(static_cast<std::size_t>(i));
  }
  QApplication::clipboard()->setText(ToText(list_.Text(chosen)));
}

}  // namespace tvx
