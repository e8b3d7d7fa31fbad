#include "hwbus/iomodule/forms/ConfigIOMForm.h"

#include <QSpinBox>
#include <exception>

#include "hwbus/iomodule/IOModuleActions.h"
#include "hwbus/iomodule/forms/ConfigAnalogueForm.h"
#include "hwbus/iomodule/forms/ConfigSwitchForm.h"
#include "hwbus/iomodule/forms/IOModuleStatusForm.h"
#include "ui/Look.h"
#include "ui/NumberBox.h"

namespace tvx {
namespace {

constexpr int kPollMs = 500;  // a module that reports by itself needs none
constexpr int kInputs = kIOModuleSwitches + kIOModuleAnalogues + kIOModuleLamps;

IOModuleInput InputAt(int module, int row) {
  if (row < kIOModuleSwitches) return {module, IOModuleKind::Switch, row};
  if (row < kIOModuleSwitches + kIOModuleAnalogues)
    return {module, IOModuleKind::Analogue, row - kIOModuleSwitches};
  return {module, IOModuleKind::Lamp, row - kIOModuleSwitches - kIOModuleAnalogues};
}

int RowOf(const IOModuleInput& input) {
  const int base = input.Kind == IOModuleKind::Switch     ? 0
                   : input.Kind == IOModuleKind::Analogue ? kIOModuleSwitches
                                                          : kIOModuleSwitches + kIOModuleAnalogues;
  return base + input.Index;
}

}  // namespace

ConfigIOMForm::ConfigIOMForm(ConfigModel& model, IOModule& module, MessageBoxes& boxes, QWidget* parent)
    : Form("ConfigIOM", parent),
      model_(model),
      module_(module),
      boxes_(boxes),
      touch_(module.Parameters().Number),
      list_(new QListWidget),
      status_(MakeLabel("LabelStatus", {}, "caption")) {
  setWindowTitle(tr("IO module %1: set-up").arg(module.Parameters().Number));
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  status_->setWordWrap(true);
  column->addWidget(MakeLabel("LabelTouch", tr("Move a switch or an axis, and it is selected."), "title"));
  column->addWidget(status_);
  list_->setObjectName("ListInputs");
  list_->setToolTip(tr("The inputs and lamps of the module, with what each does"));
  column->addWidget(list_, 1);
  QPushButton* edit =
      MakeButton("cmdEdit", tr("&Define..."), tr("Opens the definition of the selected input"));
  QPushButton* close = MakeButton("cmdClose", tr("&Close"), tr("Closes the set-up"));
  look::SetRole(edit, "primary");
  connect(edit, &QPushButton::clicked, this, [this] { Edit(); });
  connect(list_, &QListWidget::itemActivated, this, [this] { Edit(); });
  connect(close, &QPushButton::clicked, this, [this] { CloseAsked(); });
  column->addWidget(MakeSetUp());
  QPushButton* copy =
      MakeButton("cmdCopySettings", tr("Co&py"), tr("Keeps what the selected input does, for Paste"));
  cmdPaste_ = MakeButton("cmdPasteSettings", tr("Pas&te"),
                         tr("Makes the selected input, of the same kind, do what was copied"));
  cmdPaste_->setEnabled(false);
  connect(copy, &QPushButton::clicked, this, [this] { Copy(); });
  connect(cmdPaste_, &QPushButton::clicked, this, [this] { Paste(); });
  auto* row = new QHBoxLayout;
  row->addWidget(edit);
  row->addWidget(copy);
  row->addWidget(cmdPaste_);
  row->addStretch(1);
  row->addWidget(close);
  column->addLayout(row);
  module_.TakeDefinitions();
  FillList();
  list_->setCurrentRow(0);
  Keep(module_.SetReportObserver([this](const IOModuleReport& report) { TakeReport(report); }));
  connect(&poll_, &QTimer::timeout, this, [this] {
    SetTextIfChanged(status_, module_.StatusText());
    if (!module_.TransmitPending()) Command(kCommandReportState, 0);
  });
  poll_.start(kPollMs);
}

QWidget* ConfigIOMForm::MakeSetUp() {
  QFrame* panel = MakePanel("PanelSetUp");
  auto* row = new QHBoxLayout(panel);
  auto* address = new NumberSpin;
  address->setObjectName("boxAddress");
  address->setToolTip(tr("Address on the gauge bus, 0 to 255"));
  address->setRange(0, 255);
  address->setValue(kIOModuleBusAddress);
  QPushButton* setAddress = MakeButton("cmdSetAddress", tr("Set &address"),
                                       tr("The address of a module that hangs on the gauge bus"));
  QPushButton* test =
      MakeButton("cmdLampTest", tr("&Lamp test"), tr("Lights every lamp while it is pressed in"));
  test->setCheckable(true);
  QPushButton* debounce = MakeButton("cmdDebounceAll", tr("Usual de&bounce"),
                                     tr("Gives every switch the usual debounce time of 5"));
  connect(setAddress, &QPushButton::clicked, this,
          [this, address] { Command(iom_command::kAddress, address->value()); });
  connect(test, &QPushButton::toggled, this,
          [this](bool on) { Command(iom_command::kLampTest, on ? iom_command::kAllLamps : 0); });
  connect(debounce, &QPushButton::clicked, this, [this] {
    Command(iom_command::kDebounce, iom_command::kAllSwitches * 256 + kIOModuleUsualDebounce);
  });
  row->addWidget(test);
  row->addWidget(debounce);
  row->addStretch(1);
  row->addWidget(address);
  row->addWidget(setAddress);
  return panel;
}

void ConfigIOMForm::Command(int command, std::int32_t value) {
  try {
    module_.ComposeCmd(0, command, value);
  } catch (const std::exception&) {
    // Cannot be: no control holds a value that does not fit a frame.
  }
}

void ConfigIOMForm::TakeReport(const IOModuleReport& report) {
  if (editor_) editor_->TakeReport(report);
  if (const auto touched = touch_.Take(report)) Select(*touched);
}

void ConfigIOMForm::Select(const IOModuleInput& input) {
  list_->setCurrentRow(RowOf(input));
}

IOModuleInput ConfigIOMForm::Selected() const {
  return InputAt(module_.Parameters().Number, std::max(0, list_->currentRow()));
}

InputForm* ConfigIOMForm::MakeEditor(const IOModuleInput& input) {
  InputForm* editor = nullptr;
  if (input.Kind == IOModuleKind::Switch) {
    editor = new ConfigSwitchForm(model_, module_, boxes_, input, this);
  } else if (input.Kind == IOModuleKind::Analogue) {
    editor = new ConfigAnalogueForm(model_, module_, boxes_, input, this);
  } else {
    editor = new ConfigLampForm(model_, module_, boxes_, input, this);
  }
  connect(editor, &InputForm::DefinitionChanged, this, [this] {
    module_.TakeDefinitions();
    FillList();
  });
  return editor;
}

void ConfigIOMForm::Edit() {
  const IOModuleInput input = Selected();
  if (editor_ && editor_->Input() != input) editor_.Unload();
  editor_.GetOrMake([&] { return MakeEditor(input); }).BringToFront();
}

void ConfigIOMForm::Copy() {
  const IOModulePresenter presenter(model_, boxes_);
  if (!presenter.Defined(Selected()))
    return boxes_.Show("This input is not defined: there is nothing to copy.");
  copied_ = presenter.DefinitionOf(Selected());
  cmdPaste_->setEnabled(true);
}

void ConfigIOMForm::Paste() {
  const auto from = copied_ ? IOModuleInputOf(copied_->Input) : std::nullopt;
  if (!from) return;
  if (from->Kind != Selected().Kind)
    return boxes_.Show("Switch, axis and lamp have settings of different kinds.");
  IOModuleRecord pasted = *copied_;
  pasted.Input = IOModuleInputNumber(Selected());
  if (!IOModulePresenter(model_, boxes_).Store(pasted)) return;
  module_.TakeDefinitions();
  FillList();
}

void ConfigIOMForm::ConfigurationReplaced() {
  module_.TakeDefinitions();
  FillList();
  if (!editor_ || editor_->AsStored()) return;
  const bool shown = editor_->isVisible();
  editor_.Unload();
  if (shown) Edit();
}

QString ConfigIOMForm::LineFor(const IOModuleInput& input) const {
  const int number = input.Kind == IOModuleKind::Switch     ? module_.SwitchDefinitionNr(input.Index)
                     : input.Kind == IOModuleKind::Analogue ? module_.AnalogueDefinitionNr(input.Index)
                                                            : module_.LampDefinitionNr(input.Index);
  const QString name = input.Kind == IOModuleKind::Switch     ? tr("Switch %1").arg(SwitchName(input.Index))
                       : input.Kind == IOModuleKind::Analogue ? tr("Axis %1").arg(input.Index + 1)
                                                              : tr("Lamp %1").arg(input.Index + 1);
  if (number == 0) return name;
  const IOModuleRecord& definition = model_.IOModuleInputs[static_cast<std::size_t>(number - 1)];
  const FunctionRecord* function =
      definition.FunctionNr < 1 ? nullptr : model_.FunctionOf(definition.FunctionNr);
  QString line = name + ":  ";
  if (input.Kind == IOModuleKind::Switch) line += ToText(ActionName(definition, function)).trimmed() + "  ";
  return function == nullptr ? line : line + ToText(function->ShortName);
}

void ConfigIOMForm::FillList() {
  const int row = list_->currentRow();
  list_->clear();
  for (int i = 0; i < kInputs; ++i) list_->addItem(LineFor(InputAt(module_.Parameters().Number, i)));
  list_->setCurrentRow(std::max(0, row));
}

}  // namespace tvx
