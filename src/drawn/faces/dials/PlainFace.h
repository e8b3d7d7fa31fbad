// The face of an instrument that has none of its own: the last value of each command.
#pragma once

#include "drawn/PlainDevice.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

class PlainFace : public InstrumentWidget {
  Q_OBJECT
 public:
  // `device` may be of any kind; values are shown of a PlainDevice only.
  PlainFace(Device& device, QWidget* parent);

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  const PlainDevice* values_;  // nullptr for another kind
};

}  // namespace tvx::drawn
