// The drawn engine cluster: a small dial for each channel.
#pragma once

#include <vector>

#include "virtualcockpit/lines/ClusterUnit.h"
#include "virtualcockpit/panel/UnitWidget.h"

namespace tvx::vc {

class ClusterWidget : public UnitWidget {
  Q_OBJECT
 public:
  ClusterWidget(UnitLine& line, ClusterUnit& cluster, const ConfigModel& model, QWidget* parent);
  QSize sizeHint() const override { return {420, 210}; }

 protected:
  void DrawBack(QPainter& painter) override;
  int BackVersion() const override { return cluster_.Lit() ? 1 : 0; }
  void Draw(QPainter& painter, const QRectF& within) override;
  QRegion TakeChanges() override;

 private:
  struct Dial {
    QString caption;
    int needle;
    int shown = -1;  // where the needle was drawn
  };
  struct Place {
    QPointF middle;
    double radius;
    QRectF Area() const { return {middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius}; }
  };
  Place PlaceOf(std::size_t dial) const;

  ClusterUnit& cluster_;
  std::vector<Dial> dials_;
  bool powered_ = false;
};

}  // namespace tvx::vc
