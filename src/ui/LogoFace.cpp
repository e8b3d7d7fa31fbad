#include "ui/LogoFace.h"

#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <algorithm>

#include "ui/Look.h"

namespace tvx {
namespace {

// Draws the face in a square of 200 units around the origin.
void DrawFace(QPainter& painter, const QColor& accent, const QColor& good) {
  const QColor white(0xf2, 0xf4, 0xf6);
  painter.setPen(QPen(QColor(0x5a, 0x66, 0x72), 5));
  painter.setBrush(QColor(0x0a, 0x0c, 0x0f));
  painter.drawEllipse(QPointF(0, 0), 95, 95);

  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(good, 7, Qt::SolidLine, Qt::FlatCap));
  painter.drawArc(QRectF(-72, -72, 144, 144), 40 * 16, 130 * 16);

  for (int tick = 0; tick <= 20; ++tick) {
    const bool large = tick % 4 == 0;
    painter.save();
    painter.rotate(-135 + tick * 13.5);
    painter.setPen(QPen(white, large ? 5 : 2.5, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0, -84), QPointF(0, large ? -62 : -72));
    painter.restore();
  }

  painter.save();
  painter.rotate(52);
  QPainterPath needle;
  needle.moveTo(-6, 22);
  needle.lineTo(-4, -60);
  needle.lineTo(0, -76);
  needle.lineTo(4, -60);
  needle.lineTo(6, 22);
  needle.closeSubpath();
  painter.setPen(Qt::NoPen);
  painter.setBrush(white);
  painter.drawPath(needle);
  painter.restore();
  painter.setBrush(accent);
  painter.drawEllipse(QPointF(0, 0), 12, 12);
}

}  // namespace

LogoFace::LogoFace(const char* name, QWidget* parent) : QAbstractButton(parent) {
  setObjectName(QString::fromLatin1(name));
  setCursor(Qt::PointingHandCursor);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LogoFace::sizeHint() const {
  return {look::Margin() * 6, look::Margin() * 6};
}

void LogoFace::paintEvent(QPaintEvent*) {
  const look::Colours& colours = look::CurrentColours();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double side = std::min(width(), height());
  painter.translate(width() / 2.0, height() / 2.0);
  painter.scale(side / 200, side / 200);
  DrawFace(painter, colours.accent, colours.good);
  if (hasFocus()) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colours.accent, 4));
    painter.drawEllipse(QPointF(0, 0), 97, 97);
  }
}

QIcon ProgramIcon() {
  QPixmap picture(128, 128);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(64, 64);
  painter.scale(0.64, 0.64);
  const look::Colours& colours = look::ColoursOf(look::Theme::Dark);
  DrawFace(painter, colours.accent, colours.good);
  painter.end();
  return QIcon(picture);
}

}  // namespace tvx
