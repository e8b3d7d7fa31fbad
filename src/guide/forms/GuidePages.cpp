// The pages of the set-up guide.
#include <QSignalBlocker>

#include "guide/FixedInstruments.h"
#include "guide/forms/GuideForm.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

QVBoxLayout* ColumnOf(QWidget* page) {
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(look::Gap());
  return column;
}

QLabel* MakeWords(const char* name, const QString& text = {}, const char* role = nullptr) {
  QLabel* label = MakeLabel(name, text, role);
  label->setWordWrap(true);
  return label;
}

QListWidget* MakeList(const char* name, const QString& tip) {
  auto* list = new QListWidget;
  list->setObjectName(QString::fromLatin1(name));
  list->setToolTip(tip);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  return list;
}

}  // namespace

QWidget* GuideForm::MakeFindPage() {
  auto* page = new QWidget;
  QVBoxLayout* column = ColumnOf(page);
  column->addWidget(MakeWords(
      "LabelFindTitle", tr("Simulator, adapters and gauges are looked for; no setting of theirs is changed."),
      "title"));
  cmdFind = MakeButton("cmdFind", tr("&Find everything"),
                       tr("Asks every adapter what hangs on it, then every address of the gauge bus"));
  look::SetRole(cmdFind, "primary");
  connect(cmdFind, &QPushButton::clicked, this, [this] {
    guide_.Search().Running() ? guide_.Search().Cancel() : guide_.Search().Start();
    ShowAll();
  });
  ProgressFind = new QProgressBar;
  ProgressFind->setObjectName("ProgressFind");
  ProgressFind->setToolTip(tr("How much has been asked"));
  ProgressFind->setRange(0, 100);
  auto* row = new QHBoxLayout;
  row->addWidget(cmdFind);
  row->addWidget(ProgressFind, 1);
  column->addLayout(row);
  LabelFound = MakeWords("LabelFound");
  LabelFound->setTextInteractionFlags(Qt::TextSelectableByMouse);
  LabelFixed = MakeWords("LabelFixed");
  column->addWidget(LabelFound);
  column->addWidget(LabelFixed);
  column->addStretch(1);
  return page;
}

QWidget* GuideForm::MakeRadiosPage() {
  auto* page = new QWidget;
  QVBoxLayout* column = ColumnOf(page);
  LabelTouched = MakeWords("LabelTouched", {}, "title");
  column->addWidget(LabelTouched);
  ListRadios = MakeList("ListRadios", tr("The radios that can be one or another"));
  column->addWidget(ListRadios, 1);
  column->addWidget(MakeWords("LabelRole", tr("The one that moved is")));
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  for (std::size_t i = 0; i < kRadioRoles.size(); ++i) {
    const QString name =
        QString::fromLatin1(kRadioRoles[i].name.data(), static_cast<qsizetype>(kRadioRoles[i].name.size()));
    QPushButton* button = MakeButton("", name, tr("Makes the radio that moved %1").arg(name));
    button->setObjectName("cmdRole" + QString::number(i));
    connect(button, &QPushButton::clicked, this, [this, i] { guide_.GiveRole(i); });
    roles_.push_back(button);
    row->addWidget(button);
  }
  row->addStretch(1);
  column->addLayout(row);
  return page;
}

QLayout* GuideForm::MakeTuningRow() {
  SliderNeedle = new QSlider(Qt::Horizontal);
  SliderNeedle->setObjectName("SliderNeedle");
  SliderNeedle->setToolTip(tr("Moves the live needle; with the cursor keys by a third of a degree"));
  SliderNeedle->setRange(0, 1079);
  SliderNeedle->setPageStep(10);
  connect(SliderNeedle, &QSlider::valueChanged, this, [this](int position) {
    guide_.Needles().MoveTo(position);
    Face->SetNeedle(position);
  });
  const auto jog = [this](const char* name, const QString& text, int by) {
    QPushButton* button = MakeButton(name, text, tr("Moves the live needle by %1").arg(by));
    button->setAutoRepeat(true);
    button->setMaximumWidth(look::Margin() * 4);
    connect(button, &QPushButton::clicked, this,
            [this, by] { SliderNeedle->setValue(SliderNeedle->value() + by); });
    return button;
  };
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(jog("cmdLess10", "-10", -10));
  row->addWidget(jog("cmdLess1", "-1", -1));
  row->addWidget(SliderNeedle, 1);
  row->addWidget(jog("cmdMore1", "+1", 1));
  row->addWidget(jog("cmdMore10", "+10", 10));
  return row;
}

