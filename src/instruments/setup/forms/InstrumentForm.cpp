#include "instruments/setup/forms/InstrumentForm.h"

#include <QCheckBox>
#include <QSignalBlocker>

#include "config/FunctionItems.h"
#include "instruments/Instrument.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

QGridLayout* GridIn(QFrame* panel, const QString& title, const char* name) {
  QGridLayout* grid = MakeTitledGrid(panel, title, name);
  grid->setColumnStretch(1, 1);
  return grid;
}

void AddCaption(QGridLayout* grid, int row, const QString& text, QWidget* buddy) {
  grid->addWidget(MakeCaption(buddy, text), row, 0);
}

}  // namespace

InstrumentForm::InstrumentForm(const ConfigModel& model, InstrumentPresenter& presenter,
                               ConfigurationWindows& windows, ModelWatcher& watcher, QWidget* parent)
    : Form("frmInstrument", parent),
      model_(model),
      presenter_(presenter),
      windows_(windows),
      watcher_(watcher),
      builtFor_(presenter.Record().GaugeType) {
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  LabelGauge = MakeLabel("LabelGauge", {}, "title");
  LabelGauge->setWordWrap(true);  // long names, wide fonts
  QLabel* purpose = MakeLabel("LabelPurpose", ToText(presenter_.Description().purpose));
  purpose->setWordWrap(true);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(LabelGauge);
  column->addWidget(purpose);
  column->addWidget(MakeSettingsPanel());
  column->addWidget(MakeLivePanel());
  column->addStretch(1);
  column->addLayout(MakeButtons());
  Keep(presenter_.SetAnswered([this] { ShowAnswer(); }));
  // Wide enough for the wrapped texts to keep to two lines.
  setMinimumWidth(std::max(look::Margin() * 42, minimumSizeHint().width()));
  Refresh();
  focusNextChild();
}

// A gauge that has gone, or become another one, has no fields here any more.
void InstrumentForm::ConfigurationReplaced() {
  if (presenter_.Record().GaugeType != builtFor_) {
    Unload();
  } else {
    Refresh();
  }
}

QWidget* InstrumentForm::MakeSettingsPanel() {
  QFrame* panel = MakePanel("PanelSettings");
  QGridLayout* grid = GridIn(panel, tr("What it shows and does"), "LabelSettings");
  const InstrumentDescription& d = presenter_.Description();
  int row = 1;
  for (const int needle : {1, 2}) {
    const FunctionField& function = needle == 1 ? d.function1 : d.function2;
    if (!function.label.empty()) row = AddFunction(grid, row, needle, function);
    const auto index = static_cast<std::size_t>(needle - 1);
    if (index < d.plates.size()) row = AddPlate(grid, row, needle, d.plates[index]);
  }
  for (const OptionField& option : d.options) row = AddOption(grid, row, option);
  row = AddNumbers(grid, row);
  AddOption(grid, row,
            {"Takes no lighting", "The face is lit only where all faces are always lit", kOptionUnlit});
  return panel;
}

int InstrumentForm::AddFunction(QGridLayout* grid, int row, int needle, const FunctionField& field) {
  const QString suffix = QString::number(needle);
  auto* sequence = new NumberSpin;
  sequence->setObjectName("boxInstance" + suffix);
  sequence->setRange(0, 4);
  sequence->setPrefix(tr("# "));
  sequence->setToolTip(tr("Sequence number, 1 to 4: which source of the Function; 0 counts as 1"));
  connect(sequence, &QSpinBox::valueChanged, this, [this, needle](int value) {
    presenter_.SetSequence(needle, value);
    watcher_.ModelChanged();
  });
  refreshers_.emplace_back([this, sequence, needle] {
    const QSignalBlocker quiet(sequence);
    sequence->setValue(needle == 2 ? presenter_.Record().GaugeInstance2 : presenter_.Record().GaugeInstance1);
  });
  if (!field.number) {
    sequence->setToolTip(ToText(field.tip));
    AddCaption(grid, row, ToText(field.label), sequence);
    grid->addWidget(sequence, row, 1, Qt::AlignLeft);
    return row + 1;
  }
  auto* function = new SearchCombo("", ToText(field.tip) + tr(". Type a part of its number or name"));
  function->setObjectName("ComboFunction" + suffix);
  function->SetPicked([this, needle](int number) {
    presenter_.SetFunction(needle, number);
    watcher_.ModelChanged();
  });
  refreshers_.emplace_back([this, function, needle, offset = field.offset] {
    auto items = FunctionItems(model_);
    if (offset != 0) {
      std::erase_if(items, [offset](const auto& item) { return item.first != 0 && item.first <= offset; });
      for (auto& item : items) item.first -= item.first == 0 ? 0 : offset;
    }
    function->SetItems(items);
    function->SetValue(needle == 2 ? presenter_.Record().GaugeFunction2 : presenter_.Record().GaugeFunction1);
  });
  AddCaption(grid, row, ToText(field.label), function);
  grid->addWidget(function, row, 1);
  grid->addWidget(sequence, row, 2);
  return row + 1;
}

