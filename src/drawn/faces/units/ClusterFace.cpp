#include "drawn/faces/units/ClusterFace.h"

#include <QPainter>
#include <QStringList>
#include <algorithm>

#include "drawn/widgets/Theme.h"

namespace tvx::drawn {
namespace {

constexpr double kStopAngle = 225;  // degrees clockwise from the top, of a needle at 0
constexpr double kPositionsPerDegree = 3;
constexpr int kMostColumns = 4;

}  // namespace

ClusterFace::ClusterFace(const ClusterLegend& legend, QWidget* parent)
    : UnitFace(tr("ENGINE CLUSTER"), {420, 210}, parent) {
  setObjectName(QStringLiteral("engineCluster"));
  for (const ClusterLegend::Dial& dial : legend.dials) dials_.push_back({dial});
}

ClusterFace::Place ClusterFace::PlaceOf(std::size_t dial) const {
  const int count = static_cast<int>(dials_.size());
  const int columns = std::clamp(count, 1, kMostColumns);
  const int rows = std::max(1, (count + columns - 1) / columns);
  const double wide = (width() - 16 * Scale()) / columns, high = (height() - Head() - 6 * Scale()) / rows;
  const int place = static_cast<int>(dial);
  return {{8 * Scale() + (place % columns + 0.5) * wide, Head() + (place / columns + 0.5) * high},
          std::min(wide, high) / 2 - 4 * Scale()};
}

void ClusterFace::DrawBack(QPainter& painter) {
  const QColor ink = lit_ ? theme::kAmber : theme::kText;
  for (std::size_t i = 0; i < dials_.size(); ++i) {
    const auto [middle, radius] = PlaceOf(i);
    painter.setPen(QPen(QColor(0x5a, 0x5f, 0x66), 2 * Scale()));
    painter.setBrush(theme::kPanelBottom);
    painter.drawEllipse(middle, radius, radius);
    painter.setPen(ink);
    painter.setFont(theme::FontOf(std::max(9.0, radius / 5)));
    painter.drawText(
        QRectF(middle.x() - radius * 0.75, middle.y() + radius * 0.2, radius * 1.5, radius * 0.75),
        Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, dials_[i].is.name);
  }
}

void ClusterFace::Draw(QPainter& painter, const QRegion& within) {
  const QColor needle = powered_ ? QColor(Qt::white) : theme::kDim;
  painter.setPen(QPen(needle, 3 * Scale(), Qt::SolidLine, Qt::RoundCap));
  for (std::size_t i = 0; i < dials_.size(); ++i) {
    const Place place = PlaceOf(i);
    if (!within.intersects(place.Area().toAlignedRect())) continue;
    painter.save();
    painter.translate(place.middle);
    painter.rotate(kStopAngle + dials_[i].position / kPositionsPerDegree);
    painter.drawLine(QPointF(0, place.radius * 0.15), QPointF(0, -place.radius * 0.85));
    painter.restore();
  }
}

void ClusterFace::Show(const ClusterState& now) {
  sweeping_ = now.Sweeping();
  const bool power = Renew(powered_, now.BusPowered());
  QRegion changed;
  for (std::size_t i = 0; i < dials_.size(); ++i) {
    const bool moved = Renew(dials_[i].position, now.Needle(dials_[i].is.needle));
    if (moved || power) changed += PlaceOf(i).Area().toAlignedRect();
  }
  if (Renew(lit_, now.Lit())) {
    RenewBack();
  } else if (!changed.isEmpty()) {
    update(changed);
  }
}

QString ClusterFace::Words() const {
  QStringList words;
  for (const Dial& dial : dials_) words << dial.is.name + QStringLiteral(" at %1").arg(dial.position);
  if (sweeping_) words << tr("sweeping");
  if (lit_) words << tr("lit");
  if (!powered_) words << tr("no power");
  return words.join(QStringLiteral(", "));
}

int ClusterFace::PartAt(const QPointF& at) const {
  for (std::size_t i = 0; i < dials_.size(); ++i) {
    if (PlaceOf(i).Area().contains(at)) return dials_[i].is.channel;
  }
  return -1;
}

QString ClusterFace::TipAt(const QPointF& at) const {
  const int channel = PartAt(at);
  for (const Dial& dial : dials_) {
    if (dial.is.channel == channel)
      return tr("Channel %1, %2: needle at %3").arg(channel + 1).arg(dial.is.name).arg(dial.position);
  }
  return {};
}

}  // namespace tvx::drawn
