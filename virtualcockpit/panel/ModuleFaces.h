// Faces of the instruments that are no dials: the IO module with its lamps, and kinds that have no face of
// their own.
#pragma once

#include "config/Model.h"
#include "virtualcockpit/devices/IoModuleDevice.h"
#include "virtualcockpit/devices/PlainDevice.h"
#include "virtualcockpit/panel/InstrumentWidget.h"

namespace tvx::vc {

class IoModuleFace : public InstrumentWidget {
  Q_OBJECT
 public:
  IoModuleFace(IoModuleDevice& device, const ConfigModel& model, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  bool Move(double) override { return false; }

 private:
  IoModuleDevice& gauge_;
  std::array<Control*, IoModuleDevice::kAnalogues> knobs_{};
  QString legend1_, legend2_;
};

class PlainFace : public InstrumentWidget {
  Q_OBJECT
 public:
  PlainFace(PlainDevice& device, QWidget* parent);

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  bool Move(double) override { return false; }

 private:
  PlainDevice& gauge_;
};

}  // namespace tvx::vc
