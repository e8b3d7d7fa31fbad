// Faces of the transponders: the code, the mode, and on 122 the flight level and eight keys.
#pragma once

#include "drawn/devices/TransponderDevice.h"
#include "drawn/faces/radios/WideFace.h"

namespace tvx::drawn {

class TransponderFace : public WideFace {
  Q_OBJECT
 public:
  TransponderFace(TransponderDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  int DialVersion() const override { return static_cast<int>(gauge_.Knob()); }
  QRectF Move(double seconds, bool told) override;

 private:
  void AddKeys();
  void AddDigitKnobs();
  QString CodeText() const;

  TransponderDevice& gauge_;
  Control* modeKnob_;
  double identGlow_ = 0;  // s that the reply lamp still glows
};

}  // namespace tvx::drawn
