#include "core/forms/StatusForm.h"

#include <QScreen>
#include <QShowEvent>
#include <QSignalBlocker>
#include <algorithm>

#include "ui/Look.h"

namespace tvx {

StatusForm::StatusForm(StatusPresenter& presenter, std::function<void()> showPorts,
                       std::function<void()> showCockpit, std::function<void()> showMessages)
    : Form("frmStatus"),
      presenter_(presenter),
      showPorts_(std::move(showPorts)),
      showCockpit_(std::move(showCockpit)),
      showMessages_(std::move(showMessages)) {
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(MakeRunPanel());
  column->addWidget(MakeLinksPanel());
  LabelNotice = MakeLabel("LabelNotice");
  LabelNotice->setWordWrap(true);
  LabelNotice->setTextInteractionFlags(Qt::TextSelectableByMouse);  // it may hold a command to be copied
  column->addWidget(LabelNotice);
  column->addLayout(MakeFlightValues(), 1);
  panelBusHealth_ = new BusHealthPanel;
  panelBusHealth_->hide();
  column->addWidget(panelBusHealth_, 1);
  column->addWidget(MakeTransferPanel());
  column->addLayout(MakeButtons());
  Connect();
  flightValuesTimer_.setObjectName("FlightValuesTimer");
  flightValuesTimer_.start(kFlightValuesMs);
  resize(look::Margin() * 54, sizeHint().height());
  built_ = true;
  cmdRun->setFocus();
  ShowView();
  ShowFlightValues();
}

QWidget* StatusForm::MakeRunPanel() {
  QFrame* panel = MakePanel("PanelRun");
  auto* row = new QHBoxLayout(panel);
  SpacePanel(row);
  row->setSpacing(look::Margin());
  BoxRun = MakeLabel("BoxRun", {}, "title");
  BoxRun->setMinimumWidth(look::Margin() * 8);
  cmdRun = MakeButton("cmdRun", tr("&Run"), tr("Starts carrying the simulator's values to the instruments"));
  look::SetRole(cmdRun, "primary");
  cmdStop = MakeButton("cmdStop", tr("&Stop"), tr("Halts; the instruments stay as they are"));
  BoxCurrentConfig = MakeLabel("BoxCurrentConfig");
  BoxCurrentConfig->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  LabelVersion = MakeLabel("LabelVersion", {}, "caption");
  auto* config = new QVBoxLayout;
  config->setSpacing(0);
  config->addWidget(MakeLabel("LabelCurrentConfig", tr("Configuration"), "caption"));
  config->addWidget(BoxCurrentConfig);
  LabelAircraft = MakeLabel("LabelAircraft", {}, "caption");
  LabelAircraft->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  LabelAircraft->hide();
  config->addWidget(LabelAircraft);
  row->addWidget(BoxRun);
  row->addWidget(cmdRun);
  row->addWidget(cmdStop);
  row->addLayout(config, 1);
  auto* corner = new QVBoxLayout;
  corner->setSpacing(0);
  corner->addWidget(LabelVersion, 0, Qt::AlignRight);
  corner->addWidget(MakeThemeButton(), 0, Qt::AlignRight);
  row->addLayout(corner);
  return panel;
}

QWidget* StatusForm::MakeLinksPanel() {
  QFrame* panel = MakePanel("PanelLinks");
  auto* grid = new QGridLayout(panel);
  SpacePanel(grid);
  LampSimulator = new StateLamp("LampSimulator");
  LampGaugeBus = new StateLamp("LampGaugeBus");
  LabelSimulator = MakeLabel("LabelSimulator");
  LabelGaugeBus = MakeLabel("LabelGaugeBus");
  int line = 0;
  for (const auto& [lamp, caption, label] :
       {std::tuple{LampSimulator, MakeLabel("LabelSimulatorCaption", tr("Simulator"), "caption"),
                   LabelSimulator},
        std::tuple{LampGaugeBus, MakeLabel("LabelGaugeBusCaption", tr("Gauge bus"), "caption"),
                   LabelGaugeBus}}) {
    label->setWordWrap(true);
    // Room for two lines, so that the form keeps its shape when trouble needs more words.
    label->setMinimumHeight(2 * label->fontMetrics().lineSpacing());
    grid->addWidget(lamp, line, 0);
    grid->addWidget(caption, line, 1);
    grid->addWidget(label, line++, 2);
  }
  cmdMessages = MakeButton("cmdMessages", tr("&Messages"),
                           tr("Lists the last 1000 messages and states of the links, with their times"));
  grid->addWidget(cmdMessages, 0, 3, Qt::AlignTop);
  grid->addLayout(MakeFindings(), line, 1, 1, 3);
  grid->setColumnStretch(2, 1);
  return panel;
}

// What the user may have to do something about; it takes no room where there is none.
QLayout* StatusForm::MakeFindings() {
  LabelFlow = MakeLabel("LabelFlow", {}, "caption");
  LabelFindings = MakeLabel("LabelFindings");
  LabelFindings->setWordWrap(true);
  LabelFindings->setTextInteractionFlags(Qt::TextSelectableByMouse);
  LabelIgnored = MakeLabel("LabelIgnored");
  cmdDataOutput = MakeButton("cmdDataOutput", tr("&Ask X-Plane to send them here"),
                             tr("Sets this computer and port as the target of X-Plane's data output"));
  cmdTakeAddress = MakeButton(
      "cmdTakeAddress", tr("&Take this address"),
      tr("X-Plane runs on that computer: its address goes into the configuration, and it is listened to"));
  auto* column = new QVBoxLayout;
  column->setSpacing(look::Gap() / 2);
  column->addWidget(LabelFlow);
  for (const auto& [label, button] :
       {std::pair{LabelFindings, cmdDataOutput}, std::pair{LabelIgnored, cmdTakeAddress}}) {
    auto* row = new QHBoxLayout;
    row->addWidget(label, 1);
    row->addWidget(button, 0, Qt::AlignTop);
    column->addLayout(row);
  }
  return column;
}

QLayout* StatusForm::MakeFlightValues() {
  BoxIAS = new ValueBox("BoxIAS", tr("Airspeed"), tr("kt"), "000.00");
  BoxAltitude = new ValueBox("BoxAltitude", tr("Altitude"), tr("ft"), "00000");
  BoxHea = new ValueBox("BoxHea", tr("Heading"), "°", "000.00");
  BoxVS = new ValueBox("BoxVS", tr("Vertical speed"), tr("ft/min"), "-00000.0");
  boxBank = new ValueBox("boxBank", tr("Bank"), "°", "-000.0");
  boxPitch = new ValueBox("boxPitch", tr("Pitch"), "°", "-000.00");
  boxCompass = new ValueBox("boxCompass", tr("Compass"), "°", "000.00");
  boxVoltage = new ValueBox("boxVoltage", tr("Bus voltage"), tr("V"), "00.0");
  BoxAirPressHg = new ValueBox("BoxAirPressHg", tr("Air pressure"), tr("inHg"), "00.00");
  BoxAirPressmBar = new ValueBox("BoxAirPressmBar", tr("Air pressure"), tr("mbar"), "0000");
  BoxInstrLights = new ValueBox("BoxInstrLights", tr("Instrument lights"), {}, "OFF");
  boxNavLights = new ValueBox("boxNavLights", tr("Navigation lights"), {}, "OFF");
  auto* grid = new QGridLayout;
  grid->setSpacing(look::Gap());
  int place = 0;
  for (ValueBox* box : {BoxIAS, BoxAltitude, BoxHea, BoxVS, boxBank, boxPitch, boxCompass, boxVoltage,
                        BoxAirPressHg, BoxAirPressmBar, BoxInstrLights, boxNavLights}) {
    grid->addWidget(box, place / 4, place % 4);
    grid->setColumnStretch(place % 4, 1);
    grid->setRowStretch(place / 4, 1);
    ++place;
  }
  return grid;
}

QWidget* StatusForm::MakeTransferPanel() {
  QFrame* panel = MakePanel("PanelTransfer");
  auto* row = new QHBoxLayout(panel);
  SpacePanel(row);
  QLabel* caption = MakeLabel("LabelXferTimer", tr("&Transfer interval, milliseconds"), "caption");
  SliderXferTimer = new QSlider(Qt::Horizontal);
  SliderXferTimer->setObjectName("SliderXferTimer");
  SliderXferTimer->setRange(10, 1000);
  SliderXferTimer->setSingleStep(10);
  SliderXferTimer->setPageStep(50);
  SliderXferTimer->setMinimumWidth(look::Margin() * 9);
  caption->setBuddy(SliderXferTimer);
  BoxXferProcessTimer = MakeLabel("BoxXferProcessTimer", {}, "value");
  BoxXferProcessTimer->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  BoxXferProcessTimer->setText("32767");  // the widest text it will have
  BoxXferProcessTimer->ensurePolished();
  BoxXferProcessTimer->setMinimumWidth(BoxXferProcessTimer->sizeHint().width());
  BoxXferProcessTimer->clear();
  auto* column = new QVBoxLayout;
  auto* line = new QHBoxLayout;
  line->addWidget(SliderXferTimer, 1);
  line->addWidget(BoxXferProcessTimer);
  column->addWidget(caption);
  column->addLayout(line);
  LabelIntervalFixed = MakeLabel("LabelIntervalFixed", {}, "caption");
  LabelIntervalFixed->setWordWrap(true);
  column->addWidget(LabelIntervalFixed);
  frmXferCount = new ValueBox("frmXferCount", tr("Transfers"), tr("per second"), "0000");
  boxUDPrate = new ValueBox("boxUDPrate", tr("X-Plane packets"), tr("per second"), "00000");
  boxUDPrate->Caption()->setObjectName("Label3");
  boxUDPrate->Unit()->setObjectName("Label4");
  boxNrofOffsets = new ValueBox("boxNrofOffsets", tr("Simulator ports"), tr("in use"), "00000");
  row->addLayout(column, 1);
  for (ValueBox* box : {frmXferCount, boxUDPrate, boxNrofOffsets}) row->addWidget(box);
  return panel;
}

QLayout* StatusForm::MakeButtons() {
  cmdCockpit = MakeButton("cmdCockpit", tr("Coc&kpit"),
                          tr("Lists every gauge, input and lamp with its value, what is in trouble first"));
  cmdShowPorts = MakeButton("cmdShowPorts", tr("Show &ports"), tr("Lists the simulator values in use"));
  cmdShowIOM = MakeButton("cmdShowIOM", tr("IO module &1"), tr("Shows the state of IO module 1"));
  cmdShowIOM2 = MakeButton("cmdShowIOM2", tr("IO module &2"), tr("Shows the state of IO module 2"));
  cmdShowECStatus = MakeButton("cmdShowECStatus", tr("&Engine cluster"), tr("Shows the engine cluster"));
  cmdShowYokes = MakeButton("cmdShowYokes", tr("&Yokes"), tr("Shows the yokes"));
  cmdShowBus = MakeButton("cmdShowBus", tr("&Gauge bus"),
                          tr("Shows here how each instrument answers, and what the line carries"));
  cmdShowBus->setCheckable(true);
  cmdDumpTVX = MakeButton("cmdDumpTVX", tr("&Dump"), tr("Writes a diagnostic dump"));
  CmdConfig = MakeButton("CmdConfig", tr("&Configure..."), tr("Halts and opens the configuration"));
  cmdHide = MakeButton("cmdHide", tr("&Hide"), tr("Minimizes this window; the program goes on"));
  CmdExit = MakeButton("CmdExit", tr("E&xit"), tr("Closes all ports and ends the program"));
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  for (QPushButton* button : {cmdCockpit, cmdShowPorts, cmdShowBus, cmdShowIOM, cmdShowIOM2, cmdShowECStatus,
                              cmdShowYokes, cmdDumpTVX}) {
    row->addWidget(button);
  }
  row->addStretch(1);
  for (QPushButton* button : {CmdConfig, cmdHide, CmdExit}) row->addWidget(button);
  return row;
}

void StatusForm::Connect() {
  const auto on = [this](QPushButton* button, auto&& action) {
    connect(button, &QPushButton::clicked, this, std::forward<decltype(action)>(action));
  };
  on(cmdRun, [this] { presenter_.cmdRun_Click(); });
  on(cmdStop, [this] { presenter_.cmdStop_Click(); });
  on(CmdConfig, [this] { presenter_.CmdConfig_Click(); });
  on(CmdExit, [this] { presenter_.cmdExit_Click(); });
  on(cmdDumpTVX, [this] { presenter_.cmdDumpTVX_Click(); });
  on(cmdDataOutput, [this] { presenter_.cmdDataOutput_Click(); });
  on(cmdTakeAddress, [this] { presenter_.cmdTakeAddress_Click(); });
  on(cmdHide, [this] { showMinimized(); });
  connect(cmdShowBus, &QPushButton::toggled, this, [this](bool shown) {
    panelBusHealth_->setVisible(shown);
    ShowBusHealth();
  });
  on(cmdShowPorts, [this] { showPorts_(); });
  on(cmdCockpit, [this] { showCockpit_(); });
  on(cmdMessages, [this] { showMessages_(); });
  on(cmdShowIOM, [this] { presenter_.ShowPeripheral(PeripheralKind::IOModule1); });
  on(cmdShowIOM2, [this] { presenter_.ShowPeripheral(PeripheralKind::IOModule2); });
  on(cmdShowECStatus, [this] { presenter_.ShowPeripheral(PeripheralKind::EngineCluster); });
  on(cmdShowYokes, [this] { presenter_.ShowPeripheral(PeripheralKind::Yokes); });
  connect(SliderXferTimer, &QSlider::valueChanged, this,
          [this](int milliseconds) { presenter_.SliderXferTimer_Change(milliseconds); });
  connect(&flightValuesTimer_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) ShowFlightValues();
  });
}

