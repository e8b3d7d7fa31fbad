#include "virtualcockpit/panel/BehaviourPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <cmath>

#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/panel/ControlScroll.h"

namespace tvx::vc {
namespace {

constexpr const char* kLook = R"(
    #behaviourPanel, #behaviourControls { background: #15171a; }
    QGroupBox { border: 1px solid #2b3036; border-radius: 6px; margin-top: 1.6em; padding-top: 4px; }
    QGroupBox::title { subcontrol-origin: margin; left: 2px; color: #ffb454; }
    QSpinBox, QDoubleSpinBox, QLineEdit { background: #262a30; padding: 4px; }
    QCheckBox::indicator { width: 14px; height: 14px; border: 1px solid #59626c; border-radius: 3px;
                           background: #262a30; }
    QCheckBox::indicator:checked { background: #ffb454; }
    QCheckBox:disabled, QLineEdit:disabled { color: #626a73; }
  )";

enum Preset { kReal, kEasy, kOwn };
constexpr int kLongestLatencyMs = 255, kLongestAnswerMs = 100, kUsPerMs = 1000;
constexpr int kShortestFrameMs = 10, kLongestFrameMs = 100, kMostRequests = 1000;
constexpr double kSlowestRise = 10;

template <typename Control>
Control* Make(QWidget* parent, const char* name, const QString& tip) {
  auto* control = new Control(parent);
  control->setObjectName(QString::fromLatin1(name));
  control->setToolTip(tip);
  return control;
}

}  // namespace

BehaviourPanel::BehaviourPanel(Cockpit& cockpit, std::function<void(const Traits&)> onYokes, QWidget* parent)
    : QWidget(parent, Qt::Tool), cockpit_(cockpit), onYokes_(std::move(onYokes)) {
  setObjectName(QStringLiteral("behaviourPanel"));
  setAttribute(Qt::WA_StyledBackground);
  setWindowTitle(QStringLiteral("Behaviour and faults"));
  setStyleSheet(theme::StyleSheet() + QString::fromLatin1(kLook));
  auto* controls = new QWidget(this);
  controls->setObjectName(QStringLiteral("behaviourControls"));
  controls->setAttribute(Qt::WA_StyledBackground);
  auto* columns = new QHBoxLayout(controls);
  auto* left = new QVBoxLayout;
  auto* right = new QVBoxLayout;
  columns->addLayout(left);
  columns->addLayout(right);
  const auto group = [this](QVBoxLayout& column, const QString& title) {
    auto* box = new QGroupBox(title, this);
    column.addWidget(box);
    return new QFormLayout(box);
  };
  AddPreset(*group(*left, QStringLiteral("All together")));
  AddSimulator(*group(*left, QStringLiteral("Simulator")));
  AddLines(*group(*right, QStringLiteral("Lines and instruments")));
  AddPower(*group(*right, QStringLiteral("Power")));
  AddNetwork(*group(*right, QStringLiteral("Network to the simulator")));
  left->addStretch(1);
  right->addStretch(1);
  Show();
  auto* around = new QVBoxLayout(this);
  around->setContentsMargins(0, 0, 0, 0);
  around->addWidget(new ControlScroll(controls, this));
  resize(FittingScreen(*this, sizeHint()));
}

void BehaviourPanel::Change(const std::function<void(Traits&)>& change) {
  Traits traits = cockpit_.Traits();
  change(traits);
  cockpit_.SetTraits(traits);
  if (onYokes_) onYokes_(traits);
  Show();
}

void BehaviourPanel::Show() {
  for (const auto& show : show_) show(cockpit_.Traits());
}

void BehaviourPanel::AddCheck(QFormLayout& form, const Words& words, bool& (*field)(Traits&)) {
  auto* box = Make<QCheckBox>(this, words.name, words.tip);
  box->setText(words.text);
  form.addRow(box);
  connect(box, &QCheckBox::toggled, this,
          [this, field](bool on) { Change([&](Traits& traits) { field(traits) = on; }); });
  show_.push_back([box, field](Traits traits) {
    const QSignalBlocker quiet(box);
    box->setChecked(field(traits));
  });
}

void BehaviourPanel::AddNumber(QFormLayout& form, const Words& words, int least, int most,
                               const QString& unit, std::function<int(const Traits&)> get,
                               std::function<void(Traits&, int)> set, const QString& atLeast) {
  auto* box = Make<QSpinBox>(this, words.name, words.tip);
  box->setRange(least, most);
  box->setSuffix(unit);
  box->setSpecialValueText(atLeast);
  box->setKeyboardTracking(false);
  form.addRow(words.text, box);
  connect(box, &QSpinBox::valueChanged, this,
          [this, set = std::move(set)](int value) { Change([&](Traits& traits) { set(traits, value); }); });
  show_.push_back([box, get = std::move(get)](const Traits& traits) {
    const QSignalBlocker quiet(box);
    box->setValue(get(traits));
  });
}

void BehaviourPanel::AddPercent(QFormLayout& form, const Words& words, double NetworkTraits::*field) {
  auto* box = Make<QDoubleSpinBox>(this, words.name, words.tip);
  box->setRange(0, 100);
  box->setDecimals(1);
  box->setSuffix(QStringLiteral(" %"));
  box->setKeyboardTracking(false);
  form.addRow(words.text, box);
  connect(box, &QDoubleSpinBox::valueChanged, this, [this, field](double value) {
    Change([&](Traits& traits) { traits.simulator.network.*field = value; });
  });
  show_.push_back([box, field](const Traits& traits) {
    const QSignalBlocker quiet(box);
    box->setValue(traits.simulator.network.*field);
  });
}

void BehaviourPanel::AddPreset(QFormLayout& form) {
  auto* box = Make<QComboBox>(
      this, "comboBehaviour",
      QStringLiteral(
          "As the real thing: lines carry 38400 baud, the simulator reads once a frame and sends its "
          "data groups only where it was told to.\nEasy: all is instant and forgiving."));
  box->addItem(QStringLiteral("As the real thing"), kReal);
  box->addItem(QStringLiteral("Easy"), kEasy);
  box->addItem(QStringLiteral("As set below"), kOwn);
  form.addRow(box);
  connect(box, &QComboBox::activated, this, [this, box] {
    const int chosen = box->currentData().toInt();
    if (chosen == kOwn) return Show();
    Change([chosen](Traits& traits) { traits = chosen == kReal ? Traits::Real() : Traits::Easy(); });
  });
  show_.push_back([box](const Traits& traits) {
    const int preset = traits == Traits::Real() ? kReal : traits == Traits::Easy() ? kEasy : kOwn;
    box->setCurrentIndex(box->findData(preset));
  });
}

void BehaviourPanel::AddTarget(QFormLayout& form) {
  auto* on = Make<QCheckBox>(
      this, "checkOutput",
      QStringLiteral("What is ticked on X-Plane's screen \"Data Output\": send network data output"));
  on->setText(QStringLiteral("Data output is sent to"));
  auto* address = Make<QLineEdit>(
      this, "editOutput",
      QStringLiteral(
          "Address and port that are set on X-Plane's screen \"Data Output\", as 127.0.0.1:49003"));
  form.addRow(on, address);
  const auto take = [this, on, address] {
    DataOutput output = cockpit_.Sim().Output();
    const QStringList parts = address->text().split(':');
    const auto peer = parts.size() == 2
                          ? PeerOf(parts[0].trimmed().toStdString(), parts[1].trimmed().toStdString())
                          : std::nullopt;
    if (peer) output.target = peer;
    output.enabled = on->isChecked();
    cockpit_.Sim().SetOutput(output);
    Show();
  };
  connect(on, &QCheckBox::toggled, this, take);
  connect(address, &QLineEdit::editingFinished, this, take);
  show_.push_back([this, on, address](const Traits& traits) {
    const QSignalBlocker quietOn(on), quietAddress(address);
    const DataOutput& output = cockpit_.Sim().Output();
    on->setChecked(output.enabled);
    on->setEnabled(traits.simulator.dataToTarget);
    address->setEnabled(traits.simulator.dataToTarget);
    if (!address->hasFocus()) {
      address->setText(output.target ? QString::fromStdString(PeerText(*output.target)) : QString());
    }
  });
}

void BehaviourPanel::AddSimulator(QFormLayout& form) {
  AddNumber(
      form,
      {"spinFrame", QStringLiteral("Frame"),
       QStringLiteral("Once in each frame the simulator reads requests and sends values. 33 ms are 30 frames "
                      "a second.")},
      kShortestFrameMs, kLongestFrameMs, QStringLiteral(" ms"),
      [](const Traits& t) { return t.simulator.frameMs; },
      [](Traits& t, int value) { t.simulator.frameMs = value; });
  AddNumber(
      form,
      {"spinRequests", QStringLiteral("Requests a frame"),
       QStringLiteral(
           "The most requests that are read in one frame. More of them wait, and are lost where they "
           "are too many.")},
      0, kMostRequests, {}, [](const Traits& t) { return t.simulator.requestsPerFrame; },
      [](Traits& t, int value) { t.simulator.requestsPerFrame = value; }, QStringLiteral("as they come"));
  AddCheck(
      form,
      {"checkBuffer", QStringLiteral("Usual receive buffer"),
       QStringLiteral("As large as the computer makes it: some 200 requests. Counts when the simulator is "
                      "switched on.")},
      [](Traits& t) -> bool& { return t.simulator.usualBuffer; });
  AddCheck(form,
           {"checkTarget", QStringLiteral("Data groups only to their target"),
            QStringLiteral("As X-Plane does. Otherwise they go to whoever selected one.")},
           [](Traits& t) -> bool& { return t.simulator.dataToTarget; });
  AddTarget(form);
  AddCheck(form,
           {"checkKeepsGroups", QStringLiteral("Groups go on after a restart"),
            QStringLiteral("As groups that are ticked on X-Plane's screen; datarefs are always forgotten.")},
           [](Traits& t) -> bool& { return t.simulator.keepsGroups; });
  AddCheck(
      form,
      {"checkForgets", QStringLiteral("A restart takes written values back"),
       QStringLiteral("Radios, switches and overrides stand as at first when the simulator comes back.")},
      [](Traits& t) -> bool& { return t.simulator.forgetsValues; });
  AddCheck(form,
           {"checkKnownNames", QStringLiteral("Only X-Plane's own datarefs"),
            QStringLiteral("Otherwise every dataref that the configuration names exists, as 0.")},
           [](Traits& t) -> bool& { return t.simulator.onlyKnownNames; });
  AddCheck(form,
           {"checkSendPort", QStringLiteral("Answers from a port of their own"),
            QStringLiteral("As X-Plane: requests to 49000, answers from 49001. Counts when the simulator is "
                           "switched on.")},
           [](Traits& t) -> bool& { return t.simulator.ownSendPort; });
  AddCheck(form,
           {"checkBeacon", QStringLiteral("Beacon"),
            QStringLiteral("Tells the network once a second where the simulator is.")},
           [](Traits& t) -> bool& { return t.simulator.beacon; });
  auto* aircraft = Make<QPushButton>(
      this, "cmdAircraft",
      QStringLiteral("Loads for 3 s, in which nothing is read or sent. Then one in five of the "
                     "datarefs asked for does not exist, and the others do again."));
  aircraft->setText(QStringLiteral("Load another &aircraft"));
  connect(aircraft, &QPushButton::clicked, this, [this] { cockpit_.Simulation().ChangeAircraft(); });
  form.addRow(aircraft);
}

void BehaviourPanel::AddNetwork(QFormLayout& form) {
  AddPercent(form,
             {"spinLost", QStringLiteral("Lost"),
              QStringLiteral("So many in a hundred datagrams never arrive, each way.")},
             &NetworkTraits::lost);
  AddPercent(form,
             {"spinDoubled", QStringLiteral("Doubled"),
              QStringLiteral("So many in a hundred datagrams arrive twice, each way.")},
             &NetworkTraits::doubled);
  AddPercent(form,
             {"spinReordered", QStringLiteral("Overtaken"),
              QStringLiteral("So many in a hundred datagrams arrive after the next one, each way.")},
             &NetworkTraits::reordered);
  AddPercent(form,
             {"spinDelayed", QStringLiteral("Delayed"),
              QStringLiteral("So many in a hundred datagrams arrive 20 to 200 ms late, each way.")},
             &NetworkTraits::delayed);
  AddNumber(
      form,
      {"spinSeed", QStringLiteral("Chance"),
       QStringLiteral("The same number gives the same sequence of losses and delays.")},
      1, 999999, {}, [](const Traits& t) { return static_cast<int>(t.simulator.seed); },
      [](Traits& t, int value) { t.simulator.seed = t.lines.seed = static_cast<std::uint32_t>(value); });
}

void BehaviourPanel::AddLines(QFormLayout& form) {
  AddCheck(form,
           {"checkPaced", QStringLiteral("At the speed of a real line"),
            QStringLiteral("38400 baud: 3490 bytes a second each way, one after the other.")},
           [](Traits& t) -> bool& { return t.lines.paced; });
  AddNumber(
      form,
      {"spinLatency", QStringLiteral("Adapter hands over every"),
       QStringLiteral(
           "USB adapters keep what they receive and hand it over every 16 ms, with \"low latency\" "
           "every 1 ms. An answer may so come in two pieces.")},
      1, kLongestLatencyMs, QStringLiteral(" ms"), [](const Traits& t) { return t.lines.latencyMs; },
      [](Traits& t, int value) { t.lines.latencyMs = value; });
  AddNumber(
      form,
      {"spinLeastAnswer", QStringLiteral("Answers begin after"),
       QStringLiteral("The shortest time that an instrument takes to answer")},
      0, kLongestAnswerMs, QStringLiteral(" ms"),
      [](const Traits& t) { return t.lines.leastAnswerUs / kUsPerMs; },
      [](Traits& t, int value) {
        t.lines.leastAnswerUs = value * kUsPerMs;
        t.lines.mostAnswerUs = std::max(t.lines.mostAnswerUs, t.lines.leastAnswerUs);
      });
  AddNumber(
      form,
      {"spinMostAnswer", QStringLiteral("at the latest after"),
       QStringLiteral("The longest time that an instrument takes to answer")},
      0, kLongestAnswerMs, QStringLiteral(" ms"),
      [](const Traits& t) { return t.lines.mostAnswerUs / kUsPerMs; },
      [](Traits& t, int value) {
        t.lines.mostAnswerUs = value * kUsPerMs;
        t.lines.leastAnswerUs = std::min(t.lines.mostAnswerUs, t.lines.leastAnswerUs);
      });
  AddCheck(form,
           {"checkHand", QStringLiteral("A turned knob keeps its value for 3 s"),
            QStringLiteral("Real instruments show what they were told last, also while a hand turns.")},
           [](Traits& t) -> bool& { return t.devices.handRules; });
  AddCheck(form,
           {"checkStartsAnew", QStringLiteral("Switched on, they start from zero"),
            QStringLiteral("They take a second to start, and show zero until they are told.")},
           [](Traits& t) -> bool& { return t.devices.startsAnew; });
  if (!onYokes_) return;
  AddNumber(
      form,
      {"spinRise", QStringLiteral("Yokes' forces come back in"),
       QStringLiteral("After a yoke was left without commands its forces come back slowly. 0: at once.")},
      0, static_cast<int>(kSlowestRise * kUsPerMs), QStringLiteral(" ms"),
      [](const Traits& t) { return static_cast<int>(std::lround(t.yokes.riseSeconds * kUsPerMs)); },
      [](Traits& t, int value) { t.yokes.riseSeconds = value / static_cast<double>(kUsPerMs); });
}

void BehaviourPanel::AddPower(QFormLayout& form) {
  auto* power = Make<QPushButton>(
      this, "cmdPower",
      QStringLiteral("Every instrument, IO module and the engine cluster. One alone: right-click it."));
  connect(power, &QPushButton::clicked, this, [this] {
    cockpit_.SetPower(!cockpit_.Powered());
    Show();
  });
  form.addRow(power);
  show_.push_back([this, power](const Traits&) {
    power->setText(cockpit_.Powered() ? QStringLiteral("Switch all &instruments off")
                                      : QStringLiteral("Switch all &instruments on"));
  });
}

}  // namespace tvx::vc
