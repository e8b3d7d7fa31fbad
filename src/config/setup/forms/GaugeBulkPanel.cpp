#include "config/setup/forms/GaugeBulkPanel.h"

#include <QGridLayout>

#include "config/FunctionItems.h"
#include "ui/FieldGrid.h"

namespace tvx {
namespace {

constexpr int kLetters = 14;  // of the lists

}  // namespace

GaugeBulkPanel::GaugeBulkPanel(const ConfigModel& model, GaugeBulk& bulk, std::function<void()> changed)
    : model_(model), bulk_(bulk), changed_(std::move(changed)) {
  setObjectName("PanelBulk");
  LabelTicked = MakeLabel("LabelTicked");
  ComboBulkPlate =
      new SearchCombo("ComboBulkPlate", tr("The Plate of the first needle of all that are ticked"));
  ComboBulkFunction = new SearchCombo(
      "ComboBulkFunction",
      tr("The first needle that is ticked gets this Function, each further one the next number"));
  for (SearchCombo* combo : {ComboBulkPlate, ComboBulkFunction}) combo->setMinimumContentsLength(kLetters);
  ComboBulkPlate->SetPicked([this](int plate) { Tell(bulk_.SetPlate(ticked_, 1, plate)); });
  ComboBulkFunction->SetPicked([this](int first) {
    if (first > 0) Tell(bulk_.SetFunctionsInSequence(ticked_, first));
  });
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(look::Gap());
  int at = 0;
  const auto add = [&](QWidget* widget) { grid->addWidget(widget, 0, at++); };
  add(LabelTicked);
  add(MakeCaption(ComboBulkPlate, tr("Plate")));
  add(ComboBulkPlate);
  add(MakeCaption(ComboBulkFunction, tr("Functions from")));
  add(ComboBulkFunction);
  add(MakeLabel("LabelBulkFaces", tr("Faces")));
  add(Command("cmdBulkLit", tr("Lit"), tr("Their faces are lit as the list of lights says"),
              [this](const auto& ids) { return bulk_.SetLighting(ids, true); }));
  add(Command("cmdBulkUnlit", tr("Unlit"), tr("Their faces take no lighting"),
              [this](const auto& ids) { return bulk_.SetLighting(ids, false); }));
  add(Command("cmdCopySettings", tr("Copy settings"),
              tr("Keeps the settings of the first one that is ticked, for Paste"),
              [this](const auto& ids) { return !ids.empty() && bulk_.Copy(ids.front()) ? 1 : 0; }));
  cmdPasteSettings = Command("cmdPasteSettings", tr("Paste settings"),
                             tr("Gives the copied settings to those of the same kind that are ticked"),
                             [this](const auto& ids) { return bulk_.Paste(ids); });
  add(cmdPasteSettings);
  grid->setColumnStretch(2, 1);
  grid->setColumnStretch(4, 1);
  hide();
}

QPushButton* GaugeBulkPanel::Command(const char* name, const QString& text, const QString& tip,
                                     std::function<int(const std::vector<int>&)> command) {
  QPushButton* button = MakeButton(name, text, tip);
  connect(button, &QPushButton::clicked, this, [this, command] { Tell(command(ticked_)); });
  return button;
}

void GaugeBulkPanel::Tell(int count) {
  changed_();
  LabelTicked->setText(tr("%1 of %2 done").arg(count).arg(ticked_.size()));
  cmdPasteSettings->setEnabled(bulk_.HasCopy());
}

void GaugeBulkPanel::ShowFor(const std::vector<int>& ticked) {
  const bool others = ticked != ticked_;
  ticked_ = ticked;
  setVisible(!ticked.empty());
  if (!others || ticked.empty()) return;
  LabelTicked->setText(tr("%1 ticked").arg(ticked.size()));
  cmdPasteSettings->setEnabled(bulk_.HasCopy());
  auto plates = PlateItems(model_);
  plates.insert(plates.begin(), {-1, "(as it is)"});
  ComboBulkPlate->SetItems(plates);
  ComboBulkPlate->SetValue(-1);
  ComboBulkFunction->SetItems(FunctionItems(model_));
  ComboBulkFunction->SetValue(0);
}

}  // namespace tvx
