// The save form: configuration files saved, loaded, deleted, imported in part, made the start-up one.
#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <array>

#include "config/ModelWatcher.h"
#include "config/setup/SavePresenter.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class SaveConfigForm : public Form {
  Q_OBJECT
 public:
  // `watcher` is told after each operation, a save too: the file's name may be another one.
  SaveConfigForm(const ConfigModel& model, SavePresenter& save, ModelWatcher& watcher, QWidget* parent);
  void ConfigurationReplaced() override { Refresh(); }

 private:
  QWidget* MakeFilePanel();
  QWidget* MakeImportPanel();
  void Do(bool (SavePresenter::*operation)(const std::string&));
  void cmdImportPartial_Click();
  void Refresh();
  void ShowWhatSaveDoes();
  void OfferEnding();
  std::string ChosenFile() const;

  const ConfigModel& model_;
  SavePresenter& save_;
  ModelWatcher& watcher_;
  PickList* FileList = nullptr;
  QLineEdit* FileName = nullptr;
  QLabel *LabelCurrent = nullptr, *LabelStartup = nullptr, *LabelSave = nullptr;
  std::array<QCheckBox*, kImportChapters> ChkImportPartial{};
};

}  // namespace tvx
