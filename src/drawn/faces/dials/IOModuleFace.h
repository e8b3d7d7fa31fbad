// The face of an IO module on the gauge bus: its lamps, its number, its analogue inputs.
#pragma once

#include "config/Model.h"
#include "drawn/devices/IOModuleDevice.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

class IOModuleFace : public InstrumentWidget {
  Q_OBJECT
 public:
  IOModuleFace(IOModuleDevice& device, const ConfigModel& model, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  IOModuleDevice& gauge_;
  std::array<Control*, IOModuleDevice::kAnalogues> knobs_{};
  QString legend1_, legend2_;
};

}  // namespace tvx::drawn
