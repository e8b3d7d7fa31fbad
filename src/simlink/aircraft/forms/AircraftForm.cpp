#include "simlink/aircraft/forms/AircraftForm.h"

#include <QHBoxLayout>
#include <QHeaderView>

#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kRefreshMs = 1000;
constexpr int kLinesHigh = 8, kLettersWide = 56;

}  // namespace

AircraftForm::AircraftForm(AircraftSwitch& aircraft, const QStringList& files, QWidget* parent)
    : Form("frmAircraft", parent), aircraft_(aircraft) {
  setWindowTitle(tr("Aircraft and their configurations"));
  CheckFollow = new QCheckBox(tr("Change the &configuration with the aircraft"));
  CheckFollow->setObjectName("CheckFollow");
  CheckFollow->setToolTip(
      tr("When X-Plane loads another aircraft, its configuration is taken up, running or "
         "halted. What is not saved is kept beside its file."));
  LabelFlown = MakeLabel("LabelFlown");
  AircraftLines = new QTreeWidget;
  AircraftLines->setObjectName("AircraftLines");
  AircraftLines->setAccessibleName(tr("Aircraft and their configurations"));
  AircraftLines->setHeaderLabels({tr("Aircraft"), tr("Configuration")});
  AircraftLines->setRootIsDecorated(false);
  AircraftLines->header()->setSectionResizeMode(QHeaderView::Stretch);
  AircraftLines->setMinimumHeight(AircraftLines->fontMetrics().lineSpacing() * kLinesHigh);
  QLabel* hint = MakeLabel("LabelHint",
                           tr("An aircraft is its type (C172) or its file (trainer.acf); * stands for any "
                              "letters, ? for one. The first line that fits counts."),
                           "caption");
  hint->setWordWrap(true);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(CheckFollow);
  column->addWidget(LabelFlown);
  column->addWidget(AircraftLines, 1);
  column->addWidget(hint);
  column->addLayout(MakeLine(files));
  column->addLayout(MakeButtons());
  connect(CheckFollow, &QCheckBox::clicked, this, [this](bool on) {
    AircraftList list = aircraft_.List();
    list.On = on;
    Change(list, Chosen());
  });
  connect(AircraftLines, &QTreeWidget::itemSelectionChanged, this, [this] {
    cmdRemove->setEnabled(Chosen() >= 0);
    cmdUp->setEnabled(Chosen() > 0);
  });
  connect(&timer_, &QTimer::timeout, this, &AircraftForm::ShowFlown);
  timer_.start(kRefreshMs);
  ShowList(0);
  ShowFlown();
  if (aircraft_.Flown()) EditPattern->setText(ToText(aircraft_.Flown()->Icao));
  resize(std::max(sizeHint().width(), fontMetrics().averageCharWidth() * kLettersWide), sizeHint().height());
}

QLayout* AircraftForm::MakeLine(const QStringList& files) {
  QLabel* caption = MakeLabel("LabelPattern", tr("&Aircraft"), "caption");
  EditPattern = new QLineEdit;
  EditPattern->setObjectName("EditPattern");
  EditPattern->setMaxLength(200);
  EditPattern->setToolTip(tr("Type or file of the aircraft, for example C172 or b738*"));
  caption->setBuddy(EditPattern);
  QLabel* fileCaption = MakeLabel("LabelFile", tr("Configura&tion"), "caption");
  ComboFile = new QComboBox;
  ComboFile->setObjectName("ComboFile");
  ComboFile->setToolTip(tr("The configuration file of this folder that is taken up"));
  ComboFile->addItems(files);
  fileCaption->setBuddy(ComboFile);
  cmdAdd = MakeButton("cmdAdd", tr("A&dd"), tr("Adds this line; one with the same aircraft is replaced"));
  look::SetRole(cmdAdd, "primary");
  SetDefaultButton(cmdAdd);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(caption);
  row->addWidget(EditPattern, 1);
  row->addWidget(fileCaption);
  row->addWidget(ComboFile, 1);
  row->addWidget(cmdAdd);
  const auto ready = [this] {
    cmdAdd->setEnabled(!EditPattern->text().trimmed().isEmpty() && ComboFile->count() > 0);
  };
  connect(EditPattern, &QLineEdit::textChanged, this, ready);
  connect(cmdAdd, &QPushButton::clicked, this, &AircraftForm::Add);
  ready();
  return row;
}

QLayout* AircraftForm::MakeButtons() {
  cmdRemove = MakeButton("cmdRemove", tr("&Remove"), tr("Takes the chosen line out of the list"));
  cmdUp = MakeButton("cmdUp", tr("Move &up"), tr("The chosen line counts before the one above it"));
  QPushButton* close = MakeButton("CmdClose", tr("Close"), tr("Back to the configuration (Escape)"));
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(cmdRemove);
  row->addWidget(cmdUp);
  row->addStretch(1);
  row->addWidget(close);
  connect(cmdRemove, &QPushButton::clicked, this, &AircraftForm::Remove);
  connect(cmdUp, &QPushButton::clicked, this, &AircraftForm::MoveUp);
  connect(close, &QPushButton::clicked, this, &AircraftForm::CloseAsked);
  return row;
}

void AircraftForm::Add() {
  AircraftList list = aircraft_.List();
  const AircraftLine line{EditPattern->text().trimmed().toStdString(),
                          ComboFile->currentText().toStdString()};
  auto& lines = list.Lines;
  const auto same = std::find_if(lines.begin(), lines.end(),
                                 [&](const AircraftLine& other) { return other.Pattern == line.Pattern; });
  const auto at = static_cast<int>(same - lines.begin());
  if (same != lines.end()) {
    *same = line;
  } else if (lines.size() < AircraftList::kMostLines) {
    lines.push_back(line);
  }
  Change(list, at);
}

void AircraftForm::Remove() {
  AircraftList list = aircraft_.List();
  const int chosen = Chosen();
  if (chosen < 0) return;
  list.Lines.erase(list.Lines.begin() + chosen);
  Change(list, chosen);
}

void AircraftForm::MoveUp() {
  AircraftList list = aircraft_.List();
  const int chosen = Chosen();
  if (chosen < 1) return;
  std::swap(list.Lines[static_cast<std::size_t>(chosen)], list.Lines[static_cast<std::size_t>(chosen) - 1]);
  Change(list, chosen - 1);
}

void AircraftForm::Change(const AircraftList& list, int chosen) {
  aircraft_.SetList(list);
  if (!Unloading()) ShowList(chosen);
}

void AircraftForm::ShowList(int chosen) {
  CheckFollow->setChecked(aircraft_.List().On);
  AircraftLines->clear();
  for (const AircraftLine& line : aircraft_.List().Lines) {
    new QTreeWidgetItem(AircraftLines, {ToText(line.Pattern), ToText(line.File)});
  }
  const int last = AircraftLines->topLevelItemCount() - 1;
  AircraftLines->setCurrentItem(AircraftLines->topLevelItem(std::clamp(chosen, -1, last)));
  cmdRemove->setEnabled(Chosen() >= 0);
  cmdUp->setEnabled(Chosen() > 0);
}

void AircraftForm::ShowFlown() {
  const auto& flown = aircraft_.Flown();
  SetTextIfChanged(LabelFlown, flown
                                   ? tr("X-Plane flew last: %1").arg(ToText(AircraftWords(*flown)))
                                   : tr("X-Plane is asked for its aircraft while this is on and the program "
                                        "is linked to it."));
}

}  // namespace tvx
