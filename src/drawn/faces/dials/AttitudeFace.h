// The attitude indicator's face: a ball of sky and ground, a ring with the bank scale, the aircraft.
#pragma once

#include "drawn/devices/DiscDevices.h"
#include "drawn/widgets/InstrumentWidget.h"
#include "drawn/widgets/Texture.h"

namespace tvx::drawn {

class AttitudeFace : public InstrumentWidget {
  Q_OBJECT
 public:
  AttitudeFace(AttitudeDevice& device, QWidget* parent);
  bool Large() const override { return true; }
  QString Words() const override;

 protected:
  void DrawDial(QPainter&) override {}
  void Prepare(double pixelsPerUnit) override;
  void DrawMoving(QPainter& painter) override;
  void DrawFront(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  void DrawBall(QPainter& painter) const;
  void DrawRing(QPainter& painter) const;
  // A colour of the ball, by day and by the lighting.
  QColor Painted(const QColor& colour) const;

  AttitudeDevice& gauge_;
  Needle pitch_, bank_;
  Texture ball_, ring_;
};

}  // namespace tvx::drawn
