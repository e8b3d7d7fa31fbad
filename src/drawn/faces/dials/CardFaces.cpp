#include "drawn/faces/dials/CardFaces.h"

#include <QPainterPath>
#include <cmath>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr double kEdge = 3;                // between glass and card
constexpr double kInnerEdge = 50;          // of what is printed on the card
constexpr double kParkedAt = 1080;         // steps; a parked pointer lies at three o'clock
const QRectF kDistance{-98, -99, 56, 27};  // the window of the RMI, with its edge
const QColor kYellow{0xf4, 0xc8, 0x2e};
const QColor kGreen{0x58, 0xd6, 0x7a};

double Degrees(double steps) {
  return steps * 360.0 / kTurnSteps;
}

QString Heading(int steps) {
  return QStringLiteral("%1").arg((steps * 360 + kTurnSteps / 2) / kTurnSteps % 360, 3, 10, QLatin1Char('0'));
}

}  // namespace

void CardFace::Prepare(double pixelsPerUnit) {
  card_.Renew(Glass(), pixelsPerUnit, [this](QPainter& painter) { DrawCard(painter); });
}

void CardFace::PaintCard(QPainter& painter, double heading) const {
  painter.save();
  painter.rotate(-heading);
  card_.Paint(painter, Ring(kGlass - kEdge, kInnerEdge));
  painter.restore();
}

void CardFace::DrawCard(QPainter& painter) const {
  const double radius = kGlass - 5;
  for (int degrees = 0; degrees < 360; degrees += 5) {
    const bool thirty = degrees % 30 == 0;
    painter.setPen(QPen(Ink(), thirty ? 2.1 : 1.2, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0, -radius), QPointF(0, -radius + (degrees % 10 == 0 ? 10 : 6)));
    if (thirty) {
      static constexpr const char* quarters[] = {"N", "E", "S", "W"};
      const bool quarter = degrees % 90 == 0;
      Text(painter, {0, -radius + 19}, quarter ? 15 : 12.5,
           quarter ? QString::fromLatin1(quarters[degrees / 90]) : QString::number(degrees / 10), Ink(),
           true);
    }
    painter.rotate(5);
  }
}

void CardFace::DrawIndex(QPainter& painter) const {
  painter.setPen(QPen(QColor(0, 0, 0, 160), 0.6));
  painter.setBrush(Ink(QColor(0xff, 0x9a, 0x1f)));
  painter.drawPolygon(QPolygonF({{-6, -kGlass - 3}, {6, -kGlass - 3}, {0, -kGlass + 9}}));
}

void CardFace::DrawCaseMarks(QPainter& painter) const {
  painter.save();
  for (int i = 1; i < 8; ++i) {
    painter.rotate(45);
    painter.setPen(QPen(Ink(QColor(0xff, 0x9a, 0x1f)), 2, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0, -kGlass - 3), QPointF(0, -kGlass + 3));
  }
  painter.restore();
}

