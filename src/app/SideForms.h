// What stands beside the forms of the work, whichever of them is in use: the help, and what was said.
#pragma once

#include "core/forms/MessagesForm.h"
#include "platform/Host.h"
#include "ui/Form.h"
#include "ui/windows/HelpForm.h"

namespace tvx {

class SideForms {
 public:
  SideForms(MessageBoxes& boxes, SaidLog& said) : boxes_(boxes), said_(said) {}

  // The manual, at the place that belongs to the form of this name; without one: its beginning.
  void ShowHelp(const QString& form);
  HelpForm* Help() const { return help_.Get(); }
  void ShowMessages();
  void Unload();

 private:
  MessageBoxes& boxes_;
  SaidLog& said_;
  FormHolder<HelpForm> help_;
  FormHolder<MessagesForm> messages_;
};

}  // namespace tvx
