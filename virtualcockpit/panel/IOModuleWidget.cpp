#include "virtualcockpit/panel/IOModuleWidget.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>

#include "drawn/widgets/Theme.h"
#include "hwbus/iomodule/IOModuleInput.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr int kColumns = 8;
constexpr int kLampColumns = 16;
constexpr int kWheelNotch = 120;
constexpr int kAxisNotch = 128;  // raw steps of one notch of the wheel
const QColor kLine{0x3d, 0x44, 0x4c}, kEmpty{0x1b, 0x1e, 0x22}, kDefined{0x2c, 0x33, 0x3b};
const QColor kLampOn{0xff, 0xd2, 0x70}, kLampOff{0x2a, 0x22, 0x14};

}  // namespace

IOModuleWidget::IOModuleWidget(UnitLine& line, IOModuleUnit& unit, const ConfigModel& model, int module,
                               QWidget* parent)
    : UnitWidget(line, tr("IO MODULE %1").arg(module), parent), unit_(unit) {
  setObjectName(QStringLiteral("ioModule%1").arg(module));
  for (int i = 0; i < model.IOMCount(); ++i) {
    const IOModuleRecord& record = model.IOModuleInputs[static_cast<std::size_t>(i)];
    const auto input = IOModuleInputOf(record.Input);
    if (!input || input->Module != module) continue;
    const auto index = static_cast<std::size_t>(input->Index);
    const QString name = NameOf(model, record.FunctionNr);
    if (input->Kind == IOModuleKind::Analogue) axisLegend_[index] = name;
    if (input->Kind == IOModuleKind::Lamp) lampLegend_[index] = name;
    if (input->Kind != IOModuleKind::Switch) continue;
    legend_[index] =
        record.ActionKind == static_cast<Byte>(IOModuleAction::Keystroke) ? tr("keystroke") : name;
    const auto type = static_cast<IOModuleSwitchType>(record.SwitchType);
    if (type == IOModuleSwitchType::EncoderA) encoder_[index] = 1 + input->Index;
    if (type == IOModuleSwitchType::EncoderB && input->Index > 0) encoder_[index] = input->Index;
  }
}

QRectF IOModuleWidget::SwitchAt(int index) const {
  const double wide = (width() * 0.62 - 16) / kColumns, high = (height() - kHead - 46.0) / 6;
  return QRectF(8 + index % kColumns * wide, kHead + index / kColumns * high, wide, high)
      .adjusted(1, 1, -1, -1);
}

QRectF IOModuleWidget::AxisAt(int axis) const {
  const double left = width() * 0.62 + 6, wide = (width() - left - 8) / IOModuleUnit::kAxes;
  return QRectF(left + axis * wide, kHead, wide, height() - kHead - 46.0).adjusted(2, 1, -2, -1);
}

QRectF IOModuleWidget::LampAt(int index) const {
  const double wide = (width() - 16.0) / kLampColumns;
  return QRectF(8 + index % kLampColumns * wide, height() - 42 + index / kLampColumns * 18, wide, 17)
      .adjusted(1, 1, -1, -1);
}

int IOModuleWidget::SwitchUnder(const QPointF& at) const {
  for (int i = 0; i < IOModuleUnit::kSwitches; ++i) {
    if (SwitchAt(i).contains(at)) return i;
  }
  return -1;
}

int IOModuleWidget::AxisUnder(const QPointF& at) const {
  for (int axis = 0; axis < IOModuleUnit::kAxes; ++axis) {
    if (AxisAt(axis).contains(at)) return axis;
  }
  return -1;
}

void IOModuleWidget::DrawSwitch(QPainter& painter, int index) const {
  const auto i = static_cast<std::size_t>(index);
  const bool on = unit_.Switch(index), defined = !legend_[i].isEmpty();
  painter.setPen(QPen(encoder_[i] != 0 ? theme::kAmber : kLine, 1));
  painter.setBrush(on ? theme::kAmber : defined ? kDefined : kEmpty);
  painter.drawRoundedRect(SwitchAt(index), 3, 3);
  painter.setPen(on ? QColor(Qt::black) : defined ? theme::kText : theme::kDim);
  painter.drawText(SwitchAt(index), Qt::AlignCenter,
                   QChar('A' + index / kColumns) + QString::number(index % kColumns + 1));
}

void IOModuleWidget::DrawAxis(QPainter& painter, int axis) const {
  const QRectF slot = AxisAt(axis);
  painter.setPen(QPen(kLine, 1));
  painter.setBrush(kEmpty);
  painter.drawRoundedRect(slot, 3, 3);
  const double y = slot.bottom() - 4 - (slot.height() - 8) * unit_.Axis(axis) / IOModuleUnit::kTop;
  painter.setBrush(axisLegend_[static_cast<std::size_t>(axis)].isEmpty() ? theme::kDim : theme::kAmber);
  painter.drawRoundedRect(QRectF(slot.left() + 1, y - 4, slot.width() - 2, 8), 2, 2);
}

