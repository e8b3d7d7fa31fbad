#include "ffb/forms/YokeConfigForm.h"

#include <QScrollArea>
#include <QStandardItemModel>

#include "ui/Look.h"

namespace tvx {
namespace {

struct ModeRow {
  const char* name;
  const char* text;
  const char* toolTip;
};
constexpr ModeRow kModes[5] = {
    {"OptionCentre", QT_TR_NOOP("&Center Mode"), QT_TR_NOOP("A spring about the middle, whatever is flown")},
    {"OptionFFB", QT_TR_NOOP("&FFB Mode"), QT_TR_NOOP("The forces of the aircraft")},
    {"OptionFollowAPMode", QT_TR_NOOP("Follow &AP mode"),
     QT_TR_NOOP("The autopilot moves the yoke while it holds the controls; otherwise as FFB Mode")},
    {"OptionServoMode", QT_TR_NOOP("&Servo Mode"), QT_TR_NOOP("The yoke follows the other one")},
    {"OptionOFF", QT_TR_NOOP("&OFF mode"), QT_TR_NOOP("No forces")},
};

double Share(int raw) {
  return raw / 65535.0;
}

}  // namespace

QGridLayout* PageGrid(QWidget* page) {
  auto* grid = new QGridLayout(page);
  SpaceForm(grid);
  return grid;
}

QVBoxLayout* PageColumn(QWidget* page) {
  auto* column = new QVBoxLayout(page);
  SpaceForm(column);
  return column;
}

YokeConfigForm::YokeConfigForm(ConfigModel& model, YokePair& pair, MessageBoxes& boxes,
                               JoystickDevice& joystick, int which)
    : Form(which == 2 ? "frmConfigY2" : "frmConfigY1"),
      pair_(pair),
      presenter_(model, pair, boxes, joystick, which) {
  setWindowTitle(tr("Yoke %1").arg(which));
  auto* tabs = new QTabWidget;
  tabs->setObjectName("TabsYoke");
  tabs->setAccessibleName(tr("Pages of this yoke"));
  tabs->setUsesScrollButtons(false);
  tabs->addTab(MakeModePage(), tr("&Mode"));
  tabs->addTab(MakeCalibrationPage(), tr("Ca&libration"));
  tabs->addTab(MakeForcesPage(), tr("&Forces"));
  tabs->addTab(MakeEffectsPage(), tr("&Effects"));
  tabs->addTab(MakeButtonsPage(), tr("&Buttons"));
  tabs->addTab(MakeOptionsPage(), tr("O&ptions"));
  tabs->addTab(MakeJoystickPage(), tr("&Joystick"));
  QPushButton* close =
      MakeButton("CmdClose", tr("Clo&se"), tr("Closes this form; the changes stay (Escape)"));
  auto* row = new QHBoxLayout;
  LabelRole = MakeLabel("LabelRole", {}, "title");
  row->addWidget(LabelRole, 1);
  row->addWidget(MakeLabel("LabelSaveHint", tr("Changes take effect at once"), "caption"));
  row->addWidget(close);
  auto* column = PageColumn(this);
  column->addWidget(tabs, 1);
  column->addLayout(row);
  connect(close, &QPushButton::clicked, this, &YokeConfigForm::CloseAsked);
  LoadPages();
  timer_.setObjectName("RefreshTimer");
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) Refresh();
  });
  timer_.start(kRefreshMs);
  Refresh();
}

