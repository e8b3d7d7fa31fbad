#include "config/setup/forms/MainConfigureForm.h"

#include <QSignalBlocker>

#include "config/NameTables.h"
#include "config/setup/MainConfigurePresenter.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"
#include "ui/search/SearchLine.h"

namespace tvx {
namespace {

constexpr int kSlowInterval = 250;
constexpr int kTickMs = 50;

}  // namespace

MainConfigureForm::MainConfigureForm(ConfigModel& model, MessageBoxes& boxes, PortAccess& ports,
                                     GaugeBusAccess& bus, ConfigurationWindows& windows,
                                     SimulatorFinder& finder, const GaugeAdvice& advice, QWidget* parent)
    : Form("FrmMainConfigure", parent),
      model_(model),
      boxes_(boxes),
      bus_(bus),
      windows_(windows),
      advice_(advice),
      bulk_(model, advice) {
  setWindowTitle(tr("Configuration"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  CurrentConfigFile = MakeLabel("CurrentConfigFile");
  CurrentConfigFile->setWordWrap(true);
  auto* left = new QVBoxLayout;
  left->setSpacing(look::Gap());
  PanelCom = new ComPortsPanel(model_, ports);
  connect(PanelCom, &ComPortsPanel::PortSet, this, &MainConfigureForm::ShowBus);
  connect(PanelCom, &ComPortsPanel::AdaptersAsked, this,
          [this] { windows_.Open(ConfigurationWindow::Adapters); });
  left->addWidget(PanelCom);
  left->addStretch(1);
  auto* right = new QVBoxLayout;
  right->setSpacing(look::Gap());
  PanelUdp = new UdpPanel(model_, finder);
  Keep(finder.Listen([this] { PanelUdp->ShowFound(); }));
  right->addWidget(PanelUdp);
  right->addStretch(1);
  auto* top = new QHBoxLayout;
  top->setSpacing(look::Gap());
  top->addLayout(left, 3);
  top->addLayout(right, 2);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(CurrentConfigFile);
  column->addLayout(top);
  column->addWidget(MakeTimingPanel());
  column->addWidget(MakeGaugePanel(), 1);
  column->addLayout(MakeOpeners());
  column->addLayout(MakeButtons());
  Timer1.setObjectName("Timer1");
  connect(&Timer1, &QTimer::timeout, this, [this] { bus_.TickReplyCountdown(); });
  Timer1.start(kTickMs);
  Rebuild();
  ShowSearch({});
  resize(std::max(sizeHint().width(), look::Margin() * 80), look::Margin() * 58);
  PanelCom->First()->setFocus();
}

QWidget* MainConfigureForm::MakeTimingPanel() {
  QFrame* panel = MakePanel("PanelTiming");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Instruments"), "LabelTiming");
  SliderXferTtimerProcess = new QSlider(Qt::Horizontal);
  SliderXferTtimerProcess->setObjectName("SliderXferTtimerProcess");
  SliderXferTtimerProcess->setRange(10, 1000);
  SliderXferTtimerProcess->setSingleStep(10);
  SliderXferTtimerProcess->setPageStep(50);
  SliderXferTtimerProcess->setToolTip(
      tr("How often the instruments get new values, in milliseconds; shorter is smoother"));
  BoxXferTimerProcess = MakeLabel("BoxXferTimerProcess");
  BoxXferTimerProcess->setMinimumWidth(BoxXferTimerProcess->fontMetrics().horizontalAdvance("32767"));
  BoxXferTimerProcess->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  QPushButton* slow =
      MakeButton("CmdSet250", tr("Slow: 250"),
                 tr("Sets the interval to 250 milliseconds: easy on a slow computer or line"));
  QLabel* caption = MakeLabel("LabelXferTimer", tr("Transfer interval, &ms"));
  caption->setBuddy(SliderXferTtimerProcess);
  ComboLights = new QComboBox;
  ComboLights->setObjectName("ComboLights");
  ComboLights->setToolTip(tr("Which lights of the aircraft light the faces of the instruments"));
  for (const LightsMode& mode : kLightsModes) ComboLights->addItem(ToText(mode.name));
  QLabel* lights = MakeLabel("LabelLights", tr("Lig&hts of the instruments"));
  lights->setBuddy(ComboLights);
  grid->addWidget(caption, 1, 0);
  grid->addWidget(SliderXferTtimerProcess, 1, 1);
  grid->addWidget(BoxXferTimerProcess, 1, 2);
  grid->addWidget(slow, 1, 3);
  // In one row, so that the list of gauges gets the height.
  grid->setColumnMinimumWidth(4, look::Margin());
  grid->addWidget(lights, 1, 5);
  grid->addWidget(ComboLights, 1, 6);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(6, 1);
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
  SpacePanel(column, look::Margin());
  Configlist = new GaugeTable("Configlist", model_, advice_);
  Configlist->setMinimumHeight(look::Margin() * 8);
  Configlist->SetOpened([this](int gaugeID) {
    if (!searching_) windows_.OpenGauge(gaugeID);
  });
  QLabel* caption = MakeLabel("LabelGauges", tr("Gauges of this coc&kpit"), "caption");
  caption->setBuddy(Configlist);
  auto* search =
      new SearchLine("SearchGauge",
                     tr("The list shows the gauges that hold this, and those that are ticked; Enter goes to "
                        "the first one, and once more opens it"),
                     Configlist);
  auto* head = new QHBoxLayout;
  head->addWidget(caption);
  head->addStretch(2);
  head->addWidget(search, 1);
  column->addLayout(head);
  column->addWidget(Configlist, 1);
  PanelBulk = new GaugeBulkPanel(model_, bulk_, [this] { Configlist->Fill(); });
  column->addWidget(PanelBulk);
  Configlist->SetTicked([this] { PanelBulk->ShowFor(Configlist->Ticked()); });
  Configlist->SetEdited([this](const GaugeTable::Edit& edit) {
    edit.plate ? bulk_.SetPlate({edit.gaugeID}, edit.needle, edit.value)
               : bulk_.SetFunction({edit.gaugeID}, edit.needle, edit.value);
    Configlist->Fill();
  });
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
  QPushButton* clear = MakeButton("cmdClearConfig", tr("Clea&r all gauges..."),
                                  tr("Takes every gauge out of the configuration; asks first"));
  connect(clear, &QPushButton::clicked, this, &MainConfigureForm::cmdClearConfig_Click);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  QPushButton* next = MakeButton("cmdNextWork", tr("Next to do"),
                                 tr("Opens the next gauge that lacks a Function or a Plate"));
  connect(next, &QPushButton::clicked, this, [this] {
    const int gaugeID = bulk_.NextThatNeedsWork(Configlist->Current());
    if (gaugeID < 0) return boxes_.Show("Every gauge has what it needs.");
    Configlist->Choose(gaugeID);
    if (!searching_) windows_.OpenGauge(gaugeID);
  });
  row->addWidget(cmdStartTest);
  row->addWidget(next);
  row->addWidget(ProgressBar1, 1);
  row->addWidget(LabelBus, 1);
  Opener(row, "cmdTestGauges", tr("Test a gauge..."), tr("Talks to one address by hand"),
         ConfigurationWindow::GaugeTest);
  row->addWidget(clear);
  return row;
}

void MainConfigureForm::Opener(QBoxLayout* row, const char* name, const QString& text, const QString& tip,
                               ConfigurationWindow window) {
  QPushButton* button = MakeButton(name, text, tip);
  connect(button, &QPushButton::clicked, this, [this, window] { windows_.Open(window); });
  row->addWidget(button);
}

QLayout* MainConfigureForm::MakeOpeners() {
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  Opener(row, "cmdGuide", tr("Set-up guide..."),
         tr("From nothing to a cockpit that flies, step by step: finds everything and asks little"),
         ConfigurationWindow::Guide);
  Opener(row, "cmdGetOffset", tr("Fun&ctions..."), tr("The values that are exchanged with the simulator"),
         ConfigurationWindow::Functions);
  Opener(row, "cmdPlates", tr("Pla&tes..."), tr("The calibrations of the gauge faces"),
         ConfigurationWindow::Plates);
  Opener(row, "cmdGotoIOM", tr("IO module 1..."), tr("Its switches, inputs and outputs"),
         ConfigurationWindow::IOModule1);
  Opener(row, "cmdGotoIOM2", tr("IO module 2..."), tr("Its switches, inputs and outputs"),
         ConfigurationWindow::IOModule2);
  Opener(row, "cmdGotoEC", tr("Engine cluster..."), tr("Its channels"), ConfigurationWindow::EngineCluster);
  Opener(row, "cmdGotoFFB", tr("Yokes..."), tr("The force-feedback yokes"), ConfigurationWindow::Yokes);
  Opener(row, "cmdTestXplaneInterface", tr("Test &X-Plane..."),
         tr("The link to the simulator, datagram by datagram"), ConfigurationWindow::XplaneTest);
  row->addStretch(1);
  return row;
}

QLayout* MainConfigureForm::MakeButtons() {
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(MakeThemeButton());
  row->addStretch(1);
  Opener(row, "cmdAircraft", tr("A&ircraft..."), tr("Changes the configuration with the aircraft"),
         ConfigurationWindow::Aircraft);
  Opener(row, "cmdSaveConfig", tr("&Save and load..."),
         tr("Configuration files: save, load, delete, import, start-up"), ConfigurationWindow::SaveAndLoad);
  QPushButton* close = MakeButton("CmdClose", tr("Close"), tr("Back to the start form (Escape)"));
  connect(close, &QPushButton::clicked, this, &MainConfigureForm::CloseAsked);
  row->addWidget(close);
  return row;
}

void MainConfigureForm::cmdStartTest_Click() {
  searching_ ? bus_.CancelSearch() : bus_.StartSearch();
}

void MainConfigureForm::ShowSearch(const SearchView& view) {
  searching_ = view.running;
  cmdStartTest->setText(view.running ? tr("Cancel") : tr("&Find gauges"));
  ProgressBar1->setVisible(view.running);
  ProgressBar1->setRange(0, view.addresses);
  ProgressBar1->setValue(view.done);
  LabelBus->setVisible(!view.running);
  ShowBus();
  std::string text = view.summary;
  for (const std::string& remark : view.remarks) text += "\n" + remark;
  if (text.empty() && Configlist->topLevelItemCount() == 0) {
    text = "No gauge yet: give the gauge bus its port, then find the gauges.";
  }
  SetTextIfChanged(LabelSearch, text);
  LabelSearch->setVisible(!text.empty());
  Configlist->Fill();
}

void MainConfigureForm::Rebuild() {
  FillNameTables(model_);
  const GeneralRecord& general = model_.General;
  CurrentConfigFile->setText(tr("Configuration file: ") + ToText(model_.ConfigFileName));
  PanelCom->ShowModel();
  PanelUdp->ShowModel();
  {
    const QSignalBlocker quiet(SliderXferTtimerProcess);
    SliderXferTtimerProcess->setValue(general.TransferInterval);
  }
  BoxXferTimerProcess->setText(QString::number(general.TransferInterval));
  const auto mode = LightsModeIndex(model_);
  ComboLights->setCurrentIndex(mode ? static_cast<int>(*mode) : -1);
  Configlist->Fill();
  ShowBus();
}

void MainConfigureForm::ShowLines() {
  PanelCom->ShowAdvice();
  ShowBus();
}

void MainConfigureForm::ShowBus() {
  SetTextIfChanged(LabelBus, "Gauge bus: " + bus_.BusWords());
}

void MainConfigureForm::cmdClearConfig_Click() {
  const int answer = boxes_.Ask("This will clear all gauge assignments and settings!\r\nContinue anyway?");
  if (answer == kAnswerNo || Unloading()) return;
  bus_.CancelSearch();
  ClearAllGauges(model_);
  Rebuild();
}

// What was chosen or typed and never set would be lost as well.
bool MainConfigureForm::MayEnd() {
  const bool unsaved = model_.ConfigChanged || PanelCom->Pending() || PanelUdp->Pending();
  return !unsaved || boxes_.Ask("Updates are not saved; Continue anyway?") != kAnswerNo;
}

}  // namespace tvx
