#include "virtualcockpit/panel/UnitShelf.h"

#include <QHBoxLayout>

#include "drawn/faces/units/ClusterFace.h"
#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/panel/IOModuleWidget.h"
#include "virtualcockpit/panel/UnitMenu.h"

namespace tvx::vc {

UnitShelf::UnitShelf(Cockpit& cockpit, QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("unitShelf"));
  setAttribute(Qt::WA_StyledBackground);
  setStyleSheet(QStringLiteral("#unitShelf { background: %1; }").arg(theme::kPanelBottom.name()));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 0, 8, 8);
  for (const int module : {1, 2}) {
    UnitLine* line = cockpit.IOModuleLine(module);
    if (line == nullptr) continue;
    IOModuleUnit& unit = cockpit.IOModuleOf(module);
    auto* face = new IOModuleWidget(unit, cockpit.Model(), module, this);
    Add(*line, face, [face, &unit] { face->Show(unit.State()); });
  }
  if (UnitLine* line = cockpit.ClusterLine()) {
    auto* face = new ClusterFace(LegendOfCluster(cockpit.Model()), this);
    Add(*line, face, [face, &cockpit] { face->Show(cockpit.Cluster().State()); });
  }
  setVisible(!places_.empty());
}

void UnitShelf::Add(UnitLine& line, UnitFace* face, std::function<void()> show) {
  face->setMinimumSize(260, 170);
  OfferUnitMenu(line, *face);
  layout()->addWidget(face);
  static_cast<QHBoxLayout*>(layout())->setStretchFactor(face, 1);
  places_.push_back({&line, face, std::move(show)});
}

void UnitShelf::Advance() {
  for (const Place& place : places_) {
    place.face->SetTrouble(TroubleOf(*place.line));
    place.show();
  }
}

}  // namespace tvx::vc
