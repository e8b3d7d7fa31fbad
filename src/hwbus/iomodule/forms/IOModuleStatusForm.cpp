#include "hwbus/iomodule/forms/IOModuleStatusForm.h"

#include <QGridLayout>

#include "hwbus/iomodule/IOModuleActions.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kRefreshMs = 100;  // as fast as an eye reads
constexpr int kPerRow = 8;
constexpr int kLampsPerRow = 16;

QGridLayout* GridIn(QWidget* panel) {
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(look::Gap(), look::Gap(), look::Gap(), look::Gap());
  grid->setSpacing(look::Gap() / 2);
  return grid;
}

}  // namespace

QString SwitchName(int index) {
  return QString(QChar('A' + index / kPerRow)) + QString::number(index % kPerRow + 1);
}

IOModuleStatusForm::IOModuleStatusForm(IOModule& module, const ConfigModel& model,
                                       std::function<void()> setUp)
    : Form(module.Parameters().Number == 1 ? "frmStatusIOM" : "frmstatusIOM2"),
      module_(module),
      model_(model),
      setUp_(std::move(setUp)) {
  setWindowTitle(tr("IO module %1").arg(module.Parameters().Number));
  setAttribute(Qt::WA_ShowWithoutActivating);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  status_ = MakeLabel("LabelStatus", {}, "title");
  status_->setWordWrap(true);
  column->addWidget(status_);
  column->addWidget(MakeSwitches(), 3);
  column->addWidget(MakeAnalogues(), 2);
  column->addWidget(MakeLamps(), 1);
  column->addLayout(MakeButtons());
  connect(&refresh_, &QTimer::timeout, this, [this] {
    if (isVisible() && !isMinimized()) ShowState();
  });
  refresh_.start(kRefreshMs);
  ShowState();
}

QWidget* IOModuleStatusForm::MakeSwitches() {
  QFrame* panel = MakePanel("PanelSwitches");
  QGridLayout* grid = GridIn(panel);
  for (int i = 0; i < kIOModuleSwitches; ++i) {
    auto* indicator = new Indicator(QStringLiteral("Switch%1").arg(i), SwitchName(i));
    indicator->setToolTip(WordsFor(module_.SwitchDefinitionNr(i)));
    grid->addWidget(indicator, i / kPerRow, i % kPerRow);
    switches_[static_cast<std::size_t>(i)] = indicator;
  }
  return panel;
}

QWidget* IOModuleStatusForm::MakeAnalogues() {
  QFrame* panel = MakePanel("PanelAnalogues");
  QGridLayout* grid = GridIn(panel);
  for (int j = 0; j < kIOModuleAnalogues; ++j) {
    auto* bar = new QProgressBar;
    bar->setObjectName(QStringLiteral("Analogue%1").arg(j));
    bar->setRange(0, kIOModuleRawTop);
    bar->setFormat(QStringLiteral("%v"));
    bar->setToolTip(WordsFor(module_.AnalogueDefinitionNr(j)));
    grid->addWidget(MakeLabel("", tr("Axis %1").arg(j + 1), "caption"), j / 2, j % 2 * 2);
    grid->addWidget(bar, j / 2, j % 2 * 2 + 1);
    bars_[static_cast<std::size_t>(j)] = bar;
  }
  return panel;
}

QWidget* IOModuleStatusForm::MakeLamps() {
  QFrame* panel = MakePanel("PanelLamps");
  QGridLayout* grid = GridIn(panel);
  for (int i = 0; i < kIOModuleLamps; ++i) {
    auto* lamp = new Indicator(QStringLiteral("Lamp%1").arg(i), QString::number(i + 1));
    lamp->setToolTip(WordsFor(module_.LampDefinitionNr(i)));
    grid->addWidget(lamp, i / kLampsPerRow, i % kLampsPerRow);
    lamps_[static_cast<std::size_t>(i)] = lamp;
  }
  return panel;
}

QLayout* IOModuleStatusForm::MakeButtons() {
  cmdRun_ = MakeButton("cmdRun", tr("&Run"), tr("Starts acting on switches and axes"));
  cmdStop_ = MakeButton("cmdStop", tr("&Stop"), tr("Halts this module alone"));
  QPushButton* hide = MakeButton("cmdHide", tr("&Hide"), tr("Hides this window; the module goes on"));
  connect(cmdRun_, &QPushButton::clicked, this, [this] { module_.cmdRun_Click(), ShowState(); });
  connect(cmdStop_, &QPushButton::clicked, this, [this] { module_.cmdStop_Click(), ShowState(); });
  connect(hide, &QPushButton::clicked, this, [this] { CloseAsked(); });
  auto* row = new QHBoxLayout;
  row->addWidget(cmdRun_);
  row->addWidget(cmdStop_);
  if (setUp_) {
    QPushButton* setUp =
        MakeButton("cmdConfigIOM", tr("Set &up..."), tr("What each switch, axis and lamp does"));
    connect(setUp, &QPushButton::clicked, this, [this] { setUp_(); });
    row->addWidget(setUp);
  }
  row->addStretch(1);
  row->addWidget(hide);
  return row;
}

QString IOModuleStatusForm::WordsFor(int definitionNr) const {
  if (definitionNr == 0) return tr("not defined");
  const IOModuleRecord& definition = model_.IOModuleInputs[static_cast<std::size_t>(definitionNr - 1)];
  const FunctionRecord* function =
      definition.FunctionNr < 1 ? nullptr : model_.FunctionOf(definition.FunctionNr);
  const auto input = IOModuleInputOf(definition.Input);
  if (input && input->Kind == IOModuleKind::Switch) {
    const QString action = ToText(ActionName(definition, function)).trimmed();
    return function == nullptr ? action : action + ": " + ToText(function->ShortName);
  }
  return function == nullptr ? tr("no Function") : ToText(function->ShortName);
}

void IOModuleStatusForm::ShowState() {
  SetTextIfChanged(status_, module_.StatusText());
  cmdRun_->setEnabled(!module_.Running());
  cmdStop_->setEnabled(module_.Running());
  for (std::size_t i = 0; i < switches_.size(); ++i) {
    const bool on = module_.SwitchState()[i];
    switches_[i]->SetColour(!module_.SwitchesKnown() ? -1
                            : on                     ? kSwitchOnColour
                                                     : kSwitchOffColour,
                            module_.SwitchesKnown() && on);
  }
  for (std::size_t j = 0; j < bars_.size(); ++j) bars_[j]->setValue(module_.AnalogueValue()[j]);
  for (std::size_t i = 0; i < lamps_.size(); ++i) {
    const bool lit = (module_.Lamps() >> i & 1) != 0;
    lamps_[i]->SetColour(lit ? kLampOnColour : -1, lit);
  }
}

}  // namespace tvx