QWidget* YokeConfigForm::MakeModePage() {
  auto* page = new QWidget;
  auto* grid = PageGrid(page);
  auto* modes = new QVBoxLayout;
  ModeIndicator = MakeLabel("ModeIndicator");
  ModeIndicator->setFixedHeight(look::Margin() / 2);
  modes->addWidget(ModeIndicator);
  for (std::size_t i = 0; i < modes_.size(); ++i) {
    modes_[i] = new QRadioButton(tr(kModes[i].text));
    modes_[i]->setObjectName(QString::fromLatin1(kModes[i].name));
    modes_[i]->setToolTip(tr(kModes[i].toolTip));
    connect(modes_[i], &QRadioButton::clicked, this, [this, i] {
      presenter_.SetMode(static_cast<YokeMode>(i));
      Refresh();
    });
    modes->addWidget(modes_[i]);
  }
  modes->addStretch(1);
  LabelState = MakeLabel("LabelState");
  LabelState->setWordWrap(true);
  ReceivedMessage = MakeLabel("ReceivedMessage");
  LabelActivity = MakeLabel("LabelActivity");
  boxBank = new ValueBox("boxBank", tr("Roll"), "%", "-100.0");
  boxPitch = new ValueBox("boxPitch", tr("Pitch"), "%", "-100.0");
  boxRollLoad = new ValueBox("boxRollLoad", tr("Roll motor"), "%", "6553.5");
  boxPitchLoad = new ValueBox("boxPitchLoad", tr("Pitch motor"), "%", "6553.5");
  PictureMode = new YokePicture("PictureMode");
  auto* answer = new QHBoxLayout;
  answer->addWidget(MakeLabel("LabelReply", tr("Reply"), "caption"));
  answer->addWidget(ReceivedMessage, 1);
  answer->addWidget(LabelActivity);
  grid->addLayout(modes, 0, 0, 4, 1);
  grid->addWidget(PictureMode, 0, 1, 4, 1);
  grid->addWidget(boxBank, 0, 2);
  grid->addWidget(boxPitch, 0, 3);
  grid->addWidget(boxRollLoad, 1, 2);
  grid->addWidget(boxPitchLoad, 1, 3);
  grid->addLayout(answer, 2, 2, 1, 2);
  ChainMode = new ForceChain({});
  grid->addWidget(ChainMode, 4, 0, 1, 4);
  grid->addWidget(LabelState, 5, 0, 1, 4);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(3, 1);
  return page;
}

QPushButton* YokeConfigForm::MakePlaceButton(const YokePresenter::Place& place) {
  const QByteArray name = "cmdSet" + QByteArray(place.name.data(), static_cast<qsizetype>(place.name.size()));
  QPushButton* button = MakeButton(name.constData(), tr("Set"), tr("Takes the position of now"));
  connect(button, &QPushButton::clicked, this, [this, &place] {
    presenter_.SetPlace(place);
    Refresh();
  });
  return button;
}

QWidget* YokeConfigForm::MakeCalibrationPage() {
  auto* page = new QWidget;
  auto* grid = PageGrid(page);
  PictureCalibration = new YokePicture("PictureCalibration");
  QLabel* hint = MakeLabel("LabelCalibrationHint",
                           tr("Move the yoke to each place in turn and press Set. Forces stay off until both "
                              "axes are calibrated."));
  hint->setWordWrap(true);
  grid->addWidget(hint, 0, 0, 1, 4);
  int line = 1;
  for (const YokePresenter::Place& place : YokePresenter::Places()) {
    if (place.source != YokePresenter::Place::Source::Roll &&
        place.source != YokePresenter::Place::Source::Pitch) {
      continue;
    }
    QLabel* stored = MakeLabel("");
    stored->setMinimumWidth(look::Margin() * 4);
    places_.push_back({&place, stored});
    grid->addWidget(MakeLabel("", ToText(place.caption)), line, 0);
    grid->addWidget(stored, line, 1);
    grid->addWidget(MakePlaceButton(place), line++, 2);
  }
  LabelCalibrated = MakeLabel("LabelCalibrated");
  grid->addWidget(LabelCalibrated, line, 0, 1, 3);
  grid->addWidget(PictureCalibration, 1, 3, line, 1);
  grid->setColumnStretch(3, 1);
  grid->setRowStretch(line, 1);
  return page;
}

