#include "virtualcockpit/yokes/YokeWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr double kWheelDegrees = 90;  // at full roll
constexpr double kDragTravel = 140;   // pixels of the mouse for the whole way

}  // namespace

YokeWidget::YokeWidget(YokeDevice& device, QWidget* parent) : QWidget(parent), device_(device) {
  setMinimumSize(240, 220);
  setFocusPolicy(Qt::StrongFocus);
  setToolTip(
      QStringLiteral("Drag with the left button; with the right one it stays where you put it. Keys 1 to 8 "
                     "press its buttons."));
}

// The wheel comes nearer when it is pulled, and turns; a vibration shakes it.
void YokeWidget::DrawWheel(QPainter& painter) const {
  const double unit = std::min(width(), height()) / 300.0;
  const double pitch = device_.Position(1), roll = device_.Position(0);
  painter.save();
  painter.translate(width() / 2.0 + 20 * unit * device_.Vibration(0),
                    height() / 2.0 + unit * (30 * pitch + 20 * device_.Vibration(1)));
  painter.setPen(
      QPen(theme::Mix(theme::kPanelTop, theme::kDim, 0.4), 26 * unit, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(0, 0), QPointF(0, -unit * (70 + 30 * pitch)));
  painter.rotate(kWheelDegrees * roll);
  const double size = unit * (1 + 0.18 * pitch);
  painter.scale(size, size);
  QPainterPath wheel;
  wheel.moveTo(-88, -62);
  wheel.cubicTo(-108, -10, -92, 34, -56, 34);
  wheel.lineTo(56, 34);
  wheel.cubicTo(92, 34, 108, -10, 88, -62);
  painter.setPen(QPen(theme::kDial, 26, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(wheel);
  painter.setPen(QPen(device_.Gripped() ? theme::kAmber : theme::Mix(theme::kDial, theme::kText, 0.25), 18,
                      Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(wheel);
  painter.setPen(Qt::NoPen);
  painter.setBrush(theme::Mix(theme::kDial, theme::kText, 0.35));
  painter.drawRoundedRect(QRectF(-30, 16, 60, 36), 8, 8);
  for (int i = 0; i < 8; ++i) {
    const bool down = (device_.Buttons() >> i & 1) != 0;
    painter.setBrush(down ? theme::kAmber : theme::kDim);
    painter.drawEllipse(QPointF((i < 4 ? -92 : 92) + (i < 4 ? 3 : -3) * (i % 4), -56 + 20 * (i % 4)), 4, 4);
  }
  painter.restore();
}

// A bar for each axis: the motor's force from the middle, and the limit's marks.
void YokeWidget::DrawForces(QPainter& painter) const {
  const double margin = 14;
  const QRectF bars[] = {QRectF(3 * margin, height() - margin, width() - 6 * margin, 6),
                         QRectF(width() - margin, 3 * margin, 6, height() - 6 * margin)};
  for (std::size_t i = 0; i < kYokeAxes; ++i) {
    const QRectF& bar = bars[i];
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::kDial);
    painter.drawRoundedRect(bar, 3, 3);
    const double force = std::clamp(device_.Force(i) + device_.Vibration(i), -1.0, 1.0);
    painter.setBrush(device_.Slack() ? theme::kDim : theme::kGood);
    const double half = (i == 0 ? bar.width() : bar.height()) / 2;
    QRectF filled = bar;
    if (i == 0) {
      filled.setLeft(bar.center().x() + std::min(force, 0.0) * half);
      filled.setRight(bar.center().x() + std::max(force, 0.0) * half);
    } else {
      filled.setTop(bar.center().y() + std::min(force, 0.0) * half);
      filled.setBottom(bar.center().y() + std::max(force, 0.0) * half);
    }
    painter.drawRect(filled);
  }
}

void YokeWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient ground(0, 0, 0, height());
  ground.setColorAt(0, theme::kPanelTop);
  ground.setColorAt(1, theme::kPanelBottom);
  painter.fillRect(rect(), ground);
  DrawWheel(painter);
  DrawForces(painter);
  if (!hasFocus()) return;
  painter.setPen(QPen(theme::kDim, 1, Qt::DotLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect().adjusted(2, 2, -3, -3));
}

void YokeWidget::GripAt(QPointF point) {
  const QPointF way = (point - from_) / kDragTravel;
  device_.Grip(0, fromRoll_ + way.x());
  device_.Grip(1, fromPitch_ + way.y());
}

void YokeWidget::mousePressEvent(QMouseEvent* event) {
  from_ = event->position();
  fromRoll_ = device_.Position(0);
  fromPitch_ = device_.Position(1);
  GripAt(from_);
}

void YokeWidget::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() != Qt::NoButton) GripAt(event->position());
}

void YokeWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) device_.Let();
}

bool YokeWidget::Button(QKeyEvent* event, bool down) {
  if (event->key() < Qt::Key_1 || event->key() > Qt::Key_8) return false;
  if (!event->isAutoRepeat()) device_.SetButton(event->key() - Qt::Key_1 + 1, down);
  return true;
}

void YokeWidget::keyPressEvent(QKeyEvent* event) {
  if (!Button(event, true)) QWidget::keyPressEvent(event);
}

void YokeWidget::keyReleaseEvent(QKeyEvent* event) {
  if (!Button(event, false)) QWidget::keyReleaseEvent(event);
}

}  // namespace tvx::vc
