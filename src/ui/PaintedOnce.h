// A drawn widget most of which never moves: that part is painted into a picture once, and what moves over it.
#pragma once

#include <QPixmap>
#include <QWidget>

#include "ui/Look.h"

namespace tvx {

class PaintedOnce : public QWidget {
 protected:
  // `ground`: what the widget stands on. Where it is known, nothing below the widget is painted with it.
  explicit PaintedOnce(look::Ground ground);

  // Paints what does not move, over the whole widget. Called when the size, the screen's scale or the colours
  // have changed, and after PaintStillAgain.
  virtual void PaintStill(QPainter& painter) const = 0;
  // Paints what moves. Only what was marked with update() is painted.
  virtual void PaintMoving(QPainter& painter) const = 0;
  void PaintStillAgain();

  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void PaintPicture();

  look::Ground ground_;
  QPixmap picture_;
};

}  // namespace tvx
