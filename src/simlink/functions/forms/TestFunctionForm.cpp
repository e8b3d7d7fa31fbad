#include "simlink/functions/forms/TestFunctionForm.h"

#include "simlink/PortValue.h"
#include "ui/Look.h"
#include "ui/NumberBox.h"

namespace tvx {
namespace {

constexpr int kReadIntervalMs = 100;  // as fast as one can read
constexpr int kWriteIntervalMs = 200;

}  // namespace

TestFunctionForm::TestFunctionForm(const ConfigModel& model, SimCom& sim, MessageBoxes& boxes,
                                   QWidget* parent)
    : Form("frmTestFunction", parent), model_(model), presenter_(model, sim, boxes) {
  setWindowTitle(tr("Test of a Function"));
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addWidget(MakeChoicePanel());
  column->addWidget(MakeReadPanel());
  column->addWidget(MakeWritePanel());
  LabelNote = MakeLabel("LabelNote");
  LabelNote->setWordWrap(true);
  LabelNote->setMinimumHeight(LabelNote->fontMetrics().lineSpacing() * 2);
  QPushButton* close = MakeButton("CmdClose", tr("&Close"), tr("Ends reading and writing (Escape)"));
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(LabelNote, 1);
  bottom->addWidget(close);
  column->addLayout(bottom);
  ReadTimer.setObjectName("ReadTimer");
  ReadTimer.setInterval(kReadIntervalMs);
  IntervalTimer.setObjectName("IntervalTimer");
  connect(&ReadTimer, &QTimer::timeout, this, [this] {
    presenter_.Read_Tick();
    ShowView();
  });
  connect(&IntervalTimer, &QTimer::timeout, this, [this] {
    presenter_.IntervalTimer_Tick();
    ShowView();
  });
  connect(close, &QPushButton::clicked, this, &TestFunctionForm::CloseAsked);
  Choose(kFirstConfigurable);
  KeepWide(this);
}

QWidget* TestFunctionForm::MakeChoicePanel() {
  QFrame* panel = MakePanel("PanelChoice");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Function"));
  BoxFunctionNr = AddEdit(grid, 1, 0, "BoxFunctionNr", tr("&Number"), tr("Function number, 1 to 300"));
  WantWhole(BoxFunctionNr, 1, kFunctions - 1);
  BoxSeqNr = AddEdit(grid, 1, 2, "BoxSeqNr", tr("&Sequence number"),
                     tr("Which of the Function's four sources, 1 to 4"));
  WantWhole(BoxSeqNr, 0, 4);
  BoxSeqNr->setText("1");
  LabelName = MakeLabel("LabelName");
  LabelDataType = MakeLabel("LabelDataType", {}, "caption");
  grid->addWidget(LabelName, 2, 0, 1, 3);
  grid->addWidget(LabelDataType, 2, 3);
  grid->setColumnStretch(3, 1);
  connect(BoxFunctionNr, &QLineEdit::textChanged, this, &TestFunctionForm::TakeChoice);
  connect(BoxSeqNr, &QLineEdit::textChanged, this, &TestFunctionForm::TakeChoice);
  return panel;
}

QWidget* TestFunctionForm::MakeReadPanel() {
  QFrame* panel = MakePanel("PanelRead");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Read from the simulator"));
  BoxRaw = new ValueBox("BoxRawValue", tr("Raw, as received"), {}, "-0000000.0000");
  BoxCorrected = new ValueBox("BoxCorrectedValue", tr("Corrected: (raw + add) x multiply / divide"), {},
                              "-0000000.0000");
  CmdRead = MakeButton("CmdRead", tr("&Read"), tr("Shows the value ten times a second"));
  CmdStopRead = MakeButton("CmdStopRead", tr("Sto&p reading"), tr("Leaves the last value standing"));
  LabelReadStatus = MakeLabel("LabelReadStatus", {}, "caption");
  grid->addWidget(BoxRaw, 1, 0, 1, 3);
  grid->addWidget(BoxCorrected, 1, 3, 1, 3);
  grid->addWidget(CmdRead, 2, 0);
  grid->addWidget(CmdStopRead, 2, 1);
  grid->addWidget(LabelReadStatus, 2, 2, 1, 2);
  for (const int column : {2, 3, 4, 5}) grid->setColumnStretch(column, 1);
  connect(CmdRead, &QPushButton::clicked, this, [this] {
    presenter_.CmdRead_Click();
    ShowView();
  });
  connect(CmdStopRead, &QPushButton::clicked, this, [this] {
    presenter_.CmdStopRead_Click();
    ShowView();
  });
  return panel;
}

QWidget* TestFunctionForm::MakeWritePanel() {
  QFrame* panel = MakePanel("PanelWrite");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Write to the simulator"));
  BoxWriteValue = AddEdit(grid, 1, 0, "BoxWriteValue", tr("&Value"), tr("In the Function's own unit"));
  CmdWriteOnce = MakeButton("CmdWriteOnce", tr("&Write once"), tr("Sends the value"));
  grid->addWidget(CmdWriteOnce, 1, 2, 1, 2);
  BoxWriteLowerLimit = AddEdit(grid, 2, 0, "BoxWriteLowerLimit", tr("&Lower limit"),
                               tr("In the Function's own unit; sweeping begins here"));
  BoxWriteUpperLimit = AddEdit(grid, 2, 2, "BoxWriteUpperLimit", tr("&Upper limit"),
                               tr("In the Function's own unit; sweeping turns here"));
  boxIncrDecr =
      AddEdit(grid, 3, 0, "boxIncrDecr", tr("S&tep"), tr("Added up to the upper limit, then taken away"));
  BoxInterval = new NumberSpin;
  BoxInterval->setObjectName("BoxInterval");
  BoxInterval->setRange(20, 10000);
  BoxInterval->setSingleStep(20);
  BoxInterval->setValue(kWriteIntervalMs);
  BoxInterval->setSuffix(tr(" ms"));
  BoxInterval->setToolTip(tr("From one value to the next, in milliseconds"));
  grid->addWidget(MakeCaption(BoxInterval, tr("&Every")), 3, 2);
  grid->addWidget(BoxInterval, 3, 3);
  CmdWriteInterval = MakeButton("CmdWriteInterval", tr("Write sweep&ing"),
                                tr("Writes from the lower limit up to the upper and back, again and again"));
  CmdStopWrite = MakeButton("CmdStopWrite", tr("Stop writin&g"), tr("The simulator keeps the last value"));
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(CmdWriteInterval);
  buttons->addWidget(CmdStopWrite);
  LabelWriteStatus = MakeLabel("LabelWriteStatus", {}, "caption");
  buttons->addWidget(LabelWriteStatus, 1);
  LabelWritten = MakeLabel("LabelWritten");
  grid->addLayout(buttons, 4, 0, 1, 4);
  grid->addWidget(LabelWritten, 5, 0, 1, 4);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  const auto said = [this](const std::string& words) {
    typed_ = words;
    ShowView();
  };
  const auto words = [](std::string_view problem) {
    return std::string(problem == functiontext::kIncorrectData ? kRealNumberWords : problem);
  };
  for (QLineEdit* box : {BoxWriteLowerLimit, BoxWriteUpperLimit, BoxWriteValue}) {
    checkAgain_.push_back(CheckAsTyped(
        box, [this, words](const std::string& text) { return words(presenter_.ProblemOf(text)); }, said));
  }
  CheckAsTyped(
      boxIncrDecr,
      [](const std::string& text) {
        return FunctionTrialPresenter::StepProblem(text).empty() ? std::string()
                                                                 : std::string("a number above 0");
      },
      said);
  connect(CmdWriteOnce, &QPushButton::clicked, this, [this] {
    presenter_.CmdWriteOnce_Click(BoxWriteValue->text().toStdString());
    ShowView();
  });
  connect(BoxWriteValue, &QLineEdit::returnPressed, CmdWriteOnce, &QPushButton::click);
  connect(CmdWriteInterval, &QPushButton::clicked, this, [this] {
    presenter_.CmdWriteInterval_Click(BoxWriteLowerLimit->text().toStdString(),
                                      BoxWriteUpperLimit->text().toStdString(),
                                      boxIncrDecr->text().toStdString());
    ShowView();
  });
  connect(CmdStopWrite, &QPushButton::clicked, this, [this] {
    presenter_.CmdStopWrite_Click();
    ShowView();
  });
  connect(BoxInterval, &QSpinBox::valueChanged, this, [this](int ms) { IntervalTimer.setInterval(ms); });
  IntervalTimer.setInterval(BoxInterval->value());
  return panel;
}

void TestFunctionForm::Choose(int function) {
  BoxFunctionNr->setText(QString::number(function));
  TakeChoice();
}

void TestFunctionForm::TakeChoice() {
  presenter_.Choose(BoxFunctionNr->text().toStdString(), BoxSeqNr->text().toStdString());
  const FunctionRecord* function =
      model_.FunctionOf(TypedWhole(BoxFunctionNr->text().toStdString(), 1, kFunctions - 1).value_or(-1));
  const bool defined = function != nullptr && !function->ShortName.empty();
  LabelName->setText(defined ? ToText(function->ShortName) : tr("not defined"));
  const auto offer = [](QLineEdit* box, float value) { box->setText(ToText(ValueText(value))); };
  if (defined) {
    offer(BoxWriteLowerLimit, function->boxMinimumValue);
    offer(BoxWriteUpperLimit, function->boxMaximumValue);
    offer(boxIncrDecr, std::max(1.0f, (function->boxMaximumValue - function->boxMinimumValue) / 50));
  }
  // The other Function's data type may take what this one's did not.
  for (const auto& check : checkAgain_) check();
  ShowView();
}

void TestFunctionForm::ShowView() {
  const FunctionTrialPresenter::View& view = presenter_.Shown();
  SetTextIfChanged(LabelDataType, view.DataTypeName);
  SetTextIfChanged(LabelReadStatus, view.Status);
  SetTextIfChanged(LabelWriteStatus, view.WriteStatus);
  SetTextIfChanged(LabelNote, typed_.empty() ? view.Note : typed_);
  BoxRaw->SetValue(view.Raw);
  BoxCorrected->SetValue(view.Corrected);
  SetTextIfChanged(
      LabelWritten,
      !view.WriteNote.empty() ? ToText(view.WriteNote)
      : view.Written.empty()
          ? tr("Nothing written yet")
          : tr("Written: %1, sent raw as %2").arg(ToText(view.Written), ToText(view.WrittenRaw)));
  CmdStopRead->setEnabled(presenter_.Reading());
  CmdStopWrite->setEnabled(presenter_.Writing());
  const auto run = [](QTimer& timer, bool wanted) {
    if (wanted && !timer.isActive()) timer.start();
    if (!wanted) timer.stop();
  };
  run(ReadTimer, presenter_.Reading());
  run(IntervalTimer, presenter_.Writing());
}

}  // namespace tvx
