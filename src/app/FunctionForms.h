// The Function editor and the X-Plane test console, opened from the configuration.
#pragma once

#include "config/ModelWatcher.h"
#include "simlink/console/forms/TestXplaneInterfaceForm.h"
#include "simlink/functions/forms/FunctionEditorForm.h"

namespace tvx {

// The forms stand above the form that they are shown for, which waits until they are closed, and end with it.
class FunctionForms {
 public:
  FunctionForms(ConfigModel& model, SimCom& sim, MessageBoxes& boxes, const Clock& clock)
      : model_(model), sim_(sim), boxes_(boxes), clock_(clock) {}

  // `watcher` is told whenever Functions were changed; it outlives the form.
  void ShowEditor(QWidget* parent, ModelWatcher& watcher);
  void ShowConsole(QWidget* parent);

  // The forms; nullptr while one is not open.
  FunctionEditorForm* Editor() const { return editor_.Get(); }
  TestXplaneInterfaceForm* Console() const { return console_.Get(); }

 private:
  ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  FormHolder<FunctionEditorForm> editor_;
  FormHolder<TestXplaneInterfaceForm> console_;
};

}  // namespace tvx
