// The save form: configuration files saved, loaded, deleted, imported in part, made the start-up one.
#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <array>
#include <functional>

#include "config/setup/SavePresenter.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class SaveConfigForm : public Form {
  Q_OBJECT
 public:
  // `changed`: the model is another one now (loaded, imported) or was saved.
  SaveConfigForm(ConfigModel& model, SavePresenter& save, std::function<void()> changed, QWidget* parent);

 protected:
  void CloseAsked() override { Unload(); }
  void EscapePressed() override { Unload(); }

 private:
  QWidget* MakeFilePanel();
  QWidget* MakeImportPanel();
  void Do(bool (SavePresenter::*operation)(const std::string&));
  void cmdImportPartial_Click();
  void Refresh();
  std::string ChosenFile() const;

  ConfigModel& model_;
  SavePresenter& save_;
  std::function<void()> changed_;
  PickList* FileList = nullptr;
  QLineEdit* FileName = nullptr;
  QLabel *LabelCurrent = nullptr, *LabelStartup = nullptr;
  std::array<QCheckBox*, kImportChapters> ChkImportPartial{};
};

}  // namespace tvx
