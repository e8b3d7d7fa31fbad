#include "drawn/faces/dials/VorFace.h"

#include <cmath>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr double kMiddle = VorDevice::kNeedleSpan / 2.0;
constexpr double kStepsAtFull = 300;  // needle steps from the middle to the last dot
constexpr double kFullDots = 40;      // drawing units from the middle to the last dot
constexpr double kField = 52;         // radius of the inner field
const QColor kFlagRed{0xe2, 0x3a, 0x2e};

double Offset(double steps) {
  return std::clamp((steps - kMiddle) / kStepsAtFull * kFullDots, -47.0, 47.0);
}

double HalfChord(double off) {
  constexpr double kRadius = kField - 1.5;
  return std::sqrt(std::max(0.0, kRadius * kRadius - off * off));
}

void DrawFlagBox(QPainter& painter, const QRectF& box) {
  painter.setPen(QPen(QColor(0x40, 0x44, 0x4a), 0.9));
  painter.setBrush(QColor(0x04, 0x04, 0x05));
  painter.drawRoundedRect(box, 1.5, 1.5);
}

}  // namespace

VorFace::VorFace(VorDevice& device, QWidget* parent)
    : InstrumentWidget(device, QStringLiteral("VOR %1").arg(device.Receiver()), parent), gauge_(device) {
  AddKnob({-81, 81}, 16, QStringLiteral("OBS"), QStringLiteral("Course: turn the wheel"),
          [this](int clicks) { gauge_.TurnKnob(clicks); });
  course_.Jump(kMiddle);
  glide_.Jump(kMiddle);
}

QRectF VorFace::Move(double seconds, bool told) {
  const bool course = course_.Follow(gauge_.Course(), seconds);
  const bool glide = glide_.Follow(gauge_.Glide(), seconds);
  return course || glide || told ? QRectF(-kField, -kField, 2 * kField, 2 * kField) : QRectF();
}

