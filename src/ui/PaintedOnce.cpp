#include "ui/PaintedOnce.h"

#include <QEvent>
#include <QPainter>

namespace tvx {

PaintedOnce::PaintedOnce(look::Ground ground) : ground_(ground) {
  setAttribute(Qt::WA_OpaquePaintEvent, ground != look::Ground::Unknown);
}

void PaintedOnce::PaintStillAgain() {
  picture_ = {};
  update();
}

void PaintedOnce::PaintPicture() {
  picture_ = QPixmap(size() * devicePixelRatio());
  picture_.setDevicePixelRatio(devicePixelRatio());
  picture_.fill(look::ColourOf(ground_));
  QPainter painter(&picture_);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(font());
  PaintStill(painter);
}

void PaintedOnce::paintEvent(QPaintEvent*) {
  const bool fits =
      picture_.size() == size() * devicePixelRatio() && picture_.devicePixelRatio() == devicePixelRatio();
  if (!fits) PaintPicture();
  QPainter painter(this);
  painter.drawPixmap(0, 0, picture_);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintMoving(painter);
}

void PaintedOnce::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::FontChange:
    case QEvent::EnabledChange:
      PaintStillAgain();
      break;
    default:
      break;
  }
}

}  // namespace tvx
