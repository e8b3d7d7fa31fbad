// A part of a face that turns or slides: drawn once, in fine pixels, and then painted wherever it stands.
#pragma once

#include <QBrush>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <algorithm>
#include <functional>

namespace tvx::drawn {

class Texture {
 public:
  // Draws it anew. `area` is what it covers, in drawing units; `pixelsPerUnit` how large it is shown.
  void Renew(const QRectF& area, double pixelsPerUnit, const std::function<void(QPainter&)>& draw) {
    const double largest = std::max(area.width(), area.height());
    const double fine = std::clamp(kFineness * pixelsPerUnit, 0.1, kMostPixels / largest);
    QPixmap pixels((area.size() * fine).toSize().expandedTo({1, 1}));
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(fine, fine);
    painter.translate(-area.topLeft());
    draw(painter);
    painter.end();
    brush_ = QBrush(pixels);
    brush_.setTransform(QTransform::fromTranslate(area.left(), area.top()).scale(1 / fine, 1 / fine));
  }
  // Paints the part of it that lies within the shape, as the painter's coordinates stand.
  void Paint(QPainter& painter, const QPainterPath& shape) const {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.fillPath(shape, brush_);
  }

 private:
  static constexpr double kFineness = 2;       // pixels for one of the screen: turned, it stays sharp
  static constexpr double kMostPixels = 2048;  // in either direction
  QBrush brush_;
};

// A circle round the middle.
inline QPainterPath Circle(double radius) {
  QPainterPath path;
  path.addEllipse(QPointF(0, 0), radius, radius);
  return path;
}

// What lies between two circles round the middle.
inline QPainterPath Ring(double outer, double inner) {
  QPainterPath path = Circle(outer);
  path.addPath(Circle(inner));
  path.setFillRule(Qt::OddEvenFill);
  return path;
}

}  // namespace tvx::drawn
