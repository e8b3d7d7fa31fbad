#include "virtualcockpit/panel/UnitWidgets.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>

#include "hwbus/iomodule/IOModuleInput.h"
#include "virtualcockpit/panel/Theme.h"

namespace tvx::vc {
namespace {

constexpr int kColumns = 8;
constexpr int kLampColumns = 16;
constexpr int kWheelNotch = 120;
constexpr int kAxisNotch = 128;  // raw steps of one notch of the wheel

QString NameOf(const ConfigModel& model, int function) {
  const FunctionRecord* record = function < 1 ? nullptr : model.FunctionOf(function);
  return record == nullptr ? QString() : QString::fromStdString(record->ShortName);
}

// Which needle a channel moves: in the dual version the second engine's stand eight further on.
int NeedleOf(int channel, bool dual) {
  return dual && channel >= 4 ? channel + 4 : channel;
}

}  // namespace

UnitWidget::UnitWidget(UnitLine& line, QString caption, QWidget* parent)
    : QWidget(parent), line_(line), caption_(std::move(caption)) {
  setMinimumSize(260, 170);
}

void UnitWidget::Advance() {
  if (seen_ == line_.Hardware().Changes() && plugged_ == line_.Line().Plugged()) return;
  seen_ = line_.Hardware().Changes();
  plugged_ = line_.Line().Plugged();
  update();
}

void UnitWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(0x3d, 0x44, 0x4c), 1));
  painter.setBrush(theme::kDial);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);
  painter.setFont(theme::FontOf(13, true));
  const bool well = plugged_ && line_.Hardware().Fault() == DeviceFault::None;
  painter.setPen(well ? theme::kText : theme::kTrouble);
  const std::string_view fault = FaultText(line_.Hardware().Fault());
  QString head = caption_;
  if (!plugged_) {
    head += QStringLiteral(" - unplugged");
  } else if (!well) {
    head += QStringLiteral(" - ") + QString::fromUtf8(fault.data(), static_cast<qsizetype>(fault.size()));
  }
  painter.drawText(QRectF(10, 3, width() - 20, kHead - 3), Qt::AlignVCenter | Qt::AlignLeft, head);
  Draw(painter);
}

void UnitWidget::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  for (const DeviceFault fault : kDeviceFaults) {
    const std::string_view text = FaultText(fault);
    QAction* action = menu.addAction(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    action->setCheckable(true);
    action->setChecked(line_.Hardware().Fault() == fault);
    connect(action, &QAction::triggered, this, [this, fault] { line_.Hardware().SetFault(fault); });
  }
  menu.addSeparator();
  const bool plugged = line_.Line().Plugged();
  connect(menu.addAction(plugged ? tr("Unplug the adapter") : tr("Plug the adapter in")), &QAction::triggered,
          this, [this, plugged] {
            if (plugged) {
              line_.Unplug();
            } else {
              line_.Plug();
            }
          });
  menu.exec(event->globalPos());
}

