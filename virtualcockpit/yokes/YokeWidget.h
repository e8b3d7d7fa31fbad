// A yoke, drawn: it is dragged with the mouse and shows the forces that it gives.
#pragma once

#include "drawn/faces/units/YokeFace.h"
#include "virtualcockpit/yokes/YokeDevice.h"

namespace tvx::vc {

// How the device stands, as it can be drawn.
drawn::YokeState StateOf(const YokeDevice& device);

// Hold the left button and drag: sideways turns the wheel, up and down pushes and pulls the column. With the
// right button both stay where they are put. The keys 1 to 8 are the buttons of the yoke while they are held.
class YokeWidget : public drawn::YokeFace {
  Q_OBJECT
 public:
  YokeWidget(YokeDevice& device, int number, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {360, 300}; }
  // Repaints what has changed to the eye.
  void Advance() { Show(StateOf(device_)); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  void GripAt(QPointF point);
  bool Button(class QKeyEvent* event, bool down);

  YokeDevice& device_;
  QPointF from_;
  double fromRoll_ = 0, fromPitch_ = 0;
};

}  // namespace tvx::vc
