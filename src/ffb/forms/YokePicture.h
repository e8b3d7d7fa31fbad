// A yoke's position, drawn: a cross in the field of its travel.
#pragma once

#include <QPointF>

#include "ui/PaintedOnce.h"

namespace tvx {

class YokePicture : public PaintedOnce {
 public:
  explicit YokePicture(const char* name);
  // Shares of the travel, -1..1, right and back positive; `where` it is, `rests` where its forces drive it.
  void SetPosition(QPointF where, QPointF rests, bool live);
  // Raw positions of both axes, and the three calibrated ones of each, all 0..1 of the raw range.
  struct Raw {
    double now = 0.5, low = 0.5, centre = 0.5, high = 0.5;
    bool operator==(const Raw&) const = default;
  };
  void SetRaw(const Raw& roll, const Raw& pitch);
  QSize sizeHint() const override;

 protected:
  void PaintStill(QPainter& painter) const override;
  void PaintMoving(QPainter& painter) const override;

 private:
  QRectF Field() const;
  void DrawRuler(QPainter& painter, const QRectF& field, const Raw& raw, bool upright) const;

  QPointF where_, rests_;
  bool live_ = false;
  bool rulers_ = false;
  Raw roll_, pitch_;
};

}  // namespace tvx
