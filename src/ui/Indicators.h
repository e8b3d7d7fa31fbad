// Small drawn things of the hardware's status forms.
#pragma once

#include <QColor>
#include <QWidget>

#include "ui/PaintedOnce.h"

namespace tvx {

// The colours of a switch indicator, as red + 256 green + 65536 blue.
inline constexpr int kSwitchOnColour = 255;
inline constexpr int kSwitchOffColour = 65280;
// Of a lamp.
inline constexpr int kLampOnColour = 0x00A5FF;

// A cell with a short text and a colour; without a colour while its state is not known.
class Indicator : public QWidget {
 public:
  Indicator(const QString& name, const QString& text);
  // As red + 256 green + 65536 blue; -1: the state is not known. Where it is `on`, a bar below the text says
  // so without the colour.
  void SetColour(int colour, bool on = false);
  int Colour() const { return colour_; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;  // its text can be read

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
  int colour_ = -1;
  bool on_ = false;
};

// A round face, directly on a form, with one needle that stands where the instrument's needle was sent.
class NeedleDial : public PaintedOnce {
 public:
  explicit NeedleDial(const QString& name);
  // 0..1079, three to a degree, clockwise from the lower left; a dial that is not lit is drawn dim.
  void SetPosition(int position, bool enabled);
  int Position() const { return position_; }
  QSize sizeHint() const override;

 protected:
  void PaintStill(QPainter& painter) const override;
  void PaintMoving(QPainter& painter) const override;

 private:
  double Diameter() const;
  QPointF Place(double position, double share) const;
  QRect NeedleArea() const;
  bool IsSeen(int move) const;

  int position_ = 0;
  int painted_ = 0;  // differs by less than one can see
  bool enabled_ = false;
};

}  // namespace tvx
