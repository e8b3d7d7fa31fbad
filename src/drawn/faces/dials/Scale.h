// The scale of a needle gauge's face, made from its Plate.
#pragma once

#include <string>
#include <vector>

#include "config/Records.h"

namespace tvx::drawn {

struct ScaleMark {
  enum class Size { Small, Middle, Large };
  double value;
  double position;  // needle position 0..1080
  Size size;
  std::string label;  // of a large mark; may be empty
};

class Scale {
 public:
  Scale() = default;
  // Of a Plate's lowest and highest value and the points between them that rise. A Plate without a range
  // gives an empty scale.
  explicit Scale(const PlateRecord& plate);
  // 0..1079 without values, for a gauge that has no Plate.
  static Scale Blank();

  bool Empty() const { return points_.size() < 2; }
  double Low() const { return Empty() ? 0 : points_.front().value; }
  double High() const { return Empty() ? 0 : points_.back().value; }
  // Where a value stands; values outside the scale stand at its ends.
  double PositionOf(double value) const;
  // The value that a needle position shows: the inverse of PositionOf.
  double ValueAt(double position) const;
  double LowPosition() const;  // the smaller of the two ends
  double HighPosition() const;
  // True when the needle may pass over the scale's end and begin anew (a compass).
  bool FullCircle() const { return HighPosition() - LowPosition() >= 1060; }
  // True when no part of the other scale shares an angle with this one.
  bool Beside(const Scale& other) const;

  const std::vector<ScaleMark>& Marks() const { return marks_; }
  // By how much the labels are divided: 1, 100 or 1000.
  int Divisor() const { return divisor_; }
  // Labels as a compass card: N, 3, 6, E, ...
  void UseCompassLabels();
  // Labels without their minus: the face says which side is down.
  void UseUnsignedLabels();

 private:
  struct Point {
    double value, position;
  };
  void DropCrowdedEnd();
  void MarkPoints();
  void MarkEvenly();
  void MarkBetween(const Point& from, const Point& to, double step);
  bool LabelsFit(double step) const;

  std::vector<Point> points_;
  std::vector<ScaleMark> marks_;
  int divisor_ = 1;
};

// Degrees clockwise from twelve o'clock of a needle position: 540 is at the top.
inline double DegreesOf(double position) {
  return position / 3.0 - 180.0;
}

}  // namespace tvx::drawn
