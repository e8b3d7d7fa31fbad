#include "app/FunctionForms.h"

namespace tvx {

void FunctionForms::ShowEditor(QWidget* parent, ModelWatcher& watcher) {
  if (!editor_ || editor_->Unloading()) {
    editor_ = new FunctionEditorForm(model_, sim_, boxes_, parent);
    QObject::connect(editor_, &FunctionEditorForm::Saved, editor_, [&watcher] { watcher.ModelChanged(); });
  }
  editor_->BringToFront();
}

void FunctionForms::ShowConsole(QWidget* parent) {
  if (!console_ || console_->Unloading()) {
    console_ = new TestXplaneInterfaceForm(model_, sim_, boxes_, clock_, parent);
  }
  console_->BringToFront();
}

}  // namespace tvx
