#include "drawn/faces/dials/Scale.h"

#include <algorithm>
#include <cmath>

#include "base/NumberFormat.h"

namespace tvx::drawn {
namespace {

constexpr double kLastPosition = 1079;
constexpr double kNeedleCircle = 1080;
constexpr double kDegreesPerLabel = 19;  // room that a label needs
constexpr double kSmallestGap = 2.6;     // degrees between two marks
constexpr std::size_t kMostMarks = 400;

std::string LabelOf(double value, bool fractions) {
  return FormatNumberText(value, fractions ? "0.0" : "0");
}

bool IsMultiple(double value, double step) {
  if (step == 0) return true;
  const double times = value / step;
  return std::abs(times - std::round(times)) < 1e-6;
}

}  // namespace

Scale::Scale(const PlateRecord& plate) {
  constexpr std::size_t kLowest = 2, kHighest = 3, kFirst = 4, kLast = 24;
  const double low = plate.Value[kLowest];
  const double high = plate.Value[kHighest];
  if (!std::isfinite(low) || !std::isfinite(high) || !(low < high)) return;
  const auto add = [this](double value, double position) {
    points_.push_back({value, std::clamp(position, 0.0, kLastPosition)});
  };
  add(low, plate.Position[kLowest]);
  for (std::size_t i = kFirst; i <= kLast; ++i) {
    const double value = plate.Value[i];
    if (value > points_.back().value && value < high) add(value, plate.Position[i]);
  }
  add(high, plate.Position[kHighest]);
  const double largest = std::max(std::abs(Low()), std::abs(High()));
  divisor_ = largest >= 10000 ? 1000 : largest >= 1000 ? 100 : 1;
  if (points_.size() > 2) {
    MarkPoints();
  } else {
    MarkEvenly();
  }
  DropCrowdedEnd();
}

Scale Scale::Blank() {
  Scale scale;
  scale.points_ = {{0, 0}, {kLastPosition, kLastPosition}};
  for (int i = 0; i < 12; ++i) scale.marks_.push_back({i * 90.0, i * 90.0, ScaleMark::Size::Middle, {}});
  return scale;
}

double Scale::LowPosition() const {
  double lowest = kLastPosition;
  for (const Point& p : points_) lowest = std::min(lowest, p.position);
  return lowest;
}
double Scale::HighPosition() const {
  double highest = 0;
  for (const Point& p : points_) highest = std::max(highest, p.position);
  return highest;
}

bool Scale::Beside(const Scale& other) const {
  return HighPosition() <= other.LowPosition() || other.HighPosition() <= LowPosition();
}

double Scale::PositionOf(double value) const {
  if (Empty()) return 0;
  if (!(value > Low())) return points_.front().position;
  for (std::size_t i = 1; i < points_.size(); ++i) {
    const Point& a = points_[i - 1];
    const Point& b = points_[i];
    if (value <= b.value)
      return a.position + (value - a.value) / (b.value - a.value) * (b.position - a.position);
  }
  return points_.back().position;
}

double Scale::ValueAt(double position) const {
  if (Empty()) return 0;
  const Point* nearest = &points_.front();
  for (std::size_t i = 1; i < points_.size(); ++i) {
    const Point& a = points_[i - 1];
    const Point& b = points_[i];
    const double from = std::min(a.position, b.position);
    const double to = std::max(a.position, b.position);
    if (position >= from && position <= to && to > from) {
      return a.value + (position - a.position) / (b.position - a.position) * (b.value - a.value);
    }
    if (std::abs(b.position - position) < std::abs(nearest->position - position)) nearest = &b;
  }
  return nearest->value;
}

// Whether the points that are multiples of `step` (0: all) leave room for their labels.
bool Scale::LabelsFit(double step) const {
  const Point* last = nullptr;
  for (const Point& p : points_) {
    if (!IsMultiple(p.value, step)) continue;
    if (last && std::abs(p.position - last->position) < 3 * kDegreesPerLabel) return false;
    last = &p;
  }
  return true;
}

void Scale::MarkBetween(const Point& from, const Point& to, double step) {
  const double parts = (to.value - from.value) / step;
  if (std::abs(parts - std::round(parts)) > 0.01 || parts < 1.5) return;
  if (std::abs(to.position - from.position) / parts < 3 * kSmallestGap) return;
  const int count = static_cast<int>(std::round(parts));
  for (int i = 1; i < count; ++i) {
    const double value = from.value + i * step;
    const auto size = count % 2 == 0 && i == count / 2 ? ScaleMark::Size::Middle : ScaleMark::Size::Small;
    marks_.push_back({value, PositionOf(value), size, {}});
  }
}

// The Plate's points are what the face prints; where they are too close for a label each, only the rounder
// ones get theirs.
void Scale::MarkPoints() {
  double smallest = High() - Low();
  double closest = kLastPosition;
  bool fractions = false;
  for (std::size_t i = 1; i < points_.size(); ++i) {
    smallest = std::min(smallest, points_[i].value - points_[i - 1].value);
    closest = std::min(closest, std::abs(points_[i].position - points_[i - 1].position));
  }
  double labelStep = 0;
  for (double power = 0.1; !LabelsFit(labelStep) && power < 1e6; power *= 10) {
    for (const double size : {1.0, 2.0, 5.0}) {
      labelStep = size * power;
      if (LabelsFit(labelStep)) break;
    }
  }
  for (const Point& p : points_) fractions = fractions || !IsMultiple(p.value / divisor_, 1);
  // The finest even division that the closest points leave room for.
  double part = smallest;
  for (const int parts : {10, 5, 4, 2}) {
    if (closest / parts < 3 * kSmallestGap) continue;
    part = smallest / parts;
    break;
  }
  for (std::size_t i = 0; i < points_.size(); ++i) {
    const Point& p = points_[i];
    const bool labelled = IsMultiple(p.value, labelStep);
    marks_.push_back({p.value, p.position, labelled ? ScaleMark::Size::Large : ScaleMark::Size::Middle,
                      labelled ? LabelOf(p.value / divisor_, fractions) : std::string()});
    if (i + 1 < points_.size()) MarkBetween(p, points_[i + 1], part);
  }
}

// A Plate of two ends only: round numbers, evenly.
void Scale::MarkEvenly() {
  const double degrees = std::max(1.0, (HighPosition() - LowPosition()) / 3);
  const double labels = std::clamp(degrees / kDegreesPerLabel, 2.0, 13.0);
  const double least = (High() - Low()) / labels;
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  double step = power * 10;
  for (const double size : {1.0, 2.0, 5.0}) {
    if (size * power < least * (1 - 1e-9)) continue;
    step = size * power;
    break;
  }
  const double small = step / 5;
  const bool fractions = !IsMultiple(step / divisor_, 1);
  const double first = std::ceil(Low() / small - 1e-6);
  const double last = std::floor(High() / small + 1e-6);
  for (double i = first; i <= last && marks_.size() < kMostMarks; ++i) {
    const double value = i * small;
    ScaleMark mark{value, PositionOf(value), ScaleMark::Size::Small, {}};
    if (std::fmod(std::abs(i), 5) == 0) {
      mark.size = ScaleMark::Size::Large;
      mark.label = LabelOf(value / divisor_, fractions);
    }
    marks_.push_back(mark);
  }
}

// Where the scale ends close to where it begins there is room for one label only: the last one, or on a full
// circle the first.
void Scale::DropCrowdedEnd() {
  if (marks_.size() < 2 || marks_.front().label.empty() || marks_.back().label.empty()) return;
  const double gap = kNeedleCircle - std::abs(marks_.back().position - marks_.front().position);
  if (gap >= 3 * kDegreesPerLabel) return;
  (FullCircle() ? marks_.back() : marks_.front()).label.clear();
}

void Scale::UseUnsignedLabels() {
  for (ScaleMark& mark : marks_) {
    if (mark.label.starts_with('-')) mark.label.erase(0, 1);
  }
}

void Scale::UseCompassLabels() {
  marks_.clear();
  divisor_ = 1;
  for (int degrees = 0; degrees < 360; degrees += 5) {
    if (degrees < Low() || degrees > High()) continue;
    ScaleMark mark{double(degrees), PositionOf(degrees), ScaleMark::Size::Small, {}};
    if (degrees % 10 == 0) mark.size = ScaleMark::Size::Middle;
    if (degrees % 30 == 0) {
      mark.size = ScaleMark::Size::Large;
      static constexpr std::string_view quarters[] = {"N", "E", "S", "W"};
      mark.label = degrees % 90 == 0 ? std::string(quarters[degrees / 90]) : std::to_string(degrees / 10);
    }
    marks_.push_back(mark);
  }
}

}  // namespace tvx::drawn
