#include "virtualcockpit/panel/IOModuleWidget.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <cmath>

namespace tvx::vc {
namespace {

constexpr int kWheelNotch = 120;
constexpr int kAxisNotch = 128;  // raw steps of one notch of the wheel

}  // namespace

IOModuleWidget::IOModuleWidget(IOModuleUnit& unit, const ConfigModel& model, int module, QWidget* parent)
    : ModuleFace(drawn::LegendOfModule(model, module), module, parent), unit_(unit) {}

void IOModuleWidget::PullAxis(const QPointF& at) {
  const QRectF slot = AxisAt(pulled_);
  unit_.SetAxis(pulled_,
                static_cast<int>(std::lround((slot.bottom() - at.y()) / slot.height() * IOModuleUnit::kTop)));
  Show(unit_.State());
}

void IOModuleWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pulled_ = AxisUnder(event->position());
  if (pulled_ >= 0) PullAxis(event->position());
  const int index = SwitchUnder(event->position());
  if (index < 0) return;
  const int encoder = EncoderOf(index);
  if (encoder != 0) {
    unit_.Click(encoder - 1, index == encoder - 1);
  } else {
    unit_.SetSwitch(index, !unit_.Switch(index));
  }
  Show(unit_.State());
}

void IOModuleWidget::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) != 0 && pulled_ >= 0) PullAxis(event->position());
}

void IOModuleWidget::wheelEvent(QWheelEvent* event) {
  const int clicks = event->angleDelta().y() / kWheelNotch;
  const int axis = AxisUnder(event->position());
  if (axis >= 0) unit_.SetAxis(axis, unit_.Axis(axis) + clicks * kAxisNotch);
  const int index = SwitchUnder(event->position());
  const int encoder = index < 0 ? 0 : EncoderOf(index);
  for (int i = 0; encoder != 0 && i < std::abs(clicks); ++i) unit_.Click(encoder - 1, clicks > 0);
  event->accept();
  Show(unit_.State());
}

bool IOModuleWidget::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return ModuleFace::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  QToolTip::showText(help->globalPos(), TipAt(help->pos()), this);
  return true;
}

}  // namespace tvx::vc
