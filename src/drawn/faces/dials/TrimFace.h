// The trim wheel's face: the wheel's rim seen from above, and the scale beside it.
#pragma once

#include "drawn/devices/TrimDevice.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

class TrimFace : public InstrumentWidget {
  Q_OBJECT
 public:
  TrimFace(TrimDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawCase(QPainter& painter) const override;
  void DrawGlass(QPainter&) const override {}
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  TrimDevice& gauge_;
  Needle position_;
};

}  // namespace tvx::drawn
