#include "guide/forms/GuideForm.h"

#include <QSignalBlocker>
#include <algorithm>

#include "base/NumberFormat.h"
#include "config/setup/GaugeList.h"
#include "guide/FixedInstruments.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr const char* kStepNames[kGuideSteps] = {"1  Find everything", "2  Radios", "3  Needles",
                                                 "4  Switches", "5  Test flight"};
constexpr int kPictureLines = 6;  // the height of a picture, in lines of text

std::vector<FacePoint> PointsOf(const ReadyFace& face) {
  std::vector<FacePoint> points;
  for (const FaceMark& mark : face.marks) points.push_back({mark.value, static_cast<double>(mark.position)});
  return points;
}

// Fills a list anew only where its lines are others; the chosen line stays.
void SetLines(QListWidget* list, const QStringList& lines) {
  const QSignalBlocker quiet(list);
  if (list->count() == lines.size()) {
    for (int i = 0; i < list->count(); ++i) {
      if (list->item(i)->text() != lines[i]) list->item(i)->setText(lines[i]);
    }
    return;
  }
  const int row = list->currentRow();
  list->clear();
  list->addItems(lines);
  list->setCurrentRow(std::min<int>(row, static_cast<int>(lines.size()) - 1));
}

}  // namespace

GuideForm::GuideForm(Guide& guide, MessageBoxes& boxes, QWidget* parent)
    : Form("frmGuide", parent), guide_(guide), boxes_(boxes) {
  setWindowTitle(tr("Set-up guide"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  ListSteps = new QListWidget;
  ListSteps->setObjectName("ListSteps");
  ListSteps->setToolTip(tr("The steps of the set-up, each of which can be taken alone"));
  ListSteps->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  ListSteps->setFixedWidth(look::Margin() * 15);
  ListSteps->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  Pages = new QStackedWidget;
  for (QWidget* page :
       {MakeFindPage(), MakeRadiosPage(), MakeNeedlesPage(), MakeSwitchesPage(), MakeFlightPage()})
    Pages->addWidget(page);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Margin());
  row->addWidget(ListSteps);
  row->addWidget(Pages, 1);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addLayout(row, 1);
  column->addLayout(MakeFoot());
  Keep(guide_.SetChanged([this] { ShowAll(); }));
  guide_.Begin();
  ShowAll();
  connect(ListSteps, &QListWidget::currentRowChanged, this, [this](int step) {
    if (step >= 0 && step < kGuideSteps) Go(static_cast<GuideStep>(step));
  });
  resize(look::Margin() * 92, look::Margin() * 50);
  cmdFind->setFocus();
}

QLayout* GuideForm::MakeFoot() {
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  QPushButton* next = MakeButton("cmdNext", tr("Ne&xt step"), tr("Goes on to the step after this one"));
  connect(next, &QPushButton::clicked, this,
          [this] { ListSteps->setCurrentRow(std::min(ListSteps->currentRow() + 1, kGuideSteps - 1)); });
  QPushButton* close =
      MakeButton("CmdClose", tr("&Close"), tr("Back to the configuration; what was set so far stays"));
  connect(close, &QPushButton::clicked, this, &GuideForm::CloseAsked);
  LabelSaved = MakeLabel("LabelSaved");
  LabelSaved->setWordWrap(true);
  QPushButton* save = MakeButton("cmdSaveStart", tr("Sa&ve and start with it"),
                                 tr("Saves the configuration, and loads and runs it at every start"));
  connect(save, &QPushButton::clicked, this, [this] { cmdSaveStart_Click(); });
  row->addWidget(LabelSaved, 1);
  row->addWidget(save);
  row->addWidget(next);
  row->addWidget(close);
  return row;
}

void GuideForm::Go(GuideStep step) {
  if (guide_.Step() == step) return;
  guide_.Enter(step);
  QWidget* first = nullptr;
  if (step == GuideStep::Find) first = cmdFind;
  if (step == GuideStep::Radios) first = ListRadios;
  if (step == GuideStep::Needles) first = ListFaces;
  if (step == GuideStep::Switches) first = ListUses;
  if (step == GuideStep::Flight) first = cmdFly;
  if (!ListSteps->hasFocus() && first != nullptr) first->setFocus();
}

void GuideForm::ShowAll() {
  ShowSteps();
  Pages->setCurrentIndex(static_cast<int>(guide_.Step()));
  switch (guide_.Step()) {
    case GuideStep::Find:
      return ShowFind();
    case GuideStep::Radios:
      return ShowRadios();
    case GuideStep::Needles:
      return ShowNeedles();
    case GuideStep::Switches:
      return ShowSwitches();
    case GuideStep::Flight:
      return ShowFlight();
  }
}

void GuideForm::ShowSteps() {
  QStringList lines;
  for (int step = 0; step < kGuideSteps; ++step) {
    const QString state = ToText(guide_.StateOf(static_cast<GuideStep>(step)));
    lines << QString::fromLatin1(kStepNames[step]) + (state.isEmpty() ? QString() : ":  " + state);
  }
  SetLines(ListSteps, lines);
  const QSignalBlocker quiet(ListSteps);
  ListSteps->setCurrentRow(static_cast<int>(guide_.Step()));
}

void GuideForm::ShowFind() {
  const bool running = guide_.Search().Running();
  cmdFind->setText(running ? tr("&Stop") : tr("&Find everything"));
  ProgressFind->setValue(guide_.Search().Percent());
  SetTextIfChanged(LabelFound, guide_.Search().Words());
  SetTextIfChanged(LabelFixed, guide_.FixedWords());
}

void GuideForm::ShowRadios() {
  const ConfigModel& model = guide_.Model();
  QStringList lines;
  int moved = -1;
  for (int id = 0; id < kGauges; ++id) {
    const Byte type = model.Gauges[static_cast<std::size_t>(id)].GaugeType;
    if (!IsRadio(type)) continue;
    if (id == guide_.Hand().Moved()) moved = static_cast<int>(lines.size());
    const std::string role = RadioRoleOf(model, id);
    lines << ToText(FormatNumberText(id, "000") + "  " + GaugetypeNameInList(model, type) + ":  " +
                    (role.empty() ? "not decided" : role));
  }
  if (lines.isEmpty()) lines << tr("No radio that could be one or another: no question here.");
  SetLines(ListRadios, lines);
  if (moved >= 0) ListRadios->setCurrentRow(moved);
  SetTextIfChanged(LabelTouched, RadioWords());
  const int id = guide_.Hand().Moved();
  const bool radio = id >= 0 && IsRadio(model.Gauges[static_cast<std::size_t>(id)].GaugeType);
  for (QPushButton* role : roles_) role->setEnabled(radio);
}

// What moved and what it is now; and what there is to do next.
std::string GuideForm::RadioWords() const {
  const bool done = guide_.StateOf(GuideStep::Radios) == "done";
  const std::string next = done ? "Every radio has its role." : "Press or turn something on one of these.";
  const std::string moved = guide_.Hand().Words();
  if (moved.empty()) return next;
  const int id = guide_.Hand().Moved();
  const std::string role = RadioRoleOf(guide_.Model(), id);
  return role.empty() ? moved : moved + " It is " + role + ". " + next;
}

void GuideForm::ShowFaces() {
  std::vector<std::string> names;
  for (const ReadyFace& face : guide_.Needles().Faces()) names.push_back(face.name);
  if (names == shownFaces_) return;
  shownFaces_ = names;
  ListFaces->clear();
  const int size = fontMetrics().height() * kPictureLines;
  ListFaces->setIconSize(QSize(size, size));
  ListFaces->setGridSize(QSize(size * 4 / 3, size + fontMetrics().height() * 5 / 2));
  for (const ReadyFace& face : guide_.Needles().Faces())
    ListFaces->addItem(new QListWidgetItem(QIcon(FacePicture(PointsOf(face), size)), ToText(face.name)));
}

void GuideForm::ShowNeedles() {
  NeedleSteps& needles = guide_.Needles();
  ShowFaces();
  QStringList lines;
  for (std::size_t i = 0; i < needles.Needles().size(); ++i)
    lines << ToText(needles.Needles()[i].name + ":  " + needles.StateOf(i));
  SetLines(ListNeedles, lines);
  {
    const QSignalBlocker quiet(ListNeedles);
    ListNeedles->setCurrentRow(needles.Current());
  }
  const bool tuning = needles.Tuning();
  std::string question = needles.Question();
  if (needles.Current() < 0)
    question = needles.Needles().empty() ? "No needle was found." : "Every needle has its face.";
  SetTextIfChanged(LabelQuestion, question);
  ListFaces->setVisible(!tuning);
  ListFaces->setEnabled(needles.Current() >= 0);
  Tuning->setVisible(tuning);
  if (!tuning) {
    if (cmdYes->hasFocus() || cmdAsItIs->hasFocus()) ListFaces->setFocus();
    return;
  }
  const QSignalBlocker quiet(SliderNeedle);
  SliderNeedle->setValue(needles.Position());
  Face->SetNeedle(needles.Position());
}

void GuideForm::TakeFace(const QListWidgetItem* item) {
  if (item == nullptr || guide_.Needles().Tuning()) return;
  const auto face = static_cast<std::size_t>(ListFaces->row(item));
  const std::string refused = guide_.Needles().TakeFace(face);
  if (!refused.empty()) return boxes_.Show(refused);
  if (guide_.Needles().Tuning()) Face->SetPoints(PointsOf(guide_.Needles().Faces()[face]));
  ShowAll();
  cmdYes->setFocus();
}

void GuideForm::ShowSwitches() {
  SwitchStep& step = guide_.Switches();
  SetTextIfChanged(LabelMoved, step.Words());
  const auto uses = step.Uses();
  if (uses != shownUses_) {
    shownUses_ = uses;
    ListUses->clear();
    for (const std::size_t use : uses) {
      const auto name = UsualUses()[use].name;
      ListUses->addItem(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    }
  }
  ListUses->setEnabled(step.Chosen().has_value());
  const auto now = step.UseNow();
  const auto row = now ? std::ranges::find(shownUses_, *now) : shownUses_.end();
  const QSignalBlocker quiet(ListUses);
  ListUses->setCurrentRow(row == shownUses_.end() ? -1 : static_cast<int>(row - shownUses_.begin()));
}

void GuideForm::TakeUse(const QListWidgetItem* item) {
  if (item == nullptr) return;
  const auto row = static_cast<std::size_t>(ListUses->row(item));
  if (row < shownUses_.size()) guide_.Switches().Take(shownUses_[row]);
}

void GuideForm::ShowFlight() {
  cmdFly->setText(guide_.Flight().Running() ? tr("&Stop") : tr("&Move everything"));
  ProgressFlight->setValue(guide_.Flight().Percent());
  SetTextIfChanged(LabelFlight, guide_.Flight().Words());
  SetTextIfChanged(
      LabelAfterFlight,
      guide_.Flight().Done()
          ? tr("If all has moved, press \"Save and start with it\": it flies at every start. A needle "
               "that did not move has no Plate, no power, or another address.")
          : QString());
}

void GuideForm::cmdSaveStart_Click() {
  if (!guide_.SaveAndSetAsStartup() || Unloading()) return;
  LabelSaved->setText(
      tr("Saved as %1, which is loaded and run at every start.").arg(ToText(guide_.Model().ConfigFileName)));
}

}  // namespace tvx
