// The program where nobody looks at its windows: how they come up at the start, the tray, the desktop's
// notifications, and what is noted of all that was said.
#pragma once

#include <functional>
#include <memory>

#include "core/StartPresenter.h"
#include "core/StatusPresenter.h"
#include "core/watch/LinkNews.h"
#include "core/watch/SaidLog.h"
#include "hwbus/HardwarePorts.h"
#include "ui/windows/TrayIcon.h"
#include "ui/windows/WindowMemory.h"

namespace tvx {

class Presence final {
 public:
  struct Parts {
    StartPresenter& start;
    StatusPresenter& run;
    HardwarePorts& lines;
    SaidLog& said;
    const Clock& clock;
    std::function<void()> front;  // brings the form that is in use before the others
    std::function<void()> exit;
  };
  explicit Presence(Parts parts);
  ~Presence();
  Presence(const Presence&) = delete;
  Presence& operator=(const Presence&) = delete;

  // Another tray than the desktop's; before Begin.
  void UseTray(std::unique_ptr<Tray> tray) { tray_ = std::move(tray); }
  // Before the first form is shown: the forms come up as the user chose. Hidden ones need a tray to be shown
  // again; without one they come up minimised.
  void Begin();
  // The program ends: the tray's icon goes.
  void End();
  // About once a second: tells of links that have gone or returned.
  void Tick();
  // The state in the tray's menu; after every change of it.
  void ShowState();

  void ShowWindows();
  void HideWindows();
  // For the start form: how the windows come up at the next start.
  QWidget* MakeChoice();

 private:
  ComingUp Possible(ComingUp wanted) const;
  void OnBox(std::string_view text);
  std::string StateWords() const;
  void NoteLinks();
  void TellOfLinks();

  Parts parts_;
  WindowMemory memory_;
  std::unique_ptr<Tray> tray_;
  LinkNews news_;
  Registration boxes_;
};

}  // namespace tvx
