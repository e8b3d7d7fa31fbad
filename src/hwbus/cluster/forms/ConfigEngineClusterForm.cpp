#include "hwbus/cluster/forms/ConfigEngineClusterForm.h"

#include "config/FunctionItems.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kRefreshMs = 200;
constexpr int kFunctionLetters = 20, kPlateLetters = 26;
constexpr const char* kWidestReading = "Function not defined";

struct TryButton {
  EngineClusterPresenter::Spot spot;
  const char *name, *text, *toolTip;
};
constexpr TryButton kTries[] = {
    {EngineClusterPresenter::Spot::Lowest, "cmdTryLow", QT_TR_NOOP("Min"),
     QT_TR_NOOP("Moves the needle to the lowest value of its Plate; the other needles go to zero")},
    {EngineClusterPresenter::Spot::Middle, "cmdTryMiddle", QT_TR_NOOP("Mid"),
     QT_TR_NOOP("Moves the needle to the value in the middle of its Plate")},
    {EngineClusterPresenter::Spot::Highest, "cmdTryHigh", QT_TR_NOOP("Max"),
     QT_TR_NOOP("Moves the needle to the highest value of its Plate")},
};

}  // namespace

ConfigEngineClusterForm::ConfigEngineClusterForm(const ConfigModel& model, const EngineCluster& cluster,
                                                 EngineClusterPresenter& presenter, MessageBoxes& boxes,
                                                 EngineClusterWindows& windows)
    : Form("frmConfigEC"),
      model_(model),
      cluster_(cluster),
      presenter_(presenter),
      boxes_(boxes),
      windows_(windows),
      status_(MakeLabel("LabelStatus", {}, "title")),
      options_(new EngineClusterOptions(presenter, EngineClusterOptions::Extent::All)) {
  setWindowTitle(tr("Engine cluster: set-up"));
  status_->setWordWrap(true);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(status_);
  column->addWidget(MakeChannels());
  column->addWidget(options_);
  column->addStretch(1);
  QPushButton* close =
      MakeButton("cmdClose", tr("&Close"), tr("Closes this window; the changes stay (Escape)"));
  connect(close, &QPushButton::clicked, this, [this] { CloseAsked(); });
  auto* row = new QHBoxLayout;
  row->addWidget(MakeLabel(
      "LabelSaveHint",
      tr("Changes take effect at once. Which needle a channel moves depends on the version above; the "
         "cluster counts its needles from 0."),
      "caption"));
  row->addStretch(1);
  AddCopying(row);
  row->addWidget(close);
  column->addLayout(row);
  connect(&refresh_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) ShowLive();
  });
  refresh_.start(kRefreshMs);
  Refresh();
}

void ConfigEngineClusterForm::AddCopying(QHBoxLayout* row) {
  auto* channels = new QComboBox;
  channels->setObjectName("ComboChannel");
  channels->setToolTip(tr("The channel that Copy and Paste are for"));
  for (int k = 0; k < kECChannels; ++k) channels->addItem(tr("Channel %1").arg(k + 1));
  QPushButton* copy =
      MakeButton("cmdCopySettings", tr("Copy"), tr("Keeps what this channel shows, for Paste"));
  QPushButton* paste =
      MakeButton("cmdPasteSettings", tr("Paste"), tr("Makes this channel show what was copied"));
  paste->setEnabled(false);
  connect(copy, &QPushButton::clicked, this, [this, channels, paste] {
    presenter_.CopyChannel(channels->currentIndex());
    paste->setEnabled(true);
  });
  connect(paste, &QPushButton::clicked, this,
          [this, channels] { presenter_.PasteChannel(channels->currentIndex()); });
  for (QWidget* control : std::initializer_list<QWidget*>{channels, copy, paste}) row->addWidget(control);
}

QWidget* ConfigEngineClusterForm::MakeChannels() {
  QFrame* panel = MakePanel("PanelChannels");
  auto* grid = new QGridLayout(panel);
  SpacePanel(grid, look::Margin());
  const std::pair<int, QString> captions[] = {{0, tr("Shown")},  {1, tr("Function of the simulator")},
                                              {2, tr("Plate")},  {4, tr("Moves")},
                                              {5, tr("Try it")}, {8, tr("Value, needle position")}};
  for (const auto& [at, caption] : captions) {
    grid->addWidget(MakeLabel("", caption, "caption"), 0, at, 1, at == 5 ? 3 : 1);
  }
  for (int k = 0; k < kECChannels; ++k) AddRow(grid, k);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 1);
  return panel;
}

