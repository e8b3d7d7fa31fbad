// One instrument of the panel: plate, bezel and glass, the same for all; what is behind the glass each kind
// draws.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <deque>
#include <vector>

#include "drawn/Device.h"
#include "drawn/widgets/Control.h"
#include "drawn/widgets/Needle.h"

namespace tvx::drawn {

// Drawn in three layers: a picture of what stands still, what moves, and a picture of what lies above that.
// The pictures are kept; only the part of the face in which something moved is painted again.
class InstrumentWidget : public QWidget {
  Q_OBJECT
 public:
  InstrumentWidget(Device& device, QString caption, QWidget* parent = nullptr);

  // Moves on by the time that has passed, and repaints what has changed to the eye.
  void Advance(double seconds);
  // What is behind the instrument, in its own pixels. Without it the corners stay transparent.
  void SetBackdrop(const QBrush& backdrop);
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

  // What stands still. It is drawn anew when the size, the lighting or DialVersion() changes.
  virtual void DrawDial(QPainter& painter) = 0;
  virtual int DialVersion() const { return 0; }
  // Makes textures, each time before the dial is drawn.
  virtual void Prepare(double /*pixelsPerUnit*/) {}
  // What moves: needles, flags, digits.
  virtual void DrawMoving(QPainter&) {}
  // What lies above the moving parts and stands still.
  virtual void DrawFront(QPainter&) {}
  // Moves needles on towards where they should be. `told`: something has come from the bus or the hand since
  // the last time. Returns the area, in drawing units, in which DrawMoving now draws otherwise; empty where
  // there is none.
  virtual QRectF Move(double seconds, bool told) = 0;
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

  // The whole face, and a dial's glass.
  QRectF Everything() const;
  static QRectF Glass() { return {-kGlass, -kGlass, 2 * kGlass, 2 * kGlass}; }
  QColor Ink() const;
  QColor Ink(const QColor& paint) const;
  // Text centred at a point, of a height in drawing units; smaller where it would be wider than `widest`.
  static void Text(QPainter& painter, QPointF at, double height, const QString& text, const QColor& colour,
                   bool bold = false, double widest = 0);

  void paintEvent(QPaintEvent*) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool event(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  // All that the kept pictures depend on.
  struct Look {
    QSize pixels;
    FaceLight light;
    int dial = 0;
    bool powered = false;
    DeviceFault fault = DeviceFault::None;
    std::vector<ControlLook> controls;
    bool operator==(const Look&) const = default;
  };
  Look LookNow() const;
  Control* ControlAt(QPointF position);
  QPointF Drawn(QPointF position) const;
  QRect PixelsOf(const QRectF& area) const;
  void Turn(Control& control, int clicks, Qt::KeyboardModifiers modifiers);
  double PixelsPerUnit() const;
  void SetScale(QPainter& painter) const;
  void RenewPictures();
  void DrawBack();
  void DrawAbove();
  void DrawFault(QPainter& painter) const;

  Device& device_;
  QString caption_;
  std::deque<Control> controls_;
  Control* held_ = nullptr;
  QPointF heldAt_;
  int dragged_ = 0;     // clicks, while held
  int wheelDelta_ = 0;  // of a wheel that turns by parts of a click
  QBrush backdrop_;
  QPixmap back_, above_;
  Look drawn_;
  std::uint64_t seenChanges_ = ~0ull;
};

}  // namespace tvx::drawn
