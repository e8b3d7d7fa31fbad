// What the dialogs for one input of an IO module share: its Function, a live preview, store and delete.
#pragma once

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>

#include "hwbus/iomodule/IOModule.h"
#include "hwbus/iomodule/IOModulePresenter.h"
#include "ui/Form.h"
#include "ui/Widgets.h"
#include "ui/search/SearchCombo.h"

namespace tvx {

class InputForm : public Form {
  Q_OBJECT
 public:
  InputForm(const char* name, const ConfigModel& model, IOModulePresenter presenter,
            const IOModuleInput& input, QWidget* parent);

  const IOModuleInput& Input() const { return input_; }
  // Whether the configuration still holds the definition that the controls were filled from.
  bool AsStored() const { return presenter_.DefinitionOf(input_) == definition_; }
  // The module reported: what the preview says may have changed.
  virtual void TakeReport(const IOModuleReport&) {}

 signals:
  void DefinitionChanged();  // it was stored or deleted

 protected:
  // Reads the form's controls into a definition; false where a number is none.
  virtual bool ReadControls(IOModuleRecord& definition) const = 0;
  virtual QString Preview(const IOModuleRecord& definition, const FunctionRecord* function) const = 0;
  virtual void Stored(const IOModuleRecord&) {}

  // To be called by the derived form when its own controls stand in `Rows()`. `help` goes below them: words
  // that wrap do not keep their room in a QFormLayout.
  void Finish(QLabel* help = nullptr);
  void ShowPreview();

  QFormLayout* Rows() const { return rows_; }
  QLineEdit* NumberBox(const char* name, double value, const QString& toolTip);
  QLineEdit* AddNumber(const char* name, const QString& caption, double value, const QString& toolTip);
  IOModuleRecord& Definition() { return definition_; }
  MessageBoxes* Boxes = nullptr;

 private:
  int ChosenFunction() const;
  bool ReadAll(IOModuleRecord& definition) const;
  void Store();
  void Delete();

  const ConfigModel& model_;
  IOModulePresenter presenter_;
  IOModuleInput input_;
  IOModuleRecord definition_;
  QFormLayout* rows_;
  SearchCombo* comboFunction_;
  QComboBox* comboSequence_;
  QLabel* preview_;
};

// The number in a box; std::nullopt where the text is no number. A comma counts as a point.
std::optional<double> NumberIn(const QLineEdit* box);

}  // namespace tvx
