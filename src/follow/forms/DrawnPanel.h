// The user's own cockpit as it stands: every gauge drawn with its face, in the order of their GaugeIDs.
#pragma once

#include <QElapsedTimer>
#include <QScrollArea>
#include <vector>

#include "base/Subject.h"
#include "follow/CockpitList.h"
#include "follow/CockpitMirror.h"
#include "follow/forms/InstrumentTile.h"

namespace tvx {

class DrawnPanel : public QScrollArea {
  Q_OBJECT
 public:
  // Nothing is taken over before Show().
  explicit DrawnPanel(const FollowedParts& parts);

  // Marks what is in trouble, and shows the gauges that have a line in the list. Makes the faces anew where
  // the configuration has changed.
  void Show(const CockpitList& list);
  // Moves the needles to where they were sent since.
  void Refresh();
  // The instrument that has the focus, or had it last; number 0 where there is none.
  Subject Chosen() const { return {Subject::Kind::Gauge, chosen_}; }

 signals:
  void FollowAsked(const tvx::Subject& subject);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Rebuild();
  void Arrange();

  const FollowedParts& parts_;
  CockpitMirror mirror_;
  QWidget* ground_;
  QLabel* empty_;
  std::vector<InstrumentTile*> tiles_;  // as the mirror's instruments
  QElapsedTimer since_;
  int chosen_ = 0;
};

}  // namespace tvx