QWidget* YokeConfigForm::MakeJoystickPage() {
  auto* page = new QWidget;
  auto* grid = PageGrid(page);
  const auto combo = [&](const char* name, const QString& caption, int line, bool axes) {
    auto* box = new QComboBox;
    box->setObjectName(QString::fromLatin1(name));
    for (int i = 0; axes && i < static_cast<int>(kJoystickAxes.size()); ++i) {
      box->addItem(ToText(kJoystickAxes[static_cast<std::size_t>(i)]));
    }
    for (int i = 0; !axes && i < 16; ++i) box->addItem(tr("Joystick %1").arg(i));
    grid->addWidget(MakeLabel("", caption, "caption"), line, 0);
    grid->addWidget(box, line, 1);
    connect(box, &QComboBox::currentIndexChanged, this, [this] {
      if (loading_) return;
      presenter_.SetJoystick(ComboJoystick->currentIndex(), ComboRudderAxis->currentIndex(),
                             ComboLeftBrakeAxis->currentIndex(), ComboRightBrakeAxis->currentIndex());
      LoadJoystick();  // an axis may have been refused
      Refresh();
    });
    return box;
  };
  ComboJoystick = combo("ComboJoystick", tr("Device"), 0, false);
  ComboRudderAxis = combo("ComboRudderAxis", tr("Rudder"), 1, true);
  ComboLeftBrakeAxis = combo("ComboLeftBrakeAxis", tr("Left brake"), 2, true);
  ComboRightBrakeAxis = combo("ComboRightBrakeAxis", tr("Right brake"), 3, true);
  LabelJoystick = MakeLabel("LabelJoystick");
  LabelJoystick->setWordWrap(true);
  LabelJoystick->setMinimumWidth(look::Margin() * 16);
  grid->addWidget(LabelJoystick, 0, 2, 1, 3);
  static constexpr const char* kBars[] = {"BarRudder", "BarLeftBrake", "BarRightBrake"};
  for (int i = 0; i < 3; ++i) {
    QProgressBar*& bar = pedals_[static_cast<std::size_t>(i)];
    bar = new QProgressBar;
    bar->setObjectName(QString::fromLatin1(kBars[i]));
    bar->setRange(i == 0 ? -100 : 0, 100);
    bar->setFormat("%v %");
    grid->addWidget(bar, i + 1, 2, 1, 3);
  }
  int line = 4;
  for (const YokePresenter::Place& place : YokePresenter::Places()) {
    if (place.source == YokePresenter::Place::Source::Roll ||
        place.source == YokePresenter::Place::Source::Pitch) {
      continue;
    }
    QLabel* stored = MakeLabel("");
    places_.push_back({&place, stored});
    grid->addWidget(MakeLabel("", ToText(place.caption)), line, 0);
    grid->addWidget(stored, line, 1);
    grid->addWidget(MakePlaceButton(place), line++, 2);
  }
  QPushButton* check =
      MakeButton("cmdCheckJoystick", tr("Chec&k"), tr("Says what is wrong with these settings"));
  connect(check, &QPushButton::clicked, this, [this] {
    if (presenter_.CheckJoystickSettings()) LabelJoystick->setText(tr("The settings are complete"));
  });
  grid->addWidget(check, line, 2);
  cmdUseJoystick =
      MakeButton("cmdUseJoystick", tr("&Use this device"),
                 tr("Takes the device that has this number now in place of the one set up before"));
  connect(cmdUseJoystick, &QPushButton::clicked, this, [this] {
    presenter_.ChooseJoystick();
    Refresh();
  });
  grid->addWidget(cmdUseJoystick, line, 3);
  grid->setColumnStretch(4, 1);
  grid->setRowStretch(line + 1, 1);
  return page;
}

void YokeConfigForm::ConfigurationReplaced() {
  LoadPages();
  Refresh();
}

void YokeConfigForm::Refresh() {
  const int which = presenter_.Which();
  const Yoke& yoke = presenter_.TheYoke();
  SetTextIfChanged(LabelRole, pair_.RoleText(which));
  SetTextIfChanged(LabelState, pair_.StateText(which));
  SetTextIfChanged(ReceivedMessage, yoke.Line().ReceivedMessage());
  SetTextIfChanged(LabelActivity, yoke.Line().Activity());
  boxBank->SetValue(yoke.Line().BankText().View());
  boxPitch->SetValue(yoke.Line().PitchText().View());
  boxRollLoad->SetValue(yoke.Line().RollLoadText().View());
  boxPitchLoad->SetValue(yoke.Line().PitchLoadText().View());
  QRadioButton* mode = modes_[static_cast<std::size_t>(yoke.Mode())];
  if (!mode->isChecked()) mode->setChecked(true);
  if (colour_ != yoke.ModeColour()) {
    colour_ = yoke.ModeColour();
    ModeIndicator->setStyleSheet("background: " + look::FromCode(colour_).name());
  }
  const ForceCommand& command = yoke.Commanded();
  const auto position = yoke.Position();
  ChainMode->Refresh(pair_, which);
  PictureMode->SetPosition({position[0] / kYokeTravel, position[1] / kYokeTravel},
                           {command.axes[0].centre / kYokeTravel, command.axes[1].centre / kYokeTravel},
                           yoke.Usable());
  const bool told = boxGripThreshold->value() == 0 || pair_.GripFrom(which);
  const QString grip = told ? QString() : tr(", off: servo too weak");
  if (boxGripThreshold->suffix() != grip) boxGripThreshold->setSuffix(grip);
  RefreshCalibration();
  if (ComboJoystick->isVisible()) RefreshJoystick();
  if (ForceCurvePicture->isVisible()) ForceCurvePicture->SetAirspeed(pair_.Ports().Variables.Airspeed);
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    SetTextIfChanged(buttons_[i].lamp,
                     (yoke.Held() >> i & 1) != 0 ? QString(QChar(0x25CF)) : QString(QChar(0x25CB)));
  }
}

