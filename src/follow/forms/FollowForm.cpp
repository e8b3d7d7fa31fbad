#include "follow/forms/FollowForm.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <algorithm>

#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

enum Column { kStation, kValue, kAge, kNote, kColumns };
constexpr int kLettersWide = 112, kLinesHigh = 20;
constexpr const char* kWidestStation = "X-Plane says now";
constexpr const char* kWidestValue = "sim/cockpit2/gauges/indicators/";
constexpr const char* kWidestAge = "59.9 min";

}  // namespace

FollowForm::FollowForm(const Follower& follower) : Form("frmFollow"), follower_(follower) {
  setWindowTitle(tr("Follow a value"));
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(MakeLabel("LabelFollow", tr("Where is my value?"), "title"));
  column->addLayout(MakeHead());
  MakeStations();
  column->addWidget(ListStations, 1);
  QPushButton* copy = MakeButton("cmdCopyRoad", tr("C&opy"), tr("Copies the diagnosis and every station"));
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Closes this window (Escape)"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(copy);
  buttons->addWidget(close);
  column->addLayout(buttons);
  connect(copy, &QPushButton::clicked, this, &FollowForm::Copy);
  connect(close, &QPushButton::clicked, this, &FollowForm::CloseAsked);
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) Refresh();
  });
  timer_.start(kRefreshMs);
  FillSubjects();
  if (!subjects_.empty()) Choose(subjects_.front());
  OpenWide(this, kLettersWide);
}

QLayout* FollowForm::MakeHead() {
  ComboSubject = new SearchCombo("ComboSubject", tr("The value that is followed: type a part of its name"));
  ComboSubject->SetPicked([this](int place) {
    if (place >= 0 && place < static_cast<int>(subjects_.size()))
      Choose(subjects_[static_cast<std::size_t>(place)]);
  });
  LampDiagnosis = new StateLamp("LampDiagnosis");
  LabelDiagnosis = MakeLabel("LabelDiagnosis");
  LabelDiagnosis->setWordWrap(true);
  LabelDiagnosis->setTextInteractionFlags(Qt::TextSelectableByMouse);
  LabelDiagnosis->setMinimumHeight(2 * LabelDiagnosis->fontMetrics().lineSpacing());
  QFont bold = LabelDiagnosis->font();
  bold.setBold(true);
  LabelDiagnosis->setFont(bold);
  auto* verdict = new QHBoxLayout;
  verdict->addWidget(LampDiagnosis);
  verdict->addWidget(LabelDiagnosis, 1);
  auto* head = new QVBoxLayout;
  head->addWidget(ComboSubject);
  head->addLayout(verdict);
  return head;
}

void FollowForm::MakeStations() {
  ListStations = new QTreeWidget;
  ListStations->setObjectName("ListStations");
  ListStations->setAccessibleName(tr("Stations of the value"));
  ListStations->setToolTip(tr("The stations of the value, in the order in which it takes them"));
  ListStations->setColumnCount(kColumns);
  ListStations->setHeaderLabels({tr("Station"), tr("Value"), tr("Age"), tr("What is known")});
  ListStations->setRootIsDecorated(false);
  ListStations->setWordWrap(true);
  ListStations->setAllColumnsShowFocus(true);
  ListStations->setMinimumSize(look::Margin() * 46, look::Margin() * kLinesHigh);
  const QFontMetrics letters = ListStations->fontMetrics();
  const auto fit = [&](Column column, const char* widest) {
    ListStations->setColumnWidth(column,
                                 letters.horizontalAdvance(QString::fromLatin1(widest)) + 2 * look::Margin());
  };
  fit(kStation, kWidestStation);
  fit(kValue, kWidestValue);
  fit(kAge, kWidestAge);
}

void FollowForm::FillSubjects() {
  subjects_ = follower_.InUse();
  if (subject_.number != 0 && std::ranges::find(subjects_, subject_) == subjects_.end())
    subjects_.push_back(subject_);
  std::vector<std::pair<int, std::string>> items;
  for (std::size_t i = 0; i < subjects_.size(); ++i) {
    items.emplace_back(static_cast<int>(i), follower_.TitleOf(subjects_[i]));
  }
  ComboSubject->SetItems(items);
  const auto place = std::ranges::find(subjects_, subject_);
  if (place != subjects_.end()) ComboSubject->SetValue(static_cast<int>(place - subjects_.begin()));
}

void FollowForm::Choose(const Subject& subject) {
  subject_ = subject.kind == Subject::Kind::OpenPort ? follower_.OwnerOf(subject.number) : subject;
  FillSubjects();
  Refresh();
}

void FollowForm::Refresh() {
  road_ = follower_.Follow(subject_);
  SetTextIfChanged(LabelDiagnosis, road_.Diagnosis);
  LampDiagnosis->SetState(road_.Trouble                        ? StateLamp::State::Trouble
                          : road_.Diagnosis.starts_with("All") ? StateLamp::State::Good
                                                               : StateLamp::State::Off);
  const int wanted = static_cast<int>(road_.Stations.size());
  while (ListStations->topLevelItemCount() > wanted) delete ListStations->takeTopLevelItem(wanted);
  while (ListStations->topLevelItemCount() < wanted) new QTreeWidgetItem(ListStations);
  for (int i = 0; i < wanted; ++i) {
    ShowStation(*ListStations->topLevelItem(i), road_.Stations[static_cast<std::size_t>(i)]);
  }
}

// What stays is not set again: each setting lays the line out anew.
void FollowForm::ShowStation(QTreeWidgetItem& line, const Station& station) {
  const auto put = [&line](Column column, const std::string& words) {
    const QString text = ToText(words);
    if (line.text(column) == text) return;
    line.setText(column, text);
    line.setToolTip(column, text);
  };
  put(kStation, station.Name);
  put(kValue, station.Value);
  put(kAge, station.Age);
  put(kNote, station.Note);
  const QColor colour = station.Stops ? look::CurrentColours().trouble : look::CurrentColours().text;
  if (line.foreground(kNote).color() == colour) return;
  for (const Column column : {kStation, kNote}) line.setForeground(column, colour);
}

void FollowForm::Copy() {
  QString text = ToText(road_.Title) + '\n' + ToText(road_.Diagnosis) + '\n';
  for (const Station& station : road_.Stations) {
    text +=
        QStringList{ToText(station.Name), ToText(station.Value), ToText(station.Age), ToText(station.Note)}
            .join('\t') +
        '\n';
  }
  QApplication::clipboard()->setText(text);
}

}  // namespace tvx
