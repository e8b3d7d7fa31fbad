// The list of the simulator's commands or data references, with its filter and its search as one types.
#pragma once

#include <QComboBox>
#include <optional>
#include <string>

#include "platform/Host.h"
#include "simlink/references/ReferenceList.h"
#include "ui/LineList.h"

namespace tvx {

// Its list has the object name `ListXplaneReferences`, whichever file it shows.
class ReferencePanel : public QFrame {
  Q_OBJECT
 public:
  // Gives the folder to import from, empty when the user cancelled. The standard asks for it
  // with the desktop's file dialog.
  using ChooseFolder = std::function<QString(QWidget* parent)>;

  ReferencePanel(MessageBoxes& boxes, ChooseFolder chooseFolder);

  // Shows a list file; `missing` is the line shown where it cannot be read.
  void Show(const ListFile& file, std::string_view missing);
  void Show(const ListFile& file) { Show(file, file.missing); }
  // The path in the chosen line; std::nullopt where no line is chosen, or the line is a message.
  std::optional<std::string> Path() const;
  const ReferenceList& List() const { return list_; }

 signals:
  void PathChosen();     // another line is chosen
  void PathActivated();  // a line was double-clicked, or Enter was pressed on it

 private:
  void Search();
  void Import();
  void ShowCount();

  MessageBoxes& boxes_;
  ChooseFolder chooseFolder_;
  ReferenceList list_;
  ListFile file_ = kReferencesFile;
  std::string missing_;
  QLabel* LabelList;
  QComboBox* ComboFilter;
  QLineEdit* SearchText;
  LineList* ListXplaneReferences;
  QLabel* LabelFound;
};

QString ChooseXplaneFolder(QWidget* parent);

}  // namespace tvx