int InstrumentForm::AddPlate(QGridLayout* grid, int row, int needle, const PlateField& field) {
  auto* plate = new SearchCombo("", tr("The calibration of the face: values and needle positions"));
  plate->setObjectName("ComboPlate" + QString::number(needle));
  plate->SetPicked([this, needle](int number) {
    if (!presenter_.SetPlate(needle, number)) Refresh();
    watcher_.ModelChanged();
  });
  refreshers_.emplace_back([this, plate, needle] {
    auto items = PlateItems(model_);
    if (items.empty()) items.emplace_back(0, "(none yet: Calibrate makes one)");
    plate->SetItems(items);
    plate->SetValue(needle == 2 ? presenter_.Record().GaugeSetting4 : presenter_.Record().GaugeSetting3);
  });
  QPushButton* calibrate =
      MakeButton("", tr("Calibrate..."), tr("Edits the Plate with the live needle beside it"));
  calibrate->setObjectName("CmdCalibrate" + QString::number(needle));
  connect(calibrate, &QPushButton::clicked, this,
          [this, needle] { windows_.OpenCalibration(presenter_.GaugeID(), needle); });
  AddCaption(grid, row, tr("Plate, ") + ToText(field.label), plate);
  grid->addWidget(plate, row, 1);
  grid->addWidget(calibrate, row, 2);
  return row + 1;
}

int InstrumentForm::AddOption(QGridLayout* grid, int row, const OptionField& field) {
  const QString name = "Option" + QString::number(field.mask);
  if (field.choices.empty()) {
    auto* box = new QCheckBox(ToText(field.label));
    box->setObjectName(name);
    box->setToolTip(ToText(field.tip));
    connect(box, &QCheckBox::clicked, this, [this, mask = field.mask](bool on) {
      presenter_.SetOption(mask, on ? mask : 0);
      watcher_.ModelChanged();
    });
    refreshers_.emplace_back(
        [this, box, mask = field.mask] { box->setChecked((presenter_.Record().GaugeSetting5 & mask) != 0); });
    grid->addWidget(box, row, 1, 1, 2);
    return row + 1;
  }
  auto* list = new QComboBox;
  list->setObjectName(name);
  list->setToolTip(ToText(field.tip));
  for (const OptionChoice& choice : field.choices) list->addItem(ToText(choice.name), choice.value);
  connect(list, &QComboBox::activated, this, [this, list, mask = field.mask](int index) {
    presenter_.SetOption(mask, list->itemData(index).toInt());
    watcher_.ModelChanged();
  });
  refreshers_.emplace_back([this, list, mask = field.mask] {
    list->setCurrentIndex(list->findData(presenter_.Record().GaugeSetting5 & mask));
  });
  AddCaption(grid, row, ToText(field.label), list);
  grid->addWidget(list, row, 1, 1, 2);
  return row + 1;
}

