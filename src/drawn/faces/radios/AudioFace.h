// The audio panel's face: selector buttons with their lamps, marker lamps, volume.
#pragma once

#include "drawn/devices/AudioDevice.h"
#include "drawn/faces/radios/WideFace.h"

namespace tvx::drawn {

class AudioFace : public WideFace {
  Q_OBJECT
 public:
  AudioFace(AudioDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  AudioDevice& gauge_;
  Control* volume_;
};

}  // namespace tvx::drawn
