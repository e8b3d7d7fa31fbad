#include "ui/Indicators.h"

#include <QPainter>

#include "ui/Look.h"

namespace tvx {
namespace {

QColor FromCode(int colour) {
  return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF};
}

constexpr double kStepsPerDegree = 3.0;
constexpr double kZeroAngle = 225.0;  // position 0 points to the lower left

}  // namespace

Indicator::Indicator(const QString& name, const QString& text) : text_(text) {
  setObjectName(name);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Indicator::SetColour(int colour) {
  if (colour_ == colour) return;
  colour_ = colour;
  update();
}

QSize Indicator::sizeHint() const {
  return {look::Margin() * 2, look::Margin() + look::Gap()};
}

// A wide cell carries its colour in a lamp beside the text: a panel of them must not light up a dark cockpit.
// A narrow one is filled.
void Indicator::paintEvent(QPaintEvent*) {
  const look::Colours& colours = look::CurrentColours();
  const bool known = colour_ >= 0;
  const bool wide = width() > 2 * height();
  const QColor colour = known ? FromCode(colour_) : colours.panel;
  const QColor fill = wide ? colours.panel : colour;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colours.line, 1));
  painter.setBrush(fill);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 3, 3);
  QRect textArea = rect();
  if (wide) {
    const double lamp = height() * 0.42;
    painter.setPen(known ? QPen(Qt::NoPen) : QPen(colours.line, 1));
    painter.setBrush(colour);
    painter.drawEllipse(QRectF(height() * 0.3, (height() - lamp) / 2, lamp, lamp));
    textArea.setLeft(static_cast<int>(height() * 0.3 + lamp));
  }
  painter.setPen(look::Contrast(Qt::black, fill) > look::Contrast(Qt::white, fill) ? Qt::black : Qt::white);
  painter.drawText(textArea, Qt::AlignCenter, text_);
}

NeedleDial::NeedleDial(const QString& name) {
  setObjectName(name);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void NeedleDial::SetPosition(int position, bool enabled) {
  if (position_ == position && enabled_ == enabled) return;
  position_ = position;
  enabled_ = enabled;
  update();
}

QSize NeedleDial::sizeHint() const {
  return {look::Margin() * 7, look::Margin() * 7};
}

void NeedleDial::paintEvent(QPaintEvent*) {
  const look::Colours& colours = look::CurrentColours();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double side = std::min(width(), height()) - 4.0;
  painter.translate(width() / 2.0, height() / 2.0);
  painter.setPen(QPen(colours.line, 2));
  painter.setBrush(colours.panel);
  painter.drawEllipse(QPointF(0, 0), side / 2, side / 2);
  painter.setPen(QPen(enabled_ ? colours.dim : colours.line, 2));
  for (int mark = 0; mark <= 9; ++mark) {
    painter.save();
    painter.rotate(kZeroAngle + mark * 30.0);
    painter.drawLine(QPointF(0, -side * 0.46), QPointF(0, -side * 0.39));
    painter.restore();
  }
  if (!enabled_) return;
  painter.rotate(kZeroAngle + position_ / kStepsPerDegree);
  painter.setPen(QPen(colours.accent, side / 28, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(0, side * 0.08), QPointF(0, -side * 0.38));
  painter.setBrush(colours.accent);
  painter.drawEllipse(QPointF(0, 0), side / 22, side / 22);
}

}  // namespace tvx