void StatusForm::ShowView() {
  const StatusView& view = presenter_.View();
  if (windowTitle() != ToText(view.Caption)) setWindowTitle(ToText(view.Caption));
  SetTextIfChanged(LabelVersion, view.LabelVersion);
  if (SetTextIfChanged(BoxCurrentConfig, view.BoxCurrentConfig)) {
    BoxCurrentConfig->setToolTip(BoxCurrentConfig->text());
  }
  if (SetTextIfChanged(LabelAircraft, view.AircraftWords)) {
    LabelAircraft->setToolTip(LabelAircraft->text());
    LabelAircraft->setVisible(!view.AircraftWords.empty());
  }
  SetTextIfChanged(BoxRun, view.BoxRun);
  ShowRunButtons();
  if (runColour_ != view.BoxRunColour) {
    runColour_ = view.BoxRunColour;
    const QColor colour = look::Legible(look::FromCode(runColour_), look::CurrentColours().panel);
    BoxRun->setStyleSheet("color: " + colour.name());
  }
  SliderXferTimer->setEnabled(view.IntervalFixed.empty());
  SliderXferTimer->setToolTip(
      view.IntervalFixed.empty()
          ? tr("How often the instruments get new values; shorter is smoother. Takes effect at once")
          : ToText(view.IntervalFixed));
  LabelIntervalFixed->setText(ToText(view.IntervalFixed));
  LabelIntervalFixed->setVisible(!view.IntervalFixed.empty());
  SetTextIfChanged(BoxXferProcessTimer, QString::number(view.TransferInterval));
  if (SliderXferTimer->value() != view.TransferInterval) {
    const QSignalBlocker quiet(SliderXferTimer);
    SliderXferTimer->setValue(view.TransferInterval);
  }
  frmXferCount->SetValue(std::to_string(view.frmXferCount));
  boxUDPrate->SetValue(std::to_string(view.boxUDPrate));
  boxUDPrate->setVisible(view.UdpRateVisible);
  boxNrofOffsets->SetValue(std::to_string(view.boxNrofOffsets));
  cmdShowECStatus->setVisible(view.ShowEngineCluster);
  cmdShowIOM->setVisible(view.ShowIOModule1);
  cmdShowIOM2->setVisible(view.ShowIOModule2);
  cmdShowYokes->setVisible(view.ShowYokes);
  SetTextIfChanged(LabelNotice, view.Notice);
  LabelNotice->setVisible(!view.Notice.empty());
  SetTextIfChanged(LabelFlow, view.Flow);
  LabelFlow->setVisible(!view.Flow.empty());
  cmdDataOutput->setVisible(view.OfferDataOutput);
  const bool othersFound = SetTextIfChanged(LabelFindings, view.Findings);
  LabelFindings->setVisible(!view.Findings.empty());
  SetTextIfChanged(LabelIgnored, view.Ignored);
  LabelIgnored->setVisible(!view.Ignored.empty());
  cmdTakeAddress->setVisible(!view.Ignored.empty());
  ShowLink(LampSimulator, LabelSimulator, view.Simulator);
  ShowLink(LampGaugeBus, LabelGaugeBus, view.GaugeBus);
  ShowBusHealth();
  if (othersFound) GrowToFit();
}

