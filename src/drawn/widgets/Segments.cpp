#include "drawn/widgets/Segments.h"

#include <array>

namespace tvx::drawn {
namespace {

constexpr double kWide = 56, kHigh = 100, kPitch = 76, kThick = 12;  // of a digit
constexpr double kColon = 34, kPoint = 14;
constexpr double kSlant = -0.1;

// Bit 0 the upper bar, then clockwise, bit 6 the middle.
int SegmentsOf(QChar c) {
  static constexpr std::array<int, 10> digits = {0x3F, 0x06, 0x5B, 0x4F, 0x66, 0x6D, 0x7D, 0x07, 0x7F, 0x6F};
  if (c.isDigit()) return digits[static_cast<std::size_t>(c.digitValue() % 10)];
  switch (c.toLatin1()) {
    case '-':
      return 0x40;
    case 'A':
      return 0x77;
    case 'C':
      return 0x39;
    case 'E':
      return 0x79;
    case 'F':
      return 0x71;
    case 'L':
      return 0x38;
    default:
      return 0;
  }
}

// One bar from point to point, pointed at both ends.
QPolygonF Bar(QPointF from, QPointF to) {
  const double h = kThick / 2;
  const double gap = 1.5;
  if (from.y() == to.y()) {
    const double y = from.y();
    const double a = from.x() + gap;
    const double b = to.x() - gap;
    return QPolygonF({{a, y}, {a + h, y - h}, {b - h, y - h}, {b, y}, {b - h, y + h}, {a + h, y + h}});
  }
  const double x = from.x();
  const double a = from.y() + gap;
  const double b = to.y() - gap;
  return QPolygonF({{x, a}, {x + h, a + h}, {x + h, b - h}, {x, b}, {x - h, b - h}, {x - h, a + h}});
}

std::array<QPolygonF, 7> Bars() {
  const double l = kThick / 2;
  const double r = kWide - kThick / 2;
  const double t = kThick / 2;
  const double m = kHigh / 2;
  const double b = kHigh - kThick / 2;
  return {Bar({l, t}, {r, t}), Bar({r, t}, {r, m}), Bar({r, m}, {r, b}), Bar({l, b}, {r, b}),
          Bar({l, m}, {l, b}), Bar({l, t}, {l, m}), Bar({l, m}, {r, m})};
}

double WidthOf(const QString& text) {
  double width = 0;
  for (const QChar c : text) width += c == '.' ? kPoint : c == ':' ? kColon : kPitch;
  return std::max(1.0, width - (kPitch - kWide));
}

}  // namespace

void DrawSegments(QPainter& painter, const QRectF& box, const QString& text, const QColor& colour,
                  const QColor& ghost, Qt::Alignment align) {
  static const std::array<QPolygonF, 7> bars = Bars();
  const double scaleY = box.height() / kHigh;
  const double width = WidthOf(text) + 12;
  const double scaleX = std::min(scaleY, box.width() / width);
  double x = box.left();
  if (align & Qt::AlignRight) x = box.right() - width * scaleX;
  if (align & Qt::AlignHCenter) x = box.center().x() - width * scaleX / 2;
  painter.save();
  painter.translate(x, box.top());
  painter.scale(scaleX, scaleY);
  painter.shear(kSlant, 0);
  painter.translate(10, 0);
  painter.setPen(Qt::NoPen);
  for (const QChar c : text) {
    painter.setBrush(colour);
    if (c == '.') {
      painter.drawEllipse(QPointF((kPoint - kPitch + kWide) / 2, kHigh - 8), 8, 8);
      painter.translate(kPoint, 0);
      continue;
    }
    if (c == ':') {
      painter.drawEllipse(QPointF(7, 32), 7, 7);
      painter.drawEllipse(QPointF(7, 70), 7, 7);
      painter.translate(kColon, 0);
      continue;
    }
    const int on = SegmentsOf(c);
    for (std::size_t i = 0; i < bars.size(); ++i) {
      const bool glows = (on >> i & 1) != 0;
      if (!glows && ghost.alpha() == 0) continue;
      painter.setBrush(glows ? colour : ghost);
      painter.drawPolygon(bars[i]);
    }
    painter.translate(kPitch, 0);
  }
  painter.restore();
}

}  // namespace tvx::drawn
