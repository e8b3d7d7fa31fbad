// Controls that scroll up and down where there is less room than they need.
#pragma once

#include <QScrollArea>

namespace tvx::vc {

class ControlScroll : public QScrollArea {
 public:
  // Takes the controls over.
  ControlScroll(QWidget* controls, QWidget* parent);
  QSize sizeHint() const override;         // without scrolling
  QSize minimumSizeHint() const override;  // as wide as they need, and high enough to see some of them

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

// A size for a window as it opens: `wanted`, as far as the window's screen has room.
QSize FittingScreen(const QWidget& window, const QSize& wanted);

}  // namespace tvx::vc
