// The program's message boxes, as Qt's own.
#pragma once

#include <QPointer>
#include <QString>
#include <vector>

#include "platform/Host.h"

class QDialog;
class QMessageBox;

namespace tvx {

// Every box is application-modal, has the program's title and the objectName "MessageBox".
class QtMessageBoxes final : public MessageBoxes {
 public:
  ~QtMessageBoxes() override;
  void Show(std::string_view text) override;
  int Ask(std::string_view text) override;
  int AskToGoOn(std::string_view text) override;
  std::optional<std::string> AskText(std::string_view text, std::string_view preset) override;
  void Dismiss() override;

 private:
  int AskWith(std::string_view text, bool enterIsYes);
  // Runs the box until it is answered, and gives its result; QDialog::Rejected once dismissed.
  int Run(QDialog& box);

  std::vector<QPointer<QMessageBox>> standing_;  // of Show; an entry empties when its box is closed
  std::vector<QDialog*> asking_;                 // those that wait for their answer, innermost last
  bool dismissed_ = false;
};

}  // namespace tvx