// The model where it matters, and the number of GaugeSetting6 where the instrument has one.
int InstrumentForm::AddNumbers(QGridLayout* grid, int row) {
  const InstrumentDescription& d = presenter_.Description();
  if (!d.models.empty()) {
    auto* models = new QComboBox;
    models->setObjectName("ComboModel");
    models->setToolTip(tr("The model that the instrument reports"));
    for (const OptionChoice& choice : d.models) models->addItem(ToText(choice.name), choice.value);
    connect(models, &QComboBox::activated, this, [this, models](int index) {
      presenter_.SetModel(models->itemData(index).toInt());
      watcher_.ModelChanged();
    });
    refreshers_.emplace_back(
        [this, models] { models->setCurrentIndex(models->findData(presenter_.Record().GaugeSetting1)); });
    AddCaption(grid, row, tr("Model"), models);
    grid->addWidget(models, row++, 1, 1, 2);
  }
  if (!d.setting6.empty()) {
    auto* number = new NumberSpin;
    number->setObjectName("boxSetting6");
    number->setRange(0, kFunctions - 1);
    number->setToolTip(ToText(d.setting6));
    connect(number, &QSpinBox::valueChanged, this, [this](int value) {
      presenter_.SetSetting6(value);
      watcher_.ModelChanged();
    });
    refreshers_.emplace_back([this, number] {
      const QSignalBlocker quiet(number);
      number->setValue(presenter_.Record().GaugeSetting6);
    });
    AddCaption(grid, row, ToText(d.setting6), number);
    grid->addWidget(number, row++, 1, Qt::AlignLeft);
  }
  return row;
}

QWidget* InstrumentForm::MakeLivePanel() {
  QFrame* panel = MakePanel("PanelLive");
  QGridLayout* grid = GridIn(panel, tr("The instrument itself"), "LabelLive");
  QPushButton* read =
      MakeButton("cmdRead", tr("&Read"), tr("Asks the live instrument to report (at most a second)"));
  connect(read, &QPushButton::clicked, this, &InstrumentForm::cmdRead_Click);
  LabelIdentity = MakeLabel("LabelIdentity", tr("Not read yet"));
  LabelIdentity->setWordWrap(true);
  LabelReadings = MakeLabel("LabelReadings");
  LabelReadings->setWordWrap(true);
  grid->addWidget(read, 1, 0);
  grid->addWidget(LabelIdentity, 1, 1, 1, 2);
  grid->addWidget(LabelReadings, 2, 1, 1, 2);
  boxNewGaugeID = new QLineEdit;
  boxNewGaugeID->setObjectName("boxNewGaugeID");
  WantWhole(boxNewGaugeID, 0, kGauges - 1);
  boxNewGaugeID->setMaximumWidth(look::Margin() * 6);
  boxNewGaugeID->setToolTip(tr("A free address, 0 to 255"));
  LabelNewGaugeID = MakeLabel("LabelNewGaugeID");
  LabelNewGaugeID->setWordWrap(true);
  cmdSetNewGaugeID = MakeButton("cmdSetNewGaugeID", tr("&Write"),
                                tr("Gives the live instrument this address; its settings go with it"));
  connect(boxNewGaugeID, &QLineEdit::textChanged, this, &InstrumentForm::CheckNewGaugeID);
  connect(cmdSetNewGaugeID, &QPushButton::clicked, this, &InstrumentForm::cmdSetNewID_Click);
  auto* address = new QHBoxLayout;
  address->addWidget(boxNewGaugeID);
  address->addWidget(LabelNewGaugeID, 1);
  AddCaption(grid, 3, tr("New &GaugeID"), boxNewGaugeID);
  grid->addLayout(address, 3, 1);
  grid->addWidget(cmdSetNewGaugeID, 3, 2);
  if (!presenter_.Description().trials.empty()) AddTrial(grid, 4);
  return panel;
}

// Says at once why an address cannot be given.
void InstrumentForm::CheckNewGaugeID() {
  const QString typed = boxNewGaugeID->text();
  const std::string fault = presenter_.NewGaugeIDFault(typed.toStdString());
  SetTextIfChanged(LabelNewGaugeID, typed.isEmpty() ? QString() : fault.empty() ? tr("free") : ToText(fault));
  cmdSetNewGaugeID->setEnabled(fault.empty());
}

