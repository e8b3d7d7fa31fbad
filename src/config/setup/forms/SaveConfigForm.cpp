#include "config/setup/forms/SaveConfigForm.h"

#include <QDir>
#include <QGridLayout>

#include "config/StartFile.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr std::string_view kEnding = ".cfg";

}  // namespace

SaveConfigForm::SaveConfigForm(const ConfigModel& model, SavePresenter& save, ModelWatcher& watcher,
                               QWidget* parent)
    : Form("SaveConfig", parent), model_(model), save_(save), watcher_(watcher) {
  setWindowTitle(tr("Configuration files"));
  if (parent != nullptr) setWindowModality(Qt::WindowModal);
  auto* panels = new QHBoxLayout;
  panels->setSpacing(look::Gap());
  panels->addWidget(MakeFilePanel(), 3);
  panels->addWidget(MakeImportPanel(), 2);
  QPushButton* close = MakeButton("CmdClose", tr("Close"), tr("Back to the configuration (Escape)"));
  connect(close, &QPushButton::clicked, this, &SaveConfigForm::CloseAsked);
  auto* column = new QVBoxLayout(this);
  SpaceForm(column);
  column->addLayout(panels, 1);
  column->addWidget(close, 0, Qt::AlignRight);
  FileName->setText(ToText(model_.ConfigFileName));
  Refresh();
  FileName->setFocus();
}

QWidget* SaveConfigForm::MakeFilePanel() {
  QFrame* panel = MakePanel("PanelFiles");
  QVBoxLayout* column = MakeTitledColumn(
      panel, tr("Configuration files in ") + QDir::toNativeSeparators(QDir::currentPath()), "LabelFolder");
  FileList = new PickList("FileList");
  FileList->setToolTip(tr("The configuration files of the working folder"));
  FileList->setMinimumSize(look::Margin() * 44, look::Margin() * 12);
  FileList->SetPicked([this](const QString& name) { FileName->setText(name); });
  FileName = new QLineEdit;
  FileName->setObjectName("FileName");
  FileName->setToolTip(tr("The file that the buttons below work on; its name ends in .cfg"));
  QLabel* caption = MakeLabel("FileNameCaption", tr("File &name"));
  caption->setBuddy(FileName);
  auto* name = new QHBoxLayout;
  name->addWidget(caption);
  name->addWidget(FileName, 1);
  LabelCurrent = MakeLabel("LabelCurrent");
  LabelStartup = MakeLabel("LabelStartup");
  auto* buttons = new QGridLayout;
  buttons->setSpacing(look::Gap());
  QPushButton* save = MakeButton("cmdSave", tr("&Save"), tr("Writes the configuration to this file (Enter)"));
  look::SetRole(save, "primary");
  QPushButton* load =
      MakeButton("cmdLoad", tr("&Load"), tr("Replaces the configuration by this file; asks first"));
  QPushButton* erase = MakeButton(
      "cmdDelete", tr("&Delete"),
      tr("Takes this file out of the list; asks first, and keeps its content beside it, under its name with "
         "the date"));
  QPushButton* startup = MakeButton("cmdSetAsStartup", tr("Set as s&tart-up..."),
                                    tr("The program loads this file at its start, after a delay in seconds"));
  buttons->addWidget(save, 0, 0);
  buttons->addWidget(load, 0, 1);
  buttons->addWidget(erase, 0, 2);
  buttons->addWidget(startup, 0, 3);
  connect(save, &QPushButton::clicked, this, [this] { Do(&SavePresenter::Save); });
  connect(load, &QPushButton::clicked, this, [this] { Do(&SavePresenter::Load); });
  connect(erase, &QPushButton::clicked, this, [this] { Do(&SavePresenter::Delete); });
  connect(startup, &QPushButton::clicked, this, [this] { Do(&SavePresenter::SetAsStartup); });
  column->addWidget(FileList, 1);
  column->addLayout(name);
  LabelSave = MakeLabel("LabelSave");
  LabelSave->setWordWrap(true);
  connect(FileName, &QLineEdit::textChanged, this, [this] { ShowWhatSaveDoes(); });
  connect(FileName, &QLineEdit::editingFinished, this, &SaveConfigForm::OfferEnding);
  SetDefaultButton(save);
  column->addWidget(LabelSave);
  column->addLayout(buttons);
  column->addWidget(LabelCurrent);
  column->addWidget(LabelStartup);
  return panel;
}

QWidget* SaveConfigForm::MakeImportPanel() {
  QFrame* panel = MakePanel("PanelImport");
  QVBoxLayout* column = MakeTitledColumn(panel, tr("Take over single chapters of this file"), "LabelImport");
  for (std::size_t i = 0; i < kImportChapters; ++i) {
    ChkImportPartial[i] = new QCheckBox(ToText(kImportChapterNames[i]));
    ChkImportPartial[i]->setObjectName("ChkImportPartial" + QString::number(i));
    ChkImportPartial[i]->setToolTip(tr("Replaces this chapter of the loaded configuration"));
    column->addWidget(ChkImportPartial[i]);
  }
  column->addStretch(1);
  QPushButton* import = MakeButton("cmdImportPartial", tr("&Import the ticked chapters"),
                                   tr("Reads them from this file; asks first"));
  connect(import, &QPushButton::clicked, this, &SaveConfigForm::cmdImportPartial_Click);
  column->addWidget(import);
  return panel;
}

std::string SaveConfigForm::ChosenFile() const {
  return FileName->text().trimmed().toStdString();
}

void SaveConfigForm::ShowWhatSaveDoes() {
  SetTextIfChanged(LabelSave, save_.SaveWords(ChosenFile()));
}

// A new file is named without its ending as often as not.
void SaveConfigForm::OfferEnding() {
  const QString name = FileName->text().trimmed();
  if (!name.isEmpty() && !name.contains('.') && !name.endsWith('/'))
    FileName->setText(name + ToText(kEnding));
}

// The operation may ask the user, and the form may have ended when the answer comes.
void SaveConfigForm::Do(bool (SavePresenter::*operation)(const std::string&)) {
  (save_.*operation)(ChosenFile());
  if (Unloading()) return;
  Refresh();
  watcher_.ModelChanged();
}

void SaveConfigForm::cmdImportPartial_Click() {
  ImportChoice chosen{};
  for (std::size_t i = 0; i < kImportChapters; ++i) chosen[i] = ChkImportPartial[i]->isChecked();
  save_.ImportPartial(ChosenFile(), chosen);
  if (Unloading()) return;
  Refresh();
  watcher_.ModelChanged();
}

void SaveConfigForm::Refresh() {
  FileList->clear();
  for (const std::string& name : ConfigFilesIn({})) FileList->addItem(ToText(name));
  FileList->Mark(FileName->text());
  ShowWhatSaveDoes();
  SetTextIfChanged(LabelCurrent,
                   tr("In use: ") + ToText(model_.ConfigFileName) +
                       (save_.NotReadWholly() ? tr(", which was not read wholly") : QString()) +
                       (model_.ConfigChanged ? tr(", with changes that are not saved") : QString()));
  ConfigModel start;
  const std::string path = ReadStartFile(start);
  SetTextIfChanged(
      LabelStartup,
      tr("Start-up: %1, %2 s after the simulator answers").arg(ToText(path)).arg(start.StartDelay));
}

}  // namespace tvx
