#include "config/setup/forms/UnsavedPanel.h"

#include <QHBoxLayout>
#include <utility>

#include "ui/Look.h"

namespace tvx {

UnsavedPanel::UnsavedPanel(UnsavedWork& work, std::function<void()> goOn)
    : work_(work), goOn_(std::move(goOn)) {
  setObjectName("PanelUnsaved");
  look::SetRole(this, "panel");
  auto* row = new QHBoxLayout(this);
  SpacePanel(row, look::Margin());
  LabelUnsaved = MakeLabel("LabelUnsaved");
  LabelUnsaved->setWordWrap(true);
  QPushButton* take = MakeButton("cmdTakeUnsaved", tr("&Go on with them"),
                                 tr("Opens the configuration with these changes; there they can be saved"));
  QPushButton* discard =
      MakeButton("cmdDiscardUnsaved", tr("&Put them aside"),
                 tr("Offers them no more; they stay beside the file, under its name with the date"));
  connect(take, &QPushButton::clicked, this, [this] { cmdTakeUnsaved_Click(); });
  connect(discard, &QPushButton::clicked, this, [this] { cmdDiscardUnsaved_Click(); });
  row->addWidget(LabelUnsaved, 1);
  row->addWidget(take);
  row->addWidget(discard);
  hide();
}

void UnsavedPanel::ShowFor(const std::string& configFile) {
  file_ = configFile;
  const std::string words = work_.Words(file_);
  SetTextIfChanged(LabelUnsaved, words);
  setVisible(!words.empty());
}

void UnsavedPanel::cmdTakeUnsaved_Click() {
  if (work_.Take(file_)) goOn_();
}

void UnsavedPanel::cmdDiscardUnsaved_Click() {
  work_.Discard(file_);
  ShowFor(file_);
}

}  // namespace tvx
