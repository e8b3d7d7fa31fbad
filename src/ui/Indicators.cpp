#include "ui/Indicators.h"

#include <QPainter>
#include <cmath>
#include <numbers>

#include "ui/Look.h"

namespace tvx {
namespace {

constexpr double kStepsPerDegree = 3.0;
constexpr double kZeroAngle = 225.0;          // position 0 points to the lower left
constexpr double kTip = 0.38, kTail = -0.08;  // of the needle, as shares of the dial's diameter

}  // namespace

Indicator::Indicator(const QString& name, const QString& text) : text_(text) {
  setObjectName(name);
  setAccessibleName(text);
  setAccessibleDescription(tr("off, or not known"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Indicator::SetColour(int colour, bool on) {
  if (colour_ == colour && on_ == on) return;
  colour_ = colour;
  on_ = on;
  setAccessibleDescription(on ? tr("on") : colour < 0 ? tr("off, or not known") : tr("off"));
  update();
}

QSize Indicator::sizeHint() const {
  return {look::Margin() * 2, look::Margin() + look::Gap()};
}

QSize Indicator::minimumSizeHint() const {
  return {fontMetrics().horizontalAdvance(text_), fontMetrics().height()};
}

// A wide cell carries its colour in a lamp beside the text: a panel of them must not light up a dark cockpit.
// A narrow one is filled.
void Indicator::paintEvent(QPaintEvent*) {
  const look::Colours& colours = look::CurrentColours();
  const bool known = colour_ >= 0;
  const bool wide = width() > 2 * height();
  const QColor colour = known ? look::FromCode(colour_) : colours.panel;
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
  const QColor ink =
      look::Contrast(Qt::black, fill) > look::Contrast(Qt::white, fill) ? Qt::black : Qt::white;
  if (on_) painter.fillRect(QRectF(width() * 0.25, height() - 4.5, width() * 0.5, 2.5), ink);
  painter.setPen(ink);
  painter.drawText(textArea, Qt::AlignCenter, text_);
}

NeedleDial::NeedleDial(const QString& name) : PaintedOnce(look::Ground::Form) {
  setObjectName(name);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void NeedleDial::SetPosition(int position, bool enabled) {
  position_ = position;
  if (enabled_ != enabled) {
    enabled_ = enabled;
    painted_ = position;
    PaintStillAgain();
  } else if (enabled_ && IsSeen(position - painted_)) {
    const QRegion area(NeedleArea());  // where the needle was, and where it will be
    painted_ = position;
    update(area | NeedleArea());
  }
}

// Whether the needle's tip moves by half a pixel at least.
bool NeedleDial::IsSeen(int move) const {
  const double perStep = kTip * Diameter() / kStepsPerDegree / 180 * std::numbers::pi;
  return std::abs(move) * perStep * devicePixelRatioF() >= 0.5;
}

QSize NeedleDial::sizeHint() const {
  return {look::Margin() * 7, look::Margin() * 7};
}

double NeedleDial::Diameter() const {
  return std::min(width(), height()) - 4.0;
}

// The place on the line from the middle to the rim at a needle position; `share` of the diameter outwards.
QPointF NeedleDial::Place(double position, double share) const {
  const double angle = (kZeroAngle + position / kStepsPerDegree) / 180 * std::numbers::pi;
  return QRectF(rect()).center() + share * Diameter() * QPointF(std::sin(angle), -std::cos(angle));
}

QRect NeedleDial::NeedleArea() const {
  const double hub = Diameter() / 15 + 2;
  const QPointF middle = QRectF(rect()).center();
  const double thick = Diameter() / 56 + 2;
  return QRectF(Place(painted_, kTail), Place(painted_, kTip))
      .normalized()
      .adjusted(-thick, -thick, thick, thick)
      .united(QRectF(middle, QSizeF()).adjusted(-hub, -hub, hub, hub))
      .toAlignedRect();
}

void NeedleDial::PaintStill(QPainter& painter) const {
  const look::Colours& colours = look::CurrentColours();
  painter.setPen(QPen(colours.line, 2));
  painter.setBrush(colours.panel);
  painter.drawEllipse(QRectF(rect()).center(), Diameter() / 2, Diameter() / 2);
  painter.setPen(QPen(enabled_ ? colours.dim : colours.line, 2));
  constexpr double kMarkEvery = 30 * kStepsPerDegree;
  for (int mark = 0; mark <= 9; ++mark) {
    painter.drawLine(Place(mark * kMarkEvery, 0.46), Place(mark * kMarkEvery, 0.39));
  }
}

void NeedleDial::PaintMoving(QPainter& painter) const {
  if (!enabled_) return;
  const look::Colours& colours = look::CurrentColours();
  painter.setPen(QPen(colours.accent, Diameter() / 28, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(Place(painted_, kTail), Place(painted_, kTip));
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours.accent);
  painter.drawEllipse(QRectF(rect()).center(), Diameter() / 15, Diameter() / 15);
}

}  // namespace tvx
