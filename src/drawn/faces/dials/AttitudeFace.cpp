#include "drawn/faces/dials/AttitudeFace.h"

#include <QPainterPath>
#include <cmath>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr double kBall = 62;             // radius of the opening
constexpr double kUnitsPerDegree = 1.8;  // of pitch
constexpr double kSteepest = 35;         // degrees of pitch that are shown
constexpr double kStrip = kBall + kSteepest * kUnitsPerDegree + 1;
constexpr double kTenths = 10;  // pitch and bank are followed in tenths of a degree
constexpr double kVisiblePitch = 1, kVisibleBank = 1.3;
const QColor kSky{0x3b, 0x8f, 0xd6};
const QColor kSkyHigh{0x1f, 0x5f, 0xa8};
const QColor kGround{0x8a, 0x5a, 0x2c};
const QColor kGroundLow{0x4f, 0x30, 0x15};

// Between the opening and the glass; neither side of its inner edge shows a gap.
QPainterPath RingPath() {
  return Ring(83, kBall - 0.5);
}

}  // namespace

AttitudeFace::AttitudeFace(AttitudeDevice& device, QWidget* parent)
    : InstrumentWidget(device, QStringLiteral("ATTITUDE"), parent),
      gauge_(device),
      pitch_(kVisiblePitch),
      bank_(kVisibleBank) {
  pitch_.Jump(0);
  bank_.Jump(0);
}

QRectF AttitudeFace::Move(double seconds, bool) {
  const bool pitch = pitch_.Follow(gauge_.Pitch() * kTenths, seconds);
  const bool bank = bank_.Follow(gauge_.Bank() * kTenths, seconds, 360 * kTenths);
  return pitch || bank ? Glass() : QRectF();
}

void AttitudeFace::Prepare(double pixelsPerUnit) {
  ball_.Renew({-kBall, -kStrip, 2 * kBall, 2 * kStrip}, pixelsPerUnit,
              [this](QPainter& painter) { DrawBall(painter); });
  ring_.Renew(Glass(), pixelsPerUnit, [this](QPainter& painter) { DrawRing(painter); });
}

QColor AttitudeFace::Painted(const QColor& colour) const {
  const FaceLight& light = gauge_.Light();
  return light.lit ? theme::Mix(theme::kDial, colour, 0.38 + 0.5 * light.brightness / 15.0) : colour;
}

// Sky and ground with the pitch ladder, as a strip on which the level horizon is at 0.
void AttitudeFace::DrawBall(QPainter& painter) const {
  QLinearGradient sky(0, -110, 0, 0);
  sky.setColorAt(0, Painted(kSkyHigh));
  sky.setColorAt(1, Painted(kSky));
  QLinearGradient ground(0, 0, 0, 110);
  ground.setColorAt(0, Painted(kGround));
  ground.setColorAt(1, Painted(kGroundLow));
  painter.fillRect(QRectF(-200, -200, 400, 200), sky);
  painter.fillRect(QRectF(-200, 0, 400, 200), ground);
  // The runway's lines that meet at the horizon.
  painter.setPen(QPen(Ink(QColor(0xe8, 0xd9, 0xc0)), 0.9));
  for (const double x : {-120.0, -62.0, 62.0, 120.0}) painter.drawLine(QPointF(x * 0.06, 3), QPointF(x, 62));
  painter.setPen(QPen(Ink(), 1.8));
  painter.drawLine(QPointF(-200, 0), QPointF(200, 0));
  for (int degrees = -30; degrees <= 30; degrees += 5) {
    if (degrees == 0) continue;
    const double y = -degrees * kUnitsPerDegree;
    const double half = degrees % 10 == 0 ? 17 : 9;
    painter.setPen(QPen(Ink(), 1.4));
    painter.drawLine(QPointF(-half, y), QPointF(half, y));
    if (degrees % 10 != 0) continue;
    for (const double side : {-1.0, 1.0})
      Text(painter, {side * 25, y}, 8, QString::number(std::abs(degrees)), Ink(), true);
  }
}

// The ring turns with the ball: sky above, ground below, marks every ten degrees, the triangle at level.
void AttitudeFace::DrawRing(QPainter& painter) const {
  const QPainterPath ring = RingPath();
  painter.setPen(Qt::NoPen);
  painter.save();
  painter.setClipRect(QRectF(-100, -100, 200, 100));
  painter.fillPath(ring, Painted(kSkyHigh));
  painter.setClipRect(QRectF(-100, 0, 200, 100));
  painter.fillPath(ring, Painted(kGroundLow));
  painter.restore();
  for (const int degrees : {-90, -60, -45, -30, -20, -10, 10, 20, 30, 45, 60, 90}) {
    const bool large = degrees % 30 == 0;
    painter.save();
    painter.rotate(degrees);
    painter.setPen(QPen(Ink(), large ? 2.6 : 1.5, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0, -kBall - 2), QPointF(0, -kBall - (large ? 17 : 11)));
    painter.restore();
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(Ink());
  painter.drawPolygon(QPolygonF({{-6, -kBall - 15}, {6, -kBall - 15}, {0, -kBall - 2}}));
}

// The edge of the opening, the aircraft and its pedestal, which stand on the case.
void AttitudeFace::DrawFront(QPainter& painter) {
  painter.setPen(QPen(QColor(0, 0, 0, 190), 1.6));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(QPointF(0, 0), kBall, kBall);
  const QColor orange = Ink(QColor(0xff, 0x9a, 0x1f));
  for (const bool shadow : {true, false}) {
    painter.save();
    if (shadow) painter.translate(1, 1.8);
    const QColor colour = shadow ? QColor(0, 0, 0, 140) : orange;
    painter.setPen(QPen(colour, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({{-46, 0}, {-20, 0}, {-13, 7}}));
    painter.drawPolyline(QPolygonF({{46, 0}, {20, 0}, {13, 7}}));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QPointF(0, 0), 3.4, 3.4);
    painter.drawPolygon(QPolygonF({{-5.5, -kBall + 13}, {5.5, -kBall + 13}, {0, -kBall + 2}}));
    painter.restore();
  }
  QPainterPath foot;
  foot.moveTo(-24, kGlass - 6);
  foot.quadTo(0, kBall - 22, 24, kGlass - 6);
  foot.closeSubpath();
  painter.setPen(QPen(QColor(0, 0, 0, 170), 1));
  painter.setBrush(QColor(0x1b, 0x1d, 0x20));
  painter.drawPath(foot);
}

void AttitudeFace::DrawMoving(QPainter& painter) {
  painter.rotate(-bank_.At() / kTenths);
  ring_.Paint(painter, RingPath());
  const double down = std::clamp(pitch_.At() / kTenths, -kSteepest, kSteepest) * kUnitsPerDegree;
  painter.translate(0, down);
  ball_.Paint(painter, Circle(kBall).translated(0, -down));
}

QString AttitudeFace::Words() const {
  if (!gauge_.Told()) return QStringLiteral("attitude -");
  return QStringLiteral("attitude pitch %1 bank %2")
      .arg(gauge_.Pitch(), 0, 'f', 1)
      .arg(gauge_.Bank(), 0, 'f', 1);
}

}  // namespace tvx::drawn
