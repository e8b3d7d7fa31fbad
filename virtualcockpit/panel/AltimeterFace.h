// The altimeter's face: one pointer, a turn to a thousand feet, drum digits, and the pressure window.
#pragma once

#include "virtualcockpit/devices/AltimeterDevice.h"
#include "virtualcockpit/panel/InstrumentWidget.h"

namespace tvx::vc {

class AltimeterFace : public InstrumentWidget {
  Q_OBJECT
 public:
  AltimeterFace(AltimeterDevice& device, QWidget* parent);
  bool Large() const override { return true; }
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  bool Move(double seconds) override;

 private:
  void DrawDrums(QPainter& painter) const;
  void DrawPressure(QPainter& painter) const;

  AltimeterDevice& gauge_;
  Needle feet_;
};

}  // namespace tvx::vc
