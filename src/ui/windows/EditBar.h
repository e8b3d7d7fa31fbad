// The foot of every form that changes the configuration: undo, redo, and Save.
#pragma once

#include <QHBoxLayout>
#include <functional>

#include "ui/Widgets.h"

namespace tvx {

class EditBar : public QWidget {
 public:
  struct Actions {
    std::function<void()> undo, redo;
    std::function<void()> save;  // none: the bar has no Save
  };
  // What would be undone and redone, by name; empty: nothing can be.
  struct View {
    QString undo, redo;
    QString state;      // whether the configuration is saved
    QString saveWords;  // what Save will do
    bool changed = false;
    bool operator==(const View&) const = default;
  };
  // Ctrl+Z and Ctrl+Shift+Z do the same in `form`, unless a text that is being edited has something of its
  // own to undo.
  EditBar(Actions actions, QWidget* form);
  void Show(const View& view);

 private:
  QPushButton *cmdUndo, *cmdRedo, *cmdSaveNow = nullptr;
  QLabel *LabelSteps, *LabelSaved;
  View shown_;
  bool shownOnce_ = false;
};

}  // namespace tvx
