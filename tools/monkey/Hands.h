// A user's hands: mouse and keys as the window system brings them, so that modal windows and pop-ups stand in
// the way as they do for everybody.
#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <QWindow>

namespace tvx::monkey {

// Every event is handled before the call returns; what it sets off may wait for an answer, and other steps go
// on meanwhile. So each call says whether the action may go on: not when another step has begun since, nor
// when the widget has gone.
class Hands : public QObject {
 public:
  Hands();
  ~Hands() override;

  // A step begins. A mouse button that is held down stays down.
  void NextStep();
  // The widget on which a mouse button is held down; null when none is held, or the widget has gone.
  QWidget* HeldOn() const { return held_ == Qt::NoButton ? nullptr : heldOn_.data(); }
  bool LetGo() { return Release(heldOn_, heldAt_); }

  bool Press(const QPointer<QWidget>& on, QPoint at, Qt::MouseButton button = Qt::LeftButton);
  bool Move(const QPointer<QWidget>& on, QPoint at);
  bool Release(const QPointer<QWidget>& on, QPoint at);
  bool Click(const QPointer<QWidget>& on, QPoint at, Qt::MouseButton button = Qt::LeftButton);
  bool DoubleClick(const QPointer<QWidget>& on, QPoint at);
  bool Wheel(const QPointer<QWidget>& on, QPoint at, int steps);
  // To whatever has the focus in the widget's window.
  bool Key(const QPointer<QWidget>& in, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
           const QString& text = {});
  // Short texts key by key; long ones, and those of several lines, are pasted.
  bool Type(const QPointer<QWidget>& in, const QString& text);
  // As the button in the window's frame does.
  bool Close(const QPointer<QWidget>& window);

  // Whether a modal window keeps the window from its user.
  static bool Blocked(const QWidget& window);

 protected:
  // Looks which windows are told that they are blocked.
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  bool Mouse(const QPointer<QWidget>& on, QPoint at, Qt::MouseButton button, QEvent::Type type);
  bool GoesOn(const QPointer<QWidget>& on, unsigned step) const;

  unsigned step_ = 0;
  Qt::MouseButton held_ = Qt::NoButton;
  QPointer<QWidget> heldOn_;
  QPoint heldAt_;
};

}  // namespace tvx::monkey