IoBoardWidget::IoBoardWidget(UnitLine& line, IoBoard& board, const ConfigModel& model, int module,
                             QWidget* parent)
    : UnitWidget(line, tr("IO MODULE %1").arg(module), parent), board_(board) {
  setObjectName(QStringLiteral("ioBoard%1").arg(module));
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

QRectF IoBoardWidget::SwitchAt(int index) const {
  const double wide = (width() * 0.62 - 16) / kColumns, high = (height() - kHead - 46.0) / 6;
  return QRectF(8 + index % kColumns * wide, kHead + index / kColumns * high, wide, high)
      .adjusted(1, 1, -1, -1);
}

QRectF IoBoardWidget::AxisAt(int axis) const {
  const double left = width() * 0.62 + 6, wide = (width() - left - 8) / IoBoard::kAxes;
  return QRectF(left + axis * wide, kHead, wide, height() - kHead - 46.0).adjusted(2, 1, -2, -1);
}

QRectF IoBoardWidget::LampAt(int index) const {
  const double wide = (width() - 16.0) / kLampColumns;
  return QRectF(8 + index % kLampColumns * wide, height() - 42 + index / kLampColumns * 18, wide, 17)
      .adjusted(1, 1, -1, -1);
}

int IoBoardWidget::SwitchUnder(const QPointF& at) const {
  for (int i = 0; i < IoBoard::kSwitches; ++i) {
    if (SwitchAt(i).contains(at)) return i;
  }
  return -1;
}

int IoBoardWidget::AxisUnder(const QPointF& at) const {
  for (int axis = 0; axis < IoBoard::kAxes; ++axis) {
    if (AxisAt(axis).contains(at)) return axis;
  }
  return -1;
}

void IoBoardWidget::Draw(QPainter& painter) {
  painter.setFont(theme::FontOf(11));
  const QColor line(0x3d, 0x44, 0x4c), empty(0x1b, 0x1e, 0x22), defined(0x2c, 0x33, 0x3b);
  for (int i = 0; i < IoBoard::kSwitches; ++i) {
    const auto index = static_cast<std::size_t>(i);
    painter.setPen(QPen(encoder_[index] != 0 ? theme::kAmber : line, 1));
    painter.setBrush(board_.Switch(i) ? theme::kAmber : legend_[index].isEmpty() ? empty : defined);
    painter.drawRoundedRect(SwitchAt(i), 3, 3);
    painter.setPen(board_.Switch(i) ? Qt::black : legend_[index].isEmpty() ? theme::kDim : theme::kText);
    painter.drawText(SwitchAt(i), Qt::AlignCenter,
                     QChar('A' + i / kColumns) + QString::number(i % kColumns + 1));
  }
  for (int axis = 0; axis < IoBoard::kAxes; ++axis) {
    const QRectF slot = AxisAt(axis);
    painter.setPen(QPen(line, 1));
    painter.setBrush(empty);
    painter.drawRoundedRect(slot, 3, 3);
    const double y = slot.bottom() - 4 - (slot.height() - 8) * board_.Axis(axis) / IoBoard::kTop;
    painter.setBrush(axisLegend_[static_cast<std::size_t>(axis)].isEmpty() ? theme::kDim : theme::kAmber);
    painter.drawRoundedRect(QRectF(slot.left() + 1, y - 4, slot.width() - 2, 8), 2, 2);
  }
  const double glow = 0.45 + board_.Brightness() / 15.0 * 0.55;
  for (int i = 0; i < IoBoard::kLamps; ++i) {
    const bool on = board_.Lamp(i);
    painter.setPen(QPen(line, 1));
    painter.setBrush(on ? theme::Mix(theme::kDial, QColor(0xff, 0xd2, 0x70), glow)
                        : QColor(0x2a, 0x22, 0x14));
    painter.drawRoundedRect(LampAt(i), 7, 7);
    painter.setPen(on ? Qt::black : theme::kDim);
    painter.drawText(LampAt(i), Qt::AlignCenter, QString::number(i + 1));
  }
}

void IoBoardWidget::PullAxis(const QPointF& at) {
  const QRectF slot = AxisAt(pulled_);
  board_.SetAxis(pulled_,
                 static_cast<int>(std::lround((slot.bottom() - at.y()) / slot.height() * IoBoard::kTop)));
  Advance();
}

void IoBoardWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pulled_ = AxisUnder(event->position());
  if (pulled_ >= 0) PullAxis(event->position());
  const int index = SwitchUnder(event->position());
  if (index < 0) return;
  const int encoder = encoder_[static_cast<std::size_t>(index)];
  if (encoder != 0) {
    board_.Click(encoder - 1, index == encoder - 1);
  } else {
    board_.SetSwitch(index, !board_.Switch(index));
  }
  Advance();
}

void IoBoardWidget::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) != 0 && pulled_ >= 0) PullAxis(event->position());
}

void IoBoardWidget::wheelEvent(QWheelEvent* event) {
  const int clicks = event->angleDelta().y() / kWheelNotch;
  const int axis = AxisUnder(event->position());
  if (axis >= 0) board_.SetAxis(axis, board_.Axis(axis) + clicks * kAxisNotch);
  const int index = SwitchUnder(event->position());
  const int encoder = index < 0 ? 0 : encoder_[static_cast<std::size_t>(index)];
  for (int i = 0; encoder != 0 && i < std::abs(clicks); ++i) board_.Click(encoder - 1, clicks > 0);
  event->accept();
  Advance();
}