void StatusForm::ShowBusHealth() {
  if (!panelBusHealth_->isHidden()) panelBusHealth_->Show(presenter_.View());
}

// Labels that wrap do not make a window higher by themselves.
void StatusForm::GrowToFit() {
  if (!isVisible() || isMaximized() || isFullScreen()) return;
  const int room = screen()->availableGeometry().height() - 2 * look::Margin();
  constexpr int kTries = 4;  // others take their share of what is added
  for (int i = 0; i < kTries; ++i) {
    layout()->activate();
    const int lacking = LabelFindings->heightForWidth(LabelFindings->width()) - LabelFindings->height();
    if (LabelFindings->isHidden() || lacking <= 0 || height() >= room) return;
    resize(width(), std::min(height() + lacking, room));
  }
}

// Run is grey while running, Stop while halted; the focus moves to the one that can be pressed.
void StatusForm::ShowRunButtons() {
  QPushButton* useful = presenter_.Running() ? cmdStop : cmdRun;
  QPushButton* idle = presenter_.Running() ? cmdRun : cmdStop;
  useful->setEnabled(true);
  if (idle->hasFocus() || focusWidget() == idle) useful->setFocus();
  idle->setEnabled(false);
}

void StatusForm::ShowLink(StateLamp* lamp, QLabel* label, const StatusView::Link& link) {
  SetTextIfChanged(label, link.Text);
  lamp->SetState(link.Text.empty() ? StateLamp::State::Off
                 : link.Trouble    ? StateLamp::State::Trouble
                                   : StateLamp::State::Good);
}

