#include "virtualcockpit/panel/UnitWidget.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>

#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr int kOffMs = 1000;

}  // namespace

UnitWidget::UnitWidget(UnitLine& line, QString caption, QWidget* parent)
    : QWidget(parent), line_(line), caption_(std::move(caption)) {
  setMinimumSize(260, 170);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

QString UnitWidget::NameOf(const ConfigModel& model, int function) {
  const FunctionRecord* record = function < 1 ? nullptr : model.FunctionOf(function);
  return record == nullptr ? QString() : QString::fromStdString(record->ShortName);
}

UnitWidget::Look UnitWidget::LookNow() const {
  return {size() * devicePixelRatioF(), line_.Line().Plugged(), line_.Hardware().Fault(), BackVersion()};
}

void UnitWidget::Advance() {
  const QRegion changed = TakeChanges();
  if (LookNow() != drawn_) {
    update();
  } else if (!changed.isEmpty()) {
    update(changed);
  }
}

void UnitWidget::RenewPicture() {
  const Look now = LookNow();
  if (now == drawn_) return;
  drawn_ = now;
  back_ = QPixmap(now.pixels);
  back_.setDevicePixelRatio(devicePixelRatioF());
  back_.fill(theme::kPanelBottom);
  QPainter painter(&back_);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(0x3d, 0x44, 0x4c), 1));
  painter.setBrush(theme::kDial);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);
  painter.setFont(theme::FontOf(13, true));
  const bool well = now.plugged && now.fault == DeviceFault::None;
  painter.setPen(well ? theme::kText : theme::kTrouble);
  const std::string_view fault = FaultText(now.fault);
  QString head = caption_;
  if (!now.plugged) {
    head += QStringLiteral(" - unplugged");
  } else if (!well) {
    head += QStringLiteral(" - ") + QString::fromUtf8(fault.data(), static_cast<qsizetype>(fault.size()));
  }
  painter.drawText(QRectF(10, 3, width() - 20, kHead - 3), Qt::AlignVCenter | Qt::AlignLeft, head);
  DrawBack(painter);
}

void UnitWidget::paintEvent(QPaintEvent* event) {
  RenewPicture();
  QPainter painter(this);
  painter.drawPixmap(0, 0, back_);
  painter.setRenderHint(QPainter::Antialiasing);
  for (const QRect& part : event->region()) Draw(painter, part);
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
  connect(menu.addAction(tr("Switch off and on again")), &QAction::triggered, this, [this] {
    line_.Hardware().SetFault(DeviceFault::Dead);
    QTimer::singleShot(kOffMs, this, [this] { line_.Hardware().SetFault(DeviceFault::None); });
  });
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

}  // namespace tvx::vc
