#include "virtualcockpit/yokes/YokeWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr double kDragTravel = 140;  // pixels of the mouse for the whole way

}  // namespace

YokeState StateOf(const YokeDevice& device) {
  YokeState state;
  for (std::size_t axis = 0; axis < kYokeAxes; ++axis) {
    state.position[axis] = device.Position(axis);
    state.force[axis] = device.Force(axis);
    state.shake[axis] = device.Vibration(axis);
  }
  state.motors = device.Slack()   ? YokeState::Motors::Slack
                 : device.Servo() ? YokeState::Motors::Servo
                                  : YokeState::Motors::Spring;
  state.gripped = device.Gripped();
  state.buttons = device.Buttons();
  return state;
}

YokeWidget::YokeWidget(YokeDevice& device, int number, QWidget* parent)
    : YokeFace(number, parent), device_(device) {
  setMinimumSize(240, 220);
  setFocusPolicy(Qt::StrongFocus);
  setToolTip(
      QStringLiteral("Drag with the left button; with the right one it stays where you put it. Keys 1 to 8 "
                     "press its buttons."));
}

void YokeWidget::paintEvent(QPaintEvent* event) {
  YokeFace::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
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
