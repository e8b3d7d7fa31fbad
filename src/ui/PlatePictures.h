// Pictures of a gauge face's calibration: its curve, and the face with its needle.
#pragma once

#include <QWidget>
#include <vector>

namespace tvx {

// A value of the simulator and the needle position (0..1079) that shows it.
struct FacePoint {
  double value = 0;
  double position = 0;
};

// Positions over values.
class PlateCurve : public QWidget {
 public:
  explicit PlateCurve(const char* name);
  void SetPoints(std::vector<FacePoint> points);
  void SetNeedle(int position);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<FacePoint> points_;
  int needle_ = 0;
};

// The face as it looks from the front: position 540 points up, three positions to a degree, clockwise.
class PlateFace : public QWidget {
 public:
  explicit PlateFace(const char* name);
  void SetPoints(std::vector<FacePoint> points);
  void SetNeedle(int position);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<FacePoint> points_;
  int needle_ = 0;
};

}  // namespace tvx
