#include "config/setup/forms/UdpPanel.h"

#include <QSignalBlocker>

#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kLongestName = 253;

}  // namespace

UdpPanel::UdpPanel(ConfigModel& model, const SimulatorFinder& finder) : model_(model), finder_(finder) {
  setObjectName("PanelUdp");
  look::SetRole(this, "panel");
  QGridLayout* grid = MakeTitledGrid(this, tr("Link to the simulator (UDP)"), "LabelUdp");
  int row = 1;
  const auto edit = [&](const char* name, const QString& caption, const QString& tip) {
    QLineEdit* box = AddEdit(grid, row, 0, name, caption, tip);
    grid->addWidget(box, row++, 1, 1, 2);
    connect(box, &QLineEdit::textChanged, this, [this] { OfferSet(); });
    return box;
  };
  boxRemoteIP =
      edit("boxRemoteIP", tr("&Address of the simulator's computer"),
           tr("Four numbers with points between, or the computer's name; 127.0.0.1 is this computer"));
  boxRemoteIP->setMaxLength(kLongestName);
  boxRemotePort = edit("boxRemotePort", tr("&Port on which it listens"),
                       tr("UDP port of the simulator, 1 to 65535; X-Plane's own is 49000"));
  boxLocalPort = edit("boxLocalPort", tr("Port on which &we listen"),
                      tr("UDP port of this program, 1 to 65535; no other program may use it"));
  for (QLineEdit* box : {boxRemotePort, boxLocalPort}) {
    MarkAsTyped(box, [](const QString& text) {
      return IsUdpPort(text.toStdString()) ? QString() : tr("A whole number from 1 to 65535");
    });
  }
  OptionByteOrderNormal = new QRadioButton(tr("&Normal (PC)"));
  OptionByteOrderNormal->setObjectName("OptionByteOrderNormal");
  OptionByteOrderNormal->setToolTip(
      tr("How Test X-Plane reads numbers: lowest byte first, as every X-Plane of today sends them"));
  OptionByteOrderReverse = new QRadioButton(tr("Re&versed"));
  OptionByteOrderReverse->setObjectName("OptionByteOrderReverse");
  OptionByteOrderReverse->setToolTip(
      tr("How Test X-Plane reads numbers: highest byte first, as X-Plane sent them from old computers"));
  CheckBlockUsel = new QCheckBox(tr("Leave X-Plane sending at the end, for other programs"));
  CheckBlockUsel->setObjectName("CheckBlockUsel");
  CheckBlockUsel->setToolTip(
      tr("For an X-Plane whose data output other programs use as well: no USEL is ever sent"));
  CheckHearAll = new QCheckBox(tr("Take values from any computer"));
  CheckHearAll->setObjectName("CheckHearAll");
  CheckHearAll->setToolTip(
      tr("Otherwise only the simulator's computer is heard, so that no other one moves needles or motors"));
  cmdSetUDP = MakeButton("cmdSetUDP", tr("Set"), tr("Takes these settings into the configuration"));
  LabelUdpFault = MakeLabel("LabelUdpFault");
  LabelUdpFault->setWordWrap(true);
  grid->addWidget(MakeLabel("LabelByteOrder", tr("Numbers in Test X-Plane")), 4, 0);
  grid->addWidget(OptionByteOrderNormal, 4, 1);
  grid->addWidget(OptionByteOrderReverse, 4, 2);
  grid->addWidget(CheckBlockUsel, 5, 0, 1, 2);
  grid->addWidget(CheckHearAll, 6, 0, 1, 2);
  grid->addWidget(cmdSetUDP, 6, 2, Qt::AlignRight);
  grid->addWidget(LabelUdpFault, 7, 0, 1, 3);
  AddFound(grid, 8);
  connect(cmdSetUDP, &QPushButton::clicked, this, [this] { cmdSetUDP_Click(); });
  for (QAbstractButton* option : std::initializer_list<QAbstractButton*>{
           OptionByteOrderReverse, CheckBlockUsel, CheckHearAll, CheckFollow})
    connect(option, &QAbstractButton::toggled, this, [this] { OfferSet(); });
  ShowModel();
}

