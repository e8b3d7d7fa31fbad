#include "core/forms/StartForm.h"

#include <QDir>
#include <QSignalBlocker>
#include <QStyle>

#include "base/Version.h"
#include "ui/Look.h"

namespace tvx {
namespace {

QPushButton* MakeLink(const char* name, const QString& text, const QString& toolTip) {
  QPushButton* link = MakeButton(name, text, toolTip);
  look::SetRole(link, "link");
  link->setCursor(Qt::PointingHandCursor);
  return link;
}

void KeepPlaceWhenHidden(QWidget* widget) {
  QSizePolicy policy = widget->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget->setSizePolicy(policy);
}

}  // namespace

QStringList ConfigurationFiles() {
  // Name filters do not look at the case of letters.
  return QDir().entryList({"*.cfg"}, QDir::Files, QDir::Name | QDir::IgnoreCase);
}

StartForm::StartForm(StartPresenter& presenter, std::function<void()> openWebPage)
    : Form("frmMain"), presenter_(presenter) {
  setWindowTitle(ToText(kProgramTitle).trimmed());
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->setSpacing(look::Margin());
  column->addWidget(MakeHeader(openWebPage));
  column->addWidget(MakeFilePanel(), 1);
  column->addWidget(MakeCountdownPanel());
  column->addWidget(MakeButtons());
  Connect();
  butOK->setFocus();
  SetDefaultButton(butOK);
  RefreshFiles();
  ShowView();
  resize(look::Margin() * 42, sizeHint().height());
}

void StartForm::AddNotice(QWidget* panel) {
  static_cast<QVBoxLayout*>(layout())->insertWidget(1, panel);
}

void StartForm::AddChoice(QWidget* line) {
  panelCountdown_->layout()->addWidget(line);
}

QWidget* StartForm::MakeHeader(const std::function<void()>& openWebPage) {
  auto* header = new QWidget;
  header->setObjectName("HeaderStart");
  auto* row = new QHBoxLayout(header);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(look::Margin());
  Logo = new LogoFace("Logo");
  Logo->setToolTip(tr("Opens the documentation"));
  Logo->setAccessibleName(tr("Documentation"));
  Logo->setFocusPolicy(Qt::NoFocus);  // LabelWebPage does the same for the keyboard
  row->addWidget(Logo);
  auto* texts = new QVBoxLayout;
  texts->setSpacing(look::Gap() / 2);
  texts->addStretch();
  LabelTitle = MakeLink("LabelTitle", tr("Torvex Control"), tr("Opens the documentation"));
  look::SetRole(LabelTitle, "titlelink");
  LabelTitle->setFocusPolicy(Qt::NoFocus);
  LabelWebPage =
      MakeLink("LabelWebPage", tr("&How to set up and use the cockpit"), tr("Opens the documentation"));
  texts->addWidget(LabelTitle, 0, Qt::AlignLeft);
  texts->addWidget(MakeLabel("LabelVersion", tr("Version: ") + ToText(kProgramVersion), "caption"));
  texts->addWidget(LabelWebPage, 0, Qt::AlignLeft);
  texts->addStretch();
  row->addLayout(texts, 1);
  row->addWidget(MakeThemeButton(), 0, Qt::AlignTop);
  for (QAbstractButton* opens : std::initializer_list<QAbstractButton*>{Logo, LabelTitle, LabelWebPage}) {
    connect(opens, &QAbstractButton::clicked, this, openWebPage);
  }
  return header;
}

QWidget* StartForm::MakeFilePanel() {
  QFrame* panel = MakePanel("PanelFile");
  auto* column = new QVBoxLayout(panel);
  SpacePanel(column, look::Margin());
  QLabel* caption = MakeLabel("LabelFileBox", tr("&Cockpit configuration (files of this folder)"), "caption");
  FileBox = new PickList("FileBox");
  FileBox->setToolTip(tr("Click a file to use it instead of the start-up configuration"));
  FileBox->setMinimumHeight(look::Margin() * 6);
  caption->setBuddy(FileBox);
  LabelWelcome = MakeLabel("LabelWelcome", tr("Welcome"), "title");
  NoFiles =
      MakeLabel("LabelNoFiles", tr("There is no cockpit in this folder yet (%1). To set one up:\n\n"
                                   "1.  Plug in your instruments and press Configure.\n"
                                   "2.  Give the gauge bus its serial port, and let it find the gauges.\n"
                                   "3.  Click each gauge to choose what it shows, and press Save and load.\n"
                                   "4.  Come back here, press OK, and then Run.")
                                    .arg(QDir::toNativeSeparators(QDir::currentPath())));
  NoFiles->setWordWrap(true);
  QLabel* nameCaption = MakeLabel("LabelFileName", tr("&File to be used"), "caption");
  FileName = new QLineEdit;
  FileName->setObjectName("FileName");
  FileName->setToolTip(tr("The configuration file that OK and the automatic start load"));
  nameCaption->setBuddy(FileName);
  LabelNotice = MakeLabel("LabelNotice");
  LabelNotice->setWordWrap(true);
  LabelNotice->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addWidget(LabelNotice);
  column->addWidget(caption);
  column->addWidget(FileBox, 1);
  column->addWidget(LabelWelcome);
  column->addWidget(NoFiles);
  column->addWidget(nameCaption);
  column->addWidget(FileName);
  return panel;
}

QWidget* StartForm::MakeCountdownPanel() {
  QFrame* panel = panelCountdown_ = MakePanel("PanelCountdown");
  auto* column = new QVBoxLayout(panel);
  SpacePanel(column, look::Margin());
  TextAutostart = MakeLabel("TextAutostart");
  TextAutostart->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  BoxAutoStartTime = MakeLabel("BoxAutoStartTime", "0", "value");
  BoxAutoStartTime->setAlignment(Qt::AlignCenter);
  BoxAutoStartTime->setMinimumWidth(look::Margin() * 3);
  Textseconds = MakeLabel("Textseconds", "seconds");
  for (QWidget* part : {TextAutostart, BoxAutoStartTime, Textseconds}) KeepPlaceWhenHidden(part);
  auto* countdown = new QHBoxLayout;
  countdown->addWidget(TextAutostart, 1);
  countdown->addWidget(BoxAutoStartTime);
  countdown->addWidget(Textseconds);
  column->addLayout(countdown);

  LampSimulator = new StateLamp("LampSimulator");
  LabelSimulatorName = MakeLabel("LabelSimulatorName");
  LabelXplaneVersion = MakeLabel("LabelXplaneVersion");
  SimulatorHint = MakeLabel("SimulatorHint");
  SimulatorHint->setWordWrap(true);
  SimulatorHint->setTextInteractionFlags(Qt::TextSelectableByMouse);
  // Room for two lines, so that the form keeps its shape when trouble needs more words.
  SimulatorHint->setMinimumHeight(2 * SimulatorHint->fontMetrics().lineSpacing());
  auto* simulator = new QHBoxLayout;
  simulator->addWidget(LampSimulator);
  simulator->addWidget(MakeLabel("LabelSimulatorCaption", tr("Simulator:"), "caption"));
  simulator->addWidget(LabelSimulatorName);
  simulator->addWidget(LabelXplaneVersion);
  simulator->addWidget(SimulatorHint, 1);
  column->addLayout(simulator);
  LabelFound = MakeLabel("LabelFound", {}, "caption");
  LabelFound->setWordWrap(true);
  Found =
      new OfferList("Found", tr("Use"), tr("in use"),
                    tr("Takes this address and port into the configuration, and looks for X-Plane there"));
  column->addWidget(LabelFound);
  column->addWidget(Found);
  return panel;
}

QWidget* StartForm::MakeButtons() {
  auto* buttons = new QWidget;
  buttons->setObjectName("ButtonsStart");
  auto* row = new QHBoxLayout(buttons);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(look::Gap());
  butOK = MakeButton("butOK", tr("&OK"),
                     tr("Loads the configuration and opens the status form; press Run there (Enter)"));
  look::SetRole(butOK, "primary");
  CmdConfigure = MakeButton("CmdConfigure", tr("Co&nfigure..."),
                            tr("Serial ports, simulator address, gauges; stops the countdown"));
  Exit = MakeButton("Exit", tr("E&xit"), tr("Ends the program (Escape)"));
  row->addWidget(CmdConfigure);
  row->addStretch(1);
  row->addWidget(butOK);
  row->addWidget(Exit);
  return buttons;
}

void StartForm::Connect() {
  FileBox->SetPicked([this](const QString& name) { presenter_.FileBox_Click(name.toStdString()); });
  connect(FileName, &QLineEdit::textEdited, this,
          [this](const QString& name) { presenter_.FileName_Change(name.toStdString()); });
  connect(butOK, &QPushButton::clicked, this, [this] { presenter_.butOK_Click(); });
  connect(CmdConfigure, &QPushButton::clicked, this, [this] { presenter_.CmdConfigure_Click(); });
  Found->SetTake([this](std::size_t line) { TakeSimulator(line); });
  Keep(presenter_.WatchSimulators([this] { ShowFound(); }));
  connect(Exit, &QPushButton::clicked, this, [this] { presenter_.Exit_Click(); });
}

void StartForm::ShowView() {
  const StartView& view = presenter_.View();
  const QString name = ToText(view.FileName);
  if (FileName->text() != name) FileName->setText(name);
  FileBox->Mark(name);
  SetTextIfChanged(LabelNotice, view.Notice);
  LabelNotice->setVisible(!view.Notice.empty());
  SetTextIfChanged(TextAutostart, view.TextAutostart);
  SetTextIfChanged(BoxAutoStartTime, QString::number(view.BoxAutoStartTime));
  TextAutostart->setVisible(view.CountdownVisible);
  Textseconds->setVisible(view.CountdownVisible);
  BoxAutoStartTime->setVisible(view.CountdownVisible);
  const bool found = !view.LabelXplaneVersion.empty();
  LampSimulator->SetState(found                   ? StateLamp::State::Good
                          : view.SimulatorTrouble ? StateLamp::State::Trouble
                                                  : StateLamp::State::Off);
  SetTextIfChanged(SimulatorHint, found ? std::string() : view.SimulatorWords);
  SetTextIfChanged(LabelSimulatorName, view.SimulatorName);
  SetTextIfChanged(LabelXplaneVersion, view.LabelXplaneVersion);
  LabelSimulatorName->setVisible(!view.SimulatorName.empty());
  LabelXplaneVersion->setVisible(found);
  ShowFound();
}

// Once the simulator has answered, nobody looks for one.
void StartForm::ShowFound() {
  std::vector<OfferList::Line> lines;
  const bool answered = !presenter_.View().LabelXplaneVersion.empty();
  if (!answered) {
    for (const FoundSimulator& simulator : presenter_.Finder().Found()) {
      lines.push_back({ToText(simulator.Words()), presenter_.IsInUse(simulator)});
    }
  }
  const std::string& trouble = presenter_.Finder().Trouble();
  SetTextIfChanged(LabelFound, !lines.empty()                  ? "Heard on the network:"
                               : !answered && !trouble.empty() ? "X-Plane cannot be looked for: " + trouble
                                                               : std::string());
  LabelFound->setVisible(!LabelFound->text().isEmpty());
  Found->SetLines(lines);
}

void StartForm::TakeSimulator(std::size_t line) {
  const auto& found = presenter_.Finder().Found();
  if (line < found.size()) presenter_.TakeSimulator(FoundSimulator(found[line]));
}

void StartForm::Activate() {
  RefreshFiles();
  presenter_.Activate();
  if (!Unloading()) ShowView();
}

void StartForm::RefreshFiles() {
  const QSignalBlocker quiet(FileBox);
  FileBox->clear();
  FileBox->addItems(ConfigurationFiles());
  const bool none = FileBox->count() == 0;
  FileBox->setVisible(!none);
  NoFiles->setVisible(none);
  LabelWelcome->setVisible(none);
  if (none != none_) WelcomeNewcomer(none);
}

// Where nothing can be started yet, the button that is wanted is another one.
void StartForm::WelcomeNewcomer(bool none) {
  none_ = none;
  QPushButton* wanted = none ? CmdConfigure : butOK;
  for (QPushButton* button : {butOK, CmdConfigure}) {
    look::SetRole(button, button == wanted ? "primary" : "");
    button->style()->unpolish(button);
    button->style()->polish(button);
  }
  SetDefaultButton(wanted);
  wanted->setFocus();
}

void StartForm::CameUp() {
  if (held_) return;
  // Loading may ask a question, so it waits until this window stands.
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (!Unloading() && !held_) Activate();
      },
      Qt::QueuedConnection);
}

}  // namespace tvx