void CardFace::DrawPointer(QPainter& painter, double degrees, const QColor& colour, bool wide) const {
  for (const bool shadow : {true, false}) {
    painter.save();
    if (shadow) painter.translate(1.3, 2);
    painter.rotate(degrees);
    const QColor ink = shadow ? QColor(0, 0, 0, 130) : Ink(colour);
    painter.setBrush(Qt::NoBrush);
    if (wide) {
      painter.setPen(QPen(ink, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
      painter.drawPolyline(QPolygonF({{-4, -44}, {-11, -44}, {0, -60}, {11, -44}, {4, -44}}));
      for (const double x : {-4.0, 4.0}) {
        painter.drawLine(QPointF(x, -44), QPointF(x, -13));
        painter.drawLine(QPointF(x, 13), QPointF(x, 58));
      }
    } else {
      painter.setPen(QPen(ink, 3, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
      painter.drawLine(QPointF(0, -50), QPointF(0, -9));
      painter.drawLine(QPointF(0, 9), QPointF(0, 60));
      painter.setPen(Qt::NoPen);
      painter.setBrush(ink);
      painter.drawPolygon(QPolygonF({{0, -64}, {-7, -48}, {7, -48}}));
    }
    painter.restore();
  }
}

HeadingFace::HeadingFace(HeadingDevice& device, QWidget* parent)
    : CardFace(device, QStringLiteral("HEADING"), parent), gauge_(device) {
  AddKnob({82, 82}, 16, QStringLiteral("HDG"), QStringLiteral("Heading bug: turn the wheel"),
          [this](int clicks) { gauge_.TurnBug(clicks); });
  AddKnob({-82, 82}, 16, QStringLiteral("GYRO"), QStringLiteral("Gyro correction: turn the wheel"),
          [this](int clicks) { gauge_.TurnGyro(clicks); });
}

QRectF HeadingFace::Move(double seconds, bool) {
  const bool disc = disc_.Follow(gauge_.Disc(), seconds, kTurnSteps);
  const bool bug = bug_.Follow(gauge_.Bug(), seconds, kTurnSteps);
  return disc || bug ? Glass() : QRectF();
}

void HeadingFace::DrawMoving(QPainter& painter) {
  PaintCard(painter, Degrees(disc_.At()));
  // The bug rides on the card's edge.
  painter.save();
  painter.rotate(Degrees(bug_.At() - disc_.At()));
  painter.setPen(QPen(QColor(0, 0, 0, 150), 0.7));
  painter.setBrush(Ink(QColor(0xff, 0x7a, 0x1f)));
  const double r = kGlass - 1;
  painter.drawPolygon(
      QPolygonF({{-9, -r}, {-3.5, -r}, {0, -r + 6}, {3.5, -r}, {9, -r}, {9, -r + 10}, {-9, -r + 10}}));
  painter.restore();
}

void HeadingFace::DrawFront(QPainter& painter) {
  DrawCaseMarks(painter);
  DrawIndex(painter);
  // The aircraft, seen from above.
  QPainterPath plane;
  plane.moveTo(0, -36);
  plane.cubicTo(4, -30, 4, -22, 4, -12);
  plane.lineTo(34, 4);
  plane.lineTo(34, 10);
  plane.lineTo(4, 4);
  plane.lineTo(3, 24);
  plane.lineTo(13, 31);
  plane.lineTo(13, 36);
  plane.lineTo(0, 32);
  plane.lineTo(-13, 36);
  plane.lineTo(-13, 31);
  plane.lineTo(-3, 24);
  plane.lineTo(-4, 4);
  plane.lineTo(-34, 10);
  plane.lineTo(-34, 4);
  plane.lineTo(-4, -12);
  plane.cubicTo(-4, -22, -4, -30, 0, -36);
  painter.setPen(QPen(Ink(QColor(0xff, 0x9a, 0x1f)), 1.8));
  painter.setBrush(QColor(0x0b, 0x0c, 0x0e));
  painter.drawPath(plane);
}

QString HeadingFace::Words() const {
  return QStringLiteral("heading %1 (bug %2)").arg(Heading(gauge_.Disc()), Heading(gauge_.Bug()));
}

AdfFace::AdfFace(AdfDevice& device, QWidget* parent)
    : CardFace(device, QStringLiteral("ADF"), parent), gauge_(device) {
  AddKnob({-82, 82}, 16, QStringLiteral("HDG"), QStringLiteral("Card: turn the wheel"),
          [this](int clicks) { gauge_.TurnCard(clicks); });
}

QRectF AdfFace::Move(double seconds, bool) {
  const bool parked = gauge_.Pointer() == kParked;
  const bool pointer = pointer_.Follow(parked ? kParkedAt : gauge_.Pointer(), seconds, kTurnSteps);
  const bool card = disc_.Follow(gauge_.Card(), seconds, kTurnSteps);
  return pointer || card ? Glass() : QRectF();
}

void AdfFace::DrawMoving(QPainter& painter) {
  PaintCard(painter, Degrees(disc_.At()));
  Text(painter, {0, -26}, 11, Caption(), Ink(QColor(0xb9, 0xbd, 0xc0)), true);
  DrawPointer(painter, Degrees(pointer_.At()), kYellow, false);
}

void AdfFace::DrawFront(QPainter& painter) {
  DrawCaseMarks(painter);
  DrawIndex(painter);
  painter.setPen(QPen(QColor(0, 0, 0, 200), 0.8));
  painter.setBrush(QColor(0x33, 0x36, 0x3a));
  painter.drawEllipse(QPointF(0, 0), 7, 7);
}

QString AdfFace::Words() const {
  return gauge_.Pointer() == kParked ? QStringLiteral("adf parked")
                                     : QStringLiteral("adf %1").arg(Heading(gauge_.Pointer()));
}

RmiFace::RmiFace(RmiDevice& device, QWidget* parent)
    : CardFace(device, QStringLiteral("RMI"), parent), gauge_(device) {}

double RmiFace::OnCase(int pointer) const {
  return pointer == kParked ? kParkedAt : OnCircle(pointer - gauge_.Card());
}

QRectF RmiFace::Move(double seconds, bool told) {
  const bool card = disc_.Follow(gauge_.Card(), seconds, kTurnSteps);
  const bool first = pointer1_.Follow(OnCase(gauge_.Pointer1()), seconds, kTurnSteps);
  const bool second = pointer2_.Follow(OnCase(gauge_.Pointer2()), seconds, kTurnSteps);
  return (card || first || second ? Glass() : QRectF()) | (told ? kDistance : QRectF());
}

void RmiFace::DrawMoving(QPainter& painter) {
  PaintCard(painter, Degrees(disc_.At()));
  DrawPointer(painter, Degrees(pointer2_.At()), kGreen, true);
  DrawPointer(painter, Degrees(pointer1_.At()), kYellow, false);
  painter.setPen(QPen(QColor(0x46, 0x4b, 0x51), 1.3));
  painter.setBrush(QColor(0x03, 0x03, 0x04));
  painter.drawRoundedRect(kDistance.adjusted(2, 2, -2, -2), 2, 2);
  const QString miles = gauge_.Distance() && *gauge_.Distance() > 0
                            ? QString::number(*gauge_.Distance() / 10.0, 'f', 1)
                            : QStringLiteral("--.-");
  Text(painter, kDistance.center() - QPointF(6, 0), 13.5, miles, Ink(QColor(0xff, 0xc0, 0x5a)), true, 36);
  Text(painter, {kDistance.right() - 10, kDistance.center().y() + 3}, 7, QStringLiteral("NM"),
       Ink(QColor(0xb9, 0xbd, 0xc0)), true);
}

void RmiFace::DrawFront(QPainter& painter) {
  DrawCaseMarks(painter);
  DrawIndex(painter);
  painter.setPen(QPen(QColor(0, 0, 0, 200), 0.8));
  painter.setBrush(QColor(0x33, 0x36, 0x3a));
  painter.drawEllipse(QPointF(0, 0), 7, 7);
  Text(painter, {-86, 90}, 10, QStringLiteral("1"), Ink(kYellow), true);
  Text(painter, {86, 90}, 10, QStringLiteral("2"), Ink(kGreen), true);
}

QString RmiFace::Words() const {
  const auto bearing = [](int pointer) {
    return pointer == kParked ? QStringLiteral("parked") : Heading(pointer);
  };
  return QStringLiteral("rmi %1 and %2").arg(bearing(gauge_.Pointer1()), bearing(gauge_.Pointer2()));
}

}  // namespace tvx::drawn
