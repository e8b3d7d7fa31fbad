#include "config/setup/forms/UdpPanel.h"

#include <QIntValidator>
#include <QRegularExpressionValidator>

#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
UdpPanel::UdpPanel(ConfigModel& model) : model_(model) {
  setObjectName("PanelUdp");
  look::SetRole(this, "panel");
  QGridLayout* grid = MakeTitledGrid(this, tr("Link to the simulator (UDP)"), "LabelUdp");
  int row = 1;
  const auto edit = [&](const char* name, const QString& caption, const QString& tip, QValidator* validator) {
    QLineEdit* box = AddEdit(grid, row, 0, name, caption, tip);
    grid->addWidget(box, row++, 1, 1, 2);
    validator->setParent(box);
    box->setValidator(validator);
    connect(box, &QLineEdit::textChanged, this, [this] { OfferSet(); });
    return box;
  };
  const auto digits = [] { return new QIntValidator(1, 65535); };
  boxRemoteIP = edit("boxRemoteIP", tr("&Address of the simulator's computer"),
                     tr("Four numbers with points between; 127.0.0.1 is this computer"),
                     new QRegularExpressionValidator(QRegularExpression("[0-9.]{0,15}")));
  boxRemotePort = edit("boxRemotePort", tr("&Port on which it listens"),
                       tr("UDP port of the simulator, 1 to 65535; X-Plane's own is 49000"), digits());
  boxLocalPort = edit("boxLocalPort", tr("Port on which &we listen"),
                      tr("UDP port of this program, 1 to 65535; no other program may use it"), digits());
  OptionByteOrderNormal = new QRadioButton(tr("&Normal"));
  OptionByteOrderNormal->setObjectName("OptionByteOrderNormal");
  OptionByteOrderNormal->setToolTip(tr("Numbers with the lowest byte first: simulators of today"));
  OptionByteOrderReverse = new QRadioButton(tr("Re&verse"));
  OptionByteOrderReverse->setObjectName("OptionByteOrderReverse");
  OptionByteOrderReverse->setToolTip(tr("Numbers with the highest byte first: simulators on old computers"));
  CheckBlockUsel = new QCheckBox(tr("Never &unsubscribe data groups (USEL)"));
  CheckBlockUsel->setObjectName("CheckBlockUsel");
  CheckBlockUsel->setToolTip(tr("For a simulator whose data output other programs use as well"));
  cmdSetUDP = MakeButton("cmdSetUDP", tr("Set"), tr("Takes these settings into the configuration"));
  LabelUdpFault = MakeLabel("LabelUdpFault");
  LabelUdpFault->setWordWrap(true);
  grid->addWidget(MakeLabel("LabelByteOrder", tr("Byte order of the test console")), 4, 0);
  grid->addWidget(OptionByteOrderNormal, 4, 1);
  grid->addWidget(OptionByteOrderReverse, 4, 2);
  grid->addWidget(CheckBlockUsel, 5, 0, 1, 2);
  grid->addWidget(cmdSetUDP, 5, 2, Qt::AlignRight);
  grid->addWidget(LabelUdpFault, 6, 0, 1, 3);
  connect(cmdSetUDP, &QPushButton::clicked, this, [this] { cmdSetUDP_Click(); });
  for (QAbstractButton* option :
       std::initializer_list<QAbstractButton*>{OptionByteOrderReverse, CheckBlockUsel})
    connect(option, &QAbstractButton::toggled, this, [this] { OfferSet(); });
  ShowModel();
}

UdpSettings UdpPanel::Typed() const {
  return {boxRemoteIP->text().toStdString(), boxRemotePort->text().toStdString(),
          boxLocalPort->text().toStdString(), OptionByteOrderReverse->isChecked(),
          CheckBlockUsel->isChecked()};
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
  }
  OfferSet();
}

// "Set" can be pressed only where the settings are right and differ from those in use.
void UdpPanel::OfferSet() {
  const std::string_view fault = Pending() ? UdpFault(Typed()) : std::string_view();
  cmdSetUDP->setEnabled(Pending() && fault.empty());
  SetTextIfChanged(LabelUdpFault, fault);
  LabelUdpFault->setVisible(!fault.empty());
}

void UdpPanel::cmdSetUDP_Click() {
  SetUdp(model_, Typed());
  ShowModel();
}

}  // namespace tvx
