#include "app/Presence.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <array>

#include "ui/Widgets.h"

namespace tvx {
namespace {

// X-Plane first, then the hardware groups in their order.
constexpr std::array<const char*, 1 + kHardwareGroups> kLinkNames{
    "X-Plane", "Gauge bus", "Engine cluster", "IO module 1", "IO module 2", "Yoke 1", "Yoke 2"};

std::vector<Form*> EveryForm() {
  std::vector<Form*> forms;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* form = qobject_cast<Form*>(window);
    if (form != nullptr && !form->Unloading()) forms.push_back(form);
  }
  return forms;
}

bool Prepared(const StatusPresenter& run) {
  return run.Activated() && !run.EditingConfiguration;
}

}  // namespace

Presence::Presence(Parts parts) : parts_(std::move(parts)) {
  boxes_ = parts_.said.WatchBoxes([this](std::string_view text) { OnBox(text); });
}

Presence::~Presence() {
  Form::SetComingUp(ComingUp::Front);
}

ComingUp Presence::Possible(ComingUp wanted) const {
  return wanted == ComingUp::Hidden && !tray_->Available() ? ComingUp::Minimised : wanted;
}

void Presence::Begin() {
  if (tray_ == nullptr) tray_ = std::make_unique<TrayIcon>();
  const auto run = [this] {
    if (Prepared(parts_.run)) parts_.run.cmdRun_Click();
  };
  tray_->PutUp({run, [this] { parts_.run.cmdStop_Click(); }, [this] { ShowWindows(); },
                [this] { HideWindows(); }, parts_.exit});
  Form::SetComingUp(Possible(memory_.AtStart()));
  ShowState();
}

void Presence::End() {
  if (tray_ != nullptr) tray_->TakeDown();
}

void Presence::ShowWindows() {
  Form::SetComingUp(ComingUp::Front);
  for (Form* form : EveryForm()) form->Reveal();
  parts_.front();
  ShowState();
}

void Presence::HideWindows() {
  if (tray_ == nullptr) return;
  const ComingUp how = Possible(ComingUp::Hidden);
  for (Form* form : EveryForm()) {
    if (!form->isVisible()) continue;
    if (how == ComingUp::Hidden) {
      form->HoldBack();
    } else {
      form->showMinimized();
    }
  }
  Form::SetComingUp(how);
  ShowState();
}

// A box comes up whatever the forms do; that somebody looks at the screen then is another matter.
void Presence::OnBox(std::string_view text) {
  if (tray_ != nullptr && Form::ComesUp() != ComingUp::Front) tray_->Notify(ToText(text), true);
}

std::string Presence::StateWords() const {
  const StatusPresenter& run = parts_.run;
  if (run.Running()) {
    std::string words = run.View().Simulator.Trouble ? "Running, X-Plane does not answer" : "Running";
    for (std::size_t group = 0; group < kHardwareGroups; ++group) {
      if (!parts_.lines.InTrouble(static_cast<HardwareGroup>(group))) continue;
      words += ", " + std::string(kLinkNames[group + 1]) + " in trouble";
    }
    return words;
  }
  if (Prepared(run)) return "Halted";
  return parts_.start.View().CountdownVisible ? "Waiting for X-Plane" : "Not started";
}

void Presence::ShowState() {
  if (tray_ == nullptr) return;
  const StatusPresenter& run = parts_.run;
  tray_->Show({ToText(StateWords()), Prepared(run) && !run.Running(), run.Running(),
               Form::ComesUp() != ComingUp::Hidden});
}

void Presence::Tick() {
  NoteLinks();
  TellOfLinks();
  ShowState();
}

void Presence::NoteLinks() {
  if (!Prepared(parts_.run)) return;
  const StatusView& view = parts_.run.View();
  parts_.said.NoteState("Run", view.BoxRun + " with " + view.BoxCurrentConfig);
  parts_.said.NoteState(kLinkNames[0], view.Simulator.Text);
  parts_.said.NoteState(kLinkNames[1], "Gauge bus: " + view.GaugeBus.Text);
  for (std::size_t i = 1; i < kHardwareGroups; ++i) {
    const auto group = static_cast<HardwareGroup>(i);
    if (!parts_.lines.Configured(group)) continue;
    parts_.said.NoteState(kLinkNames[i + 1],
                          std::string(kLinkNames[i + 1]) + ": " + parts_.lines.WordsOf(group));
  }
}

void Presence::TellOfLinks() {
  std::array<bool, kLinkNames.size()> well{!parts_.run.View().Simulator.Trouble};
  for (std::size_t i = 0; i < kHardwareGroups; ++i) {
    well[i + 1] = !parts_.lines.InTrouble(static_cast<HardwareGroup>(i));
  }
  std::string text;
  bool trouble = false;
  for (const std::size_t link : news_.Tick(parts_.run.Running(), well, parts_.clock.MonotonicMs())) {
    if (!text.empty()) text += '\n';
    if (link == 0) {
      text += parts_.run.View().Simulator.Text;
    } else {
      text += kLinkNames[link] + (": " + parts_.lines.WordsOf(static_cast<HardwareGroup>(link - 1)));
    }
    trouble |= !well[link];
  }
  if (!text.empty() && tray_ != nullptr) tray_->Notify(ToText(text), trouble);
}

QWidget* Presence::MakeChoice() {
  auto* line = new QWidget;
  line->setObjectName("LineAtStart");
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(look::Gap());
  QLabel* caption = MakeLabel("LabelAtStart", QObject::tr("&Windows at the next start"), "caption");
  auto* choice = new QComboBox;
  choice->setObjectName("ComboAtStart");
  choice->addItems({QObject::tr("in front"), QObject::tr("minimised"), QObject::tr("hidden, in the tray")});
  choice->setToolTip(QObject::tr(
      "How the program comes up: so that you see it, in the task bar only, or behind its icon in the "
      "desktop's tray. Instruments and keystrokes work in each case"));
  choice->setCurrentIndex(static_cast<int>(memory_.AtStart()));
  caption->setBuddy(choice);
  QObject::connect(choice, &QComboBox::activated, line,
                   [this](int index) { memory_.KeepAtStart(static_cast<ComingUp>(index)); });
  row->addWidget(caption);
  row->addWidget(choice);
  row->addStretch(1);
  return line;
}

}  // namespace tvx
