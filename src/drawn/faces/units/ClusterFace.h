// The drawn engine cluster: a small dial for each channel.
#pragma once

#include <vector>

#include "drawn/faces/units/UnitFace.h"
#include "drawn/faces/units/UnitLegends.h"
#include "drawn/units/ClusterState.h"

namespace tvx::drawn {

class ClusterFace : public UnitFace {
  Q_OBJECT
 public:
  ClusterFace(const ClusterLegend& legend, QWidget* parent);
  // Repaints what is otherwise than before.
  void Show(const ClusterState& now);
  QString Words() const override;
  // A channel, from 0.
  int PartAt(const QPointF& at) const override;
  QString TipAt(const QPointF& at) const override;

 protected:
  void DrawBack(QPainter& painter) override;
  void Draw(QPainter& painter, const QRegion& within) override;

 private:
  struct Dial {
    ClusterLegend::Dial is;
    int position = 0;  // where the needle is drawn
  };
  struct Place {
    QPointF middle;
    double radius;
    QRectF Area() const { return {middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius}; }
  };
  Place PlaceOf(std::size_t dial) const;

  std::vector<Dial> dials_;
  bool lit_ = false, powered_ = false, sweeping_ = false;
};

}  // namespace tvx::drawn
