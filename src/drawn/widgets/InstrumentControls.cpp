// What the mouse does to an instrument's controls.
#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {
namespace {

constexpr int kWheelClick = 120;
constexpr double kDragPixels = 9;  // of a drag, for a click
constexpr double kDegreesPerClick = 15;
constexpr int kFast = 10;  // times, with the shift key

QRectF Round(QPointF at, double radius) {
  return {at.x() - radius, at.y() - radius, 2 * radius, 2 * radius};
}

}  // namespace

Control& InstrumentWidget::AddKnob(QPointF at, double radius, const QString& label, const QString& tip,
                                   std::function<void(int)> turn) {
  return controls_.emplace_back(
      Control{Control::Look::Knob, Round(at, radius), label, tip, std::move(turn), {}, {}});
}

Control& InstrumentWidget::AddRing(QPointF at, double radius, const QString& tip,
                                   std::function<void(int)> turn) {
  return controls_.emplace_back(
      Control{Control::Look::Ring, Round(at, radius), {}, tip, std::move(turn), {}, {}});
}

Control& InstrumentWidget::AddButton(const QRectF& area, const QString& label, const QString& tip,
                                     std::function<void()> press, std::function<bool()> lit) {
  return controls_.emplace_back(
      Control{Control::Look::Button, area, label, tip, {}, std::move(press), std::move(lit)});
}

Control& InstrumentWidget::AddWheelArea(const QRectF& area, const QString& tip,
                                        std::function<void(int)> turn) {
  return controls_.emplace_back(Control{Control::Look::Hidden, area, {}, tip, std::move(turn), {}, {}});
}

QPointF InstrumentWidget::Drawn(QPointF position) const {
  return (position - QPointF(width() / 2.0, height() / 2.0)) / std::max(PixelsPerUnit(), 1e-6);
}

Control* InstrumentWidget::ControlAt(QPointF position) {
  const QPointF at = Drawn(position);
  for (auto control = controls_.rbegin(); control != controls_.rend(); ++control) {
    if (control->Contains(at)) return &*control;
  }
  return nullptr;
}

void InstrumentWidget::Turn(Control& control, int clicks, Qt::KeyboardModifiers modifiers) {
  control.angle += clicks * kDegreesPerClick;
  control.turn(modifiers & Qt::ShiftModifier ? clicks * kFast : clicks);
  update();
}

void InstrumentWidget::wheelEvent(QWheelEvent* event) {
  Control* control = ControlAt(event->position());
  // Over a round face the wheel turns its first knob, wherever it is.
  if (!control && !Wide() && !controls_.empty()) control = &controls_.front();
  if (!control || !control->turn) {
    event->ignore();
    return;
  }
  wheelDelta_ += event->angleDelta().y();
  const int clicks = wheelDelta_ / kWheelClick;
  wheelDelta_ -= clicks * kWheelClick;
  if (clicks != 0) Turn(*control, clicks, event->modifiers());
  event->accept();
}

void InstrumentWidget::mousePressEvent(QMouseEvent* event) {
  held_ = event->button() == Qt::LeftButton ? ControlAt(event->position()) : nullptr;
  heldAt_ = event->position();
  dragged_ = 0;
  if (!held_) return QWidget::mousePressEvent(event);
  update();
}

void InstrumentWidget::mouseMoveEvent(QMouseEvent* event) {
  if (!held_) {
    setCursor(ControlAt(event->position()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    return;
  }
  if (!held_->turn) return;
  const QPointF way = event->position() - heldAt_;
  const int clicks = static_cast<int>((way.x() - way.y()) / kDragPixels);
  if (clicks == dragged_) return;
  Turn(*held_, clicks - dragged_, event->modifiers());
  dragged_ = clicks;
}

// A click on a knob's right half turns it right, on its left half left.
void InstrumentWidget::mouseReleaseEvent(QMouseEvent* event) {
  Control* const control = std::exchange(held_, nullptr);
  if (!control) return QWidget::mouseReleaseEvent(event);
  update();
  if (control != ControlAt(event->position())) return;
  if (control->press) {
    control->press();
  } else if (control->turn && dragged_ == 0) {
    const bool right = Drawn(event->position()).x() >= control->area.center().x();
    Turn(*control, right ? 1 : -1, event->modifiers());
  }
}

bool InstrumentWidget::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const Control* control = ControlAt(help->pos());
  if (!control && !controls_.empty() && !Wide()) control = &controls_.front();
  if (control && !control->tip.isEmpty()) {
    QToolTip::showText(help->globalPos(), control->tip, this);
  } else {
    QToolTip::hideText();
  }
  return true;
}

}  // namespace tvx::drawn
