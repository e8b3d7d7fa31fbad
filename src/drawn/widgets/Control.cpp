#include "drawn/widgets/Control.h"

#include <cmath>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

const QColor kLamp{0x7d, 0xf0, 0x8a};

void DrawText(QPainter& painter, const QRectF& area, double height, const QString& text,
              const QColor& colour) {
  QFont font = theme::FontOf(height * 10, true);
  const double width = QFontMetricsF(font).horizontalAdvance(text) / 10;
  if (width > area.width()) font = theme::FontOf(height * 10 * area.width() / width, true);
  painter.save();
  painter.setFont(font);
  painter.setPen(colour);
  painter.translate(area.center());
  painter.scale(0.1, 0.1);
  painter.drawText(QRectF(-2000, -500, 4000, 1000), Qt::AlignCenter, text);
  painter.restore();
}

// A skirted knob: grooves round its edge, a cap, a line that shows how far it was turned.
void DrawKnob(QPainter& painter, const Control& knob, const ControlLook& look, const QColor& ink) {
  const double radius = knob.area.width() / 2;
  painter.save();
  painter.translate(knob.area.center());
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 110));
  painter.drawEllipse(QPointF(1, 2.2), radius, radius);
  QRadialGradient skirt(QPointF(-radius * .35, -radius * .45), radius * 1.5);
  skirt.setColorAt(0, look.held ? QColor(0x66, 0x6c, 0x74) : QColor(0x56, 0x5b, 0x62));
  skirt.setColorAt(1, QColor(0x12, 0x13, 0x15));
  painter.setPen(QPen(QColor(0, 0, 0, 200), 0.8));
  painter.setBrush(skirt);
  painter.drawEllipse(QPointF(0, 0), radius, radius);
  painter.rotate(look.angle);
  painter.setPen(QPen(QColor(0, 0, 0, 120), 0.9));
  for (int i = 0; i < 24; ++i) {
    painter.rotate(15);
    painter.drawLine(QPointF(0, -radius + 0.6), QPointF(0, -radius * .84));
  }
  if (knob.look == Control::Look::Knob) {
    QRadialGradient cap(QPointF(-radius * .25, -radius * .3), radius);
    cap.setColorAt(0, QColor(0x6a, 0x6f, 0x77));
    cap.setColorAt(1, QColor(0x20, 0x22, 0x26));
    painter.setPen(Qt::NoPen);
    painter.setBrush(cap);
    painter.drawEllipse(QPointF(0, 0), radius * .68, radius * .68);
  }
  painter.setPen(QPen(ink, radius > 14 ? 1.8 : 1.3, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(0, -radius * .95), QPointF(0, -radius * .74));
  painter.restore();
  if (!knob.label.isEmpty() && knob.look == Control::Look::Knob) {
    DrawText(painter, knob.area.adjusted(radius * .22, 0, -radius * .22, 0), std::min(9.0, radius * .68),
             knob.label, QColor(0xe4, 0xe6, 0xe8));
  }
}

void DrawButton(QPainter& painter, const Control& button, const ControlLook& look, bool powered,
                const QColor& ink) {
  const QRectF& area = button.area;
  QLinearGradient shade(area.topLeft(), area.bottomLeft());
  shade.setColorAt(0, look.held ? QColor(0x1e, 0x20, 0x23) : QColor(0x43, 0x47, 0x4d));
  shade.setColorAt(1, look.held ? QColor(0x30, 0x33, 0x38) : QColor(0x22, 0x25, 0x29));
  painter.setPen(QPen(QColor(0x08, 0x09, 0x0a), 1.2));
  painter.setBrush(shade);
  painter.drawRoundedRect(area, 3, 3);
  QRectF text = area.adjusted(3, 0, -3, 0);
  if (button.lit) {
    const QRectF lamp(area.left() + 6, area.bottom() - 8, area.width() - 12, 3.6);
    const bool on = powered && look.lit;
    if (on) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(QColor(kLamp.red(), kLamp.green(), kLamp.blue(), 60));
      painter.drawRoundedRect(lamp.adjusted(-3, -3, 3, 3), 4, 4);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(on ? kLamp : QColor(0x12, 0x1a, 0x14));
    painter.drawRoundedRect(lamp, 1.8, 1.8);
    text.setBottom(lamp.top());
  }
  DrawText(painter, text, std::min(12.5, text.height() * .62), button.label, ink);
}

}  // namespace

bool Control::Contains(QPointF at) const {
  if (look == Look::Knob || look == Look::Ring) {
    const QPointF off = at - area.center();
    return std::hypot(off.x(), off.y()) <= area.width() / 2;
  }
  return area.contains(at);
}

ControlLook LookOf(const Control& control, bool held) {
  return {control.angle, held, control.lit && control.lit()};
}

void DrawControl(QPainter& painter, const Control& control, const ControlLook& look, bool powered,
                 const QColor& ink) {
  switch (control.look) {
    case Control::Look::Knob:
    case Control::Look::Ring:
      DrawKnob(painter, control, look, ink);
      break;
    case Control::Look::Button:
      DrawButton(painter, control, look, powered, ink);
      break;
    case Control::Look::Hidden:
      break;
  }
}

}  // namespace tvx::drawn