void UdpPanel::AddFound(QGridLayout* grid, int row) {
  LabelFound = MakeLabel("LabelFound", {}, "caption");
  LabelFound->setWordWrap(true);
  Found = new OfferList("Found", tr("Use"), tr("in use"),
                        tr("Takes this address and port into the configuration"));
  Found->SetTake([this](std::size_t line) { Take(line); });
  CheckFollow = new QCheckBox;
  CheckFollow->setObjectName("CheckFollow");
  CheckFollow->setToolTip(
      tr("While this X-Plane is silent at its address and is heard at another one, that one is used"));
  grid->addWidget(LabelFound, row, 0, 1, 3);
  grid->addWidget(Found, row + 1, 0, 1, 3);
  grid->addWidget(CheckFollow, row + 2, 0, 1, 3);
}

UdpSettings UdpPanel::Typed() const {
  return {boxRemoteIP->text().toStdString(),  boxRemotePort->text().toStdString(),
          boxLocalPort->text().toStdString(), OptionByteOrderReverse->isChecked(),
          CheckBlockUsel->isChecked(),        CheckFollow->isChecked() ? host_ : std::string(),
          CheckHearAll->isChecked()};
}

void UdpPanel::ShowModel() {
  const UdpSettings now = UdpOf(model_);
  if (shown_ != now) {
    shown_ = now;
    boxRemoteIP->setText(ToText(now.remoteIP));
    boxRemotePort->setText(ToText(now.remotePort));
    boxLocalPort->setText(ToText(now.localPort));
    (now.reverseByteOrder ? OptionByteOrderReverse : OptionByteOrderNormal)->setChecked(true);
    CheckBlockUsel->setChecked(now.blockUsel);
    CheckHearAll->setChecked(now.hearAll);
    host_ = now.follow;
    CheckFollow->setChecked(!now.follow.empty());
  }
  ShowFound();
}

void UdpPanel::ShowFound() {
  std::vector<OfferList::Line> lines;
  for (const FoundSimulator& simulator : finder_.Found()) {
    lines.push_back(
        {ToText(simulator.Words()), simulator.IsAt(model_.General.RemoteIP, model_.General.RemotePort)});
  }
  SetTextIfChanged(LabelFound,
                   !finder_.Trouble().empty() ? "X-Plane cannot be looked for: " + finder_.Trouble()
                   : lines.empty() ? "No X-Plane is heard on the network. It tells of itself while it runs."
                                   : "Heard on the network:");
  Found->SetLines(lines);
  OfferSet();
}

void UdpPanel::Take(std::size_t line) {
  if (line >= finder_.Found().size()) return;
  const FoundSimulator& simulator = finder_.Found()[line];
  model_.General.UseSimulator(simulator.address, simulator.beacon.port, simulator.beacon.name);
  model_.ConfigChanged = true;
  // What else was typed and is not set yet stays.
  const UdpSettings now = UdpOf(model_);
  shown_ = now;
  boxRemoteIP->setText(ToText(now.remoteIP));
  boxRemotePort->setText(ToText(now.remotePort));
  ShowFound();
}

// "Set" can be pressed only where the settings are right and differ from those in use.
void UdpPanel::OfferSet() {
  OfferFollow();
  const std::string_view fault = Pending() ? UdpFault(Typed()) : std::string_view();
  cmdSetUDP->setEnabled(Pending() && fault.empty());
  SetTextIfChanged(LabelUdpFault, fault);
  LabelUdpFault->setVisible(!fault.empty());
}

void UdpPanel::OfferFollow() {
  const std::string host = HostToFollow(model_, finder_.Found(), boxRemoteIP->text().toStdString());
  const QSignalBlocker quiet(CheckFollow);
  if (host != host_) {
    CheckFollow->setChecked(!host.empty() && host == model_.General.Setting(kFollowSetting));
  }
  host_ = host;
  CheckFollow->setEnabled(!host.empty());
  CheckFollow->setText(host.empty()
                           ? tr("Follow its address when that changes (of an X-Plane that was found)")
                           : tr("Follow its address when that changes (host %1)").arg(ToText(host)));
}

void UdpPanel::cmdSetUDP_Click() {
  SetUdp(model_, Typed());
  ShowModel();
}

}  // namespace tvx
