#include "drawn/faces/dials/ClockFace.h"

#include <QPainterPath>
#include <cmath>

#include "drawn/widgets/Segments.h"
#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

const QColor kAmber{0xff, 0xa0, 0x3a};
constexpr int kTenths = 10;  // in which the hand moves, of a second
constexpr double kHandFrom = 50, kHandTo = 78;

QString TwoDigits(int number) {
  return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

}  // namespace

ClockFace::ClockFace(ClockDevice& device, QWidget* parent)
    : InstrumentWidget(device, QStringLiteral("CLOCK"), parent), gauge_(device) {
  AddKnob({-82, 82}, 16, QStringLiteral("SET"), QStringLiteral("Sets the clock by minutes: turn the wheel"),
          [this](int clicks) { gauge_.TurnMinutes(clicks); });
  const bool temperature = gauge_.HasTemperature();
  AddButton({68, 70, 28, 22}, temperature ? QStringLiteral("SEL") : QStringLiteral("UTC"),
            QStringLiteral("UTC or local time"), [this] {
              upper_ = upper_ == Upper::Utc ? Upper::Local : Upper::Utc;
              update();
            });
  AddButton({68, -92, 28, 22}, temperature ? QStringLiteral("OAT") : QStringLiteral("DATE"),
            temperature ? QStringLiteral("Celsius, Fahrenheit, volts") : QStringLiteral("Date or year"),
            [this, temperature] {
              lower_ = (lower_ + 1) % (temperature ? 3 : 2);
              update();
            });
  second_.Jump(0);
  hand_ = HandArea();
}

double ClockFace::HandAngle() const {
  return second_.At() * 360 / (60 * kTenths);
}

QRectF ClockFace::HandArea() const {
  return NeedleArea(HandAngle(), kHandTo, -kHandFrom);
}

QRectF ClockFace::Move(double seconds, bool told) {
  const QRectF windows = told ? Glass() : QRectF();
  if (gauge_.HasTemperature()) return windows;
  const int second = gauge_.Utc().value_or(0) % 60;
  if (!second_.Follow(second * kTenths, seconds, 60 * kTenths)) return windows;
  const QRectF before = std::exchange(hand_, HandArea());
  return windows | before | hand_;
}

QString ClockFace::TimeText(bool withSeconds) const {
  const auto time = upper_ == Upper::Utc ? gauge_.Utc() : gauge_.Local();
  if (!time) return withSeconds ? QStringLiteral("--:--:--") : QStringLiteral("--:--");
  const QString text = TwoDigits(*time / 3600) + ':' + TwoDigits(*time / 60 % 60);
  return withSeconds ? text + ':' + TwoDigits(*time % 60) : text;
}

void ClockFace::Window(QPainter& painter, const QRectF& box, const QString& text) const {
  painter.setPen(QPen(QColor(0x46, 0x4b, 0x51), 1.2));
  painter.setBrush(QColor(0x06, 0x04, 0x03));
  painter.drawRoundedRect(box, 2.5, 2.5);
  QColor ghost = kAmber;
  ghost.setAlpha(12);
  const FaceLight& light = gauge_.Light();
  const QColor glow =
      light.lit ? theme::Mix(theme::Mix(theme::kDial, kAmber, 0.5), kAmber, light.brightness / 15.0) : kAmber;
  DrawSegments(painter, box.adjusted(5, 5, -5, -5), text, glow, ghost, Qt::AlignHCenter);
}

void ClockFace::DrawDial(QPainter& painter) {
  const QColor dim = Ink(QColor(0xb9, 0xbd, 0xc0));
  if (gauge_.HasTemperature()) {
    Text(painter, {0, -57}, 9, QStringLiteral("O.A.T.   VOLTS"), dim, true);
    return;
  }
  const double radius = kGlass - 3;
  painter.save();
  for (int i = 0; i < 60; ++i) {
    painter.setPen(QPen(Ink(), i % 5 == 0 ? 2.4 : 1.1, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0, -radius), QPointF(0, -radius + (i % 5 == 0 ? 10 : 5)));
    painter.rotate(6);
  }
  painter.restore();
  for (int i = 0; i < 60; i += 10) {
    Text(painter, OnDial(i * 6, radius - 19), 12, QString::number(i == 0 ? 60 : i), Ink(), true);
  }
}

void ClockFace::DrawRound(QPainter& painter) const {
  const QColor dim = Ink(QColor(0xb9, 0xbd, 0xc0));
  Text(painter, {0, -45}, 8.5, upper_ == Upper::Utc ? QStringLiteral("UTC") : QStringLiteral("LOCAL"), dim,
       true);
  Window(painter, {-42, -38, 84, 32}, TimeText(false));
  const QString day = lower_ == 0 ? TwoDigits(gauge_.Day()) + QStringLiteral(" ") + TwoDigits(gauge_.Month())
                                  : QString::number(gauge_.Year());
  Window(painter, {-33, 9, 66, 27}, day);
  Text(painter, {0, 43}, 8, lower_ == 0 ? QStringLiteral("DAY  MO") : QStringLiteral("YEAR"), dim, true);
  for (const bool shadow : {true, false}) {
    painter.save();
    if (shadow) painter.translate(1, 1.6);
    painter.rotate(HandAngle());
    painter.setPen(
        QPen(shadow ? QColor(0, 0, 0, 130) : Ink(QColor(0xff, 0x9a, 0x1f)), 1.8, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0, -kHandFrom), QPointF(0, -kHandTo));
    painter.restore();
  }
}

void ClockFace::DrawTemperature(QPainter& painter) const {
  const QColor dim = Ink(QColor(0xb9, 0xbd, 0xc0));
  QString value = QStringLiteral("---");
  QString unit = QStringLiteral("\u00B0C");
  if (lower_ == 2) {
    unit = QStringLiteral("VOLTS");
    if (gauge_.Voltage()) value = QString::number(*gauge_.Voltage() / 10.0, 'f', 1);
  } else if (gauge_.Temperature()) {
    const double celsius = *gauge_.Temperature() / 10.0;
    value = QString::number(lower_ == 0 ? celsius : celsius * 1.8 + 32, 'f', 0);
  }
  if (lower_ == 1) unit = QStringLiteral("\u00B0F");
  Window(painter, {-50, -48, 74, 34}, value);
  Text(painter, {46, -31}, 12, unit, dim, true, 36);
  Window(painter, {-66, 0, 132, 36}, TimeText(true));
  const bool utc = upper_ == Upper::Utc;
  Text(painter, {-22, 46}, 11, QStringLiteral("UT"), utc ? Ink() : Ink(QColor(0x50, 0x54, 0x59)), true);
  Text(painter, {22, 46}, 11, QStringLiteral("LT"), utc ? Ink(QColor(0x50, 0x54, 0x59)) : Ink(), true);
}

void ClockFace::DrawMoving(QPainter& painter) {
  if (gauge_.HasTemperature()) {
    DrawTemperature(painter);
  } else {
    DrawRound(painter);
  }
}

QString ClockFace::Words() const {
  const auto utc = gauge_.Utc();
  if (!utc) return QStringLiteral("clock -");
  return QStringLiteral("clock %1:%2:%3Z")
      .arg(TwoDigits(*utc / 3600), TwoDigits(*utc / 60 % 60), TwoDigits(*utc % 60));
}

}  // namespace tvx::drawn
