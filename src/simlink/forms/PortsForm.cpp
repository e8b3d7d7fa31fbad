#include "simlink/forms/PortsForm.h"

#include <QFontDatabase>
#include <QSignalBlocker>

#include "ui/Look.h"

namespace tvx {

PortsForm::PortsForm(const ConfigModel& model, const SimCom& sim)
    : Form("frmPorts"), model_(model), sim_(sim) {
  setWindowTitle(tr("Simulator ports"));
  LabelPorts = MakeLabel("LabelPorts", {}, "title");
  OffsetsList = new QListWidget;
  OffsetsList->setObjectName("OffsetsList");
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPixelSize(QApplication::font().pixelSize());
  OffsetsList->setFont(fixed);
  OffsetsList->setMinimumSize(look::Margin() * 46, look::Margin() * 12);
  LabelDetails = MakeLabel("LabelDetails");
  LabelDetails->setWordWrap(true);
  LabelDetails->setTextInteractionFlags(Qt::TextSelectableByMouse);
  LabelDetails->setMinimumHeight(LabelDetails->fontMetrics().lineSpacing() * 5);
  LabelDetails->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  QPushButton* refresh = MakeButton("cmdRefresh", tr("&Refresh"), tr("Reads the ports anew"));
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Closes this list (Escape)"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(refresh);
  buttons->addWidget(close);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(LabelPorts);
  column->addWidget(OffsetsList, 1);
  column->addWidget(LabelDetails);
  column->addLayout(buttons);
  connect(refresh, &QPushButton::clicked, this, &PortsForm::Refresh);
  connect(close, &QPushButton::clicked, this, &PortsForm::CloseAsked);
  connect(OffsetsList, &QListWidget::currentRowChanged, this, &PortsForm::ShowDetails);
  Refresh();
}

void PortsForm::Refresh() {
  const int chosen = OffsetsList->currentRow();
  const PortListing listing = ListPorts(model_, sim_);
  {
    const QSignalBlocker quiet(OffsetsList);
    OffsetsList->clear();
    LabelPorts->setText(ToText(listing.Title));
    OffsetsList->addItem(ToText(listing.Header));
    OffsetsList->item(0)->setFlags(Qt::NoItemFlags);
    for (const std::string& line : listing.Lines) OffsetsList->addItem(ToText(line));
    if (chosen < OffsetsList->count()) OffsetsList->setCurrentRow(chosen);
  }
  ShowDetails();
}

void PortsForm::ShowDetails() {
  // The list's first line is the header; port 0 stands below it.
  const int port = OffsetsList->currentRow() - 1;
  QStringList lines;
  if (port >= 0) {
    for (const std::string& line : PortDetails(model_, sim_, port)) lines.append(ToText(line));
  }
  SetTextIfChanged(LabelDetails, lines.isEmpty() ? tr("Choose a line to see where its value comes from.")
                                                 : lines.join('\n'));
}

}  // namespace tvx