void VorFace::DrawDial(QPainter& painter) {
  const double radius = kGlass - 3;
  for (int degrees = 0; degrees < 360; degrees += 5) {
    const double angle = degrees - gauge_.KnobDegrees();
    const double length = degrees % 30 == 0 ? 9 : degrees % 10 == 0 ? 7.5 : 4.5;
    painter.setPen(QPen(Ink(), degrees % 30 == 0 ? 1.9 : 1.1, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(OnDial(angle, radius - 2), OnDial(angle, radius - 2 - length));
    if (degrees % 30 != 0) continue;
    static constexpr const char* quarters[] = {"N", "E", "S", "W"};
    const QString label =
        degrees % 90 == 0 ? QString::fromLatin1(quarters[degrees / 90]) : QString::number(degrees / 10);
    painter.save();
    painter.rotate(angle);
    Text(painter, {0, -(radius - 18)}, 11.5, label, Ink(), true);
    painter.restore();
  }
  painter.setPen(QPen(Ink(QColor(0x4a, 0x4e, 0x54)), 1.2));
  painter.setBrush(QColor(0x10, 0x12, 0x15));
  painter.drawEllipse(QPointF(0, 0), kField, kField);
  // Lubber lines.
  painter.setPen(Qt::NoPen);
  painter.setBrush(Ink(theme::kAmber));
  painter.drawPolygon(QPolygonF({{-5, -kGlass + 1}, {5, -kGlass + 1}, {0, -kGlass + 10}}));
  painter.drawPolygon(QPolygonF({{-4, kGlass - 1}, {4, kGlass - 1}, {0, kGlass - 8}}));
  // Five dots to each side; the inner ones are joined to a circle as a doughnut.
  painter.setBrush(Ink());
  for (int i = 1; i <= 5; ++i) {
    for (const double side : {-1.0, 1.0}) {
      painter.drawEllipse(QPointF(side * i * kFullDots / 5, 0), 1.5, 1.5);
      painter.drawEllipse(QPointF(0, side * i * kFullDots / 5), 1.5, 1.5);
    }
  }
  painter.setPen(QPen(Ink(), 1.3));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(QPointF(0, 0), 4.5, 4.5);
  Text(painter, {kField * .62, -26}, 7, Caption(), Ink(QColor(0xb9, 0xbd, 0xc0)), true);
}

void VorFace::DrawFlags(QPainter& painter) const {
  const bool off = gauge_.Flag() == VorDevice::ToFrom::Off;
  const QRectF nav(-39, -27, 22, 12);
  DrawFlagBox(painter, nav);
  if (off) {
    painter.fillRect(nav.adjusted(1, 1, -1, -1), kFlagRed);
    Text(painter, nav.center(), 8, QStringLiteral("NAV"), Qt::white, true);
  }
  const QRectF glide(-39, 15, 22, 12);
  DrawFlagBox(painter, glide);
  if (gauge_.GlideFlag()) {
    painter.fillRect(glide.adjusted(1, 1, -1, -1), kFlagRed);
    Text(painter, glide.center(), 8, QStringLiteral("GS"), Qt::white, true);
  }
  const QRectF toFrom(16, 14, 24, 14);
  DrawFlagBox(painter, toFrom);
  if (off) {
    painter.save();
    painter.setClipRect(toFrom.adjusted(1, 1, -1, -1));
    for (int i = -2; i < 6; ++i) {
      painter.setPen(QPen(i % 2 == 0 ? kFlagRed : QColor(0xee, 0xee, 0xea), 4));
      painter.drawLine(QPointF(toFrom.left() + i * 5.6, toFrom.bottom() + 2),
                       QPointF(toFrom.left() + i * 5.6 + 16, toFrom.top() - 2));
    }
    painter.restore();
    return;
  }
  const bool to = gauge_.Flag() == VorDevice::ToFrom::To;
  Text(painter, toFrom.center() - QPointF(4, 0), 8, to ? QStringLiteral("TO") : QStringLiteral("FR"), Ink(),
       true);
  const double x = toFrom.right() - 6;
  const double y = toFrom.center().y();
  painter.setPen(Qt::NoPen);
  painter.setBrush(Ink());
  const double d = to ? -1 : 1;
  painter.drawPolygon(QPolygonF({{x - 3.6, y - 3 * d}, {x + 3.6, y - 3 * d}, {x, y + 3.4 * d}}));
}

void VorFace::DrawMoving(QPainter& painter) {
  DrawFlags(painter);
  const double x = Offset(course_.At());
  // The glide path needle goes down when the path is below.
  const double y = -Offset(glide_.At());
  for (const bool shadow : {true, false}) {
    painter.setPen(QPen(shadow ? QColor(0, 0, 0, 130) : Ink(), 2.6, Qt::SolidLine, Qt::FlatCap));
    const double s = shadow ? 1.3 : 0;
    // As far as the round field goes there.
    const double high = HalfChord(x + s);
    const double wide = HalfChord(y + s);
    painter.drawLine(QPointF(x + s, -high), QPointF(x + s, high));
    painter.drawLine(QPointF(-wide, y + s), QPointF(wide, y + s));
  }
}

QString VorFace::Words() const {
  const char* flag = gauge_.Flag() == VorDevice::ToFrom::To     ? "to"
                     : gauge_.Flag() == VorDevice::ToFrom::From ? "from"
                                                                : "off";
  const double dots = (gauge_.Course() - kMiddle) / kStepsAtFull * 5;
  const QString side = std::abs(dots) < 0.05
                           ? QStringLiteral("on course")
                           : QStringLiteral("%1 dots %2")
                                 .arg(std::abs(dots), 0, 'f', 1)
                                 .arg(dots < 0 ? QStringLiteral("left") : QStringLiteral("right"));
  return QStringLiteral("vor%1 %2, %3")
      .arg(QString::number(gauge_.Receiver()), QString::fromLatin1(flag), side);
}

}  // namespace tvx::drawn
