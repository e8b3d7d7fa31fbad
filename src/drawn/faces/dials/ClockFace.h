// Faces of the clocks: a round one with a hand for the seconds, and one with temperature and voltage.
#pragma once

#include "drawn/devices/ClockDevice.h"
#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

class ClockFace : public InstrumentWidget {
  Q_OBJECT
 public:
  ClockFace(ClockDevice& device, QWidget* parent);
  QString Words() const override;

 protected:
  void DrawDial(QPainter& painter) override;
  void DrawMoving(QPainter& painter) override;
  QRectF Move(double seconds, bool told) override;

 private:
  enum class Upper { Utc, Local };
  double HandAngle() const;
  QRectF HandArea() const;
  void DrawRound(QPainter& painter) const;
  void DrawTemperature(QPainter& painter) const;
  void Window(QPainter& painter, const QRectF& box, const QString& text) const;
  QString TimeText(bool withSeconds) const;

  ClockDevice& gauge_;
  Upper upper_ = Upper::Utc;
  int lower_ = 0;       // which of the values of the second window
  Needle second_{0.3};  // in tenths of a second
  QRectF hand_;         // where it was last
};

}  // namespace tvx::drawn
