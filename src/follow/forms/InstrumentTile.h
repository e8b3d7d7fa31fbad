// One instrument of the drawn panel.
#pragma once

#include "config/Model.h"
#include "drawn/widgets/InstrumentWidget.h"
#include "follow/forms/CockpitTile.h"

namespace tvx {

class InstrumentTile : public CockpitTile {
  Q_OBJECT
 public:
  // Both outlive it.
  InstrumentTile(drawn::Device& device, const ConfigModel& model, const QString& caption);

  bool Holds(const Subject& subject) const override;
  QSize SizeFor(int dial) const override;
  void Advance(double seconds) override { face_->Advance(seconds); }

 protected:
  QString FaceWords() const override { return face_->Words(); }
  void resizeEvent(QResizeEvent* event) override;

 private:
  InstrumentTile(drawn::InstrumentWidget* face, const QString& caption);

  drawn::InstrumentWidget* face_;
};

}  // namespace tvx
