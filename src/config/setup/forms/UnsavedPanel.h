// On the start form: changes to the chosen file that were not saved when the program ended, and what to do
// with them. Not seen where there are none.
#pragma once

#include <functional>
#include <string>

#include "config/setup/UnsavedWork.h"
#include "ui/Widgets.h"

namespace tvx {

class UnsavedPanel : public QFrame {
 public:
  // `goOn` is called once the changes are in the model.
  UnsavedPanel(UnsavedWork& work, std::function<void()> goOn);
  // Looks for changes to this file.
  void ShowFor(const std::string& configFile);

 private:
  void cmdTakeUnsaved_Click();
  void cmdDiscardUnsaved_Click();

  UnsavedWork& work_;
  const std::function<void()> goOn_;
  std::string file_;
  QLabel* LabelUnsaved;
};

}  // namespace tvx
