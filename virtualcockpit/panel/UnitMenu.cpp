#include "virtualcockpit/panel/UnitMenu.h"

#include <QMenu>
#include <QTimer>

#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr int kOffMs = 1000;

QString TextOf(DeviceFault fault) {
  const std::string_view text = FaultText(fault);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void ShowMenu(UnitLine& line, QWidget& widget, const QPoint& at) {
  QMenu menu(&widget);
  for (const DeviceFault fault : kDeviceFaults) {
    QAction* action = menu.addAction(TextOf(fault));
    action->setCheckable(true);
    action->setChecked(line.Hardware().Fault() == fault);
    QObject::connect(action, &QAction::triggered, &widget,
                     [&line, fault] { line.Hardware().SetFault(fault); });
  }
  menu.addSeparator();
  QObject::connect(menu.addAction(QStringLiteral("Switch off and on again")), &QAction::triggered, &widget,
                   [&line, &widget] {
                     line.Hardware().SetFault(DeviceFault::Dead);
                     QTimer::singleShot(kOffMs, &widget,
                                        [&line] { line.Hardware().SetFault(DeviceFault::None); });
                   });
  const bool plugged = line.Line().Plugged();
  QAction* adapter =
      menu.addAction(plugged ? QStringLiteral("Unplug the adapter") : QStringLiteral("Plug the adapter in"));
  QObject::connect(adapter, &QAction::triggered, &widget, [&line, plugged] {
    if (plugged) {
      line.Unplug();
    } else {
      line.Plug();
    }
  });
  menu.exec(widget.mapToGlobal(at));
}

}  // namespace

QString TroubleOf(UnitLine& line) {
  if (!line.Line().Plugged()) return QStringLiteral("unplugged");
  const DeviceFault fault = line.Hardware().Fault();
  return fault == DeviceFault::None ? QString() : TextOf(fault);
}

void OfferUnitMenu(UnitLine& line, QWidget& widget) {
  widget.setContextMenuPolicy(Qt::CustomContextMenu);
  QObject::connect(&widget, &QWidget::customContextMenuRequested, &widget,
                   [&line, &widget](const QPoint& at) { ShowMenu(line, widget, at); });
}

}  // namespace tvx::vc
