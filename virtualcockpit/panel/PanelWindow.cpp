#include "virtualcockpit/panel/PanelWindow.h"

#include <QHBoxLayout>
#include <algorithm>
#include <cmath>
#include <span>

#include "drawn/faces/MakeFace.h"
#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/panel/ControlScroll.h"

namespace tvx::vc {
namespace {

constexpr int kFrameMs = 40;   // 25 pictures a second
constexpr int kStateMs = 500;  // what an eye reads
constexpr double kSpeeds[] = {0.5, 1, 2, 5, 10};
constexpr int kStripLetters = 21;  // its width, in text heights

QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString MinutesText(double seconds) {
  const int whole = static_cast<int>(seconds);
  return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

// What a pilot looks at first, by the beginning of an instrument's words; of several the first.
constexpr const char* kFlying[] = {"airspeed", "altimeter", "vert", "heading", "attitude"};
constexpr const char* kNavigating[] = {"vor", "engine rpm", "com1", "transponder", "clock"};
constexpr qsizetype kMostOnOneLine = 12;
QStringList TakeTelling(const QStringList& parts, std::span<const char* const> beginnings) {
  QStringList taken;
  for (const char* beginning : beginnings) {
    const auto found = std::find_if(parts.begin(), parts.end(), [beginning](const QString& words) {
      return words.startsWith(QLatin1String(beginning), Qt::CaseInsensitive);
    });
    if (found != parts.end()) taken << *found;
  }
  return taken;
}

// Shows a text only when it is another one: an unchanged label costs nothing.
void Show(QLabel& label, const QString& text, const QColor& colour = theme::kText) {
  if (label.text() != text) label.setText(text);
  const QString style = QStringLiteral("color: %1").arg(colour.name());
  if (label.styleSheet() != style) label.setStyleSheet(style);
}

}  // namespace

PanelWindow::PanelWindow(Cockpit& cockpit, std::function<void(const Traits&)> onYokes, QWidget* parent)
    : QWidget(parent),
      cockpit_(cockpit),
      panel_(new InstrumentPanel(this)),
      scroll_(new PanelScroll(panel_, this)),
      shelf_(new UnitShelf(cockpit, this)),
      behaviour_(new BehaviourPanel(cockpit, std::move(onYokes), this)) {
  setObjectName(QStringLiteral("virtualCockpit"));
  setAttribute(Qt::WA_StyledBackground);
  setWindowTitle(QStringLiteral("Virtual cockpit"));
  setStyleSheet(theme::StyleSheet());
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  auto* column = new QVBoxLayout;
  column->setSpacing(0);
  column->addWidget(scroll_, 1);
  column->addWidget(shelf_);
  row->addLayout(column, 1);
  auto* controls = new QWidget(this);
  controls->setObjectName(QStringLiteral("sideStrip"));
  controls->setAttribute(Qt::WA_StyledBackground);
  auto* strip = new QVBoxLayout(controls);
  strip->setContentsMargins(18, 16, 18, 16);
  strip->setSpacing(7);
  for (const auto& device : cockpit.Gauges().Devices())
    panel_->Add(MakeFace(*device, cockpit.Model(), panel_));
  BuildStrip(*strip);
  for (QWidget* control : controls->findChildren<QWidget*>()) control->ensurePolished();
  strip_ = new ControlScroll(controls, this);
  strip_->setFixedWidth(std::max(kStripLetters * theme::TextHeight(), strip_->minimumSizeHint().width()));
  row->addWidget(strip_);
  Connect();
  frameClock_.start();
  stateClock_.start();
  ShowState();
  resize(FittingScreen(*this, {1600, 1000}));
}

QLabel* PanelWindow::AddLabel(QVBoxLayout& strip, const char* name, const char* role) {
  auto* label = new QLabel(this);
  label->setObjectName(QString::fromLatin1(name));
  label->setWordWrap(true);
  QSizePolicy policy = label->sizePolicy();
  policy.setHorizontalPolicy(QSizePolicy::Ignored);  // a long path must not make the strip wider
  label->setSizePolicy(policy);
  if (role) label->setProperty("role", QString::fromLatin1(role));
  strip.addWidget(label);
  return label;
}

void PanelWindow::AddTitle(QVBoxLayout& strip, const QString& text) {
  if (strip.count() > 0) {
    strip.addSpacing(8);
    auto* line = new QFrame(this);
    line->setProperty("role", QStringLiteral("line"));
    strip.addWidget(line);
    strip.addSpacing(4);
  }
  auto* title = new QLabel(text, this);
  title->setProperty("role", QStringLiteral("title"));
  strip.addWidget(title);
}

QPushButton* PanelWindow::AddButton(const char* name, const QString& text) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  return button;
}

void PanelWindow::BuildStrip(QVBoxLayout& strip) {
  AddTitle(strip, QStringLiteral("Simulator"));
  labelPhase_ = AddLabel(strip, "labelPhase", "big");
  labelFlight_ = AddLabel(strip, "labelFlight");
  labelSimulator_ = AddLabel(strip, "labelSimulator");
  labelClient_ = AddLabel(strip, "labelClient");
  labelTraffic_ = AddLabel(strip, "labelTraffic");
  auto* pair = new QHBoxLayout;
  cmdPause_ = AddButton("cmdPause", QStringLiteral("&Pause"));
  cmdPause_->setCheckable(true);
  comboSpeed_ = new QComboBox(this);
  comboSpeed_->setObjectName(QStringLiteral("comboSpeed"));
  comboSpeed_->setToolTip(QStringLiteral("Speed of the flight"));
  for (const double speed : kSpeeds) comboSpeed_->addItem(QStringLiteral("Speed \u00D7%1").arg(speed), speed);
  const int known = comboSpeed_->findData(cockpit_.Sim().Speed());
  if (known < 0)
    comboSpeed_->addItem(QStringLiteral("Speed \u00D7%1").arg(cockpit_.Sim().Speed()),
                         cockpit_.Sim().Speed());
  comboSpeed_->setCurrentIndex(known < 0 ? comboSpeed_->count() - 1 : known);
  pair->addWidget(cmdPause_, 1);
  pair->addWidget(comboSpeed_, 1);
  strip.addSpacing(4);
  strip.addLayout(pair);
  cmdRestart_ = AddButton("cmdRestart", QStringLiteral("&Restart the flight"));
  strip.addWidget(cmdRestart_);
  cmdSimulator_ = AddButton("cmdSimulator", QStringLiteral("&Switch the simulator off"));
  strip.addWidget(cmdSimulator_);

  AddTitle(strip, QStringLiteral("Gauge bus"));
  labelBus_ = AddLabel(strip, "labelBus");
  labelBusPath_ = AddLabel(strip, "labelBusPath");
  labelBusTraffic_ = AddLabel(strip, "labelBusTraffic");
  strip.addSpacing(4);
  cmdAdapter_ = AddButton("cmdAdapter", QStringLiteral("&Unplug the adapter"));
  strip.addWidget(cmdAdapter_);
  comboLineFault_ = new QComboBox(this);
  comboLineFault_->setObjectName(QStringLiteral("comboLineFault"));
  comboLineFault_->setToolTip(QStringLiteral("A fault of the whole line"));
  for (const LineFault fault : kLineFaults) {
    comboLineFault_->addItem(QStringLiteral("Line: %1").arg(Utf8(FaultText(fault))), static_cast<int>(fault));
  }
  strip.addWidget(comboLineFault_);
  AddTitle(strip, QStringLiteral("Behaviour"));
  labelBehaviour_ = AddLabel(strip, "labelBehaviour");
  cmdBehaviour_ = AddButton("cmdBehaviour", QStringLiteral("&Behaviour and faults..."));
  cmdBehaviour_->setToolTip(
      QStringLiteral("How slow the lines are, what the network loses, whose power is off"));
  strip.addWidget(cmdBehaviour_);
  strip.addStretch(1);
  labelNotice_ = AddLabel(strip, "labelNotice");
  Show(*labelNotice_,
       QStringLiteral("Right-click an instrument to give it a fault. "
                      "Turn the wheel over a knob to turn it."),
       theme::kDim);
}

void PanelWindow::Connect() {
  connect(cmdPause_, &QPushButton::toggled, this, [this](bool on) { cockpit_.Sim().SetPaused(on); });
  connect(comboSpeed_, &QComboBox::currentIndexChanged, this,
          [this] { cockpit_.Sim().SetSpeed(comboSpeed_->currentData().toDouble()); });
  connect(cmdRestart_, &QPushButton::clicked, this, [this] { cockpit_.Sim().RestartFlight(); });
  connect(cmdSimulator_, &QPushButton::clicked, this, [this] {
    SimulatorService& service = cockpit_.Simulation();
    if (service.Present()) {
      service.Stop();
    } else {
      service.Return();
    }
    ShowState();
  });
  connect(cmdAdapter_, &QPushButton::clicked, this, [this] {
    GaugeBusLine& line = cockpit_.GaugeLine();
    if (line.Line().Plugged()) {
      line.Unplug();
    } else {
      line.Plug();
    }
    ShowState();
  });
  connect(comboLineFault_, &QComboBox::currentIndexChanged, this, [this] {
    cockpit_.Gauges().SetFault(static_cast<LineFault>(comboLineFault_->currentData().toInt()));
  });
  connect(cmdBehaviour_, &QPushButton::clicked, this, [this] {
    behaviour_->Show();
    behaviour_->show();
    behaviour_->raise();
  });
  frameTimer_.setInterval(kFrameMs);
  stateTimer_.setInterval(kStateMs);
  connect(&frameTimer_, &QTimer::timeout, this, [this] { Frame(); });
  connect(&stateTimer_, &QTimer::timeout, this, [this] { ShowState(); });
  frameTimer_.start();
  stateTimer_.start();
}

void PanelWindow::Frame() {
  panel_->Advance(std::min(0.25, static_cast<double>(frameClock_.restart()) / 1000));
  shelf_->Advance();
}

void PanelWindow::ShowState() {
  ShowSimulator();
  ShowBus();
  ShowBehaviour();
  stateClock_.restart();
}

int PanelWindow::PerSecond(std::uint64_t now, std::uint64_t& last) const {
  const double passed = std::max(0.05, static_cast<double>(stateClock_.elapsed()) / 1000);
  const double rate = static_cast<double>(now - last) / passed;
  last = now;
  return static_cast<int>(std::lround(rate));
}

void PanelWindow::ShowSimulator() {
  const Simulator& sim = cockpit_.Sim();
  const SimulatorService& service = cockpit_.Simulation();
  const FlightState& state = sim.State();
  const int sent = PerSecond(sim.Counters().sent, lastSent_);
  const int received = PerSecond(sim.Counters().received, lastReceived_);
  Show(*labelPhase_, Utf8(state.phase));
  Show(*labelFlight_,
       QStringLiteral("%1 of %2%3")
           .arg(MinutesText(state.time), MinutesText(Flight::kSeconds),
                sim.Paused() ? QStringLiteral(", paused") : QString()),
       sim.Paused() ? theme::kAmber : theme::kDim);
  const bool failed = !service.LastError().empty();
  if (service.Present() && service.Loading()) {
    Show(*labelSimulator_, QStringLiteral("Loads an aircraft"), theme::kAmber);
  } else if (service.Present()) {
    Show(*labelSimulator_, QStringLiteral("On, listens on port %1").arg(service.Port()), theme::kGood);
  } else {
    Show(*labelSimulator_,
         failed ? QStringLiteral("Off: ") + QString::fromStdString(service.LastError())
                : QStringLiteral("Off: a real simulator can fly these instruments"),
         failed ? theme::kTrouble : theme::kAmber);
  }
  QString client = QStringLiteral("Nobody has asked for data yet");
  if (sim.Client()) client = QStringLiteral("Client ") + QString::fromStdString(PeerText(*sim.Client()));
  const DataOutput& output = sim.Output();
  if (!output.toWhoeverSelects) {
    client += output.enabled && output.target
                  ? QStringLiteral("\nData output to ") + QString::fromStdString(PeerText(*output.target))
                  : QStringLiteral("\nData output is off");
  }
  Show(*labelClient_, client, sim.Client() ? theme::kText : theme::kDim);
  Show(*labelTraffic_,
       QStringLiteral("%1 data groups, %2 datarefs\n%3 datagrams/s out, %4 in")
           .arg(sim.SelectedGroups().size())
           .arg(sim.Subscriptions())
           .arg(sent)
           .arg(received),
       theme::kDim);
  const QSignalBlocker quiet(cmdPause_);
  cmdPause_->setChecked(sim.Paused());
  cmdPause_->setText(sim.Paused() ? QStringLiteral("&Go on") : QStringLiteral("&Pause"));
  cmdSimulator_->setText(service.Present() ? QStringLiteral("&Switch the simulator off")
                                           : QStringLiteral("&Switch the simulator on"));
}

void PanelWindow::ShowBehaviour() {
  const Traits& traits = cockpit_.Traits();
  const QString words = traits == Traits::Real()   ? QStringLiteral("As the real thing")
                        : traits == Traits::Easy() ? QStringLiteral("Easy: instant and forgiving")
                                                   : QStringLiteral("Own settings");
  const bool powered = cockpit_.Powered();
  Show(*labelBehaviour_, powered ? words : words + QStringLiteral("\nThe instruments have no power"),
       powered ? theme::kText : theme::kTrouble);
  if (behaviour_->isVisible()) behaviour_->Show();
}

void PanelWindow::ShowBus() {
  const GaugeBusLine& line = cockpit_.GaugeLine();
  const GaugeBus& bus = cockpit_.Gauges();
  const int frames = PerSecond(bus.Decoder().Frames(), lastFrames_);
  const int replies = PerSecond(bus.Replies(), lastReplies_);
  cmdAdapter_->setEnabled(cockpit_.HasGaugeBus());
  if (!cockpit_.HasGaugeBus()) {
    Show(*labelBus_, QStringLiteral("The configuration names no port for the gauges"), theme::kAmber);
  } else if (!line.Line().Plugged()) {
    const std::string& reason = line.Line().LastError();
    Show(*labelBus_, reason.empty() ? QStringLiteral("Adapter unplugged") : QString::fromStdString(reason),
         theme::kTrouble);
  } else {
    Show(*labelBus_,
         QStringLiteral("COM%1, %2 instruments")
             .arg(cockpit_.Model().General.ComPortGS)
             .arg(bus.Devices().size()),
         theme::kGood);
  }
  cmdAdapter_->setText(line.Line().Plugged() ? QStringLiteral("&Unplug the adapter")
                                             : QStringLiteral("Pl&ug the adapter in"));
  QString path = QString::fromStdString(line.Line().Device());
  if (line.Line().Plugged() && !line.Line().LastError().empty()) {
    path += QStringLiteral("\n") + QString::fromStdString(line.Line().LastError());
  }
  Show(*labelBusPath_, path, theme::kDim);
  Show(*labelBusTraffic_,
       QStringLiteral("%1 frames/s, %2 answers/s\n%3 damaged bytes, %4 for nobody")
           .arg(frames)
           .arg(replies)
           .arg(bus.Decoder().Garbage())
           .arg(bus.Unheard()),
       theme::kDim);
}

QString PanelWindow::Words() const {
  const FlightState& state = cockpit_.Sim().State();
  QStringList parts;
  for (const InstrumentWidget* instrument : panel_->Instruments()) {
    const QString words = instrument->Words();
    if (!words.isEmpty()) parts << words;
  }
  const bool all = parts.size() <= kMostOnOneLine;
  QStringList lines = {(all ? parts : TakeTelling(parts, kFlying)).join(QStringLiteral("; "))};
  if (!all) lines << TakeTelling(parts, kNavigating).join(QStringLiteral("; "));
  QStringList units;
  for (UnitLine* line : {cockpit_.IOModuleLine(1), cockpit_.IOModuleLine(2), cockpit_.ClusterLine()}) {
    if (line != nullptr) units << QString::fromStdString(line->Hardware().Words());
  }
  if (!units.isEmpty()) lines << units.join(QStringLiteral("; "));
  return QStringLiteral("%1 %2: %3")
      .arg(MinutesText(state.time), Utf8(state.phase), lines.join(QStringLiteral("\n      ")));
}

void PanelWindow::ShowParts(const Parts& parts) {
  scroll_->setVisible(parts.instruments);
  if (!parts.units) shelf_->hide();
  strip_->setVisible(parts.controls);
}

void PanelWindow::SetNotice(const QString& text) {
  Show(*labelNotice_, text, theme::kTrouble);
}

}  // namespace tvx::vc
