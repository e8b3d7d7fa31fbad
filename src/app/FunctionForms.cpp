#include "app/FunctionForms.h"

namespace tvx {

void FunctionForms::ShowEditor(QWidget* parent, ModelWatcher& watcher) {
  const auto make = [&] {
    auto* form = new FunctionEditorForm(model_, sim_, boxes_, parent);
    QObject::connect(form, &FunctionEditorForm::Saved, form, [&watcher] { watcher.ModelChanged(); });
    return form;
  };
  editor_.GetOrMake(make).BringToFront();
}

void FunctionForms::ShowConsole(QWidget* parent) {
  const auto make = [&] { return new TestXplaneInterfaceForm(model_, sim_, boxes_, clock_, parent); };
  console_.GetOrMake(make).BringToFront();
}

}  // namespace tvx
