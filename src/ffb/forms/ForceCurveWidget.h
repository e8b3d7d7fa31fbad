// A force profile over airspeed, to be dragged point by point.
#pragma once

#include <array>
#include <functional>

#include "ffb/forces/Forces.h"
#include "ui/PaintedOnce.h"

namespace tvx {

// Thirteen points of airspeed (kt) and force (%). With the mouse: take a point and drag it. With the
// keyboard: Page Up and Down choose a point, the cursor keys move it, with Shift in steps of ten.
class ForceCurveWidget : public PaintedOnce {
 public:
  using Points = std::array<QPointF, 13>;
  using Moved = std::function<void(std::size_t point, double airspeed, double force)>;

  explicit ForceCurveWidget(const char* name);
  void SetMoved(Moved moved) { moved_ = std::move(moved); }
  void SetPoints(const Points& points);
  // The airspeed now, drawn as a line; below 0 none.
  void SetAirspeed(double knots);
  std::size_t Chosen() const { return chosen_; }
  QPointF PlaceOf(QPointF point) const;  // on the widget
  QSize sizeHint() const override;

  static constexpr double kFastest = 300;  // kt, at the right edge

 protected:
  void PaintStill(QPainter& painter) const override;
  void PaintMoving(QPainter& painter) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QRectF Field() const;
  void Move(QPointF point);
  void DrawCurve(QPainter& painter) const;

  Points points_{};
  std::size_t chosen_ = 0;
  bool dragging_ = false;
  double airspeed_ = -1;
  Moved moved_;
};

}  // namespace tvx
