// The user's own cockpit as it stands: every gauge drawn with its face, in the order of their GaugeIDs; below
// them the engine cluster, the IO modules and the yokes.
#pragma once

#include <QElapsedTimer>
#include <QScrollArea>
#include <optional>
#include <vector>

#include "base/Subject.h"
#include "drawn/faces/units/UnitLegends.h"
#include "follow/CockpitList.h"
#include "follow/CockpitMirror.h"
#include "follow/forms/InstrumentTile.h"
#include "follow/forms/UnitTile.h"

namespace tvx {

class DrawnPanel : public QScrollArea {
  Q_OBJECT
 public:
  // Nothing is taken over before Show().
  explicit DrawnPanel(const FollowedParts& parts);

  // Marks what is in trouble, and shows the parts that have a line in the list, or all where the list has
  // all. Makes the faces anew where the configuration has changed.
  void Show(const CockpitList& list);
  // Moves the needles to where they were sent since.
  void Refresh();
  // What is followed of the part that has the focus, or had it last; std::nullopt where there is none.
  std::optional<Subject> Chosen() const;

 signals:
  void FollowAsked(const tvx::Subject& subject);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // What the units' faces are made from.
  struct Units {
    std::vector<UnitName> names;
    drawn::ClusterLegend cluster;
    std::array<drawn::IOModuleLegend, 2> modules;
    bool operator==(const Units&) const = default;
  };
  Units UnitsNow() const;
  void Rebuild();
  void Add(CockpitTile* tile);
  std::vector<CockpitTile*> Tiles() const;
  void Arrange();

  const FollowedParts& parts_;
  CockpitMirror mirror_;
  UnitMirror units_;
  Units made_;
  QWidget* ground_;
  QLabel* empty_;
  std::vector<InstrumentTile*> instruments_;  // as the mirror's
  std::vector<UnitTile*> unitTiles_;
  QElapsedTimer since_;
  QString chosen_;  // the tile's name
};

}  // namespace tvx
