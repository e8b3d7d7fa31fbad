// Pictures of a gauge face's calibration: its curve, and the face with its needle.
#pragma once

#include <QPixmap>
#include <vector>

#include "ui/PaintedOnce.h"

namespace tvx {

// A value of the simulator and the needle position (0..1079) that shows it.
struct FacePoint {
  double value = 0;
  double position = 0;
};

// The face with these points as a small square picture of so many pixels, its needle at the first of them.
QPixmap FacePicture(const std::vector<FacePoint>& points, int size);

// Positions over values, in a framed panel.
class PlateCurve : public PaintedOnce {
 public:
  explicit PlateCurve(const char* name);
  void SetPoints(std::vector<FacePoint> points);
  void SetNeedle(int position);
  QSize sizeHint() const override;

 protected:
  void PaintStill(QPainter& painter) const override;
  void PaintMoving(QPainter& painter) const override;

 private:
  QRectF Area() const;

  std::vector<FacePoint> points_;
  int needle_ = 0;
};

// The face as it looks from the front: position 540 points up, three positions to a degree, clockwise.
// In a framed panel.
class PlateFace : public PaintedOnce {
 public:
  explicit PlateFace(const char* name);
  void SetPoints(std::vector<FacePoint> points);
  void SetNeedle(int position);
  QSize sizeHint() const override;

 protected:
  void PaintStill(QPainter& painter) const override;
  void PaintMoving(QPainter& painter) const override;

 private:
  std::vector<FacePoint> points_;
  int needle_ = 0;
};

}  // namespace tvx
