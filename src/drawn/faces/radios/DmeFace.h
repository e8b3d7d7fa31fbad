// Faces of the DME indicators: distance, speed and time, and a selector.
#pragma once

#include "drawn/devices/DmeDevice.h"
#include "drawn/faces/radios/WideFace.h"

namespace tvx::drawn {

class DmeFace : public WideFace {
  Q_OBJECT
 public:
  DmeFace(DmeDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  int DialVersion() const override { return Position(); }
  QRectF Move(double seconds, bool told) override;

 private:
  int Position() const;  // of the selector
  DmeDevice& gauge_;
  Control* selector_;
};

}  // namespace tvx::drawn
