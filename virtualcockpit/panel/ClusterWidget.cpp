#include "virtualcockpit/panel/ClusterWidget.h"

#include <QPainter>
#include <algorithm>

#include "drawn/widgets/Theme.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr int kChannels = 8, kEngineSetting = 8, kDual = 1;
constexpr double kStopAngle = 225;  // degrees clockwise from the top, of a needle at 0
constexpr double kPositionsPerDegree = 3;

// Which needle a channel moves: in the dual version the second engine's stand eight further on.
int NeedleOf(int channel, bool dual) {
  return dual && channel >= 4 ? channel + 4 : channel;
}

}  // namespace

ClusterWidget::ClusterWidget(UnitLine& line, ClusterUnit& cluster, const ConfigModel& model, QWidget* parent)
    : UnitWidget(line, tr("ENGINE CLUSTER"), parent), cluster_(cluster) {
  setObjectName(QStringLiteral("engineCluster"));
  const bool dual = model.EngineCluster[kEngineSetting].Value1 == kDual;
  for (int channel = 0; channel < kChannels; ++channel) {
    const EngineClusterRecord& record = model.EngineCluster[static_cast<std::size_t>(channel)];
    if (record.Value1 != 0) dials_.push_back({NameOf(model, record.Value2), NeedleOf(channel, dual)});
  }
}

ClusterWidget::Place ClusterWidget::PlaceOf(std::size_t dial) const {
  const int count = static_cast<int>(dials_.size());
  const int columns = count > 4 ? 4 : std::max(1, count);
  const int rows = (count + columns - 1) / columns;
  const double wide = (width() - 16.0) / columns, high = (height() - kHead - 6.0) / std::max(1, rows);
  const int place = static_cast<int>(dial);
  return {{8 + (place % columns + 0.5) * wide, kHead + (place / columns + 0.5) * high},
          std::min(wide, high) / 2 - 4};
}

void ClusterWidget::DrawBack(QPainter& painter) {
  const QColor ink = cluster_.Lit() ? theme::kAmber : theme::kText;
  for (std::size_t i = 0; i < dials_.size(); ++i) {
    const auto [middle, radius] = PlaceOf(i);
    painter.setPen(QPen(QColor(0x5a, 0x5f, 0x66), 2));
    painter.setBrush(theme::kPanelBottom);
    painter.drawEllipse(middle, radius, radius);
    painter.setPen(ink);
    painter.setFont(theme::FontOf(std::max(9.0, radius / 5)));
    painter.drawText(
        QRectF(middle.x() - radius * 0.75, middle.y() + radius * 0.2, radius * 1.5, radius * 0.75),
        Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, dials_[i].caption);
  }
}

void ClusterWidget::Draw(QPainter& painter, const QRectF& within) {
  painter.setPen(
      QPen(cluster_.BusPowered() ? QColor(Qt::white) : theme::kDim, 3, Qt::SolidLine, Qt::RoundCap));
  for (std::size_t i = 0; i < dials_.size(); ++i) {
    const Place place = PlaceOf(i);
    if (!within.intersects(place.Area())) continue;
    painter.save();
    painter.translate(place.middle);
    painter.rotate(kStopAngle + cluster_.Needle(dials_[i].needle) / kPositionsPerDegree);
    painter.drawLine(QPointF(0, place.radius * 0.15), QPointF(0, -place.radius * 0.85));
    painter.restore();
  }
}

QRegion ClusterWidget::TakeChanges() {
  const bool power = Renew(powered_, cluster_.BusPowered());
  QRegion changed;
  for (std::size_t i = 0; i < dials_.size(); ++i) {
    const bool moved = Renew(dials_[i].shown, cluster_.Needle(dials_[i].needle));
    if (moved || power) changed += PlaceOf(i).Area().toAlignedRect();
  }
  return changed;
}

}  // namespace tvx::vc
