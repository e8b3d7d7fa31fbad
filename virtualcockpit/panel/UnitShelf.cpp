#include "virtualcockpit/panel/UnitShelf.h"

#include <QHBoxLayout>

#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/panel/ClusterWidget.h"
#include "virtualcockpit/panel/IOModuleWidget.h"

namespace tvx::vc {

UnitShelf::UnitShelf(Cockpit& cockpit, QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("unitShelf"));
  setAttribute(Qt::WA_StyledBackground);
  setStyleSheet(QStringLiteral("#unitShelf { background: %1; }").arg(theme::kPanelBottom.name()));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 0, 8, 8);
  for (const int module : {1, 2}) {
    if (UnitLine* line = cockpit.IOModuleLine(module)) {
      widgets_.push_back(
          new IOModuleWidget(*line, cockpit.IOModuleOf(module), cockpit.Model(), module, this));
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
