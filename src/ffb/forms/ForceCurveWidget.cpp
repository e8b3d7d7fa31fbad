#include "ffb/forms/ForceCurveWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/Look.h"

namespace tvx {

ForceCurveWidget::ForceCurveWidget(const char* name) : PaintedOnce(look::Ground::Unknown) {
  setObjectName(QString::fromLatin1(name));
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(look::Margin() * 16, look::Margin() * 9);
}

QSize ForceCurveWidget::sizeHint() const {
  return {look::Margin() * 26, look::Margin() * 14};
}

void ForceCurveWidget::SetPoints(const Points& points) {
  if (points == points_) return;
  points_ = points;
  update();
}

void ForceCurveWidget::SetAirspeed(double knots) {
  if (std::abs(knots - airspeed_) < 0.5) return;
  airspeed_ = knots;
  update();
}

QRectF ForceCurveWidget::Field() const {
  const int text = fontMetrics().height();
  return QRectF(rect()).adjusted(3 * text, text, -text, -1.6 * text);
}

QPointF ForceCurveWidget::PlaceOf(QPointF point) const {
  const QRectF field = Field();
  return {field.left() + std::min(point.x(), kFastest) / kFastest * field.width(),
          field.bottom() - point.y() / 100 * field.height()};
}

void ForceCurveWidget::DrawCurve(QPainter& painter) const {
  GeneralFFBRecord record;
  for (std::size_t i = 0; i < points_.size(); ++i) {
    record.ForceTable[i].RollAirspeed = static_cast<float>(points_[i].x());
    record.ForceTable[i].RollForce = static_cast<float>(points_[i].y());
  }
  const ForceCurve curve = MakeForceCurve(record, Axis::Roll);
  QPolygonF line;
  for (double knots = 0; knots <= kFastest; knots += 2) {
    line << PlaceOf({knots, 100 * ForceAt(curve, knots)});
  }
  painter.drawPolyline(line);
}

void ForceCurveWidget::PaintStill(QPainter& painter) const {
  const look::Colours& colours = look::CurrentColours();
  const QRectF field = Field();
  painter.fillRect(field, colours.panel);
  const int text = fontMetrics().height();
  for (int knots = 0; knots <= static_cast<int>(kFastest); knots += 50) {
    const QPointF at = PlaceOf({static_cast<double>(knots), 0});
    painter.setPen(colours.line);
    painter.drawLine(at, QPointF(at.x(), field.top()));
    painter.setPen(colours.dim);
    painter.drawText(QRectF(at.x() - 2 * text, at.y(), 4 * text, 1.4 * text), Qt::AlignCenter,
                     knots == 0 ? QStringLiteral("kt") : QString::number(knots));
  }
  for (int force = 0; force <= 100; force += 25) {
    const QPointF at = PlaceOf({0, static_cast<double>(force)});
    painter.setPen(colours.line);
    painter.drawLine(at, QPointF(field.right(), at.y()));
    painter.setPen(colours.dim);
    painter.drawText(QRectF(0, at.y() - text, field.left() - text / 2.0, 2 * text),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(force) + " %");
  }
}

void ForceCurveWidget::PaintMoving(QPainter& painter) const {
  const look::Colours& colours = look::CurrentColours();
  if (airspeed_ >= 0) {
    painter.setPen(QPen(colours.good, 2));
    painter.drawLine(PlaceOf({airspeed_, 0}), PlaceOf({airspeed_, 100}));
  }
  painter.setPen(QPen(colours.accent, 2));
  DrawCurve(painter);
  for (std::size_t i = 0; i < points_.size(); ++i) {
    const bool chosen = i == chosen_ && (hasFocus() || dragging_);
    painter.setBrush(chosen ? colours.text : colours.accent);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(PlaceOf(points_[i]), chosen ? 7 : 5, chosen ? 7 : 5);
  }
}

void ForceCurveWidget::Move(QPointF point) {
  const QPointF kept(std::clamp(point.x(), 0.0, kFastest), std::clamp(point.y(), 0.0, 100.0));
  if (kept == points_[chosen_]) return;
  points_[chosen_] = kept;
  update();
  if (moved_) moved_(chosen_, kept.x(), kept.y());
}

void ForceCurveWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  double nearest = 20;  // in pixels; a press farther from every point takes none
  for (std::size_t i = 0; i < points_.size(); ++i) {
    const QPointF away = PlaceOf(points_[i]) - event->position();
    const double distance = std::hypot(away.x(), away.y());
    if (distance >= nearest) continue;
    nearest = distance;
    chosen_ = i;
    dragging_ = true;
  }
  update();
}

void ForceCurveWidget::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging_) return;
  const QRectF field = Field();
  Move({std::round((event->position().x() - field.left()) / field.width() * kFastest),
        std::round((field.bottom() - event->position().y()) / field.height() * 100)});
}

void ForceCurveWidget::mouseReleaseEvent(QMouseEvent*) {
  dragging_ = false;
  update();
}

void ForceCurveWidget::keyPressEvent(QKeyEvent* event) {
  const double step = (event->modifiers() & Qt::ShiftModifier) != 0 ? 10 : 1;
  QPointF point = points_[chosen_];
  switch (event->key()) {
    case Qt::Key_PageUp:
      chosen_ = (chosen_ + 1) % points_.size();
      update();
      return;
    case Qt::Key_PageDown:
      chosen_ = (chosen_ + points_.size() - 1) % points_.size();
      update();
      return;
    case Qt::Key_Left:
      point.rx() -= step;
      break;
    case Qt::Key_Right:
      point.rx() += step;
      break;
    case Qt::Key_Up:
      point.ry() += step;
      break;
    case Qt::Key_Down:
      point.ry() -= step;
      break;
    default:
      QWidget::keyPressEvent(event);
      return;
  }
  Move(point);
}

}  // namespace tvx
