#include "ui/ReadingLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace tvx {

ReadingLabel::ReadingLabel(look::Ground ground) : ground_(ground) {
  setTextFormat(Qt::PlainText);
}

QSize ReadingLabel::SizeOf(const QString& text) const {
  const QFontMetrics metrics = fontMetrics();
  int width = 0;
  for (const QChar character : text) width += metrics.horizontalAdvance(character);
  return {width, metrics.height()};
}

bool ReadingLabel::event(QEvent* event) {
  const bool handled = QLabel::event(event);
  switch (event->type()) {
    case QEvent::Polish:
    case QEvent::StyleChange:
    case QEvent::FontChange:
    case QEvent::PaletteChange:
    case QEvent::Show:
      cells_.clear();
      // The style sheet takes it away whenever it polishes the label.
      setAttribute(Qt::WA_OpaquePaintEvent);
      break;
    default:
      break;
  }
  return handled;
}

void ReadingLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), look::ColourOf(ground_));
  const QString shown = text();
  QPoint place = QStyle::alignedRect(layoutDirection(), alignment(), SizeOf(shown), rect()).topLeft();
  for (const QChar character : shown) {
    const QPixmap& cell = Cell(character);
    painter.drawPixmap(place, cell);
    place.rx() += fontMetrics().horizontalAdvance(character);
  }
}

const QPixmap& ReadingLabel::Cell(QChar character) {
  QPixmap& cell = cells_[character];
  if (!cell.isNull() && cell.devicePixelRatio() == devicePixelRatio()) return cell;
  const QSize size = SizeOf(character);
  cell = QPixmap(size * devicePixelRatio());
  cell.setDevicePixelRatio(devicePixelRatio());
  cell.fill(look::ColourOf(ground_));
  QPainter painter(&cell);
  painter.setFont(font());
  painter.setPen(look::CurrentColours().text);
  painter.drawText(QRect(QPoint(), size), Qt::AlignCenter, QString(character));
  return cell;
}

}  // namespace tvx
