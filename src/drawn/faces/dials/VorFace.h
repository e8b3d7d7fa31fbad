// The VOR indicator's face: course card, deviation and glide path needles, flags.
#pragma once

#include "drawn/devices/VorDevice.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

class VorFace : public InstrumentWidget {
  Q_OBJECT
 public:
  VorFace(VorDevice& device, QWidget* parent);
  bool Large() const override { return true; }
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;
  int DialVersion() const override { return gauge_.KnobDegrees(); }

 private:
  static constexpr double kVisible = 1.5;  // needle steps
  void DrawFlags(QPainter& painter) const;

  VorDevice& gauge_;
  Needle course_{kVisible}, glide_{kVisible};
};

}  // namespace tvx::drawn
