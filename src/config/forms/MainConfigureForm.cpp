#include "config/forms/MainConfigureForm.h"

#include <QHeaderView>
#include <QIntValidator>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include "config/MainConfigureControl.h"
#include "config/NameTables.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kOfferedPorts = 16;  // COM numbers offered, and the one in use where it is higher
constexpr int kSlowInterval = 250;
constexpr int kTickMs = 50;

struct ComRow {
  const char* caption;
  const char* current;
  const char* choice;
  const char* button;
  std::int16_t GeneralRecord::*field;
};
constexpr ComRow kComRows[] = {
    {"&Gauge bus", "BoxCurrentComGS", "ComboComGS", "cmdSetCommport", &GeneralRecord::ComPortGS},
    {"&Engine cluster", "BoxCurrentComEC", "ComboComEC", "cmdSetCommportEC", &GeneralRecord::ComPortEC},
    {"IO module &1", "BoxCurrentComIOM", "ComboCOMIOM", "cmdSetCommportIOM", &GeneralRecord::ComPortIOM1},
    {"IO module &2", "BoxCurrentComIOM2", "ComboComiOM2", "cmdSetCommportIOM2", &GeneralRecord::ComPortIOM2},
    {"&Yoke 1", "boxCurrentComYoke1", "ComboComYoke1", "cmdSetCommportYoke1", &GeneralRecord::ComPortYoke1},
    {"Y&oke 2", "boxCurrentComYoke2", "ComboComYoke2", "cmdSetCommportYoke2", &GeneralRecord::ComPortYoke2},
};

QString PortText(int number) {
  return number > 0 ? "COM " + QString::number(number) : QString("not used");
}

QGridLayout* GridIn(QFrame* panel, const QString& title, const char* name) {
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(look::Margin(), look::Gap(), look::Margin(), look::Margin());
  grid->setSpacing(look::Gap());
  grid->addWidget(MakeLabel(name, title, "caption"), 0, 0, 1, -1);
  return grid;
}

QLineEdit* AddEdit(QGridLayout* grid, int row, const char* name, const QString& caption,
                   QValidator* validator) {
  auto* edit = new QLineEdit;
  edit->setObjectName(QString::fromLatin1(name));
  validator->setParent(edit);
  edit->setValidator(validator);
  QLabel* label = MakeLabel("", caption);
  label->setObjectName(QString::fromLatin1(name) + "Caption");
  label->setBuddy(edit);
  grid->addWidget(label, row, 0);
  grid->addWidget(edit, row, 1, 1, 2);
  return edit;
}

}  // namespace