void ConfigEngineClusterForm::AddRow(QGridLayout* grid, int channel) {
  Row& row = rows_[static_cast<std::size_t>(channel)];
  const QString number = QString::number(channel);
  row.enabled = new QCheckBox(tr("Channel &%1").arg(channel + 1));
  row.enabled->setObjectName("CheckEnabled" + number);
  row.enabled->setToolTip(tr("The needle follows its Function; otherwise it stands at zero"));
  connect(row.enabled, &QCheckBox::clicked, this,
          [this, channel](bool on) { presenter_.SetEnabled(channel, on); });
  row.function =
      new SearchCombo("", tr("What the simulator tells for this needle. Type a part of its number or name"));
  row.function->setObjectName("ComboFunction" + number);
  row.function->SetPicked([this, channel](int function) { presenter_.SetFunction(channel, function); });
  row.plate =
      new SearchCombo("", tr("The calibration of the face: values and needle positions, 0 to 1079. Without "
                             "one the value itself is the position"));
  row.plate->setObjectName("ComboPlate" + number);
  row.plate->SetPicked([this, channel](int plate) { presenter_.SetPlate(channel, plate); });
  row.function->setMinimumContentsLength(kFunctionLetters);
  row.plate->setMinimumContentsLength(kPlateLetters);
  QPushButton* calibrate =
      MakeButton("", tr("Calibrate..."), tr("Edits the Plates with this needle beside them"));
  calibrate->setObjectName("cmdCalibrate" + number);
  connect(calibrate, &QPushButton::clicked, this, [this, channel] { windows_.ShowPlates(channel); });
  row.needle = MakeLabel("", {}, "caption");
  row.needle->setObjectName("LabelNeedle" + number);
  row.reading = MakeLabel("");
  row.reading->setObjectName("LabelReading" + number);
  row.reading->setMinimumWidth(row.reading->fontMetrics().horizontalAdvance(tr(kWidestReading)) +
                               look::Gap());
  int at = 0;
  for (QWidget* widget : {static_cast<QWidget*>(row.enabled), static_cast<QWidget*>(row.function),
                          static_cast<QWidget*>(row.plate), static_cast<QWidget*>(calibrate),
                          static_cast<QWidget*>(row.needle)}) {
    grid->addWidget(widget, channel + 1, at++);
  }
  for (const TryButton& one : kTries) {
    QPushButton* button = MakeButton("", tr(one.text), tr(one.toolTip));
    button->setObjectName(QString::fromLatin1(one.name) + number);
    look::SetRole(button, "small");
    connect(button, &QPushButton::clicked, this, [this, channel, spot = one.spot] {
      presenter_.Try(channel, spot);
      ShowLive();
    });
    row.tries[static_cast<std::size_t>(at - 5)] = button;
    grid->addWidget(button, channel + 1, at++);
  }
  grid->addWidget(row.reading, channel + 1, at);
}

void ConfigEngineClusterForm::Refresh() {
  // A list is filled anew only where its items have changed: the user may just have picked from it.
  const Items functions = FunctionItems(model_);
  const bool otherFunctions = functions != functionItems_;
  functionItems_ = functions;
  for (int k = 0; k < kECChannels; ++k) {
    Row& row = rows_[static_cast<std::size_t>(k)];
    const EngineClusterRecord& record = presenter_.Channel(k);
    row.enabled->setChecked(record.Value1 != 0);
    if (otherFunctions) row.function->SetItems(functions);
    row.function->SetValue(record.Value2);
    Items plates = presenter_.PlateItemsOf(k);
    if (plates != row.plateItems) row.plate->SetItems(plates);
    row.plateItems = std::move(plates);
    row.plate->SetValue(presenter_.PlateOf(k));
    // A channel without a Function has no value to place.
    row.plate->setEnabled(record.Value2 != 0);
    if (record.Value2 == 0) row.plate->setEditText({});
    SetTextIfChanged(row.needle, presenter_.NeedleName(k));
  }
  options_->Refresh();
  ShowLive();
}

void ConfigEngineClusterForm::ShowLive() {
  SetTextIfChanged(status_, cluster_.StatusText());
  for (int k = 0; k < kECChannels; ++k) {
    const Row& row = rows_[static_cast<std::size_t>(k)];
    for (QPushButton* button : row.tries) button->setEnabled(!cluster_.Running());
    const std::string reading = presenter_.Reading(k);
    SetTextIfChanged(row.reading, reading.empty() ? ToText(presenter_.Remark(k)) : ToText(reading));
  }
}

// Edits are taken at once. Only a typed text that cannot be taken would be lost.
bool ConfigEngineClusterForm::MayEnd() {
  return !options_->Untaken() || boxes_.Ask("Updates are not saved; Continue anyway?") != kAnswerNo;
}

}  // namespace tvx
