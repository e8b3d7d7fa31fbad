// One instrument of the panel: plate, bezel and glass, the same for all; what is behind the glass each kind
// draws.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <deque>
#include <optional>

#include "virtualcockpit/bus/Device.h"
#include "virtualcockpit/panel/Control.h"

namespace tvx::vc {

class InstrumentWidget : public QWidget {
  Q_OBJECT
 public:
  InstrumentWidget(Device& device, QString caption, QWidget* parent = nullptr);

  // Moves on by the time that has passed and repaints if something is to be seen of it.
  void Advance(double seconds);
  virtual bool Large() const { return false; }
  // What it is drawn in: 200 units square, or a unit of the radio stack.
  virtual QSizeF Extent() const { return {200, 200}; }
  bool Wide() const { return Extent().width() > Extent().height() * 1.5; }
  const std::deque<Control>& Controls() const { return controls_; }
  Device& Gauge() { return device_; }
  const Device& Gauge() const { return device_; }
  const QString& Caption() const { return caption_; }
  // What it shows, in a few words, for the console.
  virtual QString Words() const { return {}; }

 protected:
  // Drawing goes on round the middle of the extent; a dial's glass is a circle of radius kGlass.
  static constexpr double kGlass = 84;

  // What moves seldom, kept as a picture until the size, the lighting or DialVersion() changes.
  virtual void DrawDial(QPainter& painter) = 0;
  // What moves: needles, flags, digits.
  virtual void DrawMoving(QPainter&) {}
  // Moves needles on towards where they should be; true when that is to be seen.
  virtual bool Move(double seconds) = 0;
  virtual int DialVersion() const { return 0; }
  // The case round the dial and the glass over it.
  virtual void DrawCase(QPainter& painter) const;
  virtual void DrawGlass(QPainter& painter) const;

  // Controls are made by the constructor; of two that overlap the later one is on top. The wheel turns the
  // first one wherever it is turned over a round face.
  Control& AddKnob(QPointF at, double radius, const QString& label, const QString& tip,
                   std::function<void(int)> turn);
  Control& AddRing(QPointF at, double radius, const QString& tip, std::function<void(int)> turn);
  Control& AddButton(const QRectF& area, const QString& label, const QString& tip,
                     std::function<void()> press, std::function<bool()> lit = {});
  // A place of the face's own drawing that turns.
  Control& AddWheelArea(const QRectF& area, const QString& tip, std::function<void(int)> turn);

  // A place on a round dial, clockwise from the top.
  static QPointF OnDial(double degrees, double radius);
  QColor Ink() const;
  QColor Ink(const QColor& paint) const;
  // Text centred at a point, of a height in drawing units; smaller where it would be wider than `widest`.
  void Text(QPainter& painter, QPointF at, double height, const QString& text, const QColor& colour,
            bool bold = false, double widest = 0) const;

  void paintEvent(QPaintEvent*) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool event(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  Control* ControlAt(QPointF position);
  QPointF Drawn(QPointF position) const;
  void Turn(Control& control, int clicks, Qt::KeyboardModifiers modifiers);
  double PixelsPerUnit() const;
  void DrawFault(QPainter& painter) const;
  QPixmap EmptyPicture() const;
  void SetScale(QPainter& painter) const;
  void RenewPicture();

  Device& device_;
  QString caption_;
  std::deque<Control> controls_;
  Control* held_ = nullptr;
  QPointF heldAt_;
  int dragged_ = 0;     // clicks, while held
  int wheelDelta_ = 0;  // of a wheel that turns by parts of a click
  QPixmap picture_;     // case and dial
  QPixmap glass_;
  std::uint64_t seenChanges_ = ~0ull;
  FaceLight pictureLight_;
  int pictureVersion_ = -1;
};

// A value that follows another like a needle with some mass: half the way in about a tenth of a second.
class Needle {
 public:
  // Goes on towards `target`; `turn` above 0 lets it take the short way round a circle of that size. True
  // when it moved by more than can be overlooked.
  bool Follow(double target, double seconds, double turn = 0);
  double At() const { return at_; }
  void Jump(double to) {
    at_ = to;
    placed_ = true;
  }

 private:
  double at_ = 0;
  bool placed_ = false;
};

}  // namespace tvx::vc
