#include "ui/PlatePictures.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "ui/Look.h"

namespace tvx {
namespace {

constexpr double kHighestPosition = 1079;
constexpr double kPositionUp = 540;
constexpr double kPositionsToADegree = 3;
constexpr QRgb kPrint = 0xe8eef3;  // of the numbers on a face

QSize Square() {
  return {look::Margin() * 15, look::Margin() * 14};
}

QString Number(double value) {
  return QString::number(value, 'g', 6);
}

// The direction of a needle position, right and down positive.
QPointF Direction(double position) {
  const double angle = (position - kPositionUp) / kPositionsToADegree / 180.0 * std::numbers::pi;
  return {std::sin(angle), -std::cos(angle)};
}

void PaintDial(QPainter& painter, const QRectF& area, const std::vector<FacePoint>& points) {
  const double radius = std::min(area.width(), area.height()) / 2.0 - 2;
  const QPointF centre = area.center();
  painter.setPen(QPen(look::CurrentColours().line, 2));
  painter.setBrush(QColor(0x0b, 0x0d, 0x10));
  painter.drawEllipse(centre, radius, radius);
  const QColor print(kPrint);
  QFont font = painter.font();
  font.setPixelSize(std::max(9, static_cast<int>(radius / 9)));
  painter.setFont(font);
  std::vector<QRectF> printed;
  // The last number first: the ends of a scale tell most.
  for (std::size_t i = 0; i < points.size(); ++i) {
    const FacePoint& p = points[i == 0 ? points.size() - 1 : i - 1];
    const QPointF out = Direction(p.position);
    painter.setPen(QPen(print, 2));
    painter.drawLine(centre + out * radius * 0.84, centre + out * radius * 0.96);
    const QString number = Number(p.value);
    QRectF place(QPointF(), painter.fontMetrics().size(Qt::TextSingleLine, number));
    place.moveCenter(centre + out * radius * 0.68);
    // Numbers that would stand in each other are left out, as on a real face.
    if (std::any_of(printed.begin(), printed.end(),
                    [&](const QRectF& other) { return other.intersects(place); }))
      continue;
    printed.push_back(place);
    painter.setPen(print);
    painter.drawText(place, Qt::AlignCenter, number);
  }
}

void PaintNeedle(QPainter& painter, const QRectF& area, double position) {
  const double radius = std::min(area.width(), area.height()) / 2.0 - 2;
  const QPointF centre = area.center();
  const QPointF out = Direction(position), side(-out.y(), out.x());
  const double thick = std::max(2.0, radius / 40);
  painter.setPen(Qt::NoPen);
  // The face is dark by day as well.
  painter.setBrush(look::ColoursOf(look::Theme::Dark).trouble);
  painter.drawPolygon(QPolygonF{centre + side * thick - out * radius * 0.15,
                                centre - side * thick - out * radius * 0.15, centre + out * radius * 0.88});
  painter.setBrush(QColor(kPrint));
  painter.drawEllipse(centre, thick * 2, thick * 2);
}

}  // namespace

PlateCurve::PlateCurve(const char* name) : PaintedOnce(look::Ground::Panel) {
  setObjectName(QString::fromLatin1(name));
  setToolTip(tr("Needle position over value"));
  setMinimumSize(Square() * 0.7);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PlateCurve::SetPoints(std::vector<FacePoint> points) {
  points_ = std::move(points);
  PaintStillAgain();
}

void PlateCurve::SetNeedle(int position) {
  if (needle_ == position) return;
  needle_ = position;
  update();
}

QSize PlateCurve::sizeHint() const {
  return Square();
}

QRectF PlateCurve::Area() const {
  const int text = fontMetrics().height();
  return QRectF(rect()).adjusted(text * 2.2, text / 2.0, -text / 2.0, -text * 1.3);
}

void PlateCurve::PaintMoving(QPainter& painter) const {
  const QRectF area = Area();
  const double y = area.bottom() - needle_ / kHighestPosition * area.height();
  painter.setPen(QPen(look::CurrentColours().trouble, 1, Qt::DashLine));
  painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
}

void PlateCurve::PaintStill(QPainter& painter) const {
  const look::Colours& colours = look::CurrentColours();
  const int text = fontMetrics().height();
  const QRectF area = Area();
  painter.setPen(QPen(colours.line, 1));
  painter.setBrush(colours.ground);
  painter.drawRect(area);
  const auto y = [&area](double position) {
    return area.bottom() - position / kHighestPosition * area.height();
  };
  for (const double mark : {0.0, 270.0, 540.0, 810.0, 1079.0}) {
    painter.setPen(QPen(colours.line, 1));
    painter.drawLine(QPointF(area.left(), y(mark)), QPointF(area.right(), y(mark)));
    painter.setPen(colours.dim);
    painter.drawText(QRectF(0, y(mark) - text / 2.0, area.left() - 3, text),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(mark));
  }
  if (points_.empty()) {
    painter.setPen(colours.dim);
    painter.drawText(area, Qt::AlignCenter, tr("No points yet"));
    return;
  }
  const auto [low, high] =
      std::minmax_element(points_.begin(), points_.end(),
                          [](const FacePoint& a, const FacePoint& b) { return a.value < b.value; });
  const double span = high->value > low->value ? high->value - low->value : 1;
  const auto x = [&](double value) { return area.left() + (value - low->value) / span * area.width(); };
  painter.setPen(colours.dim);
  const QRectF below(area.left(), area.bottom() + 2, area.width(), text);
  painter.drawText(below, Qt::AlignLeft, Number(low->value));
  painter.drawText(below, Qt::AlignRight, Number(high->value));
  QPolygonF line;
  for (const FacePoint& p : points_)
    line << QPointF(x(p.value), y(std::clamp(p.position, 0.0, kHighestPosition)));
  painter.setPen(QPen(colours.accent, 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(line);
  painter.setBrush(colours.accent);
  for (const QPointF& p : line) painter.drawEllipse(p, 3, 3);
}

PlateFace::PlateFace(const char* name) : PaintedOnce(look::Ground::Panel) {
  setObjectName(QString::fromLatin1(name));
  setToolTip(tr("The face with the points of this Plate, and the needle where it was sent"));
  setMinimumSize(Square() * 0.7);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PlateFace::SetPoints(std::vector<FacePoint> points) {
  points_ = std::move(points);
  PaintStillAgain();
}

void PlateFace::SetNeedle(int position) {
  if (needle_ == position) return;
  needle_ = position;
  update();
}

QSize PlateFace::sizeHint() const {
  return Square();
}

void PlateFace::PaintStill(QPainter& painter) const {
  PaintDial(painter, QRectF(rect()), points_);
}

void PlateFace::PaintMoving(QPainter& painter) const {
  PaintNeedle(painter, QRectF(rect()), needle_);
}

QPixmap FacePicture(const std::vector<FacePoint>& points, int size) {
  const double scale = qApp->devicePixelRatio();
  QPixmap picture(QSize(size, size) * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area(0, 0, size, size);
  PaintDial(painter, area, points);
  if (!points.empty()) PaintNeedle(painter, area, points.front().position);
  return picture;
}

}  // namespace tvx
