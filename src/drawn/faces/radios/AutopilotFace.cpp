#include "drawn/faces/radios/AutopilotFace.h"

#include <algorithm>

namespace tvx::drawn {
namespace {

using Button = AutopilotDevice::Button;

const QColor kAmber{0xff, 0x9a, 0x2e};
const QRectF kWindow{-240, -48, 330, 44};
const QRectF kTrim{100, -48, 30, 96};

struct ButtonRow {
  Button button;
  const char* label;
  std::uint32_t lamp;  // none where 0
  const char* tip;
};
constexpr ButtonRow kButtons[] = {
    {Button::Ap, "AP", AutopilotDevice::kEngaged, "Autopilot"},
    {Button::Hdg, "HDG", AutopilotDevice::kHeading, "Holds the heading of the bug"},
    {Button::Nav, "NAV", AutopilotDevice::kNav, "Follows the course"},
    {Button::Apr, "APR", AutopilotDevice::kApproach, "Approach"},
    {Button::Rev, "REV", 0, "Back course"},
    {Button::Alt, "ALT", AutopilotDevice::kAltitude, "Holds the altitude"},
    {Button::Up, "UP", 0, "Nose up"},
    {Button::Dn, "DN", 0, "Nose down"},
};

}  // namespace

AutopilotFace::AutopilotFace(AutopilotDevice& device, QWidget* parent)
    : WideFace(device, QStringLiteral("AUTOPILOT"), 108, parent), gauge_(device) {
  double x = kWindow.left();
  for (const ButtonRow& row : kButtons) {
    std::function<bool()> lit;
    if (row.lamp != 0) {
      lit = [this, lamp = static_cast<AutopilotDevice::Lamp>(row.lamp)] { return gauge_.Lit(lamp); };
    }
    AddButton(
        {x, 6, 38, 40}, QString::fromLatin1(row.label), QString::fromLatin1(row.tip),
        [this, button = row.button] { gauge_.Press(button); }, std::move(lit));
    x += 41.7;
  }
  AddKnob({164, -8}, 22, {}, QStringLiteral("Altitude preselect, 100 ft: turn the wheel"),
          [this](int clicks) { gauge_.TurnAltitude(clicks); });
  AddKnob({215, -8}, 22, {}, QStringLiteral("Vertical speed, 100 ft/min: turn the wheel"),
          [this](int clicks) { gauge_.TurnVerticalSpeed(clicks); });
}

void AutopilotFace::DrawDial(QPainter& painter) {
  DrawWindow(painter, kWindow);
  DrawWindow(painter, kTrim);
  Label(painter, {164, 26}, QStringLiteral("ALT"), 12);
  Label(painter, {215, 26}, QStringLiteral("VS"), 12);
  Label(painter, {190, -43}, QStringLiteral("PRESELECT"), 9);
}

// An arrow that goes up and down beside its middle mark.
void AutopilotFace::DrawTrim(QPainter& painter) const {
  Annunciate(painter, {kTrim.center().x(), kTrim.top() + 10}, 9, QStringLiteral("UP"), kAmber,
             gauge_.Trim() > 800);
  Annunciate(painter, {kTrim.center().x(), kTrim.bottom() - 10}, 9, QStringLiteral("DN"), kAmber,
             gauge_.Trim() < -800);
  const QPointF middle = kTrim.center();
  QColor colour = Glow(kAmber);
  if (!gauge_.Powered()) colour.setAlpha(24);
  painter.setPen(QPen(colour, 1.2));
  painter.drawLine(middle - QPointF(11, 0), middle - QPointF(3, 0));
  for (const int i : {-2, -1, 1, 2}) {
    painter.drawLine(middle + QPointF(-11, i * 14), middle + QPointF(-7, i * 14));
  }
  const double y = middle.y() - gauge_.Trim() / 16000.0 * 28;
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawPolygon(QPolygonF({{middle.x() - 1, y}, {middle.x() + 10, y - 6}, {middle.x() + 10, y + 6}}));
}

void AutopilotFace::DrawMoving(QPainter& painter) {
  Annunciate(painter, {kWindow.left() + 22, kWindow.center().y()}, 12, QStringLiteral("ALT"), kAmber);
  Digits(painter, {kWindow.left() + 44, kWindow.top() + 8, 96, 28}, QString::number(gauge_.Altitude()),
         kAmber);
  Annunciate(painter, {kWindow.left() + 152, kWindow.center().y() + 7}, 9, QStringLiteral("FT"), kAmber);
  Annunciate(painter, {kWindow.left() + 186, kWindow.center().y()}, 12, QStringLiteral("VS"), kAmber);
  Digits(painter, {kWindow.left() + 202, kWindow.top() + 8, 92, 28}, QString::number(gauge_.VerticalSpeed()),
         kAmber);
  Annunciate(painter, {kWindow.right() - 18, kWindow.center().y() + 7}, 9, QStringLiteral("FPM"), kAmber);
  DrawTrim(painter);
}

QString AutopilotFace::Words() const {
  QStringList on;
  for (const ButtonRow& row : kButtons) {
    if (row.lamp != 0 && gauge_.Lit(static_cast<AutopilotDevice::Lamp>(row.lamp)))
      on << QString::fromLatin1(row.label);
  }
  return QStringLiteral("autopilot %1, %2 ft")
      .arg(on.isEmpty() ? QStringLiteral("off") : on.join(' '))
      .arg(gauge_.Altitude());
}

}  // namespace tvx::drawn
