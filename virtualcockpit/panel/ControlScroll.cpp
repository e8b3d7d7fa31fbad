#include "virtualcockpit/panel/ControlScroll.h"

#include <QEvent>
#include <QScreen>
#include <QStyle>

namespace tvx::vc {
namespace {

constexpr int kLeastInSight = 8;  // in text heights
constexpr int kTitleBar = 3;      // of the window manager, in text heights

int BarOf(const QWidget& widget) {
  return widget.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &widget);
}

}  // namespace

ControlScroll::ControlScroll(QWidget* controls, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  setWidget(controls);
}

QSize ControlScroll::sizeHint() const {
  return widget()->sizeHint() + QSize(BarOf(*this), 0);
}

QSize ControlScroll::minimumSizeHint() const {
  return {widget()->minimumSizeHint().width() + BarOf(*this), kLeastInSight * fontMetrics().height()};
}

// The controls may have become wider.
bool ControlScroll::eventFilter(QObject* watched, QEvent* event) {
  const bool done = QScrollArea::eventFilter(watched, event);
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return done;
}

QSize FittingScreen(const QWidget& window, const QSize& wanted) {
  const QSize room = window.screen()->availableGeometry().size();
  return wanted.boundedTo(room - QSize(0, kTitleBar * window.fontMetrics().height()));
}

}  // namespace tvx::vc
