#include "drawn/faces/units/YokeFace.h"

#include <QPainter>
#include <QPainterPath>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr double kWheelDegrees = 90;  // at full roll
constexpr double kWheelSize = 300;    // in which the wheel is drawn
constexpr double kMargin = 14, kBar = 6;
constexpr double kPedals = 34;  // the height that the pedals take

QString Percent(double share) {
  return QString::number(std::lround(100 * share));
}

}  // namespace

YokeFace::YokeFace(int number, QWidget* parent) : UnitFace(tr("YOKE %1").arg(number), {300, 260}, parent) {
  setObjectName(QStringLiteral("yoke%1").arg(number));
}

void YokeFace::Show(const YokeState& now) {
  if (now == shown_) return;
  shown_ = now;
  update(QRect(0, static_cast<int>(Head()), width(), height() - static_cast<int>(Head())));
}

QRectF YokeFace::Room() const {
  const double bottom = shown_.pedals ? kPedals * Scale() : 0;
  return {0, Head(), static_cast<double>(width()), height() - Head() - bottom};
}

QRectF YokeFace::BarOf(std::size_t axis) const {
  const QRectF room = Room();
  const double margin = kMargin * Scale(), thick = kBar * Scale();
  return axis == 0 ? QRectF(3 * margin, room.bottom() - margin, room.width() - 6 * margin, thick)
                   : QRectF(room.right() - margin, room.top() + margin, thick, room.height() - 3 * margin);
}

