// What stands beside the forms of the work, whichever of them is in use: the help.
#pragma once

#include "platform/Host.h"
#include "ui/Form.h"
#include "ui/windows/HelpForm.h"

namespace tvx {

class SideForms {
 public:
  explicit SideForms(MessageBoxes& boxes) : boxes_(boxes) {}

  // The manual, at the place that belongs to the form of this name; without one: its beginning.
  void ShowHelp(const QString& form);
  HelpForm* Help() const { return help_.Get(); }
  void Unload();

 private:
  MessageBoxes& boxes_;
  FormHolder<HelpForm> help_;
};

}  // namespace tvx