bool IoBoardWidget::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return UnitWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int index = SwitchUnder(help->pos()), axis = AxisUnder(help->pos());
  QString text = index >= 0  ? legend_[static_cast<std::size_t>(index)]
                 : axis >= 0 ? axisLegend_[static_cast<std::size_t>(axis)]
                             : QString();
  for (int i = 0; i < IoBoard::kLamps; ++i) {
    if (LampAt(i).contains(help->pos())) text = lampLegend_[static_cast<std::size_t>(i)];
  }
  QToolTip::showText(help->globalPos(), text.isEmpty() ? tr("not defined") : text, this);
  return true;
}

ClusterWidget::ClusterWidget(UnitLine& line, ClusterUnit& cluster, const ConfigModel& model, QWidget* parent)
    : UnitWidget(line, tr("ENGINE CLUSTER"), parent), cluster_(cluster) {
  setObjectName(QStringLiteral("engineCluster"));
  const bool dual = model.EngineCluster[8].Value1 == 1;
  for (int k = 0; k < 8; ++k) {
    const EngineClusterRecord& channel = model.EngineCluster[static_cast<std::size_t>(k)];
    if (channel.Value1 != 0) dials_.push_back({NameOf(model, channel.Value2), NeedleOf(k, dual)});
  }
}

void ClusterWidget::Draw(QPainter& painter) {
  const int columns = dials_.size() > 4 ? 4 : std::max(1, static_cast<int>(dials_.size()));
  const int rows = (static_cast<int>(dials_.size()) + columns - 1) / columns;
  const double wide = (width() - 16.0) / columns, high = (height() - kHead - 6.0) / std::max(1, rows);
  const QColor ink = cluster_.Lit() ? theme::kAmber : theme::kText;
  for (std::size_t i = 0; i < dials_.size(); ++i) {
    const int place = static_cast<int>(i);
    const QPointF middle(8 + (place % columns + 0.5) * wide, kHead + (place / columns + 0.5) * high);
    const double radius = std::min(wide, high) / 2 - 4;
    painter.save();
    painter.translate(middle);
    painter.setPen(QPen(QColor(0x5a, 0x5f, 0x66), 2));
    painter.setBrush(theme::kPanelBottom);
    painter.drawEllipse(QPointF(0, 0), radius, radius);
    painter.setPen(ink);
    painter.setFont(theme::FontOf(std::max(9.0, radius / 5)));
    painter.drawText(QRectF(-radius * 0.75, radius * 0.2, radius * 1.5, radius * 0.75),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, dials_[i].caption);
    painter.rotate(225 + cluster_.Needle(dials_[i].needle) / 3.0);
    painter.setPen(
        QPen(cluster_.Powered() ? QColor(Qt::white) : theme::kDim, 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, radius * 0.15), QPointF(0, -radius * 0.85));
    painter.restore();
  }
}

UnitShelf::UnitShelf(Cockpit& cockpit, QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("unitShelf"));
  setAttribute(Qt::WA_StyledBackground);
  setStyleSheet(QStringLiteral("#unitShelf { background: %1; }").arg(theme::kPanelBottom.name()));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 0, 8, 8);
  for (const int module : {1, 2}) {
    if (UnitLine* line = cockpit.IoLine(module)) {
      widgets_.push_back(new IoBoardWidget(*line, cockpit.Board(module), cockpit.Model(), module, this));
    }
  }
  if (UnitLine* line = cockpit.ClusterLine()) {
    widgets_.push_back(new ClusterWidget(*line, cockpit.Cluster(), cockpit.Model(), this));
  }
  for (UnitWidget* widget : widgets_) row->addWidget(widget, 1);
  setVisible(!widgets_.empty());
}

void UnitShelf::Advance() {
  for (UnitWidget* widget : widgets_) widget->Advance();
}

}  // namespace tvx::vc