void StatusForm::ShowFlightValues() {
  const FlightBoxes& boxes = presenter_.Cycle().Boxes();
  BoxIAS->SetValue(boxes.BoxIAS.View());
  BoxAltitude->SetValue(boxes.BoxAltitude.View());
  BoxHea->SetValue(boxes.BoxHea.View());
  boxBank->SetValue(boxes.boxBank.View());
  boxPitch->SetValue(boxes.boxPitch.View());
  BoxVS->SetValue(boxes.BoxVS.View());
  boxCompass->SetValue(boxes.boxCompass.View());
  BoxAirPressHg->SetValue(boxes.BoxAirPressHg.View());
  BoxAirPressmBar->SetValue(boxes.BoxAirPressmBar.View());
  boxVoltage->SetValue(boxes.boxVoltage.View());
  BoxInstrLights->SetValue(boxes.BoxInstrLights);
  boxNavLights->SetValue(boxes.boxNavLights);
}

void StatusForm::changeEvent(QEvent* event) {
  Form::changeEvent(event);
  if (!built_ || event->type() != QEvent::PaletteChange) return;
  runColour_ = -1;  // to be made legible on the new ground
  ShowView();
}

void StatusForm::showEvent(QShowEvent* event) {
  Form::showEvent(event);
  ShowFlightValues();
}

}  // namespace tvx
