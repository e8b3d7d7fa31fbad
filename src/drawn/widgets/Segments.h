// Digits of seven segments, as displays have them.
#pragma once

#include <QPainter>
#include <QString>

namespace tvx::drawn {

// Draws digits, '-', ' ', '.' and ':' as high as the box; a point takes little place. Text that would
// be wider than the box is drawn narrower. Segments that do not glow are drawn in `ghost` where it is not
// transparent.
void DrawSegments(QPainter& painter, const QRectF& box, const QString& text, const QColor& colour,
                  const QColor& ghost = Qt::transparent, Qt::Alignment align = Qt::AlignRight);

}  // namespace tvx::drawn