void IOModuleWidget::DrawLamp(QPainter& painter, int index) const {
  const double glow = 0.45 + unit_.Brightness() / 15.0 * 0.55;
  const bool on = unit_.Lamp(index);
  painter.setPen(QPen(kLine, 1));
  painter.setBrush(on ? theme::Mix(theme::kDial, kLampOn, glow) : kLampOff);
  painter.drawRoundedRect(LampAt(index), 7, 7);
  painter.setPen(on ? QColor(Qt::black) : theme::kDim);
  painter.drawText(LampAt(index), Qt::AlignCenter, QString::number(index + 1));
}

void IOModuleWidget::Draw(QPainter& painter, const QRectF& within) {
  painter.setFont(theme::FontOf(11));
  for (int i = 0; i < IOModuleUnit::kSwitches; ++i) {
    if (within.intersects(SwitchAt(i))) DrawSwitch(painter, i);
  }
  for (int axis = 0; axis < IOModuleUnit::kAxes; ++axis) {
    if (within.intersects(AxisAt(axis))) DrawAxis(painter, axis);
  }
  for (int i = 0; i < IOModuleUnit::kLamps; ++i) {
    if (within.intersects(LampAt(i))) DrawLamp(painter, i);
  }
}

QRegion IOModuleWidget::TakeChanges() {
  QRegion changed;
  const auto add = [&changed](const QRectF& area) { changed += area.adjusted(-1, -1, 1, 1).toAlignedRect(); };
  for (int i = 0; i < IOModuleUnit::kSwitches; ++i) {
    bool& shown = shown_.switches[static_cast<std::size_t>(i)];
    if (Renew(shown, unit_.Switch(i))) add(SwitchAt(i));
  }
  for (int axis = 0; axis < IOModuleUnit::kAxes; ++axis) {
    int& shown = shown_.axes[static_cast<std::size_t>(axis)];
    if (Renew(shown, unit_.Axis(axis))) add(AxisAt(axis));
  }
  const bool level = Renew(shown_.brightness, unit_.Brightness());
  for (int i = 0; i < IOModuleUnit::kLamps; ++i) {
    bool& shown = shown_.lamps[static_cast<std::size_t>(i)];
    if (Renew(shown, unit_.Lamp(i)) || (level && shown)) add(LampAt(i));
  }
  return changed;
}

void IOModuleWidget::PullAxis(const QPointF& at) {
  const QRectF slot = AxisAt(pulled_);
  unit_.SetAxis(pulled_,
                static_cast<int>(std::lround((slot.bottom() - at.y()) / slot.height() * IOModuleUnit::kTop)));
  Advance();
}

void IOModuleWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pulled_ = AxisUnder(event->position());
  if (pulled_ >= 0) PullAxis(event->position());
  const int index = SwitchUnder(event->position());
  if (index < 0) return;
  const int encoder = encoder_[static_cast<std::size_t>(index)];
  if (encoder != 0) {
    unit_.Click(encoder - 1, index == encoder - 1);
  } else {
    unit_.SetSwitch(index, !unit_.Switch(index));
  }
  Advance();
}

void IOModuleWidget::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) != 0 && pulled_ >= 0) PullAxis(event->position());
}

void IOModuleWidget::wheelEvent(QWheelEvent* event) {
  const int clicks = event->angleDelta().y() / kWheelNotch;
  const int axis = AxisUnder(event->position());
  if (axis >= 0) unit_.SetAxis(axis, unit_.Axis(axis) + clicks * kAxisNotch);
  const int index = SwitchUnder(event->position());
  const int encoder = index < 0 ? 0 : encoder_[static_cast<std::size_t>(index)];
  for (int i = 0; encoder != 0 && i < std::abs(clicks); ++i) unit_.Click(encoder - 1, clicks > 0);
  event->accept();
  Advance();
}

bool IOModuleWidget::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return UnitWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int index = SwitchUnder(help->pos()), axis = AxisUnder(help->pos());
  QString text = index >= 0  ? legend_[static_cast<std::size_t>(index)]
                 : axis >= 0 ? axisLegend_[static_cast<std::size_t>(axis)]
                             : QString();
  for (int i = 0; i < IOModuleUnit::kLamps; ++i) {
    if (LampAt(i).contains(help->pos())) text = lampLegend_[static_cast<std::size_t>(i)];
  }
  QToolTip::showText(help->globalPos(), text.isEmpty() ? tr("not defined") : text, this);
  return true;
}

}  // namespace tvx::vc
