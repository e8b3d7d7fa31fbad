// The drawn yoke: its wheel, the forces of its motors, and the pedals that belong to it.
#pragma once

#include "drawn/faces/units/UnitFace.h"
#include "drawn/units/YokeState.h"

namespace tvx::drawn {

class YokeFace : public UnitFace {
  Q_OBJECT
 public:
  YokeFace(int number, QWidget* parent);
  // Repaints it where it stands otherwise than before.
  void Show(const YokeState& now);
  QString Words() const override;
  // The force's bar of an axis: 0 roll, 1 pitch.
  int PartAt(const QPointF& at) const override;

 protected:
  void Draw(QPainter& painter, const QRegion& within) override;

 private:
  // The room that the wheel has, and a bar for each axis's force.
  QRectF Room() const;
  QRectF BarOf(std::size_t axis) const;
  void DrawWheel(QPainter& painter) const;
  void DrawButtons(QPainter& painter) const;
  void DrawForce(QPainter& painter, std::size_t axis) const;
  void DrawPedals(QPainter& painter) const;

  YokeState shown_;
};

}  // namespace tvx::drawn