// The wheel comes nearer when it is pulled, and turns; a vibration shakes it.
void YokeFace::DrawWheel(QPainter& painter) const {
  const QRectF room = Room();
  const double unit = std::min(room.width(), room.height()) / kWheelSize;
  const auto [roll, pitch] = shown_.position;
  painter.save();
  painter.setClipRect(room);
  painter.translate(room.center().x() + 20 * unit * shown_.shake[0],
                    room.center().y() + unit * (30 * pitch + 20 * shown_.shake[1]));
  painter.setPen(
      QPen(theme::Mix(theme::kPanelTop, theme::kDim, 0.4), 26 * unit, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(0, 0), QPointF(0, -unit * (70 + 30 * pitch)));
  painter.rotate(kWheelDegrees * roll);
  const double size = unit * (1 + 0.18 * pitch);
  painter.scale(size, size);
  QPainterPath wheel;
  wheel.moveTo(-88, -62);
  wheel.cubicTo(-108, -10, -92, 34, -56, 34);
  wheel.lineTo(56, 34);
  wheel.cubicTo(92, 34, 108, -10, 88, -62);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(theme::kPanelTop, 26, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(wheel);
  painter.setPen(QPen(shown_.gripped ? theme::kAmber : theme::Mix(theme::kDial, theme::kText, 0.25), 18,
                      Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(wheel);
  DrawButtons(painter);
  painter.restore();
}

void YokeFace::DrawButtons(QPainter& painter) const {
  painter.setPen(Qt::NoPen);
  painter.setBrush(theme::Mix(theme::kDial, theme::kText, 0.35));
  painter.drawRoundedRect(QRectF(-30, 16, 60, 36), 8, 8);
  for (int i = 0; i < 8; ++i) {
    const bool down = (shown_.buttons >> i & 1) != 0;
    painter.setBrush(down ? theme::kAmber : theme::kDim);
    painter.drawEllipse(QPointF((i < 4 ? -92 : 92) + (i < 4 ? 3 : -3) * (i % 4), -56 + 20 * (i % 4)), 4, 4);
  }
}

// The motor's force from the middle of the bar; to both sides where its direction is not known.
void YokeFace::DrawForce(QPainter& painter, std::size_t axis) const {
  const QRectF bar = BarOf(axis);
  painter.setPen(Qt::NoPen);
  painter.setBrush(theme::Mix(theme::kDial, theme::kText, 0.15));
  const double round = std::min(bar.width(), bar.height()) / 2;
  painter.drawRoundedRect(bar, round, round);
  const double force = std::clamp(shown_.force[axis] + shown_.shake[axis], -1.0, 1.0);
  const double from = shown_.directed ? std::min(force, 0.0) : -std::abs(force);
  const double to = shown_.directed ? std::max(force, 0.0) : std::abs(force);
  painter.setBrush(shown_.motors == YokeState::Motors::Slack ? theme::kDim : theme::kGood);
  const double half = (axis == 0 ? bar.width() : bar.height()) / 2;
  const QRectF filled =
      axis == 0 ? QRectF(bar.center().x() + from * half, bar.top(), (to - from) * half, bar.height())
                : QRectF(bar.left(), bar.center().y() + from * half, bar.width(), (to - from) * half);
  painter.drawRect(filled);
}

// A bar with the rudder's mark, between those of the brakes.
void YokeFace::DrawPedals(QPainter& painter) const {
  const double s = Scale(), top = height() - kPedals * s;
  const QRectF bar(width() * 0.25, top + 18 * s, width() * 0.5, kBar * s);
  painter.setPen(theme::kDim);
  painter.setFont(theme::FontOf(std::max(9.0, 10 * s)));
  painter.drawText(QRectF(0, top, width(), 16 * s), Qt::AlignCenter, tr("BRAKES AND RUDDER"));
  painter.setPen(Qt::NoPen);
  painter.setBrush(theme::Mix(theme::kDial, theme::kText, 0.15));
  painter.drawRect(bar);
  const auto brake = [&](double left, double pressed) {
    const QRectF all(left, top + 4 * s, 10 * s, (kPedals - 10) * s);
    painter.setBrush(theme::Mix(theme::kDial, theme::kText, 0.15));
    painter.drawRect(all);
    painter.setBrush(theme::kAmber);
    painter.drawRect(
        QRectF(all.left(), all.bottom() - all.height() * pressed, all.width(), all.height() * pressed));
  };
  const PedalState& feet = *shown_.pedals;
  brake(bar.left() - 24 * s, std::clamp(feet.leftBrake, 0.0, 1.0));
  brake(bar.right() + 14 * s, std::clamp(feet.rightBrake, 0.0, 1.0));
  const double x = bar.center().x() + std::clamp(feet.rudder, -1.0, 1.0) * bar.width() / 2;
  painter.setBrush(theme::kAmber);
  painter.drawRoundedRect(QRectF(x - 4 * s, bar.top() - 3 * s, 8 * s, bar.height() + 6 * s), 2, 2);
}

void YokeFace::Draw(QPainter& painter, const QRegion&) {
  DrawWheel(painter);
  for (const std::size_t axis : {0u, 1u}) DrawForce(painter, axis);
  if (shown_.pedals) DrawPedals(painter);
}

QString YokeFace::Words() const {
  QStringList words;
  words << tr("roll %1 %").arg(Percent(shown_.position[0]))
        << tr("pitch %1 %").arg(Percent(shown_.position[1]))
        << tr("forces %1 / %2 %").arg(Percent(shown_.force[0]), Percent(shown_.force[1]))
        << (shown_.motors == YokeState::Motors::Slack   ? tr("slack")
            : shown_.motors == YokeState::Motors::Servo ? tr("servo")
                                                        : tr("spring"));
  if (shown_.pedals)
    words << tr("rudder %1 %, brakes %2 / %3 %")
                 .arg(Percent(shown_.pedals->rudder), Percent(shown_.pedals->leftBrake),
                      Percent(shown_.pedals->rightBrake));
  return words.join(QStringLiteral(", "));
}

int YokeFace::PartAt(const QPointF& at) const {
  const double wide = kMargin * Scale();
  for (const int axis : {0, 1}) {
    if (BarOf(static_cast<std::size_t>(axis)).adjusted(-wide, -wide, wide, wide).contains(at)) return axis;
  }
  return -1;
}

}  // namespace tvx::drawn
