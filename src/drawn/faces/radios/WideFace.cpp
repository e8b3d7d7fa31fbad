#include "drawn/faces/radios/WideFace.h"

#include <cmath>

#include "drawn/widgets/Segments.h"
#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr double kRadians = 3.14159265358979 / 180;
constexpr double kBetweenPositions = 46;  // degrees of a selector

}  // namespace

void WideFace::DrawCase(QPainter& painter) const {
  const QRectF plate(-kWidth / 2 + 1, -Extent().height() / 2 + 1, kWidth - 2, Extent().height() - 2);
  QLinearGradient shade(plate.topLeft(), plate.bottomLeft());
  shade.setColorAt(0, QColor(0x33, 0x37, 0x3d));
  shade.setColorAt(0.08, QColor(0x27, 0x2a, 0x2f));
  shade.setColorAt(1, QColor(0x17, 0x19, 0x1c));
  painter.setPen(QPen(QColor(0x08, 0x09, 0x0a), 1.6));
  painter.setBrush(shade);
  painter.drawRoundedRect(plate, 5, 5);
  painter.setPen(QPen(QColor(255, 255, 255, 22), 0.8));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(plate.adjusted(1.5, 1.5, -1.5, -1.5), 4, 4);
}

void WideFace::DrawGlass(QPainter&) const {}

QRectF WideFace::Move(double, bool told) {
  return told ? Everything() : QRectF();
}

void WideFace::DrawWindow(QPainter& painter, const QRectF& box) {
  QLinearGradient glass(box.topLeft(), box.bottomLeft());
  glass.setColorAt(0, QColor(0x02, 0x02, 0x03));
  glass.setColorAt(1, QColor(0x10, 0x0b, 0x09));
  painter.setPen(QPen(QColor(0x44, 0x49, 0x50), 1.2));
  painter.setBrush(glass);
  painter.drawRoundedRect(box, 3, 3);
}

QColor WideFace::Glow(const QColor& colour) const {
  const FaceLight& light = Gauge().Light();
  return light.lit ? theme::Mix(theme::Mix(theme::kDial, colour, 0.5), colour, light.brightness / 15.0)
                   : colour;
}

void WideFace::Digits(QPainter& painter, const QRectF& box, const QString& text, const QColor& colour,
                      Qt::Alignment align) const {
  QColor ghost = colour;
  ghost.setAlpha(14);
  if (!Gauge().Powered()) {
    QString blank = text;
    for (QChar& c : blank) c = c == '.' || c == ':' ? c : QChar(' ');
    DrawSegments(painter, box, blank.remove('.').remove(':'), ghost, ghost, align);
    return;
  }
  DrawSegments(painter, box, text, Glow(colour), ghost, align);
}

void WideFace::Annunciate(QPainter& painter, QPointF at, double height, const QString& text,
                          const QColor& colour, bool on) const {
  QColor shown = Glow(colour);
  if (!on || !Gauge().Powered()) shown.setAlpha(24);
  Text(painter, at, height, text, shown, true);
}

void WideFace::Label(QPainter& painter, QPointF at, const QString& text, double height) const {
  Text(painter, at, height, text, Ink(QColor(0xc4, 0xc9, 0xce)), true);
}

double WideFace::SelectorAngle(int count, int position) {
  return (position - (count - 1) / 2.0) * kBetweenPositions;
}

void WideFace::DrawSelector(QPainter& painter, QPointF at, double radius, const QStringList& positions,
                            int chosen) const {
  for (int i = 0; i < positions.size(); ++i) {
    const double angle = SelectorAngle(static_cast<int>(positions.size()), i) * kRadians;
    const QPointF place = at + QPointF(std::sin(angle) * radius * 1.1, -std::cos(angle) * radius);
    Text(painter, place, 10, positions[i], i == chosen ? Ink() : Ink(QColor(0x84, 0x8b, 0x93)), true);
  }
}

}  // namespace tvx::drawn
