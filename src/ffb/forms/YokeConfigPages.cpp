// The pages of a yoke's form that only set things: forces, buttons, options.
#include <QScrollArea>
#include <QSignalBlocker>

#include "ffb/forms/YokeConfigForm.h"
#include "ui/Look.h"
#include "ui/NumberBox.h"

namespace tvx {
namespace {

struct LevelRow {
  const char* name;
  const char* caption;
  Byte GeneralFFBRecord::*field;
};
constexpr LevelRow kLevels[] = {
    {"boxMaximumForce", QT_TR_NOOP("Greatest force"), &GeneralFFBRecord::MaximumForce},
    {"boxFriction", QT_TR_NOOP("Friction"), &GeneralFFBRecord::Friction},
    {"boxDamping", QT_TR_NOOP("Damping"), &GeneralFFBRecord::Damping},
    {"boxGroundForce", QT_TR_NOOP("Least force on the ground"), &GeneralFFBRecord::GroundForce},
    {"boxRollTrimRange", QT_TR_NOOP("Full aileron trim moves the yoke"), &GeneralFFBRecord::RollTrimRange},
    {"boxPitchTrimRange", QT_TR_NOOP("Full elevator trim moves the yoke"), &GeneralFFBRecord::PitchTrimRange},
};

constexpr const char* kActions[kButtonActions] = {
    QT_TR_NOOP("-none-"),     QT_TR_NOOP("Take control"), QT_TR_NOOP("Autopilot off"),
    QT_TR_NOOP("Forces off"), QT_TR_NOOP("Trim nose up"), QT_TR_NOOP("Trim nose down"),
    QT_TR_NOOP("Trim left"),  QT_TR_NOOP("Trim right"),   QT_TR_NOOP("Simulator command"),
};

struct OptionRow {
  int bit;
  const char* name;
  const char* text;
};
constexpr OptionRow kOptions[] = {
    {yokeoption::kSendPositions, "CheckSendPositions", QT_TR_NOOP("This yoke flies the simulator")},
    {yokeoption::kTrimMovesCentre, "CheckTrimMovesCentre", QT_TR_NOOP("The yoke stands where it is trimmed")},
    {yokeoption::kEffects, "CheckEffects",
     QT_TR_NOOP("Stall buffet, vibration, turbulence, wheel shock, runway rumble")},
    {yokeoption::kHandoverByGrip, "CheckHandoverByGrip", QT_TR_NOOP("Gripping this yoke takes control")},
    {yokeoption::kJoystick, "CheckJoystick", QT_TR_NOOP("Rudder and brakes come from the joystick")},
};

constexpr const char* kStartModes[] = {QT_TR_NOOP("Center Mode"), QT_TR_NOOP("FFB Mode"),
                                       QT_TR_NOOP("Follow AP mode"), QT_TR_NOOP("Servo Mode"),
                                       QT_TR_NOOP("OFF mode")};

QSpinBox* MakeSpin(const char* name, int low, int high, const QString& suffix) {
  auto* box = new NumberSpin;
  box->setObjectName(QString::fromLatin1(name));
  box->setRange(low, high);
  box->setSuffix(suffix);
  return box;
}

}  // namespace

QWidget* YokeConfigForm::MakeForcesPage() {
  auto* page = new QWidget;
  auto* column = PageColumn(page);
  QLabel* hint =
      MakeLabel("LabelCurve", tr("Centring force at full deflection over airspeed, for both yokes. Drag "
                                 "a point, or choose one with Page Up and Down and move it with the "
                                 "cursor keys."));
  hint->setWordWrap(true);
  column->addWidget(hint);
  auto* row = new QHBoxLayout;
  OptionCurveRoll = new QRadioButton(tr("&Roll"));
  OptionCurveRoll->setObjectName("OptionCurveRoll");
  OptionCurvePitch = new QRadioButton(tr("P&itch"));
  OptionCurvePitch->setObjectName("OptionCurvePitch");
  OptionCurveRoll->setChecked(true);
  QPushButton* standard = MakeButton("cmdStandardForces", tr("&Standard values"),
                                     tr("Puts all forces of both yokes back to standard"));
  row->addWidget(OptionCurveRoll);
  row->addWidget(OptionCurvePitch);
  row->addStretch(1);
  row->addWidget(standard);
  column->addLayout(row);
  ForceCurvePicture = new ForceCurveWidget("ForceCurvePicture");
  column->addWidget(ForceCurvePicture, 1);
  column->addWidget(MakeLevels());
  connect(OptionCurveRoll, &QRadioButton::toggled, this, [this] { ShowCurve(); });
  connect(standard, &QPushButton::clicked, this, [this] {
    presenter_.SetStandardForces();
    LoadPages();
  });
  ForceCurvePicture->SetMoved([this](std::size_t point, double airspeed, double force) {
    presenter_.SetForcePoint(OptionCurvePitch->isChecked() ? Axis::Pitch : Axis::Roll, point, airspeed,
                             force);
  });
  return page;
}

QWidget* YokeConfigForm::MakeLevels() {
  auto* area = new QWidget;
  auto* grid = new QGridLayout(area);
  grid->setContentsMargins(0, 0, 0, 0);
  int place = 0;
  const auto add = [&](const QString& caption, QSpinBox* box) {
    grid->addWidget(MakeLabel("", caption, "caption"), place / 2, place % 2 * 2);
    grid->addWidget(box, place / 2, place % 2 * 2 + 1);
    ++place;
  };
  for (const LevelRow& row : kLevels) {
    QSpinBox* box = MakeSpin(row.name, 0, 100, " %");
    levels_.push_back({box, row.field});
    add(tr(row.caption), box);
    connect(box, &QSpinBox::valueChanged, this, [this, field = row.field](int value) {
      if (!loading_) presenter_.SetLevel(field, value);
    });
  }
  boxGripThreshold = MakeSpin("boxGripThreshold", 0, kYokeTravel, {});
  boxGripThreshold->setToolTip(tr("How far a hand must push the following yoke off its place; 0: never"));
  add(tr("Grip takes over at"), boxGripThreshold);
  connect(boxGripThreshold, &QSpinBox::valueChanged, this, [this](int value) {
    if (!loading_) presenter_.SetGripThreshold(value);
  });
  boxForceLevel = MakeSpin("boxForceLevel", 1, 100, " %");
  add(tr("Share that this yoke gives"), boxForceLevel);
  connect(boxForceLevel, &QSpinBox::valueChanged, this, [this](int value) {
    if (!loading_) presenter_.SetForceLevel(value);
  });
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(2, 1);
  return area;
}

QWidget* YokeConfigForm::MakeButtonsPage() {
  auto* inner = new QWidget;
  auto* grid = PageGrid(inner);
  for (std::size_t i = 0; i < presenter_.Record().Buttons.size(); ++i) {
    ButtonLine line{};
    line.lamp = MakeLabel("");
    line.action = new QComboBox;
    line.action->setObjectName(QString("ComboButton%1").arg(i + 1));
    for (const char* action : kActions) line.action->addItem(tr(action));
    line.text = new QLineEdit;
    line.text->setObjectName(QString("BoxButton%1").arg(i + 1));
    line.text->setPlaceholderText("sim/...");
    const auto changed = [this, i] {
      if (loading_) return;
      const ButtonLine& now = buttons_[i];
      const auto action = static_cast<ButtonAction>(now.action->currentIndex());
      presenter_.SetButton(i, action, now.text->text().toStdString());
      now.text->setEnabled(action == ButtonAction::Command);
    };
    connect(line.action, &QComboBox::currentIndexChanged, this, changed);
    connect(line.text, &QLineEdit::editingFinished, this, changed);
    const int at = static_cast<int>(i);
    grid->addWidget(line.lamp, at, 0);
    grid->addWidget(MakeLabel("", tr("Button %1").arg(i + 1)), at, 1);
    grid->addWidget(line.action, at, 2);
    grid->addWidget(line.text, at, 3);
    buttons_.push_back(line);
  }
  grid->setColumnStretch(3, 1);
  auto* scroll = new QScrollArea;
  scroll->setWidget(inner);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  return scroll;
}

QWidget* YokeConfigForm::MakeOptionsPage() {
  auto* page = new QWidget;
  auto* grid = PageGrid(page);
  int line = 0;
  for (const OptionRow& row : kOptions) {
    auto* check = new QCheckBox(tr(row.text));
    check->setObjectName(QString::fromLatin1(row.name));
    options_.emplace_back(row.bit, check);
    grid->addWidget(check, line++, 0, 1, 3);
    connect(check, &QCheckBox::toggled, this, [this, bit = row.bit](bool on) {
      if (!loading_) presenter_.SetOption(bit, on);
    });
  }
  ComboStartMode = new QComboBox;
  ComboStartMode->setObjectName("ComboStartMode");
  for (const char* mode : kStartModes) ComboStartMode->addItem(tr(mode));
  grid->addWidget(MakeLabel("", tr("Mode after the start"), "caption"), line, 0);
  grid->addWidget(ComboStartMode, line++, 1);
  connect(ComboStartMode, &QComboBox::currentIndexChanged, this, [this](int mode) {
    if (!loading_) presenter_.SetStartMode(static_cast<YokeMode>(mode));
  });
  boxAddress = MakeSpin("boxAddress", 0, 255, {});
  boxAddress->setToolTip(tr("The yoke's address in its frames; 0 takes answers from any"));
  grid->addWidget(MakeLabel("", tr("Address"), "caption"), line, 0);
  grid->addWidget(boxAddress, line++, 1);
  connect(boxAddress, &QSpinBox::valueChanged, this, [this](int address) {
    if (!loading_) presenter_.SetAddress(address);
  });
  grid->setColumnStretch(2, 1);
  grid->setRowStretch(line, 1);
  return page;
}

void YokeConfigForm::LoadPages() {
  loading_ = true;
  const YokeRecord& record = presenter_.Record();
  const GeneralFFBRecord general = presenter_.General();
  for (const Level& level : levels_) level.box->setValue(general.*level.field);
  boxGripThreshold->setValue(general.GripThreshold);
  boxForceLevel->setValue(record.ForceLevel == 0 ? 100 : record.ForceLevel);
  boxAddress->setValue(record.Address);
  ComboStartMode->setCurrentIndex(static_cast<int>(ReadYokeSettings(record).startMode));
  LoadEffects();
  for (const auto& [bit, check] : options_) check->setChecked((record.OptionBits & bit) != 0);
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const YokeRecord::Button& button = record.Buttons[i];
    buttons_[i].action->setCurrentIndex(button.Action < kButtonActions ? button.Action : 0);
    buttons_[i].text->setText(ToText(button.Text));
    buttons_[i].text->setEnabled(button.Action == static_cast<Byte>(ButtonAction::Command));
  }
  LoadJoystick();
  loading_ = false;
  ShowCurve();
}

void YokeConfigForm::ShowCurve() {
  const GeneralFFBRecord general = presenter_.General();
  const bool pitch = OptionCurvePitch->isChecked();
  ForceCurveWidget::Points points;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto& row = general.ForceTable[i];
    points[i] = pitch ? QPointF(row.PitchAirspeed, row.PitchForce) : QPointF(row.RollAirspeed, row.RollForce);
  }
  ForceCurvePicture->SetPoints(points);
}

}  // namespace tvx
