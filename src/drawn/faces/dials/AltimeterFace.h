// The altimeter's face: one pointer, a turn to a thousand feet, drum digits, and the pressure window.
#pragma once

#include "drawn/devices/AltimeterDevice.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

class AltimeterFace : public InstrumentWidget {
  Q_OBJECT
 public:
  AltimeterFace(AltimeterDevice& device, QWidget* parent);
  bool Large() const override { return true; }
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  void DrawFront(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  double HandAngle() const;
  QRectF HandArea() const;
  void DrawDrums(QPainter& painter) const;
  void DrawPressure(QPainter& painter) const;

  AltimeterDevice& gauge_;
  Needle feet_;
  QRectF hand_;  // where it was last
};

}  // namespace tvx::drawn
