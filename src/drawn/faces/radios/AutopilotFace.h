// The autopilot panel's face: mode buttons with their lamps, altitude preselect, vertical speed, trim.
#pragma once

#include "drawn/devices/AutopilotDevice.h"
#include "drawn/faces/radios/WideFace.h"

namespace tvx::drawn {

class AutopilotFace : public WideFace {
  Q_OBJECT
 public:
  AutopilotFace(AutopilotDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;

 private:
  void DrawTrim(QPainter& painter) const;
  AutopilotDevice& gauge_;
};

}  // namespace tvx::drawn
