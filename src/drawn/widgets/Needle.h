// A value that follows another like a needle with some mass, and the place that the needle takes on a dial.
#pragma once

#include <QColor>
#include <QRectF>

namespace tvx::drawn {

class Needle {
 public:
  // `visible` is the smallest step that an eye sees; smaller ones wait until they add up to it.
  explicit Needle(double visible = 0) : visible_(visible) {}

  // Goes on towards `target`, half the way in about a tenth of a second; `turn` above 0 lets it take the
  // short way round a circle of that size. True when it is to be drawn at another place than before.
  bool Follow(double target, double seconds, double turn = 0);
  // Where it is drawn.
  double At() const { return shown_; }
  void Jump(double to) {
    at_ = shown_ = to;
    placed_ = true;
  }

 private:
  double visible_;
  double at_ = 0, shown_ = 0;
  bool placed_ = false;
};

// A place on a round dial, degrees clockwise from the top.
QPointF OnDial(double degrees, double radius);
// What a needle with its shadow covers: from the middle `length` towards `degrees`, and its tail beyond the
// middle.
QRectF NeedleArea(double degrees, double length, double tail);

// The shape of a needle: from its tail it widens to the shoulder and ends in a point. Drawing units.
struct Blade {
  double length, tail;
  double shoulder;             // from the middle
  double halfTail, halfWidth;  // half its width at the tail, and at the shoulder
};
// Draws the blade with its shadow; it points up where it stands at 0 degrees.
void DrawBlade(class QPainter& painter, const Blade& blade, double degrees, const QColor& colour);

}  // namespace tvx::drawn
