#include "drawn/faces/dials/TrimFace.h"

#include <cmath>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

const QRectF kWheel{-18, -84, 56, 168};
constexpr double kScaleX = -42;
constexpr double kScaleHalf = 62;  // of the scale's length
constexpr double kTurns = 4;       // of the wheel, from stop to stop
constexpr int kRibs = 30;

}  // namespace

TrimFace::TrimFace(TrimDevice& device, QWidget* parent)
    : InstrumentWidget(device, QStringLiteral("TRIM"), parent), gauge_(device) {
  position_.Jump(gauge_.Position());
  AddWheelArea(kWheel, QStringLiteral("Elevator trim: turn the wheel"),
               [this](int clicks) { gauge_.TurnByHand(clicks); });
}

QRectF TrimFace::Move(double seconds, bool told) {
  return position_.Follow(gauge_.Position(), seconds) || told ? Everything() : QRectF();
}

void TrimFace::DrawCase(QPainter& painter) const {
  QLinearGradient plate(0, -100, 0, 100);
  plate.setColorAt(0, QColor(0x3a, 0x3f, 0x46));
  plate.setColorAt(1, QColor(0x1b, 0x1e, 0x22));
  painter.setPen(QPen(QColor(0x0c, 0x0d, 0x0f), 1.4));
  painter.setBrush(plate);
  painter.drawRoundedRect(QRectF(-78, -98, 156, 196), 9, 9);
  painter.setPen(QPen(QColor(0, 0, 0), 2));
  painter.setBrush(QColor(0x08, 0x09, 0x0a));
  painter.drawRoundedRect(kWheel.adjusted(-5, -4, 5, 4), 6, 6);
  QLinearGradient round(0, kWheel.top(), 0, kWheel.bottom());
  round.setColorAt(0, QColor(0x0c, 0x0d, 0x0e));
  round.setColorAt(0.4, QColor(0x4c, 0x50, 0x56));
  round.setColorAt(1, QColor(0x0c, 0x0d, 0x0e));
  painter.setPen(Qt::NoPen);
  painter.setBrush(round);
  painter.drawRoundedRect(kWheel, 4, 4);
}

void TrimFace::DrawDial(QPainter& painter) {
  const QColor dim = Ink(QColor(0xc4, 0xc9, 0xce));
  Text(painter, {kScaleX - 10, -82}, 10, QStringLiteral("NOSE DN"), dim, true, 48);
  Text(painter, {kScaleX - 10, 84}, 10, QStringLiteral("NOSE UP"), dim, true, 48);
  painter.setPen(QPen(Ink(), 1.5));
  for (int i = -4; i <= 4; ++i) {
    const double y = i * kScaleHalf / 4;
    painter.drawLine(QPointF(kScaleX - (i % 2 == 0 ? 14 : 9), y), QPointF(kScaleX - 2, y));
  }
  Text(painter, {kScaleX - 23, 0}, 9, QStringLiteral("TO"), Ink(), true);
  painter.save();
  painter.translate(58, 0);
  painter.rotate(90);
  Text(painter, {0, 0}, 12, QStringLiteral("ELEVATOR TRIM"), Ink(), true, 130);
  painter.restore();
}

// The rim is a cylinder: its ribs come closer towards the upper and the lower edge, and it is darker there.
void TrimFace::DrawMoving(QPainter& painter) {
  const double turned = position_.At() / TrimDevice::kFullUp * kTurns * 360;
  for (int i = 0; i < kRibs; ++i) {
    const double angle = std::remainder(i * 360.0 / kRibs + turned, 360.0);
    if (std::abs(angle) > 88) continue;
    const double y = std::sin(angle * 3.14159265358979 / 180) * (kWheel.height() / 2 - 3);
    const double near = std::cos(angle * 3.14159265358979 / 180);
    const bool mark = i == 0;
    painter.setPen(QPen(mark ? Ink() : QColor(0, 0, 0, static_cast<int>(90 + 110 * near)),
                        mark ? 3.4 * near + 0.6 : 2.2 * near + 0.4));
    painter.drawLine(QPointF(kWheel.left() + 3, y), QPointF(kWheel.right() - 3, y));
  }
  const double y = (position_.At() / TrimDevice::kFullUp - 0.5) * 2 * kScaleHalf;
  painter.setPen(QPen(QColor(0, 0, 0, 150), 0.6));
  painter.setBrush(Ink(QColor(0xff, 0x9a, 0x1f)));
  painter.drawPolygon(QPolygonF({{kScaleX, y}, {kScaleX + 13, y - 6.5}, {kScaleX + 13, y + 6.5}}));
  if (gauge_.AutopilotFlies()) Text(painter, {-48, -95 + 28}, 8.5, QStringLiteral("AP"), theme::kGood, true);
}

QString TrimFace::Words() const {
  return QStringLiteral("trim %1 %").arg(gauge_.Position() * 100 / TrimDevice::kFullUp);
}

}  // namespace tvx::drawn
