#include "config/setup/forms/AdaptersForm.h"

#include <QHBoxLayout>
#include <algorithm>

#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kFirstFreeNumber = 5;  // COM 1 to 4 are the computer's own ports
constexpr int kOfferedPorts = 16;

QString NumbersText(const std::vector<int>& numbers) {
  QStringList texts;
  for (const int number : numbers) texts << "COM " + QString::number(number);
  return texts.join(", ");
}

}  // namespace

AdaptersForm::AdaptersForm(SerialDevices& devices, const ComPorts& numbers, MessageBoxes& boxes,
                           QWidget* parent)
    : Form("frmAdapters", parent), devices_(devices), numbers_(numbers), boxes_(boxes) {
  setWindowTitle(tr("Serial adapters"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  ListAdapters = new QTreeWidget;
  ListAdapters->setObjectName("ListAdapters");
  ListAdapters->setToolTip(tr("The serial adapters that are plugged in"));
  ListAdapters->setRootIsDecorated(false);
  ListAdapters->setAllColumnsShowFocus(true);
  ListAdapters->setHeaderLabels({tr("Adapter"), tr("Serial number"), tr("Device"), tr("Port"), tr("State")});
  ListAdapters->setMinimumSize(look::Margin() * 50, look::Margin() * 10);
  ComboAssign = new QComboBox;
  ComboAssign->setObjectName("ComboAssign");
  ComboAssign->setToolTip(tr("The COM number that is to lead to the chosen adapter"));
  for (int number = 1; number <= kOfferedPorts; ++number)
    ComboAssign->addItem("COM " + QString::number(number), number);
  ComboAssign->setCurrentIndex(kFirstFreeNumber - 1);
  cmdAssign = MakeButton(
      "cmdAssignAdapter", tr("&Assign"),
      tr("From now on this COM number leads to the chosen adapter, whichever socket it is in; one of "
         "several alike is known by its socket"));
  look::SetRole(cmdAssign, "primary");
  LabelAdvice = MakeLabel("LabelAdvice");
  LabelAdvice->setWordWrap(true);
  LabelAdvice->setMinimumHeight(2 * LabelAdvice->fontMetrics().lineSpacing());
  LabelAdvice->setTextInteractionFlags(Qt::TextSelectableByMouse);  // it may hold a command to be copied
  cmdAskRole =
      MakeButton("cmdAskRole", tr("As&k what it is"),
                 tr("Asks what hangs on the chosen adapter. No setting is changed; the needles of an "
                    "engine cluster go to zero"));
  cmdTakeRole = MakeButton("cmdTakeRole", tr("&Use"),
                           tr("Assigns the chosen adapter, and gives its COM number to this hardware group"));
  look::SetRole(cmdTakeRole, "primary");
  cmdTakeRole->hide();
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
  row->addWidget(cmdTakeRole);
  row->addWidget(cmdAskRole);
  row->addWidget(refresh);
  row->addWidget(close);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(ListAdapters, 1);
  column->addWidget(LabelAdvice);
  column->addLayout(row);
  connect(ListAdapters, &QTreeWidget::currentItemChanged, this, &AdaptersForm::ShowChosen);
  connect(cmdAssign, &QPushButton::clicked, this, [this] { cmdAssign_Click(); });
  connect(cmdAskRole, &QPushButton::clicked, this, &AdaptersForm::cmdAskRole_Click);
  connect(cmdTakeRole, &QPushButton::clicked, this, &AdaptersForm::cmdTakeRole_Click);
  connect(refresh, &QPushButton::clicked, this, &AdaptersForm::Refresh);
  connect(close, &QPushButton::clicked, this, &AdaptersForm::CloseAsked);
  Refresh();
  ListAdapters->setFocus();
}

// The chosen adapter stays chosen.
void AdaptersForm::Refresh() {
  const int row = ListAdapters->indexOfTopLevelItem(ListAdapters->currentItem());
  const std::string chosen = row < 0 ? std::string() : found_[static_cast<std::size_t>(row)].path;
  ListAdapters->clear();
  found_ = devices_.List();
  for (const SerialDevice& device : found_) {
    auto* item = new QTreeWidgetItem({ToText(device.adapter), ToText(device.serialNumber),
                                      ToText(device.path), NumbersText(numbers_.NumbersOf(device)),
                                      device.mayOpen ? ToText(device.StateWords()) : tr("no permission")});
    ListAdapters->addTopLevelItem(item);
    if (device.path == chosen) ListAdapters->setCurrentItem(item);
  }
  if (ListAdapters->currentItem() == nullptr) ListAdapters->setCurrentItem(ListAdapters->topLevelItem(0));
  for (int column = 0; column < ListAdapters->columnCount(); ++column)
    ListAdapters->resizeColumnToContents(column);
  ShowChosen();
}

const SerialDevice* AdaptersForm::Chosen() const {
  const int row = ListAdapters->indexOfTopLevelItem(ListAdapters->currentItem());
  return row < 0 ? nullptr : &found_[static_cast<std::size_t>(row)];
}

void AdaptersForm::ShowChosen() {
  const SerialDevice* device = Chosen();
  cmdAssign->setEnabled(device != nullptr);
  cmdAskRole->setEnabled(device != nullptr);
  ShowRole({});  // what was said was said of another adapter
  emit RoleNotAsked();
  if (device == nullptr) {
    SetTextIfChanged(LabelAdvice, tr("No serial adapter is plugged in."));
    return;
  }
  OfferNumber(*device);
  SetTextIfChanged(LabelAdvice, device->Words() + ": " + device->StateWords());
}

void AdaptersForm::ShowRole(const Role& role) {
  asking_ = role.asking;
  group_ = role.group;
  cmdAskRole->setText(asking_ ? tr("Stop as&king") : tr("As&k what it is"));
  cmdTakeRole->setText(tr("&Use for: %1").arg(role.group));
  cmdTakeRole->setVisible(!role.group.isEmpty());
  if (const int item = ComboAssign->findData(role.comNumber); item >= 0) ComboAssign->setCurrentIndex(item);
  if (Chosen() != nullptr && !role.words.isEmpty())
    SetTextIfChanged(LabelAdvice, ToText(Chosen()->Words()) + ' ' + role.words);
}

void AdaptersForm::cmdAskRole_Click() {
  const SerialDevice* device = Chosen();
  if (device == nullptr) return;
  if (asking_) return ShowChosen();
  emit RoleAsked(*device);
}

void AdaptersForm::cmdTakeRole_Click() {
  const int number = ComboAssign->currentData().toInt();
  const QString group = group_;
  if (!cmdAssign_Click()) return;
  emit RoleTaken(number);
  SetTextIfChanged(LabelAdvice, LabelAdvice->text() + tr("\nIt is now used for: %1").arg(group));
}

// The number that leads to it already, otherwise the first one that leads to no other adapter.
void AdaptersForm::OfferNumber(const SerialDevice& device) {
  std::vector<int> taken;
  for (const SerialDevice& other : found_) {
    const auto numbers = numbers_.NumbersOf(other);
    if (other.path != device.path) taken.insert(taken.end(), numbers.begin(), numbers.end());
  }
  const auto own = numbers_.NumbersOf(device);
  int number = own.empty() ? kFirstFreeNumber : own.front();
  while (own.empty() && std::find(taken.begin(), taken.end(), number) != taken.end()) ++number;
  ComboAssign->setCurrentIndex(ComboAssign->findData(std::min(number, kOfferedPorts)));
}

bool AdaptersForm::cmdAssign_Click() {
  if (Chosen() == nullptr) return false;
  const SerialDevice device = *Chosen();
  const QString assigned = ComboAssign->currentText();
  std::string error;
  if (!devices_.Assign(ComboAssign->currentData().toInt(), device, error)) {
    boxes_.Show("The adapter could not be assigned. " + error);
    return false;
  }
  emit Assigned();
  Refresh();
  QString words = assigned + tr(" leads to ") + ToText(device.Words());
  if (device.twin) words += tr(". Leave it in this socket: only that tells it from the others.");
  SetTextIfChanged(LabelAdvice, words);
  return true;
}

}  // namespace tvx
