// Knobs and buttons of a face: where they are, what they do, how they look.
#pragma once

#include <QPainter>
#include <QString>
#include <functional>

namespace tvx::drawn {

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
  std::function<bool()> lit;  // the lamp of a button; empty where it has no lamp
  double angle = 0;           // degrees by which a knob has been turned, for the eye

  bool Contains(QPointF at) const;
};

// What is to be seen of a control.
struct ControlLook {
  double angle = 0;
  bool held = false, lit = false;
  bool operator==(const ControlLook&) const = default;
};
// `held`: the mouse has it.
ControlLook LookOf(const Control& control, bool held);
// `powered` lets its lamp glow.
void DrawControl(QPainter& painter, const Control& control, const ControlLook& look, bool powered,
                 const QColor& ink);

}  // namespace tvx::drawn
