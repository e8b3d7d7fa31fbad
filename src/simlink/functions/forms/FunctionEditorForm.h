// The Function editor: every field of a Function, beside the simulator's lists of commands and data
// references.
#pragma once

#include <QComboBox>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QStackedWidget>

#include "simlink/SimCom.h"
#include "simlink/functions/FunctionPresenter.h"
#include "simlink/functions/forms/ListFunctionsForm.h"
#include "simlink/functions/forms/TestFunctionForm.h"
#include "simlink/references/forms/ReferencePanel.h"
#include "ui/Form.h"
#include "ui/LineList.h"

namespace tvx {

class FunctionEditorForm : public Form {
  Q_OBJECT
 public:
  // `parent`, if there is one, waits until the form is closed.
  FunctionEditorForm(ConfigModel& model, SimCom& sim, MessageBoxes& boxes, QWidget* parent = nullptr,
                     ReferencePanel::ChooseFolder chooseFolder = &ChooseXplaneFolder);

  // Takes the Functions anew from the model, after another form has changed it; what is unsaved stays.
  void Refresh();
  void ConfigurationReplaced() override { Refresh(); }
  // Goes to a Function, 1..300; asks where something is unsaved.
  void Choose(int function);
  ListFunctionsForm* ListWindow() const { return listForm_.Get(); }
  TestFunctionForm* TestWindow() const { return testForm_.Get(); }

 signals:
  void Saved();  // Functions were put into the model

 protected:
  bool MayEnd() override;

 private:
  QWidget* MakeFunctionPanel();
  QWidget* MakeFieldsPanel();
  void AddNames(QGridLayout* grid);
  void AddSources(QGridLayout* grid);
  void AddNumbers(QGridLayout* grid);
  QWidget* MakeReferenceColumn();
  QLayout* MakeButtons();
  QComboBox* AddChoice(QGridLayout* grid, int row, int column, const char* name, const QString& caption,
                       const QString& toolTip);
  QLineEdit* AddField(QGridLayout* grid, int row, int column, const char* name, const QString& caption,
                      const QString& toolTip);
  void FillNumbers();
  void LoadFields();
  void TakeField(const char* name, const QString& text);
  void ShowDataType();  // what the sources and the list mean to the chosen data type
  void ShowState();
  // What stands over the description, which holds the lines of data references and of commands.
  static QString CaptionOfLines(DataType type);
  QString CaptionOf(const QString& field) const;
  QString Advice() const;  // what hardly works, in words
  void CopyEntry();
  void CmdSave_Click();
  void ShowList();
  void ShowTest();

  ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  FunctionPresenter presenter_;
  bool loading_ = true;  // the fields are being filled: nobody edits them
  bool asking_ = false;
  std::vector<int> numbers_;  // of the Functions listed
  int shownType_ = -1;        // the data type that ShowDataType showed last

  QLineEdit* SearchFunction;
  LineList* ListFunctions;
  std::vector<QLineEdit*> fields_;
  std::vector<QComboBox*> choices_;
  QPlainTextEdit* FullName;
  QLabel *LabelNumber, *LabelFullName, *LabelSources, *LabelXPindex, *LabelXPVal, *LabelHint;
  StateLamp* LampHint;
  ReferencePanel* references_;
  QStackedWidget* listOrWords_;
  QGridLayout* sources_;
  QSpinBox* boxElement;
  QPushButton *cmdCopyEntry, *CmdSave;
  FormHolder<ListFunctionsForm> listForm_;
  FormHolder<TestFunctionForm> testForm_;
};

}  // namespace tvx
