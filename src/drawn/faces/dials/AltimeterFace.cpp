#include "drawn/faces/dials/AltimeterFace.h"

#include <cmath>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr double kFeetPerTurn = 1000;
constexpr double kVisibleFeet = 0.35;
constexpr double kHandLength = 74, kHandTail = 18;
const QRectF kDrums{-32, -34, 64, 22};
const QRectF kWindow{-20, 17, 40, 15};

void DrawWindow(QPainter& painter, const QRectF& box) {
  painter.setPen(QPen(QColor(0x46, 0x4b, 0x51), 1.3));
  painter.setBrush(QColor(0x03, 0x03, 0x04));
  painter.drawRoundedRect(box, 2, 2);
}

}  // namespace

AltimeterFace::AltimeterFace(AltimeterDevice& device, QWidget* parent)
    : InstrumentWidget(device, QStringLiteral("ALTIMETER"), parent), gauge_(device), feet_(kVisibleFeet) {
  AddKnob({-81, 81}, 16, QStringLiteral("BARO"), QStringLiteral("Pressure setting: turn the wheel"),
          [this](int clicks) { gauge_.TurnKnob(clicks); });
  feet_.Jump(0);
  hand_ = HandArea();
}

double AltimeterFace::HandAngle() const {
  return std::fmod(feet_.At(), kFeetPerTurn) / kFeetPerTurn * 360;
}

QRectF AltimeterFace::HandArea() const {
  return NeedleArea(HandAngle(), kHandLength, kHandTail);
}

QRectF AltimeterFace::Move(double seconds, bool told) {
  QRectF area = told ? kWindow.adjusted(-2, -2, 2, 2) : QRectF();
  if (!gauge_.Feet() || !feet_.Follow(*gauge_.Feet(), seconds)) return area;
  const QRectF before = std::exchange(hand_, HandArea());
  return area | before | hand_ | kDrums.adjusted(-2, -14, 2, 2);
}

void AltimeterFace::DrawDial(QPainter& painter) {
  const double radius = kGlass - 4;
  for (int i = 0; i < 50; ++i) {
    const double angle = i * 7.2;
    const bool large = i % 5 == 0;
    painter.setPen(QPen(Ink(), large ? 2.8 : 1.3, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(OnDial(angle, radius), OnDial(angle, radius - (large ? 13 : 7)));
    if (large) Text(painter, OnDial(angle, radius - 24), 18, QString::number(i / 5), Ink(), true);
  }
  const QColor dim = Ink(QColor(0xb9, 0xbd, 0xc0));
  Text(painter, {-32, -2}, 9.5, QStringLiteral("ALT"), Ink(), true);
  Text(painter, {0, 39}, 7.5, QStringLiteral("100 FEET"), dim);
  Text(painter, {kWindow.right() + 8, kWindow.center().y()}, 6.5,
       gauge_.Inches() ? QStringLiteral("IN") : QStringLiteral("MB"), dim, true);
}

// Ten thousands, thousands and hundreds on drums, then a drum of twenties; each rolls over with the one right
// of it.
void AltimeterFace::DrawDrums(QPainter& painter) const {
  DrawWindow(painter, kDrums);
  const double feet = std::abs(feet_.At());
  const double width = kDrums.width() / 5;
  // `at` is the cell in the middle, and how far it has gone; the next one comes from above.
  const auto drum = [&](const QRectF& box, double at, int cells, double pitch, double height,
                        const auto& textOf) {
    painter.save();
    painter.setClipRect(box);
    QLinearGradient round(0, box.top(), 0, box.bottom());
    round.setColorAt(0, QColor(0x05, 0x05, 0x06));
    round.setColorAt(0.5, QColor(0x1f, 0x21, 0x24));
    round.setColorAt(1, QColor(0x05, 0x05, 0x06));
    painter.fillRect(box, round);
    const double whole = std::floor(at);
    for (int i = -1; i <= 2; ++i) {
      const double cell = std::fmod(whole + i + cells, cells);
      const double y = box.center().y() - (i - (at - whole)) * pitch;
      Text(painter, {box.center().x(), y}, height, textOf(static_cast<int>(cell)), Ink(), true);
    }
    painter.restore();
  };
  const auto boxAt = [width](int place, int places) {
    return QRectF(kDrums.left() + place * width + 1, kDrums.top() + 1.5, places * width - 1.5,
                  kDrums.height() - 3);
  };
  // The part of the next digit that has rolled in already, only while the digit right of it rolls over.
  const auto rolled = [feet](double unit) {
    const double low = std::fmod(feet, unit);
    const double last = 20;
    return std::floor(feet / unit) + std::max(0.0, (low - (unit - last)) / last);
  };
  const auto digit = [](int n) { return QString::number(n); };
  const auto highest = [below10000 = feet < 9980](int n) {
    return below10000 && n == 0 ? QStringLiteral("\u2592") : QString::number(n);
  };
  drum(boxAt(0, 1), rolled(10000), 10, 16, 15.5, highest);
  drum(boxAt(1, 1), rolled(1000), 10, 16, 15.5, digit);
  drum(boxAt(2, 1), rolled(100), 10, 16, 15.5, digit);
  // The last two places share one drum of five.
  drum(boxAt(3, 2), std::fmod(feet, 100) / 20, 5, 11, 10.5,
       [](int n) { return QStringLiteral("%1").arg(n * 20, 2, 10, QLatin1Char('0')); });
  if (feet_.At() < -0.5) {
    Text(painter, {0, kDrums.top() - 6}, 8, QStringLiteral("BELOW ZERO"), theme::kAmber, true);
  }
}

void AltimeterFace::DrawPressure(QPainter& painter) const {
  DrawWindow(painter, kWindow);
  const auto& pressure = gauge_.Pressure();
  QString text = QStringLiteral("----");
  if (pressure)
    text = gauge_.Inches() ? QString::number(*pressure / 100.0, 'f', 2) : QString::number(*pressure);
  Text(painter, kWindow.center(), 11.5, text, Ink(), true);
}

void AltimeterFace::DrawMoving(QPainter& painter) {
  DrawDrums(painter);
  DrawPressure(painter);
  DrawBlade(painter, {kHandLength, kHandTail, 46, 2.6, 3.6}, HandAngle(), Ink());
}

void AltimeterFace::DrawFront(QPainter& painter) {
  QRadialGradient hub(QPointF(-2, -3), 12);
  hub.setColorAt(0, QColor(0x5b, 0x60, 0x66));
  hub.setColorAt(1, QColor(0x14, 0x15, 0x17));
  painter.setPen(QPen(QColor(0, 0, 0, 200), 0.8));
  painter.setBrush(hub);
  painter.drawEllipse(QPointF(0, 0), 8, 8);
}

QString AltimeterFace::Words() const {
  if (!gauge_.Feet()) return QStringLiteral("altimeter -");
  QString words = QStringLiteral("altimeter %1 ft").arg(*gauge_.Feet());
  if (gauge_.Pressure()) {
    words += gauge_.Inches() ? QStringLiteral(" (%1 inHg)").arg(*gauge_.Pressure() / 100.0, 0, 'f', 2)
                             : QStringLiteral(" (%1 mb)").arg(*gauge_.Pressure());
  }
  return words;
}

}  // namespace tvx::drawn
