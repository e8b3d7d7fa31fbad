#include "hwbus/gaugebus/forms/TestGaugesForm.h"

#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr std::size_t kOfferedSlots = 50;

QLineEdit* AddNumber(QGridLayout* grid, int row, int column, const char* name, const QString& caption,
                     const QString& toolTip) {
  QLineEdit* edit = AddEdit(grid, row, column, name, caption, toolTip);
  edit->setMaximumWidth(look::Margin() * 8);
  return edit;
}

}  // namespace

TestGaugesForm::TestGaugesForm(const ConfigModel& model, GaugeConsolePresenter& presenter,
                               const GaugeBusAccess& bus, ModelWatcher& watcher, QWidget* parent)
    : Form("frmTestGauges", parent), model_(model), presenter_(presenter), bus_(bus), watcher_(watcher) {
  setWindowTitle(tr("Gauge test console"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  PollTimer.setObjectName("PollTimer");
  PollTimer.setInterval(GaugeConsolePresenter::kPollMs);
  // A running poll follows the address as it is typed.
  connect(&PollTimer, &QTimer::timeout, this, [this] {
    presenter_.ManualGaugeID = ManualGaugeID->text().toStdString();
    presenter_.PollTimer_Tick();
  });
  LabelBus = MakeLabel("LabelBus");
  QPushButton* close = MakeButton("CmdClose", tr("Close"), tr("Back to the configuration (Escape)"));
  connect(close, &QPushButton::clicked, this, &TestGaugesForm::CloseAsked);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(MakePollPanel());
  column->addWidget(MakeSendPanel());
  column->addWidget(MakeAddPanel());
  column->addStretch(1);
  column->addWidget(LabelBus);
  column->addWidget(close, 0, Qt::AlignRight);
  Keep(presenter_.SetChanged([this] { ShowView(); }));
  ShowView();
  ManualGaugeID->setText(ToText(presenter_.ManualGaugeID));
  connect(ManualGaugeID, &QLineEdit::returnPressed, cmdPollGauge, &QPushButton::click);
  ManualGaugeID->setFocus();
  KeepWide(this);
}

QWidget* TestGaugesForm::MakePollPanel() {
  QFrame* panel = MakePanel("PanelPoll");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Ask one gauge"), "LabelPoll");
  auto* line = new QHBoxLayout;
  line->setSpacing(look::Gap() / 2);
  ManualGaugeID = new QLineEdit;
  ManualGaugeID->setObjectName("ManualGaugeID");
  ManualGaugeID->setToolTip(tr("Address of the gauge, 0 to 255"));
  ManualGaugeID->setMaximumWidth(look::Margin() * 8);
  WantWhole(ManualGaugeID, 0, kGauges - 1);
  line->addWidget(MakeCaption(ManualGaugeID, tr("&GaugeID")));
  line->addWidget(ManualGaugeID);
  const struct {
    const char* name;
    int by;
  } steps[] = {{"cmdMinusTen", -10}, {"cmdMinusOne", -1}, {"cmdplusone", 1}, {"CmdPlusTen", 10}};
  for (const auto& step : steps) {
    QPushButton* button = MakeButton(step.name, (step.by > 0 ? "+" : "") + QString::number(step.by),
                                     tr("Changes the address by %1").arg(step.by));
    look::SetRole(button, "small");
    connect(button, &QPushButton::clicked, this, [this, by = step.by] {
      Do([this, by] {
        presenter_.Step(by);
        ManualGaugeID->setText(ToText(presenter_.ManualGaugeID));
      });
    });
    line->addWidget(button);
  }
  cmdPollGauge = MakeButton("cmdPollGauge", tr("&Poll"), tr("Asks this address four times a second"));
  look::SetRole(cmdPollGauge, "primary");
  cmdStopPoll = MakeButton("cmdStopPoll", tr("S&top"), tr("Ends the asking"));
  connect(cmdPollGauge, &QPushButton::clicked, this, [this] { Do([this] { presenter_.cmdPollGauge(); }); });
  connect(cmdStopPoll, &QPushButton::clicked, this, [this] { Do([this] { presenter_.cmdStopPoll(); }); });
  line->addWidget(cmdPollGauge);
  line->addWidget(cmdStopPoll);
  ProgressIndicator = MakeLabel("ProgressIndicator");
  ProgressIndicator->setMinimumWidth(look::Margin() * 2);
  line->addWidget(ProgressIndicator);
  line->addStretch(1);
  grid->addLayout(line, 1, 0, 1, -1);
  const struct {
    const char *name, *caption;
    QLabel** box;
  } boxes[] = {{"BoxID", "Answers as", &BoxID},
               {"BoxType", "Type", &BoxType},
               {"BoxModel", "Model", &BoxModel},
               {"boxVersion", "Version", &boxVersion},
               {"boxName", "Instrument", &boxName}};
  int at = 0;
  for (const auto& box : boxes) {
    grid->addWidget(MakeLabel((std::string(box.name) + "Caption").c_str(), tr(box.caption), "caption"), 2,
                    at);
    *box.box = MakeLabel(box.name);
    (*box.box)->setMinimumWidth(look::Margin() * 6);
    grid->addWidget(*box.box, 3, at++);
  }
  boxName->setMinimumWidth(look::Margin() * 18);
  grid->setColumnStretch(4, 1);
  Text7 = MakeLabel("Text7");
  Text7->setToolTip(tr("The 25 bytes of the reply"));
  Text7->setTextInteractionFlags(Qt::TextSelectableByMouse);
  Text7->setWordWrap(true);
  Text7->setMinimumHeight(Text7->fontMetrics().lineSpacing() * 2);
  grid->addWidget(Text7, 4, 0, 1, -1);
  return panel;
}

QWidget* TestGaugesForm::MakeSendPanel() {
  QFrame* panel = MakePanel("PanelSend");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Send a command to this address"), "LabelSend");
  CommandNumber =
      AddNumber(grid, 1, 0, "CommandNumber", tr("&Command"), tr("Number of the command, 0 to 15"));
  CommandValue =
      AddNumber(grid, 1, 2, "CommandValue", tr("&Value"), tr("The command's value, -65535 to 65535"));
  const auto said = [this](const std::string& words) { SetTextIfChanged(LabelTyped, words); };
  CheckAsTyped(
      CommandNumber,
      [](const std::string& text) { return std::string(GaugeConsolePresenter::CommandProblem(text)); }, said);
  CheckAsTyped(
      CommandValue,
      [](const std::string& text) { return std::string(GaugeConsolePresenter::ValueProblem(text)); }, said);
  QPushButton* send = MakeButton("SendGaugeCommand", tr("&Send"), tr("Sends command and value once"));
  connect(send, &QPushButton::clicked, this, [this] { Do([this] { presenter_.SendGaugeCommand(); }); });
  LabelTyped = MakeLabel("LabelTyped", {}, "caption");
  for (QLineEdit* edit : {CommandNumber, CommandValue})
    connect(edit, &QLineEdit::returnPressed, send, &QPushButton::click);
  grid->addWidget(send, 1, 4);
  grid->addWidget(LabelTyped, 1, 5);
  grid->setColumnStretch(5, 1);
  return panel;
}

QWidget* TestGaugesForm::MakeAddPanel() {
  QFrame* panel = MakePanel("PanelAdd");
  QGridLayout* grid =
      MakeTitledGrid(panel, tr("Force a gauge at this address into the configuration"), "LabelAdd");
  ComboGaugeType = new QComboBox;
  ComboGaugeType->setObjectName("ComboGaugeType");
  ComboGaugeType->setToolTip(tr("The kind of instrument; nobody checks it"));
  ComboGaugeType->addItem(tr("(choose)"), 0);
  for (std::size_t slot = 1; slot <= kOfferedSlots; ++slot) {
    const GaugetypeRecord& kind = model_.Gaugetypes[slot];
    if (kind.Code != 0)
      ComboGaugeType->addItem(QString::number(kind.Code) + "  " + ToText(kind.Name), kind.Code);
  }
  boxAddModel = AddNumber(grid, 1, 2, "boxAddModel", tr("&Model"), tr("Model, 0 to 255"));
  boxAddVersion = AddNumber(grid, 1, 4, "boxAddVersion", tr("Ve&rsion"), tr("Firmware version, 0 to 255"));
  for (QLineEdit* edit : {boxAddModel, boxAddVersion}) WantWhole(edit, 0, 255);
  QPushButton* add =
      MakeButton("cmdAddToConfig", tr("&Add..."), tr("Adds it without having seen it; asks first"));
  connect(add, &QPushButton::clicked, this, [this] {
    Do([this] {
      if (presenter_.cmdAddToConfig()) watcher_.ModelChanged();
    });
  });
  grid->addWidget(MakeCaption(ComboGaugeType, tr("&Kind")), 1, 0);
  grid->addWidget(ComboGaugeType, 1, 1);
  grid->addWidget(add, 1, 6);
  grid->setColumnStretch(1, 1);
  return panel;
}

void TestGaugesForm::TakeInputs() {
  presenter_.ManualGaugeID = ManualGaugeID->text().toStdString();
  presenter_.CommandNumber = CommandNumber->text().toStdString();
  presenter_.CommandValue = CommandValue->text().toStdString();
  presenter_.ComboGaugeType = ComboGaugeType->currentData().toInt();
  presenter_.boxAddModel = boxAddModel->text().toStdString();
  presenter_.boxAddVersion = boxAddVersion->text().toStdString();
}

// The operation may ask the user, and the form may have ended when the answer comes.
void TestGaugesForm::Do(const std::function<void()>& operation) {
  TakeInputs();
  operation();
  if (!Unloading()) ShowView();
}

void TestGaugesForm::ShowView() {
  const GaugeConsoleView& view = presenter_.View();
  SetTextIfChanged(Text7, view.Text7);
  SetTextIfChanged(BoxID, view.BoxID);
  SetTextIfChanged(BoxType, view.BoxType);
  SetTextIfChanged(BoxModel, view.BoxModel);
  SetTextIfChanged(boxVersion, view.boxVersion);
  SetTextIfChanged(boxName, view.boxName);
  SetTextIfChanged(ProgressIndicator, view.ProgressIndicator);
  SetTextIfChanged(LabelBus, QString("Gauge bus: ") + ToText(bus_.BusWords()));
  cmdStopPoll->setEnabled(presenter_.Polling());
  if (presenter_.Polling() != PollTimer.isActive()) {
    presenter_.Polling() ? PollTimer.start() : PollTimer.stop();
  }
}

}  // namespace tvx
