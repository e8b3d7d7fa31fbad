#include "simlink/console/forms/TestXplaneInterfaceForm.h"

#include <QFileDialog>
#include <QFontDatabase>

#include "ui/Look.h"
#include "ui/NumberBox.h"

namespace tvx {
namespace {

constexpr int kDisplayIntervalMs = 100;  // as fast as one can read

std::string TextOf(const QLineEdit* edit) {
  return edit->text().trimmed().toStdString();
}

// Boxes that hold a number only.
void KeepSmall(std::initializer_list<QLineEdit*> boxes) {
  for (QLineEdit* box : boxes) box->setMaximumWidth(look::Margin() * 7);
}

}  // namespace

TestXplaneInterfaceForm::Choosers TestXplaneInterfaceForm::DesktopChoosers() {
  return {[](QWidget* parent) {
            return QFileDialog::getSaveFileName(parent, tr("Save the log as"), "xplane-log.txt");
          },
          &ChooseXplaneFolder};
}

TestXplaneInterfaceForm::TestXplaneInterfaceForm(ConfigModel& model, SimCom& sim, MessageBoxes& boxes,
                                                 const Clock& clock, QWidget* parent, Choosers choosers)
    : Form("frmTestXplaneInterface", parent),
      presenter_(model, sim, boxes, clock),
      choosers_(std::move(choosers)) {
  setWindowTitle(tr("X-Plane interface test"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  references_ = new ReferencePanel(boxes, choosers_.folder);
  auto* left = new QVBoxLayout;
  left->setSpacing(look::Gap());
  left->addWidget(MakeLinkPanel());
  left->addWidget(MakeDataPanel());
  left->addWidget(MakeReferencePart(), 1);
  auto* right = new QVBoxLayout;
  right->setSpacing(look::Gap());
  right->addWidget(MakeRawPanel(), 2);
  right->addWidget(MakeLogPanel(), 3);
  right->addWidget(MakeSubscriptionPanel(), 1);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addLayout(left);
  row->addLayout(right, 1);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addLayout(row, 1);
  column->addLayout(MakeBottom());
  references_->Show(kReferencesFile, kConsoleReferencesMissing);
  DisplayTimer.setObjectName("DisplayTimer");
  DisplayTimer.setInterval(kDisplayIntervalMs);
  connect(&DisplayTimer, &QTimer::timeout, this, [this] {
    if (!presenter_.DisplayTimer_Tick()) return;
    ShowSubscriptions();
    ShowView();
  });
  for (QLineEdit* box :
       {boxRemotePort, boxLocalPort, boxIndex, boxReferenceIndex, boxValue, SelectedReference, boxDREFValue,
        boxRREFIdentifier, boxRREFFrequency, boxFunctionNr}) {
    CheckAsTyped(
        box,
        [name = box->objectName().toStdString()](const std::string& text) {
          return ConsoleProblem(name, QString::fromStdString(text).trimmed().toStdString());
        },
        [this](const std::string& words) {
          typed_ = words;
          ShowView();
        });
  }
  ShowSubscriptions();
  ShowView();
  KeepWide(this);
  OpenWide(this, 95);
  cmdStartUDP->setFocus();
}

QPushButton* TestXplaneInterfaceForm::AddButton(const char* name, const QString& text, const QString& toolTip,
                                                std::function<void()> does) {
  QPushButton* button = MakeButton(name, text, toolTip);
  connect(button, &QPushButton::clicked, this, [this, does = std::move(does)] {
    typed_.clear();
    does();  // may open a file chooser
    if (!Unloading()) ShowView();
  });
  return button;
}

void TestXplaneInterfaceForm::TakeEndpoint() {
  presenter_.Endpoint = {TextOf(boxRemoteIP), TextOf(boxRemotePort), TextOf(boxLocalPort)};
}

QWidget* TestXplaneInterfaceForm::MakeLinkPanel() {
  QFrame* panel = MakePanel("PanelLink");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Link of this console"));
  boxRemoteIP = AddEdit(grid, 1, 0, "boxRemoteIP", tr("&Address"), tr("Of the simulator's computer"));
  boxRemotePort =
      AddEdit(grid, 1, 2, "boxRemotePort", tr("Its &port"), tr("On which X-Plane listens: 49000"));
  boxLocalPort =
      AddEdit(grid, 1, 4, "boxLocalPort", tr("&Our port"), tr("To which X-Plane sends, for example 49003"));
  boxRemoteIP->setText(ToText(presenter_.Endpoint.RemoteIP));
  boxRemotePort->setText(ToText(presenter_.Endpoint.RemotePort));
  boxLocalPort->setText(ToText(presenter_.Endpoint.LocalPort));
  KeepSmall({boxRemotePort, boxLocalPort});
  for (QLineEdit* box : {boxRemoteIP, boxRemotePort, boxLocalPort}) {
    connect(box, &QLineEdit::textChanged, this, &TestXplaneInterfaceForm::TakeEndpoint);
  }
  cmdStartUDP =
      AddButton("cmdStartUDP", tr("&Start"), tr("Shows what arrives; the instruments rest meanwhile"),
                [this] { presenter_.cmdStartUDP_Click(); });
  look::SetRole(cmdStartUDP, "primary");
  CmdStopUDP = AddButton("CmdStopUDP", tr("S&top"), tr("Ends the display of what arrives"),
                         [this] { presenter_.CmdStopUDP_Click(); });
  LampUDP = new StateLamp("LampUDP");
  LabelStatus = MakeLabel("LabelStatus");
  OptionByteOrderNormal = new QRadioButton(tr("&Normal"));
  OptionByteOrderNormal->setObjectName("OptionByteOrderNormal");
  OptionByteOrderNormal->setToolTip(
      tr("Values that come with their lowest byte first, as X-Plane sends them"));
  OptionByteOrderReverse = new QRadioButton(tr("Re&verse"));
  OptionByteOrderReverse->setObjectName("OptionByteOrderReverse");
  OptionByteOrderReverse->setToolTip(tr("Values that come with their highest byte first"));
  (presenter_.ReverseByteOrder ? OptionByteOrderReverse : OptionByteOrderNormal)->setChecked(true);
  connect(OptionByteOrderReverse, &QRadioButton::toggled, this,
          [this](bool reverse) { presenter_.ReverseByteOrder = reverse; });
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  for (QWidget* widget : std::initializer_list<QWidget*>{cmdStartUDP, CmdStopUDP, LampUDP, LabelStatus}) {
    row->addWidget(widget);
  }
  row->addStretch(1);
  row->addWidget(MakeLabel("LabelByteOrder", tr("Byte order of values"), "caption"));
  row->addWidget(OptionByteOrderNormal);
  row->addWidget(OptionByteOrderReverse);
  grid->addLayout(row, 2, 0, 1, 6);
  for (const int column : {1, 3, 5}) grid->setColumnStretch(column, column == 1 ? 2 : 1);
  return panel;
}

QWidget* TestXplaneInterfaceForm::MakeDataPanel() {
  QFrame* panel = MakePanel("PanelData");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Data groups"));
  boxIndex = AddEdit(grid, 1, 0, "boxIndex", tr("&Group"), tr("Number of the data group, 0 to 255"));
  boxReferenceIndex =
      AddEdit(grid, 2, 0, "boxReferenceIndex", tr("Value number"), tr("Which of its eight values, 0 to 7"));
  boxValue = AddEdit(grid, 2, 2, "boxValue", tr("Va&lue"), tr("To send; in X-Plane's unit"));
  boxCharacter = AddEdit(grid, 3, 0, "boxCharacter", tr("&Key"), tr("One character"));
  boxCharacter->setMaxLength(1);
  boxIndex->setText("3");
  boxReferenceIndex->setText("0");
  KeepSmall({boxIndex, boxReferenceIndex, boxValue, boxCharacter});
  const auto addRow = [grid](int row, int column, int columns, std::initializer_list<QWidget*> buttons) {
    auto* line = new QHBoxLayout;
    line->setSpacing(look::Gap());
    for (QWidget* button : buttons) line->addWidget(button);
    grid->addLayout(line, row, column, 1, columns);
  };
  addRow(1, 2, 3,
         {AddButton("cmdDSEL", tr("&DSEL: send it to us"), tr("X-Plane sends the group from now on"),
                    [this] { presenter_.cmdDSEL_Click(TextOf(boxIndex)); }),
          AddButton("cmdUSEL", tr("&USEL: stop it"), tr("X-Plane sends the group no more"),
                    [this] { presenter_.cmdUSEL_Click(TextOf(boxIndex)); }),
          AddButton("cmdUSELall", tr("USEL all"), tr("Stops groups 0 to 135"),
                    [this] { presenter_.cmdUSELall_Click(); })});
  addRow(2, 4, 1,
         {AddButton("cmdDataUdp", tr("Send Data(&float)"), tr("Writes the value of the group as a float"),
                    [this] {
                      presenter_.cmdDataUdp_Click(TextOf(boxIndex), TextOf(boxReferenceIndex),
                                                  TextOf(boxValue));
                    }),
          AddButton("cmdSendDataInteger", tr("Send Data(&integer)"),
                    tr("Writes the value of the group as a whole number"), [this] {
                      presenter_.cmdSendDataInteger_Click(TextOf(boxIndex), TextOf(boxReferenceIndex),
                                                          TextOf(boxValue));
                    })});
  addRow(3, 2, 3,
         {AddButton("cmdSendCharacter", tr("Send key"),
                    tr("Types the character in X-Plane (version 10 and older)"),
                    [this] { presenter_.cmdSendCharacter_Click(boxCharacter->text().toStdString()); }),
          AddButton("cmdStopAll", tr("Stop all groups"), tr("Stops groups 0 to 135"),
                    [this] { presenter_.cmdStopAll_Click(); })});
  grid->setColumnStretch(3, 1);
  return panel;
}

QWidget* TestXplaneInterfaceForm::MakeReferencePart() {
  auto* part = new QWidget;
  auto* column = new QVBoxLayout(part);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(look::Gap());
  column->addWidget(references_, 1);
  column->addWidget(MakeDrefPanel());
  connect(references_, &ReferencePanel::PathChosen, this, [this] {
    if (const auto path = references_->Path()) SelectedReference->setText(ToText(*path));
  });
  return part;
}

QWidget* TestXplaneInterfaceForm::MakeDrefPanel() {
  QFrame* panel = MakePanel("PanelDref");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Data reference: choose one above, or type it"));
  SelectedReference = new QLineEdit;
  SelectedReference->setObjectName("SelectedReference");
  SelectedReference->setToolTip(
      tr("Of an array, the number of the element stands between brackets at the end"));
  grid->addWidget(MakeCaption(SelectedReference, tr("Path")), 1, 0);
  grid->addWidget(SelectedReference, 1, 1, 1, 5);
  boxDREFValue = AddEdit(grid, 2, 0, "boxDREFValue", tr("Valu&e"), tr("To write; in X-Plane's unit"));
  boxRREFIdentifier = AddEdit(grid, 3, 0, "boxRREFIdentifier", tr("Identifier"),
                              tr("Your own number for the answers; 0 to 128 come back as they are"));
  boxRREFFrequency = AddEdit(grid, 3, 2, "boxRREFFrequency", tr("Times per second"),
                             tr("How often X-Plane sends it, 1 to 255"));
  boxFunctionNr =
      AddEdit(grid, 4, 0, "boxFunctionNr", tr("Function"), tr("A Function of your own, 51 to 269"));
  KeepSmall({boxDREFValue, boxRREFIdentifier, boxRREFFrequency, boxFunctionNr});
  boxRREFIdentifier->setText("100");
  boxRREFFrequency->setText("5");
  grid->addWidget(
      AddButton("cmdSendDREF", tr("DREF: &write it"), tr("Writes the value"),
                [this] { presenter_.cmdSendDREF_Click(TextOf(SelectedReference), TextOf(boxDREFValue)); }),
      2, 4, 1, 2);
  grid->addWidget(
      AddButton("cmdSelectRREF", tr("&RREF: send it to us"), tr("X-Plane sends the value from now on"),
                [this] {
                  presenter_.cmdSelectRREF_Click(TextOf(SelectedReference), TextOf(boxRREFIdentifier),
                                                 TextOf(boxRREFFrequency));
                  ShowSubscriptions();
                }),
      3, 4, 1, 2);
  grid->addWidget(
      AddButton(
          "cmdCopyToFunction", tr("&Copy to Function"),
          tr("Makes the path the data reference of sequence number 1"),
          [this] { presenter_.cmdCopyToFunction_Click(TextOf(boxFunctionNr), TextOf(SelectedReference)); }),
      4, 4, 1, 2);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return panel;
}

QWidget* TestXplaneInterfaceForm::MakeSubscriptionPanel() {
  QFrame* panel = MakePanel("PanelRREF");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Data references that X-Plane sends"));
  ListRREF = new LineList(
      "ListRREF", [this] { return subscriptions_.size(); },
      [this](std::size_t line) { return ToText(subscriptions_[line]); });
  ListRREF->setToolTip(tr("Each data reference asked for, how often, and its value; chosen to cancel it"));
  ListRREF->setMinimumHeight(look::Margin() * 4);
  grid->addWidget(ListRREF, 1, 0, 1, 4);
  grid->addWidget(
      AddButton("cmdShowRREF", tr("Show RREFs"), tr("Takes the list anew, with the values as they are now"),
                [this] { ShowSubscriptions(); }),
      2, 0);
  grid->addWidget(AddButton("cmdDeleteRREF", tr("Cancel one"),
                            tr("Cancels the subscription with the identifier on the left"),
                            [this] {
                              presenter_.cmdDeleteRREF_Click(TextOf(SelectedReference),
                                                             TextOf(boxRREFIdentifier));
                              ShowSubscriptions();
                            }),
                  2, 1);
  grid->addWidget(AddButton("CmdClearAllRREFs", tr("Cancel all"), tr("Cancels every subscription"),
                            [this] {
                              presenter_.CmdClearAllRREFs_Click();
                              ShowSubscriptions();
                            }),
                  2, 2);
  grid->setColumnStretch(3, 1);
  grid->setRowStretch(1, 1);
  return panel;
}

QWidget* TestXplaneInterfaceForm::MakeRawPanel() {
  QFrame* panel = MakePanel("PanelRaw");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Datagram received last"));
  boxUDPRaw = new QPlainTextEdit;
  boxUDPRaw->setObjectName("boxUDPRaw");
  boxUDPRaw->setToolTip(tr("The bytes of what arrived last"));
  boxUDPRaw->setReadOnly(true);
  boxUDPRaw->setTabChangesFocus(true);
  boxUDPRaw->setLineWrapMode(QPlainTextEdit::NoWrap);
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPixelSize(font().pixelSize() * 9 / 10);
  boxUDPRaw->setFont(fixed);
  const int rowWidth =
      QFontMetrics(fixed).horizontalAdvance(ToText(HexDump(std::vector<Byte>(16))).trimmed());
  boxUDPRaw->setMinimumSize(rowWidth + look::Margin() * 3, look::Margin() * 6);
  boxUDPRaw->setPlaceholderText(tr("Start shows the bytes of what arrives here."));
  grid->addWidget(boxUDPRaw, 1, 0, 1, 2);
  grid->addWidget(AddButton("cmdClearRaw", tr("Clear"), tr("Empties this box"),
                            [this] { presenter_.cmdClearRaw_Click(); }),
                  2, 0, Qt::AlignLeft);
  LabelArrived = MakeLabel("LabelArrived", {}, "caption");
  grid->addWidget(LabelArrived, 2, 1);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(1, 1);
  return panel;
}

QWidget* TestXplaneInterfaceForm::MakeLogPanel() {
  QFrame* panel = MakePanel("PanelLog");
  QGridLayout* grid = MakeTitledGrid(panel, tr("Log: the last 1000 lines"));
  ListUDPProcessed = new LineList(
      "ListUDPProcessed", [this] { return presenter_.Log().Size(); },
      [this](std::size_t line) { return ToText(presenter_.Log().At(line)); });
  ListUDPProcessed->setToolTip(tr("What arrived, newest last; Ctrl+C copies the chosen lines"));
  ListUDPProcessed->setMinimumHeight(look::Margin() * 8);
  grid->addWidget(ListUDPProcessed, 1, 0, 1, -1);
  auto* keep = new QHBoxLayout;
  keep->setSpacing(look::Gap());
  keep->addWidget(panel->findChild<QLabel*>("PanelLogTitle"), 1);
  keep->addWidget(AddButton("cmdClearConverted", tr("Clear"), tr("Empties the log"),
                            [this] { presenter_.cmdClearConverted_Click(); }));
  keep->addWidget(AddButton("cmdSaveLog", tr("Save log..."), tr("Writes these lines to a file"), [this] {
    const QString file = choosers_.logFile(this);
    if (!file.isEmpty() && !Unloading()) presenter_.cmdSaveLog_Click(file.toStdString());
  }));
  grid->addLayout(keep, 0, 0, 1, -1);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  cmdStopLog = AddButton("cmdStopLog", {}, tr("Logs every datagram, until it is stopped"),
                         [this] { presenter_.cmdStopLog_Click(); });
  boxFrames = new NumberSpin;
  boxFrames->setObjectName("boxFrames");
  boxFrames->setRange(2, 1000);
  boxFrames->setValue(10);
  boxFrames->setToolTip(tr("How many datagrams \"Log some\" takes"));
  LabelLogStatus = MakeLabel("LabelLogStatus", {}, "caption");
  for (QWidget* widget : std::initializer_list<QWidget*>{
           cmdStopLog,
           AddButton("cmdSingleLog", tr("Log one"), tr("Logs the next datagram"),
                     [this] { presenter_.cmdSingleLog_Click(); }),
           AddButton("cmdMultiFrame", tr("Log so&me"), tr("Logs so many datagrams"),
                     [this] { presenter_.cmdMultiFrame_Click(boxFrames->value()); }),
           boxFrames, LabelLogStatus}) {
    row->addWidget(widget);
  }
  row->addStretch(1);
  grid->addLayout(row, 2, 0, 1, -1);
  grid->setRowStretch(1, 1);
  return panel;
}

QLayout* TestXplaneInterfaceForm::MakeBottom() {
  LabelNote = MakeLabel("LabelNote");
  LabelNote->setWordWrap(true);
  LabelNote->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  QPushButton* help =
      AddButton("cmdHelp", tr("&Help"), tr("A short explanation"), [this] { presenter_.cmdHelp_Click(); });
  QPushButton* close =
      MakeButton("CmdClose", tr("Close"), tr("Ends the display and gives the link back (Escape)"));
  connect(close, &QPushButton::clicked, this, &TestXplaneInterfaceForm::CloseAsked);
  auto* row = new QHBoxLayout;
  row->setSpacing(look::Gap());
  row->addWidget(LabelNote, 1);
  row->addWidget(help);
  row->addWidget(close);
  return row;
}

void TestXplaneInterfaceForm::ShowSubscriptions() {
  subscriptions_ = presenter_.cmdShowRREF_Click();
  ListRREF->Refresh();
}

void TestXplaneInterfaceForm::ShowView() {
  const LinkConsolePresenter::View& view = presenter_.Shown();
  const bool running = view.Status == "Running";
  SetTextIfChanged(LabelStatus, view.Status);
  SetTextIfChanged(LabelLogStatus, view.LogStatus);
  SetTextIfChanged(LabelNote, typed_.empty() ? view.Note : typed_);
  SetTextIfChanged(LabelArrived, view.Arrived);
  cmdStopLog->setText(ToText(view.LogCaption));
  LampUDP->SetState(!running      ? StateLamp::State::Off
                    : view.Silent ? StateLamp::State::Trouble
                                  : StateLamp::State::Good);
  cmdStartUDP->setEnabled(!running);
  CmdStopUDP->setEnabled(running);
  if (const QString raw = ToText(view.Raw); boxUDPRaw->toPlainText() != raw) boxUDPRaw->setPlainText(raw);
  ListUDPProcessed->Refresh(true);
  if (running && !DisplayTimer.isActive()) DisplayTimer.start();
  if (!running) DisplayTimer.stop();
}

}  // namespace tvx
