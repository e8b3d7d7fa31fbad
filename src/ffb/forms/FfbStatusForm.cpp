#include "ffb/forms/FfbStatusForm.h"

#include "base/NumberFormat.h"
#include "ui/Look.h"

namespace tvx {

FfbStatusForm::FfbStatusForm(YokePair& pair, std::function<void(int)> configure)
    : Form("frmStatusFFB"), pair_(pair), configure_(std::move(configure)) {
  setWindowTitle(tr("Force-feedback yokes"));
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  auto* sides = new QHBoxLayout;
  for (const int which : {1, 2}) sides->addWidget(MakeSide(which), 1);
  column->addLayout(sides, 1);
  BoxAirspeed = new ValueBox("BoxAirspeed", tr("Airspeed"), tr("kt"), "000.0");
  LabelGround = MakeLabel("LabelGround", {}, "title");
  LabelSimulator = MakeLabel("LabelSimulator");
  LabelJoystick = MakeLabel("LabelJoystick", {}, "caption");
  LabelJoystick->setWordWrap(true);
  cmdRun = MakeButton("cmdRun", tr("&Run"), tr("Starts the forces; they rise slowly"));
  cmdStop = MakeButton("cmdStop", tr("&Stop"),
                       tr("Lets the forces fade and gives the simulator its controls back"));
  QPushButton* close = MakeButton("CmdClose", tr("&Hide"), tr("Hides this form; the yokes go on (Escape)"));
  auto* words = new QVBoxLayout;
  words->addWidget(LabelGround);
  words->addWidget(LabelSimulator);
  words->addWidget(LabelJoystick);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(BoxAirspeed);
  row->addLayout(words, 1);
  for (QPushButton* button : {cmdRun, cmdStop, close}) row->addWidget(button);
  column->addLayout(row);
  connect(cmdRun, &QPushButton::clicked, this, [this] { pair_.cmdRun_Click(), Refresh(); });
  connect(cmdStop, &QPushButton::clicked, this, [this] { pair_.cmdStop_Click(), Refresh(); });
  connect(close, &QPushButton::clicked, this, &QWidget::hide);
  timer_.setObjectName("RefreshTimer");
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) Refresh();
  });
  timer_.start(kRefreshMs);
  Refresh();
}

QWidget* FfbStatusForm::MakeSide(int which) {
  Side& side = sides_[static_cast<std::size_t>(which - 1)];
  const auto name = [which](const char* stem) { return QByteArray(stem) + QByteArray::number(which); };
  side.panel = MakePanel(name("PanelYoke"));
  auto* column = new QVBoxLayout(side.panel);
  SpacePanel(column);
  auto* grid = new QGridLayout;
  grid->setSpacing(look::Gap());
  side.lamp = new StateLamp(name("LampYoke"));
  side.role = MakeLabel(name("LabelRole"), {}, "title");
  side.state = MakeLabel(name("LabelState"));
  side.state->setWordWrap(true);
  side.state->setMinimumHeight(2 * side.state->fontMetrics().lineSpacing());
  side.received = MakeLabel(name("ReceivedMessage"));
  side.activity = MakeLabel(name("LabelActivity"));
  side.bank = new ValueBox(name("boxBank"), tr("Roll"), "%", "-100.0");
  side.pitch = new ValueBox(name("boxPitch"), tr("Pitch"), "%", "-100.0");
  side.picture = new YokePicture(name("PictureYoke"));
  side.chain = new ForceChain(QByteArray::number(which));
  side.master = MakeButton(name("cmdMaster"), tr("Master &%1").arg(which),
                           tr("Makes this yoke the master, without a jump"));
  side.off = MakeButton(name("cmdOff"), tr("Forces off"), tr("OFF mode for this yoke"));
  QPushButton* configure =
      MakeButton(name("cmdConfigY"), tr("Configure..."), tr("Mode, calibration, forces, buttons, joystick"));
  auto* title = new QHBoxLayout;
  title->addWidget(side.lamp);
  title->addWidget(MakeLabel(name("LabelYoke"), tr("Yoke %1").arg(which), "caption"));
  title->addWidget(side.role, 1);
  auto* reply = new QHBoxLayout;
  reply->addWidget(side.received, 1);
  reply->addWidget(side.activity);
  auto* buttons = new QHBoxLayout;
  for (QPushButton* button : {side.master, side.off, configure}) buttons->addWidget(button);
  QPushButton* follow = MakeFollowButton([which] { return Subject{Subject::Kind::YokeAxis, which}; });
  follow->setObjectName(name("cmdFollow"));
  buttons->addWidget(follow);
  grid->addWidget(side.picture, 0, 0, 4, 1);
  grid->addWidget(side.bank, 0, 1);
  grid->addWidget(side.pitch, 1, 1);
  grid->addLayout(reply, 2, 1);
  grid->setColumnStretch(0, 1);
  grid->setRowStretch(3, 1);
  column->addLayout(title);
  column->addLayout(grid, 1);
  column->addWidget(side.chain);
  column->addWidget(side.state);
  column->addLayout(buttons);
  connect(side.master, &QPushButton::clicked, this, [this, which] { pair_.HandOver(which), Refresh(); });
  connect(side.off, &QPushButton::clicked, this,
          [this, which] { pair_.SelectMode(which, YokeMode::Off), Refresh(); });
  connect(configure, &QPushButton::clicked, this, [this, which] { configure_(which); });
  return side.panel;
}

void FfbStatusForm::Refresh() {
  for (const int which : {1, 2}) RefreshSide(which);
  BoxAirspeed->SetValue(FormatNumber(pair_.Ports().Variables.Airspeed, "##0.0").View());
  SetTextIfChanged(LabelGround, pair_.GroundText());
  SetTextIfChanged(LabelSimulator, pair_.Controls().YokeTaken() ? tr("The yokes fly the simulator")
                                                                : tr("The simulator has its own controls"));
  SetTextIfChanged(LabelJoystick, ToText(pair_.PedalText()));
  cmdRun->setEnabled(!pair_.Running());
  cmdStop->setEnabled(pair_.Running());
}

void FfbStatusForm::RefreshSide(int which) {
  Side& side = sides_[static_cast<std::size_t>(which - 1)];
  const Yoke& yoke = pair_.Of(which);
  side.panel->setEnabled(pair_.Configured(which));
  SetTextIfChanged(side.role, pair_.RoleText(which));
  SetTextIfChanged(side.state, pair_.StateText(which));
  SetTextIfChanged(side.received, yoke.Line().ReceivedMessage());
  SetTextIfChanged(side.activity, yoke.Line().Activity());
  side.bank->SetValue(yoke.Line().BankText().View());
  side.pitch->SetValue(yoke.Line().PitchText().View());
  const SafetyCause cause = yoke.Cause();
  const bool quiet = !pair_.Configured(which) || cause == SafetyCause::Off || cause == SafetyCause::Halted;
  side.lamp->SetState(quiet                        ? StateLamp::State::Off
                      : cause == SafetyCause::None ? StateLamp::State::Good
                                                   : StateLamp::State::Trouble);
  const ForceCommand& command = yoke.Commanded();
  side.picture->SetPosition({yoke.Position()[0] / kYokeTravel, yoke.Position()[1] / kYokeTravel},
                            {command.axes[0].centre / kYokeTravel, command.axes[1].centre / kYokeTravel},
                            yoke.Usable());
  side.chain->Refresh(pair_, which);
  side.master->setEnabled(pair_.IsSlave(which) && (!pair_.Running() || yoke.Usable()));
}

}  // namespace tvx
