// Knobs and buttons of a face: where they are, what they do, how they look.
#pragma once

#include <QPainter>
#include <QString>
#include <functional>

namespace tvx::vc {

struct Control {
  enum class Look {
    Knob,    // turns, round
    Ring,    // turns; the outer one of two concentric knobs
    Button,  // pressed
    Hidden,  // drawn by the face itself
  };
  Look look = Look::Hidden;
  QRectF area;  // drawing units
  QString label, tip;
  std::function<void(int)> turn;  // clicks, right positive
  std::function<void()> press;
  std::function<bool()> lit;  // the lamp of a button; none where it is empty
  double angle = 0;           // degrees by which a knob has been turned, for the eye

  bool Contains(QPointF at) const;
};

// Draws the control; `held` while the mouse has it, `powered` lets its lamp glow.
void DrawControl(QPainter& painter, const Control& control, bool held, bool powered, const QColor& ink);

}  // namespace tvx::vc
