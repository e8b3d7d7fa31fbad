// The Function editor and the X-Plane test console, opened from the configuration.
#pragma once

#include <QPointer>

#include "config/ModelWatcher.h"
#include "simlink/console/forms/TestXplaneInterfaceForm.h"
#include "simlink/functions/forms/FunctionEditorForm.h"

namespace tvx {

// The forms are children of whoever they are shown for, who waits until they are closed and takes them along
// when it goes.
class FunctionForms {
 public:
  FunctionForms(ConfigModel& model, SimCom& sim, MessageBoxes& boxes, const Clock& clock)
      : model_(model), sim_(sim), boxes_(boxes), clock_(clock) {}

  // `watcher` is told whenever Functions were changed; it outlives the form.
  void ShowEditor(QWidget* parent, ModelWatcher& watcher);
  void ShowConsole(QWidget* parent);

  // The forms; nullptr while one is not open.
  FunctionEditorForm* Editor() const { return editor_; }
  TestXplaneInterfaceForm* Console() const { return console_; }

 private:
  ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  QPointer<FunctionEditorForm> editor_;
  QPointer<TestXplaneInterfaceForm> console_;
};

}  // namespace tvx
