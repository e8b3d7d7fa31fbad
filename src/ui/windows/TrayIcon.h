// The program in the desktop's tray: its state, a menu, and notifications.
#pragma once

#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>

namespace tvx {

class Tray {
 public:
  struct Actions {
    std::function<void()> run, stop, show, hide, exit;
  };
  struct View {
    QString state;  // in a few words
    bool mayRun = false, mayStop = false, mayHide = false;
    bool operator==(const View&) const = default;
  };
  virtual ~Tray() = default;
  // Whether the desktop has a tray. Without one the rest does without a word.
  virtual bool Available() const = 0;
  virtual void PutUp(Actions actions) = 0;  // once
  virtual void Show(const View& view) = 0;
  virtual void Notify(const QString& text, bool trouble) = 0;
  virtual void TakeDown() = 0;  // may be called from an action
};

class TrayIcon final : public Tray {
 public:
  bool Available() const override { return QSystemTrayIcon::isSystemTrayAvailable(); }
  void PutUp(Actions actions) override;
  void Show(const View& view) override;
  void Notify(const QString& text, bool trouble) override;
  void TakeDown() override { icon_.hide(); }

 private:
  QMenu menu_;
  QAction *state_ = nullptr, *run_ = nullptr, *stop_ = nullptr, *hide_ = nullptr;
  View shown_;
  QSystemTrayIcon icon_;  // before its menu goes
};

}  // namespace tvx
