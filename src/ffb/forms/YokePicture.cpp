#include "ffb/forms/YokePicture.h"

#include <QPainter>
#include <algorithm>

#include "ui/Look.h"

namespace tvx {

YokePicture::YokePicture(const char* name) : PaintedOnce(look::Ground::Unknown) {
  setObjectName(QString::fromLatin1(name));
  setMinimumSize(look::Margin() * 9, look::Margin() * 9);
}

QSize YokePicture::sizeHint() const {
  return {look::Margin() * 13, look::Margin() * 13};
}

void YokePicture::SetPosition(QPointF where, QPointF rests, bool live) {
  if (where == where_ && rests == rests_ && live == live_) return;
  where_ = where;
  rests_ = rests;
  live_ = live;
  update();
}

void YokePicture::SetRaw(const Raw& roll, const Raw& pitch) {
  if (rulers_ && roll == roll_ && pitch == pitch_) return;
  roll_ = roll;
  pitch_ = pitch;
  rulers_ = true;
  update();
}

// The raw range of an axis along an edge of the field: its calibrated part bright, with marks at its ends and
// centre, and a pointer where the axis is now.
void YokePicture::DrawRuler(QPainter& painter, const QRectF& field, const Raw& raw, bool upright) const {
  const look::Colours& colours = look::CurrentColours();
  const double away = look::Gap();
  const auto at = [&](double share) {
    share = std::clamp(share, 0.0, 1.0);
    return upright ? QPointF(field.left() - away, field.top() + share * field.height())
                   : QPointF(field.left() + share * field.width(), field.bottom() + away);
  };
  const QPointF tick = upright ? QPointF(away / 2, 0) : QPointF(0, away / 2);
  painter.setPen(QPen(colours.line, 2));
  painter.drawLine(at(0), at(1));
  painter.setPen(QPen(colours.dim, 3));
  painter.drawLine(at(raw.low), at(raw.high));
  for (const double share : {raw.low, raw.centre, raw.high})
    painter.drawLine(at(share) - tick, at(share) + tick);
  painter.setPen(Qt::NoPen);
  painter.setBrush(live_ ? colours.accent : colours.dim);
  painter.drawEllipse(at(raw.now), away / 2, away / 2);
}

QRectF YokePicture::Field() const {
  const double edge = look::Gap() * 2;
  const double side = std::min(width(), height()) - 2 * edge;
  return {(width() - side) / 2, (height() - side) / 2, side, side};
}

void YokePicture::PaintStill(QPainter& painter) const {
  const look::Colours& colours = look::CurrentColours();
  const QRectF field = Field();
  painter.setPen(QPen(colours.line, 1));
  painter.setBrush(colours.panel);
  painter.drawRect(field);
  painter.drawLine(QPointF(field.center().x(), field.top()), QPointF(field.center().x(), field.bottom()));
  painter.drawLine(QPointF(field.left(), field.center().y()), QPointF(field.right(), field.center().y()));
}

void YokePicture::PaintMoving(QPainter& painter) const {
  const look::Colours& colours = look::CurrentColours();
  const QRectF field = Field();
  const auto place = [&](QPointF share) {
    return QPointF(field.center().x() + std::clamp(share.x(), -1.0, 1.0) * field.width() / 2,
                   field.center().y() + std::clamp(share.y(), -1.0, 1.0) * field.height() / 2);
  };
  const double arm = field.width() / 14;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colours.dim, 2));
  painter.drawEllipse(place(rests_), arm, arm);
  painter.setPen(QPen(live_ ? colours.accent : colours.dim, 3));
  const QPointF cross = place(where_);
  painter.drawLine(cross - QPointF(arm, 0), cross + QPointF(arm, 0));
  painter.drawLine(cross - QPointF(0, arm), cross + QPointF(0, arm));
  if (!rulers_) return;
  DrawRuler(painter, field, roll_, false);
  DrawRuler(painter, field, pitch_, true);
}

}  // namespace tvx
