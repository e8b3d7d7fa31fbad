#include "ui/windows/TrayIcon.h"

#include <QApplication>

#include "ui/LogoFace.h"

namespace tvx {

void TrayIcon::PutUp(Actions actions) {
  menu_.setObjectName("MenuTray");
  state_ = menu_.addAction(QString());
  state_->setEnabled(false);
  menu_.addSeparator();
  const auto add = [this](const QString& text, const std::function<void()>& does) {
    QAction* action = menu_.addAction(text);
    QObject::connect(action, &QAction::triggered, &menu_, [does] { does(); });
    return action;
  };
  run_ = add(QObject::tr("&Run"), actions.run);
  stop_ = add(QObject::tr("&Stop"), actions.stop);
  menu_.addSeparator();
  add(QObject::tr("Sho&w the windows"), actions.show);
  hide_ = add(QObject::tr("&Hide the windows"), actions.hide);
  menu_.addSeparator();
  add(QObject::tr("E&xit"), actions.exit);
  icon_.setIcon(ProgramIcon());
  icon_.setContextMenu(&menu_);
  QObject::connect(&icon_, &QSystemTrayIcon::activated, &menu_,
                   [show = actions.show](QSystemTrayIcon::ActivationReason reason) {
                     if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) show();
                   });
  QObject::connect(&icon_, &QSystemTrayIcon::messageClicked, &menu_, [show = actions.show] { show(); });
  shown_.mayHide = true;
  Show({});
  if (Available()) icon_.show();
}

void TrayIcon::Show(const View& view) {
  if (state_ == nullptr || view == shown_) return;
  shown_ = view;
  state_->setText(view.state);
  icon_.setToolTip(view.state);
  run_->setEnabled(view.mayRun);
  stop_->setEnabled(view.mayStop);
  hide_->setEnabled(view.mayHide);
}

void TrayIcon::Notify(const QString& text, bool trouble) {
  if (!icon_.isVisible()) return;
  icon_.showMessage(QApplication::applicationDisplayName(), text,
                    trouble ? QSystemTrayIcon::Warning : QSystemTrayIcon::Information);
}

}  // namespace tvx
