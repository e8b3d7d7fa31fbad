#include "app/FunctionForms.h"

namespace tvx {
namespace {

void BringToFront(QWidget* form) {
  form->show();
  form->raise();
  form->activateWindow();
}

}  // namespace

void FunctionForms::ShowEditor(QWidget* parent, std::function<void()> saved) {
  if (!editor_ || editor_->Unloading()) editor_ = new FunctionEditorForm(model_, sim_, boxes_, parent);
  editor_->SetSaved(std::move(saved));
  BringToFront(editor_);
}

void FunctionForms::ShowConsole(QWidget* parent) {
  if (!console_ || console_->Unloading()) {
    console_ = new TestXplaneInterfaceForm(model_, sim_, boxes_, clock_, parent);
  }
  BringToFront(console_);
}

}  // namespace tvx
