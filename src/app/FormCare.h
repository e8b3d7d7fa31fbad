// What the program does for every form, whichever it is: undo, redo and Save at the foot of those that change
// the configuration; help by F1; a name for every control; and the place, size and colours from the last
// time.
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <vector>

#include "config/setup/ConfigurationHistory.h"
#include "ui/Form.h"
#include "ui/windows/EditBar.h"
#include "ui/windows/WindowMemory.h"

namespace tvx {

class FormCare final : public QObject {
 public:
  struct Parts {
    ConfigModel& model;
    ConfigurationHistory& history;
    std::function<void()> replaced;  // the model was undone or redone: whoever keeps some of it follows
    std::function<void()> save;      // into the file in use
    std::function<std::string()> saveWords;      // what that will do
    std::function<void(const Subject&)> follow;  // shows the road of a value
    std::function<bool()> busy;  // something is changing the model that is one step when it is done
    std::function<void(const QString&)> help;  // for the form of this name
  };
  explicit FormCare(Parts parts);

  // To be called before a form is hidden for good, or before the model is looked at: takes in what changed.
  void Look();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Welcome(Form& form);
  bool HelpAsked(QObject* watched);
  void AddBar(Form& form);
  bool AnyBar() const;
  void Undo(bool again);
  void ShowBars();

  Parts parts_;
  WindowMemory memory_;
  QTimer look_;
  std::vector<QPointer<EditBar>> bars_;
};

}  // namespace tvx
