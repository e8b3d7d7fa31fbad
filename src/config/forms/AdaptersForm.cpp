#include "config/forms/AdaptersForm.h"

#include <QHBoxLayout>

#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kFirstFreeNumber = 5;  // COM 1 to 4 are the computer's own ports
constexpr int kOfferedPorts = 16;

}  // namespace

AdaptersForm::AdaptersForm(SerialDevices& devices, MessageBoxes& boxes, std::function<void()> changed,
                           QWidget* parent)
    : Form("frmAdapters", parent), devices_(devices), boxes_(boxes), changed_(std::move(changed)) {
  setWindowTitle(tr("Serial adapters"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  ListAdapters = new QTreeWidget;
  ListAdapters->setObjectName("ListAdapters");
  ListAdapters->setToolTip(tr("The serial adapters that are plugged in"));
  ListAdapters->setRootIsDecorated(false);
  ListAdapters->setAllColumnsShowFocus(true);
  ListAdapters->setHeaderLabels({tr("Adapter"), tr("Serial number"), tr("Device"), tr("State")});
  ListAdapters->setMinimumSize(look::Margin() * 46, look::Margin() * 10);
  ComboAssign = new QComboBox;
  ComboAssign->setObjectName("ComboAssign");
  ComboAssign->setToolTip(tr("The COM number that is to lead to the chosen adapter"));
  for (int number = 1; number <= kOfferedPorts; ++number)
    ComboAssign->addItem("COM " + QString::number(number), number);
  ComboAssign->setCurrentIndex(kFirstFreeNumber - 1);
  cmdAssign =
      MakeButton("cmdAssignAdapter", tr("&Assign"),
                 tr("From now on this COM number leads to the chosen adapter, whichever socket it is in"));
  look::SetRole(cmdAssign, "primary");
  LabelAdvice = MakeLabel("LabelAdvice");
  LabelAdvice->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QPushButton* refresh = MakeButton("cmdRefresh", tr("&Refresh"), tr("Looks again what is plugged in"));
  QPushButton* close = MakeButton("CmdClose", tr("Close"), tr("Back to the configuration (Escape)"));
  QLabel* caption = MakeLabel("ComboAssignCaption", tr("Chosen adapter becomes &port"));
  caption->setBuddy(ComboAssign);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(caption);
  row->addWidget(ComboAssign);
  row->addWidget(cmdAssign);
  row->addStretch(1);
  row->addWidget(refresh);
  row->addWidget(close);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(look::Margin(), look::Margin(), look::Margin(), look::Margin());
  column->setSpacing(look::Gap());
  column->addWidget(ListAdapters, 1);
  column->addWidget(LabelAdvice);
  column->addLayout(row);
  connect(ListAdapters, &QTreeWidget::currentItemChanged, this, &AdaptersForm::ShowChosen);
  connect(cmdAssign, &QPushButton::clicked, this, &AdaptersForm::cmdAssign_Click);
  connect(refresh, &QPushButton::clicked, this, &AdaptersForm::Refresh);
  connect(close, &QPushButton::clicked, this, &AdaptersForm::Unload);
  Refresh();
  ListAdapters->setFocus();
}

void AdaptersForm::Refresh() {
  ListAdapters->clear();
  found_ = devices_.List();
  for (const SerialDevice& device : found_) {
    ListAdapters->addTopLevelItem(
        new QTreeWidgetItem({ToText(device.adapter), ToText(device.serialNumber), ToText(device.path),
                             !device.mayOpen ? tr("no permission") : ToText(device.StateWords())}));
  }
  if (!found_.empty()) ListAdapters->setCurrentItem(ListAdapters->topLevelItem(0));
  for (int column = 0; column < ListAdapters->columnCount(); ++column)
    ListAdapters->resizeColumnToContents(column);
  ShowChosen();
}

void AdaptersForm::ShowChosen() {
  const int row = ListAdapters->indexOfTopLevelItem(ListAdapters->currentItem());
  cmdAssign->setEnabled(row >= 0);
  if (row < 0) {
    SetTextIfChanged(LabelAdvice, tr("No serial adapter is plugged in."));
    return;
  }
  SetTextIfChanged(LabelAdvice, found_[static_cast<std::size_t>(row)].StateWords());
}

void AdaptersForm::cmdAssign_Click() {
  const int row = ListAdapters->indexOfTopLevelItem(ListAdapters->currentItem());
  if (row < 0) return;
  std::string error;
  if (!devices_.Assign(ComboAssign->currentData().toInt(), found_[static_cast<std::size_t>(row)], error)) {
    boxes_.Show("The adapter could not be assigned. " + error);
    return;
  }
  SetTextIfChanged(LabelAdvice, ComboAssign->currentText() + tr(" leads to ") +
                                    ToText(found_[static_cast<std::size_t>(row)].Words()));
  changed_();
}

}  // namespace tvx
