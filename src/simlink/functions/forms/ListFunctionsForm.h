// The list of all Functions, with its filters, and the fields that can be changed in it.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QTreeWidget>

#include "simlink/functions/FunctionListPresenter.h"
#include "ui/Form.h"
#include "ui/LineList.h"

namespace tvx {

// Opened by the Function editor.
class ListFunctionsForm : public Form {
  Q_OBJECT
 public:
  ListFunctionsForm(ConfigModel& model, MessageBoxes& boxes, QWidget* parent = nullptr);

  // Reads the Functions anew.
  void Refresh();
  void ConfigurationReplaced() override { Refresh(); }
  // True where every edit is saved, or the user says that it may be lost.
  bool MayClose() { return presenter_.MayClose(); }

 signals:
  void EditAsked(int function);  // the user wants to see this Function in the editor
  void Saved();                  // edits were put into the model

 protected:
  bool MayEnd() override { return MayClose(); }

 private:
  QWidget* MakeFilterPanel();
  QWidget* MakeList();
  QWidget* MakeEditPanel();
  QLayout* MakeButtons();
  FunctionFilter Filter() const;
  int Chosen() const;  // Function number; 0 none
  void ShowChosen();
  void TakeEdit();
  void ShowFilters();
  void ShowChanged();
  void CmdSave_Click();

  const ConfigModel& model_;
  FunctionListPresenter presenter_;
  bool loading_ = false;
  bool byClass_ = false, byType_ = false;  // filters that are on
  QComboBox *ComboFilterClass, *ComboFilterType;
  QPushButton *CmdFilterClassOn, *cmdFilterClassOff, *CmdFilterTypeOn, *CmdFilterTypeOff;
  QCheckBox* CheckDefinedOnly;
  QTreeWidget* ListFunctions;
  QLineEdit *ShortName, *FullName;
  QComboBox *ComboClass, *FuncType;
  QLabel* LabelChosen;
  QPushButton *cmdEditFunction, *CmdSave;
};

}  // namespace tvx
