// A unit of the radio stack: a wide plate with screws, windows with luminous digits, knobs and buttons.
#pragma once

#include "drawn/widgets/InstrumentWidget.h"

namespace tvx::drawn {

class WideFace : public InstrumentWidget {
  Q_OBJECT
 public:
  static constexpr double kWidth = 500;
  WideFace(Device& device, const QString& caption, double height, QWidget* parent)
      : InstrumentWidget(device, caption, parent), height_(height) {}
  QSizeF Extent() const override { return {kWidth, height_}; }

 protected:
  void DrawCase(QPainter& painter) const override;
  void DrawGlass(QPainter& painter) const override;
  QRectF Move(double seconds, bool told) override;

  // A dark window in the plate.
  static void DrawWindow(QPainter& painter, const QRectF& box);
  // Digits in a window; dark while the instrument has no power.
  void Digits(QPainter& painter, const QRectF& box, const QString& text, const QColor& colour,
              Qt::Alignment align = Qt::AlignRight) const;
  // A word that glows in a window, when it is on.
  void Annunciate(QPainter& painter, QPointF at, double height, const QString& text, const QColor& colour,
                  bool on = true) const;
  // A word printed on the plate.
  void Label(QPainter& painter, QPointF at, const QString& text, double height = 10) const;
  // A luminous colour at the brightness of the lighting.
  QColor Glow(const QColor& colour) const;
  // The positions of a selector round its knob; the chosen one is brighter.
  void DrawSelector(QPainter& painter, QPointF at, double radius, const QStringList& positions,
                    int chosen) const;
  // Where a selector's line points, degrees from the top.
  static double SelectorAngle(int count, int position);

 private:
  double height_;
};

}  // namespace tvx::drawn
