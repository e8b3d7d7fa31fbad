#include "drawn/widgets/Needle.h"

#include <QPainter>
#include <cmath>
#include <numbers>

namespace tvx::drawn {
namespace {

constexpr double kNeedleTime = 0.09;  // s
constexpr double kArrived = 0.05;     // of a needle position
constexpr double kHalfWidth = 6;      // of the widest needle, its outline and its shadow

const QPointF kShadow{1.4, 2.2};  // drawing units

// The part of the blade between two distances from the middle, the tail's being negative.
QPolygonF Part(const Blade& blade, double from, double to) {
  const auto half = [&blade](double at) {
    if (at > blade.shoulder) return blade.halfWidth * (blade.length - at) / (blade.length - blade.shoulder);
    return blade.halfTail +
           (blade.halfWidth - blade.halfTail) * (at + blade.tail) / (blade.shoulder + blade.tail);
  };
  QPolygonF part{{-half(from), -from}, {half(from), -from}};
  const bool shoulder = from < blade.shoulder && blade.shoulder < to;
  if (shoulder) part << QPointF(blade.halfWidth, -blade.shoulder);
  part << QPointF(half(to), -to) << QPointF(-half(to), -to);
  if (shoulder) part << QPointF(-blade.halfWidth, -blade.shoulder);
  return part;
}

// Qt shares fills with a gradient or a transparent colour out to threads when they have about a hundred
// pieces of lines or more, which costs more than the fill itself. So the shadow has hard edges, one piece on
// each line, and is drawn in two halves; the needle has plain colours.
void DrawShadow(QPainter& painter, const Blade& blade, double degrees) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.translate(kShadow);
  painter.rotate(degrees);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 120));
  const double middle = (blade.length - blade.tail) / 2;
  painter.drawPolygon(Part(blade, -blade.tail, middle));
  painter.drawPolygon(Part(blade, middle, blade.length));
  painter.restore();
}

}  // namespace

bool Needle::Follow(double target, double seconds, double turn) {
  if (!placed_) {
    Jump(target);
    return true;
  }
  const auto way = [turn](double from, double to) {
    return turn > 0 ? std::remainder(to - from, turn) : to - from;
  };
  const double left = way(at_, target);
  at_ = std::abs(left) < kArrived ? target : at_ + left * (1 - std::exp(-seconds / kNeedleTime));
  if (turn > 0) at_ = std::fmod(std::fmod(at_, turn) + turn, turn);
  const double step = std::abs(way(shown_, at_));
  const bool last = at_ == target;
  if (step == 0 || (step < visible_ && !last)) return false;
  shown_ = at_;
  return true;
}

QPointF OnDial(double degrees, double radius) {
  const double radians = degrees * std::numbers::pi / 180;
  return {std::sin(radians) * radius, -std::cos(radians) * radius};
}

QRectF NeedleArea(double degrees, double length, double tail) {
  return QRectF(OnDial(degrees, length), OnDial(degrees, -tail))
      .normalized()
      .adjusted(-kHalfWidth, -kHalfWidth, kHalfWidth, kHalfWidth);
}

void DrawBlade(QPainter& painter, const Blade& blade, double degrees, const QColor& colour) {
  DrawShadow(painter, blade, degrees);
  painter.save();
  painter.rotate(degrees);
  painter.setPen(QPen(Qt::black, 0.28));
  painter.setBrush(colour.darker(114));
  painter.drawPolygon(Part(blade, -blade.tail, blade.length));
  // A ridge along the middle.
  Blade ridge = blade;
  ridge.halfTail *= 0.5;
  ridge.halfWidth *= 0.5;
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour.lighter(105));
  painter.drawPolygon(Part(ridge, -blade.tail, blade.length));
  painter.restore();
}

}  // namespace tvx::drawn