QWidget* GuideForm::MakeNeedlesPage() {
  auto* page = new QWidget;
  QVBoxLayout* column = ColumnOf(page);
  LabelQuestion = MakeWords("LabelQuestion", {}, "title");
  column->addWidget(LabelQuestion);
  ListNeedles = MakeList("ListNeedles", tr("The needles; the chosen one moves"));
  ListNeedles->setWordWrap(true);
  connect(ListNeedles, &QListWidget::currentRowChanged, this, [this](int row) {
    guide_.Needles().Select(row);
    ShowAll();
  });
  ListFaces = MakeList("ListFaces", tr("Ready faces: a click or Enter gives the needle that moves this one"));
  ListFaces->setViewMode(QListView::IconMode);
  ListFaces->setResizeMode(QListView::Adjust);
  ListFaces->setMovement(QListView::Static);
  ListFaces->setWordWrap(true);
  connect(ListFaces, &QListWidget::itemClicked, this, &GuideForm::TakeFace);
  connect(ListFaces, &QListWidget::itemActivated, this, &GuideForm::TakeFace);
  Face = new PlateFace("Face");
  Tuning = new QWidget;
  QVBoxLayout* tuning = ColumnOf(Tuning);
  tuning->addWidget(Face, 1);
  tuning->addWidget(
      MakeWords("LabelTune", tr("If the needle stands beside the number, move it there first.")));
  tuning->addLayout(MakeTuningRow());
  cmdYes =
      MakeButton("cmdYes", tr("&Yes, it stands there"), tr("Takes this point, and asks for the next one"));
  cmdAsItIs = MakeButton("cmdAsItIs", tr("The &rest is good as it is"), tr("Goes on to the next needle"));
  look::SetRole(cmdYes, "primary");
  connect(cmdYes, &QPushButton::clicked, this, [this] {
    guide_.Needles().Yes();
    ShowAll();
  });
  connect(cmdAsItIs, &QPushButton::clicked, this, [this] {
    guide_.Needles().SkipTuning();
    ShowAll();
  });
  auto* answers = new QHBoxLayout;
  answers->addWidget(cmdYes);
  answers->addWidget(cmdAsItIs);
  answers->addStretch(1);
  tuning->addLayout(answers);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(ListNeedles, 2);
  row->addWidget(ListFaces, 3);
  row->addWidget(Tuning, 3);
  column->addLayout(row, 1);
  return page;
}

QWidget* GuideForm::MakeSwitchesPage() {
  auto* page = new QWidget;
  QVBoxLayout* column = ColumnOf(page);
  LabelMoved = MakeWords("LabelMoved", {}, "title");
  ListUses = MakeList("ListUses", tr("Usual uses: a click or Enter gives what was moved this one"));
  connect(ListUses, &QListWidget::itemClicked, this, &GuideForm::TakeUse);
  connect(ListUses, &QListWidget::itemActivated, this, &GuideForm::TakeUse);
  column->addWidget(LabelMoved);
  column->addWidget(ListUses, 1);
  column->addWidget(MakeWords("LabelUses", tr("Anything else is set in the set-up of the IO module.")));
  return page;
}

QWidget* GuideForm::MakeFlightPage() {
  auto* page = new QWidget;
  QVBoxLayout* column = ColumnOf(page);
  LabelFlight = MakeWords("LabelFlight", {}, "title");
  cmdFly = MakeButton("cmdFly", tr("&Move everything"), tr("Moves each needle and display from end to end"));
  connect(cmdFly, &QPushButton::clicked, this, [this] {
    guide_.Flight().Running() ? guide_.Flight().Stop() : guide_.Flight().Start();
    ShowAll();
  });
  ProgressFlight = new QProgressBar;
  ProgressFlight->setObjectName("ProgressFlight");
  ProgressFlight->setToolTip(tr("How much has moved"));
  ProgressFlight->setRange(0, 100);
  auto* row = new QHBoxLayout;
  row->addWidget(cmdFly);
  row->addWidget(ProgressFlight, 1);
  column->addWidget(LabelFlight);
  LabelAfterFlight = MakeWords("LabelAfterFlight");
  column->addLayout(row);
  column->addWidget(LabelAfterFlight);
  column->addStretch(1);
  return page;
}

}  // namespace tvx