void InstrumentForm::AddTrial(QGridLayout* grid, int row) {
  ComboTrial = new QComboBox;
  ComboTrial->setObjectName("ComboTrial");
  ComboTrial->setToolTip(tr("What to try on the live instrument"));
  for (const TrialField& trial : presenter_.Description().trials) ComboTrial->addItem(ToText(trial.label));
  boxTrialValue = new NumberSpin;
  boxTrialValue->setObjectName("boxTrialValue");
  LabelTrialUnit = MakeLabel("LabelTrialUnit", {}, "caption");
  QPushButton* send = MakeButton("cmdTry", tr("&Try"), tr("Shows this value on the live instrument"));
  connect(ComboTrial, &QComboBox::currentIndexChanged, this, &InstrumentForm::ShowTrial);
  connect(send, &QPushButton::clicked, this, [this] {
    const auto& trials = presenter_.Description().trials;
    presenter_.Try(trials[static_cast<std::size_t>(ComboTrial->currentIndex())], boxTrialValue->value());
  });
  auto* line = new QHBoxLayout;
  line->addWidget(ComboTrial);
  line->addWidget(boxTrialValue);
  line->addWidget(LabelTrialUnit, 1);
  AddCaption(grid, row, tr("Try"), ComboTrial);
  grid->addLayout(line, row, 1);
  grid->addWidget(send, row, 2);
  ShowTrial();
}

void InstrumentForm::ShowTrial() {
  const TrialField& trial =
      presenter_.Description().trials[static_cast<std::size_t>(std::max(0, ComboTrial->currentIndex()))];
  boxTrialValue->setRange(trial.lowest, trial.highest);
  boxTrialValue->setToolTip(tr("%1 to %2 %3").arg(trial.lowest).arg(trial.highest).arg(ToText(trial.unit)));
  SetTextIfChanged(LabelTrialUnit, trial.unit);
}

QLayout* InstrumentForm::MakeButtons() {
  QPushButton* erase = MakeButton("cmdDelete", tr("&Delete this gauge..."),
                                  tr("Takes it out of the configuration; asks first"));
  QPushButton* close = MakeButton("CmdClose", tr("Close"), tr("Back to the configuration (Escape)"));
  connect(erase, &QPushButton::clicked, this, &InstrumentForm::cmdDelete_Click);
  connect(close, &QPushButton::clicked, this, &InstrumentForm::CloseAsked);
  auto* row = new QHBoxLayout;
  row->addWidget(erase);
  row->addWidget(MakeFollowButton([this] { return Subject{Subject::Kind::Gauge, presenter_.GaugeID()}; }));
  row->addStretch(1);
  row->addWidget(close);
  return row;
}

void InstrumentForm::Refresh() {
  SetTextIfChanged(LabelGauge, ToText(presenter_.Title()));
  setWindowTitle(tr("Gauge ") + ToText(presenter_.Title()));
  for (const auto& refresh : refreshers_) refresh();
  CheckNewGaugeID();
  ShowReadings();
}

void InstrumentForm::ShowReadings() {
  SetTextIfChanged(LabelIdentity,
                   presenter_.Identity().empty() ? tr("Not read yet") : ToText(presenter_.Identity()));
  QStringList lines;
  for (const auto& reading : presenter_.Readings())
    lines << ToText(reading.label) + ": " + ToText(reading.text);
  SetTextIfChanged(LabelReadings, lines.join("    "));
  LabelReadings->setVisible(!lines.isEmpty());
}

// While the answer is awaited the gauge must not be edited.
void InstrumentForm::cmdRead_Click() {
  presenter_.Read();
  setEnabled(false);
}

void InstrumentForm::cmdSetNewID_Click() {
  if (presenter_.WriteNewGaugeID(boxNewGaugeID->text().toStdString())) setEnabled(false);
}

void InstrumentForm::ShowAnswer() {
  setEnabled(true);
  const bool moved = TypedWhole(boxNewGaugeID->text().toStdString(), 0, kGauges - 1) == presenter_.GaugeID();
  if (moved) boxNewGaugeID->clear();
  Refresh();
  watcher_.ModelChanged();
}

void InstrumentForm::cmdDelete_Click() {
  if (!presenter_.Remove() || Unloading()) return;
  CloseAsked();
  watcher_.ModelChanged();
}

}  // namespace tvx
