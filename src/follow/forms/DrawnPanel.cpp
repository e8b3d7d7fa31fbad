#include "follow/forms/DrawnPanel.h"

#include <QEvent>
#include <QResizeEvent>
#include <algorithm>

#include "core/BusWords.h"
#include "ui/FieldGrid.h"
#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx {
namespace {

constexpr int kLinesToADial = 9;
constexpr double kMsToASecond = 1000.0, kLongestStep = 1.0;

}  // namespace

DrawnPanel::DrawnPanel(const FollowedParts& parts)
    : parts_(parts), mirror_(parts), units_(parts), ground_(new QWidget), empty_(MakeLabel("LabelNoGauges")) {
  setObjectName("PanelCockpit");
  setAccessibleName(tr("The drawn cockpit"));
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  empty_->setParent(ground_);
  empty_->setText(tr("No part of the cockpit to draw"));
  setWidget(ground_);
  Rebuild();
  since_.start();
}

DrawnPanel::Units DrawnPanel::UnitsNow() const {
  return {units_.Configured(),
          drawn::LegendOfCluster(parts_.Model),
          {drawn::LegendOfModule(parts_.Model, 1), drawn::LegendOfModule(parts_.Model, 2)}};
}

void DrawnPanel::Rebuild() {
  for (CockpitTile* tile : Tiles()) delete tile;
  instruments_.clear();
  unitTiles_.clear();
  mirror_.Rebuild();
  for (std::size_t i = 0; i < mirror_.Count(); ++i) {
    drawn::Device& device = mirror_.At(i);
    instruments_.push_back(
        new InstrumentTile(device, parts_.Model, ToText(GaugeWords(parts_.Model, device.Id().gaugeID))));
    Add(instruments_.back());
  }
  made_ = UnitsNow();
  for (const UnitName& unit : made_.names) {
    unitTiles_.push_back(new UnitTile(units_, unit, parts_.Model));
    Add(unitTiles_.back());
  }
  Arrange();
}

void DrawnPanel::Add(CockpitTile* tile) {
  tile->setParent(ground_);
  tile->installEventFilter(this);
  connect(tile, &CockpitTile::FollowAsked, this, &DrawnPanel::FollowAsked);
  tile->show();
}

std::vector<CockpitTile*> DrawnPanel::Tiles() const {
  std::vector<CockpitTile*> tiles(instruments_.begin(), instruments_.end());
  tiles.insert(tiles.end(), unitTiles_.begin(), unitTiles_.end());
  return tiles;
}

std::optional<Subject> DrawnPanel::Chosen() const {
  for (const CockpitTile* tile : Tiles()) {
    if (tile->objectName() == chosen_) return tile->Main();
  }
  return std::nullopt;
}

void DrawnPanel::Show(const CockpitList& list) {
  if (mirror_.Outdated() || made_ != UnitsNow()) Rebuild();
  bool moved = false;
  const auto mark = [&](CockpitTile& tile, bool known) {
    std::optional<Subject> main;
    QString trouble;
    for (std::size_t line = 0; line < list.Lines(); ++line) {
      const Subject& subject = list.SubjectOf(line);
      if (!tile.Holds(subject) || (main && (!list.InTrouble(line) || !trouble.isEmpty()))) continue;
      main = subject;
      if (list.InTrouble(line)) trouble = ToText(list.Cell(line, CockpitColumn::State));
    }
    tile.SetState(known, trouble, main.value_or(tile.Main()));
    const bool shown = main || list.Lines() == list.All();
    moved = moved || tile.isHidden() == shown;
    tile.setVisible(shown);
  };
  for (std::size_t i = 0; i < instruments_.size(); ++i) mark(*instruments_[i], mirror_.Known(i));
  for (UnitTile* tile : unitTiles_) mark(*tile, units_.Known(tile->Unit()));
  if (moved) Arrange();
}

void DrawnPanel::Refresh() {
  const double seconds = std::min(static_cast<double>(since_.restart()) / kMsToASecond, kLongestStep);
  mirror_.Refresh();
  units_.Refresh();
  // Those out of sight too: what they show is also told in words, and is not painted.
  for (InstrumentTile* tile : instruments_) tile->Advance(seconds);
  for (UnitTile* tile : unitTiles_) tile->Advance(seconds);
}

// In rows from left to right, each as high as its highest. The units begin a row of their own.
void DrawnPanel::Arrange() {
  const int gap = look::Gap();
  const int dial = kLinesToADial * fontMetrics().lineSpacing();
  const int width = viewport()->width();
  int x = 0, y = 0, high = 0;
  bool units = false;
  for (CockpitTile* tile : Tiles()) {
    if (tile->isHidden()) continue;
    const QSize size = tile->SizeFor(dial).boundedTo({std::max(width, dial), dial * 4});
    const bool unit = qobject_cast<UnitTile*>(tile) != nullptr;
    if (x > 0 && (x + size.width() > width || (unit && !units))) {
      x = 0;
      y += high + gap;
      high = 0;
    }
    units = unit;
    tile->setGeometry({{x, y}, size});
    x += size.width() + gap;
    high = std::max(high, size.height());
  }
  empty_->setVisible(high == 0);
  empty_->setGeometry(0, 0, width, fontMetrics().lineSpacing() * 2);
  ground_->setMinimumHeight(y + high);
}

void DrawnPanel::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  Arrange();
}

bool DrawnPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) chosen_ = watched->objectName();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace tvx