MainConfigureForm::MainConfigureForm(ConfigModel& model, MessageBoxes& boxes, Surroundings surroundings,
                                     QWidget* parent)
    : Form("FrmMainConfigure", parent), model_(model), boxes_(boxes), surroundings_(std::move(surroundings)) {
  setWindowTitle(tr("Configuration"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  CurrentConfigFile = MakeLabel("CurrentConfigFile");
  CurrentConfigFile->setWordWrap(true);
  auto* left = new QVBoxLayout;
  left->setSpacing(look::Gap());
  left->addWidget(MakeComPanel());
  left->addStretch(1);
  auto* right = new QVBoxLayout;
  right->setSpacing(look::Gap());
  right->addWidget(MakeUdpPanel());
  right->addWidget(MakeTimingPanel());
  right->addStretch(1);
  auto* top = new QHBoxLayout;
  top->setSpacing(look::Gap());
  top->addLayout(left, 1);
  top->addLayout(right, 1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(look::Margin(), look::Margin(), look::Margin(), look::Margin());
  column->setSpacing(look::Gap());
  column->addWidget(CurrentConfigFile);
  column->addLayout(top);
  column->addWidget(MakeGaugePanel(), 1);
  column->addLayout(MakeOpeners());
  column->addLayout(MakeButtons());
  Timer1.setObjectName("Timer1");
  connect(&Timer1, &QTimer::timeout, this, [this] { surroundings_.tick(); });
  Timer1.start(kTickMs);
  Rebuild();
  ShowSearch({});
  resize(sizeHint().width(), look::Margin() * 58);
  comLines_.front().choice->setFocus();
}

QWidget* MainConfigureForm::MakeComPanel() {
  QFrame* panel = MakePanel("PanelCom");
  QGridLayout* grid = GridIn(panel, tr("Serial port of each hardware group"), "LabelCom");
  int row = 1;
  for (const ComRow& com : kComRows) {
    auto* choice = new QComboBox;
    choice->setObjectName(QString::fromLatin1(com.choice));
    choice->setToolTip(tr("The COM number, and the device behind it"));
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(18);
    QLabel* caption = MakeLabel("", tr(com.caption));
    caption->setObjectName(QString::fromLatin1(com.choice) + "Caption");
    caption->setBuddy(choice);
    QPushButton* set = MakeButton(com.button, tr("Set"), tr("Takes the chosen port into the configuration"));
    comLines_.push_back({com.field, MakeLabel(com.current), choice, set});
    const std::size_t line = comLines_.size() - 1;
    connect(set, &QPushButton::clicked, this, [this, line] { SetPort(comLines_[line]); });
    connect(choice, &QComboBox::currentIndexChanged, this, [this, line] { OfferSet(comLines_[line]); });
    grid->addWidget(caption, row, 0);
    grid->addWidget(comLines_.back().current, row, 1);
    grid->addWidget(choice, row, 2);
    grid->addWidget(set, row++, 3);
  }
  grid->setColumnStretch(2, 1);
  auto* adapters = new QHBoxLayout;
  adapters->addStretch(1);
  Opener(adapters, "cmdAdapters", tr("Adapters..."),
         tr("Which adapters are plugged in, and their COM numbers"), surroundings_.adapters);
  grid->addLayout(adapters, row, 0, 1, -1);
  return panel;
}

QWidget* MainConfigureForm::MakeUdpPanel() {
  QFrame* panel = MakePanel("PanelUdp");
  QGridLayout* grid = GridIn(panel, tr("Link to the simulator (UDP)"), "LabelUdp");
  const auto digits = [] { return new QIntValidator(1, 65535); };
  boxRemoteIP = AddEdit(grid, 1, "boxRemoteIP", tr("&Address of the simulator's computer"),
                        new QRegularExpressionValidator(QRegularExpression("[0-9.]{0,15}")));
  boxRemotePort = AddEdit(grid, 2, "boxRemotePort", tr("&Port on which it listens"), digits());
  boxLocalPort = AddEdit(grid, 3, "boxLocalPort", tr("Port on which &we listen"), digits());
  OptionByteOrderNormal = new QRadioButton(tr("&Normal"));
  OptionByteOrderNormal->setObjectName("OptionByteOrderNormal");
  OptionByteOrderReverse = new QRadioButton(tr("Re&verse"));
  OptionByteOrderReverse->setObjectName("OptionByteOrderReverse");
  CheckBlockUsel = new QCheckBox(tr("Never &unsubscribe data groups (USEL)"));
  CheckBlockUsel->setObjectName("CheckBlockUsel");
  CheckBlockUsel->setToolTip(tr("For a simulator whose data output other programs use as well"));
  QPushButton* set = MakeButton("cmdSetUDP", tr("Set"), tr("Takes these settings into the configuration"));
  connect(set, &QPushButton::clicked, this, &MainConfigureForm::cmdSetUDP_Click);
  grid->addWidget(MakeLabel("LabelByteOrder", tr("Byte order of the test console")), 4, 0);
  grid->addWidget(OptionByteOrderNormal, 4, 1);
  grid->addWidget(OptionByteOrderReverse, 4, 2);
  grid->addWidget(CheckBlockUsel, 5, 0, 1, 2);
  grid->addWidget(set, 5, 2, Qt::AlignRight);
  return panel;
}

QWidget* MainConfigureForm::MakeTimingPanel() {
  QFrame* panel = MakePanel("PanelTiming");
  QGridLayout* grid = GridIn(panel, tr("Instruments"), "LabelTiming");
  SliderXferTtimerProcess = new QSlider(Qt::Horizontal);
  SliderXferTtimerProcess->setObjectName("SliderXferTtimerProcess");
  SliderXferTtimerProcess->setRange(10, 1000);
  SliderXferTtimerProcess->setSingleStep(10);
  SliderXferTtimerProcess->setPageStep(50);
  BoxXferTimerProcess = MakeLabel("BoxXferTimerProcess");
  BoxXferTimerProcess->setMinimumWidth(look::Margin() * 3);
  BoxXferTimerProcess->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  QPushButton* slow = MakeButton("CmdSet250", tr("250"), tr("Sets the interval to 250 milliseconds"));
  QLabel* caption = MakeLabel("LabelXferTimer", tr("Transfer interval, &ms"));
  caption->setBuddy(SliderXferTtimerProcess);
  ComboLights = new QComboBox;
  ComboLights->setObjectName("ComboLights");
  for (const LightsMode& mode : kLightsModes) ComboLights->addItem(ToText(mode.name));
  QLabel* lights = MakeLabel("LabelLights", tr("Lig&hts of the instruments"));
  lights->setBuddy(ComboLights);
  grid->addWidget(caption, 1, 0);
  grid->addWidget(SliderXferTtimerProcess, 1, 1);
  grid->addWidget(BoxXferTimerProcess, 1, 2);
  grid->addWidget(slow, 1, 3);
  grid->addWidget(lights, 2, 0);
  grid->addWidget(ComboLights, 2, 1, 1, 3);
  grid->setColumnStretch(1, 1);
  connect(slow, &QPushButton::clicked, this, [this] { SliderXferTtimerProcess->setValue(kSlowInterval); });
  connect(SliderXferTtimerProcess, &QSlider::valueChanged, this, [this](int milliseconds) {
    model_.General.TransferInterval = static_cast<std::int16_t>(milliseconds);
    model_.ConfigChanged = true;
    BoxXferTimerProcess->setText(QString::number(milliseconds));
  });
  connect(ComboLights, &QComboBox::activated, this, [this](int index) {
    if (index >= 0) SetLightsMode(model_, static_cast<std::size_t>(index));
  });
  return panel;
}

QWidget* MainConfigureForm::MakeGaugePanel() {
  QFrame* panel = MakePanel("PanelGauges");
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(look::Margin(), look::Gap(), look::Margin(), look::Margin());
  column->setSpacing(look::Gap());
  Configlist = new GaugeTable("Configlist");
  Configlist->setMinimumHeight(look::Margin() * 8);
  Configlist->SetOpened([this](int gaugeID) {
    if (!searching_) surroundings_.openGauge(gaugeID);
  });
  QLabel* caption = MakeLabel("LabelGauges", tr("Gauges of this coc&kpit"), "caption");
  caption->setBuddy(Configlist);
  column->addWidget(caption);
  column->addWidget(Configlist, 1);
  column->addLayout(MakeSearchRow());
  LabelSearch = MakeLabel("LabelSearch");
  LabelSearch->setWordWrap(true);
  LabelSearch->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addWidget(LabelSearch);
  return panel;
}

QLayout* MainConfigureForm::MakeSearchRow() {
  cmdStartTest = MakeButton("cmdStartTest", tr("&Find gauges"),
                            tr("Asks every address of the gauge bus, 0 to 255; about 20 seconds"));
  connect(cmdStartTest, &QPushButton::clicked, this, &MainConfigureForm::cmdStartTest_Click);
  ProgressBar1 = new QProgressBar;
  ProgressBar1->setObjectName("ProgressBar1");
  ProgressBar1->setToolTip(tr("Addresses that have been asked, of 256"));
  LabelBus = MakeLabel("LabelBus", {}, "caption");
  QPushButton* clear = MakeButton("cmdClearConfig", tr("Clear all gauges..."),
                                  tr("Takes every gauge out of the configuration; asks first"));
  connect(clear, &QPushButton::clicked, this, &MainConfigureForm::cmdClearConfig_Click);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(cmdStartTest);
  row->addWidget(ProgressBar1, 1);
  row->addWidget(LabelBus, 1);
  Opener(row, "cmdTestGauges", tr("Test a gauge..."), tr("Talks to one address by hand"),
         surroundings_.testGauges);
  row->addWidget(clear);
  return row;
}

void MainConfigureForm::Opener(QBoxLayout* row, const char* name, const QString& text, const QString& tip,
                               const std::function<void()>& open) {
  QPushButton* button = MakeButton(name, text, tip);
  connect(button, &QPushButton::clicked, this, [open] {
    if (open) open();
  });
  button->setVisible(static_cast<bool>(open));
  row->addWidget(button);
}

QLayout* MainConfigureForm::MakeOpeners() {
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  Opener(row, "cmdGetOffset", tr("Fun&ctions..."), tr("The values that are exchanged with the simulator"),
         surroundings_.functions);
  Opener(row, "cmdPlates", tr("Pla&tes..."), tr("The calibrations of the gauge faces"), surroundings_.plates);
  Opener(row, "cmdGotoIOM", tr("IO module 1..."), tr("Its switches, inputs and outputs"),
         surroundings_.ioModule1);
  Opener(row, "cmdGotoIOM2", tr("IO module 2..."), tr("Its switches, inputs and outputs"),
         surroundings_.ioModule2);
  Opener(row, "cmdGotoEC", tr("Engine cluster..."), tr("Its channels"), surroundings_.engineCluster);
  Opener(row, "cmdGotoFFB", tr("Yokes..."), tr("The force-feedback yokes"), surroundings_.yokes);
  Opener(row, "cmdTestXplaneInterface", tr("Test &X-Plane..."),
         tr("The link to the simulator, datagram by datagram"), surroundings_.testXplane);
  row->addStretch(1);
  return row;
}

QLayout* MainConfigureForm::MakeButtons() {
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(MakeThemeButton());
  row->addStretch(1);
  Opener(row, "cmdSaveConfig", tr("&Save and load..."),
         tr("Configuration files: save, load, delete, import, start-up"), surroundings_.saveConfig);
  QPushButton* close = MakeButton("CmdClose", tr("Close"), tr("Back to the start form (Escape)"));
  connect(close, &QPushButton::clicked, this, &MainConfigureForm::CmdClose_Click);
  row->addWidget(close);
  return row;
}

void MainConfigureForm::cmdStartTest_Click() {
  searching_ ? surroundings_.cancelSearch() : surroundings_.startSearch();
}

void MainConfigureForm::ShowSearch(const SearchView& view) {
  searching_ = view.running;
  cmdStartTest->setText(view.running ? tr("Cancel") : tr("&Find gauges"));
  ProgressBar1->setVisible(view.running);
  ProgressBar1->setRange(0, view.addresses);
  ProgressBar1->setValue(view.done);
  LabelBus->setVisible(!view.running);
  SetTextIfChanged(LabelBus, "Gauge bus: " + surroundings_.busWords());
  std::string text = view.summary;
  for (const std::string& remark : view.remarks) text += "\n" + remark;
  if (text.empty() && Configlist->topLevelItemCount() == 0) {
    text = "No gauge yet: give the gauge bus its port, then find the gauges.";
  }
  SetTextIfChanged(LabelSearch, text);
  LabelSearch->setVisible(!text.empty());
  Configlist->Fill(model_);
}

void MainConfigureForm::Rebuild() {
  FillNameTables(model_);
  const GeneralRecord& general = model_.General;
  CurrentConfigFile->setText(tr("Configuration file: ") + ToText(model_.ConfigFileName));
  for (const ComLine& line : comLines_) ShowPort(line);
  boxRemoteIP->setText(ToText(general.RemoteIP));
  boxRemotePort->setText(ToText(general.RemotePort));
  boxLocalPort->setText(ToText(general.LocalPort));
  (general.ByteOrderReverse == 0 ? OptionByteOrderNormal : OptionByteOrderReverse)->setChecked(true);
  CheckBlockUsel->setChecked(general.BlockUSEL == 1);
  {
    const QSignalBlocker quiet(SliderXferTtimerProcess);
    SliderXferTtimerProcess->setValue(general.TransferInterval);
  }
  BoxXferTimerProcess->setText(QString::number(general.TransferInterval));
  const auto mode = LightsModeIndex(model_);
  ComboLights->setCurrentIndex(mode ? static_cast<int>(*mode) : -1);
  Configlist->Fill(model_);
  SetTextIfChanged(LabelBus, "Gauge bus: " + surroundings_.busWords());
}

void MainConfigureForm::ShowPort(const ComLine& line) {
  const int number = model_.General.*line.field;
  SetTextIfChanged(line.current, PortText(number));
  line.choice->clear();
  for (int offered = 0; offered <= std::max(kOfferedPorts, number); ++offered) {
    if (offered > kOfferedPorts && offered != number) continue;
    const QString device = offered > 0 ? ToText(surroundings_.deviceOf(offered)) : QString();
    line.choice->addItem(PortText(offered) + (device.isEmpty() ? QString() : "  (" + device + ")"), offered);
  }
  line.choice->setCurrentIndex(line.choice->findData(std::max(0, number)));
  OfferSet(line);
}

// Only a choice that differs from what is set is worth a press.
void MainConfigureForm::OfferSet(const ComLine& line) {
  const int set = std::max<int>(0, model_.General.*line.field);
  line.set->setEnabled(line.choice->currentIndex() >= 0 && line.choice->currentData().toInt() != set);
}

void MainConfigureForm::SetPort(const ComLine& line) {
  const auto number = static_cast<std::int16_t>(line.choice->currentData().toInt());
  surroundings_.withPortsClosed([this, &line, number] { model_.General.*line.field = number; });
  model_.ConfigChanged = true;
  SetTextIfChanged(line.current, PortText(model_.General.*line.field));
  OfferSet(line);
  SetTextIfChanged(LabelBus, "Gauge bus: " + surroundings_.busWords());
}

void MainConfigureForm::cmdSetUDP_Click() {
  SetUdp(model_, {boxRemoteIP->text().toStdString(), boxRemotePort->text().toStdString(),
                  boxLocalPort->text().toStdString(), !OptionByteOrderNormal->isChecked(),
                  CheckBlockUsel->isChecked()});
}

void MainConfigureForm::cmdClearConfig_Click() {
  if (boxes_.Ask("This will clear all gauge assignments and settings!\r\nContinue anyway?") == kAnswerNo)
    return;
  ClearAllGauges(model_);
  Rebuild();
}

void MainConfigureForm::CmdClose_Click() {
  if (asking_) return;
  asking_ = true;
  const bool stay =
      model_.ConfigChanged && boxes_.Ask("Updates are not saved; Continue anyway?") == kAnswerNo;
  asking_ = false;
  if (stay || Unloading()) return;
  model_.ConfigChanged = false;
  Unload();
  surroundings_.closed();
}

}  // namespace tvx