void YokeConfigForm::RefreshCalibration() {
  const YokeRecord& record = presenter_.Record();
  const Yoke& yoke = presenter_.TheYoke();
  for (const PlaceLine& line : places_) {
    SetTextIfChanged(line.stored, QString::number(RawOf(record.*line.place->field)));
  }
  SetTextIfChanged(LabelCalibrated, yoke.Settings().calibrated
                                        ? tr("Calibrated")
                                        : tr("Not calibrated: no forces, nothing is flown"));
  PictureCalibration->SetPosition({yoke.Position()[0] / kYokeTravel, yoke.Position()[1] / kYokeTravel},
                                  {0, 0}, yoke.Usable());
  PictureCalibration->SetRaw({Share(yoke.Line().LastReply().rawRoll), Share(RawOf(record.RollLeft)),
                              Share(RawOf(record.RollCentre)), Share(RawOf(record.RollRight))},
                             {Share(yoke.Line().LastReply().rawPitch), Share(RawOf(record.PitchForward)),
                              Share(RawOf(record.PitchCentre)), Share(RawOf(record.PitchBack))});
}

// The devices with their names; and of the chosen one's axes those that it has.
void YokeConfigForm::ShowJoysticks() {
  for (int number = 0; number < ComboJoystick->count(); ++number) {
    const JoystickInfo* device = presenter_.JoystickAt(number);
    const QString text = device != nullptr ? tr("Joystick %1: %2").arg(number).arg(ToText(device->name))
                                           : tr("Joystick %1").arg(number);
    if (ComboJoystick->itemText(number) != text) ComboJoystick->setItemText(number, text);
  }
  const JoystickInfo* device = presenter_.JoystickAt(presenter_.Record().JoystickNumber);
  for (QComboBox* combo : {ComboRudderAxis, ComboLeftBrakeAxis, ComboRightBrakeAxis}) {
    auto* model = qobject_cast<QStandardItemModel*>(combo->model());
    for (int place = 1; model != nullptr && place < combo->count(); ++place) {
      const bool has = device == nullptr || HasAxis(*device, place);
      if (model->item(place)->isEnabled() != has) model->item(place)->setEnabled(has);
    }
  }
}

void YokeConfigForm::LoadJoystick() {
  loading_ = true;
  const YokeRecord& record = presenter_.Record();
  ComboJoystick->setCurrentIndex(record.JoystickNumber);
  ComboRudderAxis->setCurrentIndex(record.RudderAxis);
  ComboLeftBrakeAxis->setCurrentIndex(record.LeftBrakeAxis);
  ComboRightBrakeAxis->setCurrentIndex(record.RightBrakeAxis);
  loading_ = false;
}

void YokeConfigForm::RefreshJoystick() {
  const YokeRecord& record = presenter_.Record();
  const bool there = presenter_.JoystickThere();
  SetTextIfChanged(LabelJoystick, ToText(presenter_.JoystickText()));
  cmdUseJoystick->setEnabled(presenter_.JoystickIsAnother());
  ShowJoysticks();
  using Source = YokePresenter::Place::Source;
  const float ratios[] = {
      RudderRatio(presenter_.RawNow(Source::Rudder), record),
      BrakeRatio(presenter_.RawNow(Source::LeftBrake), RawOf(record.LeftBrakeReleased),
                 RawOf(record.LeftBrakePressed)),
      BrakeRatio(presenter_.RawNow(Source::RightBrake), RawOf(record.RightBrakeReleased),
                 RawOf(record.RightBrakePressed)),
  };
  const int axes[] = {record.RudderAxis, record.LeftBrakeAxis, record.RightBrakeAxis};
  for (std::size_t i = 0; i < pedals_.size(); ++i) {
    const bool read = there && axes[i] != 0;
    pedals_[i]->setEnabled(read);
    read ? pedals_[i]->setValue(static_cast<int>(100 * ratios[i])) : pedals_[i]->reset();
  }
}

}  // namespace tvx
