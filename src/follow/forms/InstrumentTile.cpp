#include "follow/forms/InstrumentTile.h"

#include "drawn/faces/MakeFace.h"
#include "ui/Look.h"

namespace tvx {
namespace {

constexpr int kWideDials = 2;  // how many dials a unit of the radio stack is wide

}  // namespace

InstrumentTile::InstrumentTile(drawn::Device& device, const ConfigModel& model, const QString& caption)
    : InstrumentTile(drawn::MakeFace(device, model, nullptr), caption) {}

InstrumentTile::InstrumentTile(drawn::InstrumentWidget* face, const QString& caption)
    : CockpitTile(face, caption, {Subject::Kind::Gauge, face->Gauge().Id().gaugeID}), face_(face) {
  setObjectName(QStringLiteral("Tile%1").arg(face->Gauge().Id().gaugeID));
  ShowWords();
}

bool InstrumentTile::Holds(const Subject& subject) const {
  return subject.kind == Subject::Kind::Gauge && subject.number == face_->Gauge().Id().gaugeID;
}

QSize InstrumentTile::SizeFor(int dial) const {
  const QSizeF extent = face_->Extent();
  const int width = face_->Wide() ? kWideDials * dial : dial;
  return {width, HeightWith(width * extent.height() / extent.width())};
}

void InstrumentTile::resizeEvent(QResizeEvent* event) {
  CockpitTile::resizeEvent(event);
  face_->SetBackdrop(look::ColourOf(look::Ground::Form));
}

}  // namespace tvx
