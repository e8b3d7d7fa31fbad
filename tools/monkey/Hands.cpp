#include "tools/monkey/Hands.h"

#include <QtTest/qtestkeyboard.h>
#include <QtTest/qtestmouse.h>

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QWheelEvent>

#include "tools/monkey/Journal.h"

namespace tvx::monkey {
namespace {

constexpr const char* kBlocked = "monkeyBlocked";
constexpr int kLongestTyped = 24;

QWindow* WindowOf(const QPointer<QWidget>& widget) {
  if (widget.isNull() || !widget->isVisible()) return nullptr;
  return widget->window()->windowHandle();
}

}  // namespace

Hands::Hands() {
  QCoreApplication::instance()->installEventFilter(this);
}

Hands::~Hands() = default;

bool Hands::eventFilter(QObject* object, QEvent* event) {
  const bool blocked = event->type() == QEvent::WindowBlocked;
  if ((blocked || event->type() == QEvent::WindowUnblocked) && object->isWindowType())
    object->setProperty(kBlocked, blocked);
  return false;
}

bool Hands::Blocked(const QWidget& window) {
  return window.windowHandle() == nullptr || window.windowHandle()->property(kBlocked).toBool();
}

void Hands::NextStep() {
  ++step_;
}

bool Hands::GoesOn(const QPointer<QWidget>& on, unsigned step) const {
  return step == step_ && WindowOf(on) != nullptr;
}

bool Hands::Mouse(const QPointer<QWidget>& on, QPoint at, Qt::MouseButton button, QEvent::Type type) {
  QWindow* window = WindowOf(on);
  if (window == nullptr) return false;
  const unsigned step = step_;
  const QPoint local = on->mapTo(on->window(), at);
  const Qt::MouseButtons down =
      type == QEvent::MouseButtonRelease ? Qt::MouseButtons() : held_ | Qt::NoButton;
  qt_handleMouseEvent(window, local, window->mapToGlobal(local), down, button, type, Qt::NoModifier,
                      static_cast<int>(OwnMs()));
  return GoesOn(on, step);
}

bool Hands::Press(const QPointer<QWidget>& on, QPoint at, Qt::MouseButton button) {
  LetGo();
  held_ = button;
  heldOn_ = on;
  heldAt_ = at;
  return Mouse(on, at, button, QEvent::MouseButtonPress);
}

bool Hands::Move(const QPointer<QWidget>& on, QPoint at) {
  return Mouse(on, at, Qt::NoButton, QEvent::MouseMove);
}

bool Hands::Release(const QPointer<QWidget>& on, QPoint at) {
  if (held_ == Qt::NoButton) return false;
  const Qt::MouseButton button = std::exchange(held_, Qt::NoButton);
  return Mouse(on, at, button, QEvent::MouseButtonRelease);
}

bool Hands::Click(const QPointer<QWidget>& on, QPoint at, Qt::MouseButton button) {
  return Press(on, at, button) && Release(on, at);
}

bool Hands::DoubleClick(const QPointer<QWidget>& on, QPoint at) {
  return Click(on, at) && Click(on, at);
}

bool Hands::Wheel(const QPointer<QWidget>& on, QPoint at, int steps) {
  if (WindowOf(on) == nullptr || Blocked(*on->window())) return false;
  const unsigned step = step_;
  QWheelEvent event(at, on->mapToGlobal(at), {}, {0, 120 * steps}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(on, &event);
  return GoesOn(on, step);
}

bool Hands::Key(const QPointer<QWidget>& in, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  const unsigned step = step_;
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QWindow* window = WindowOf(in);
    if (window == nullptr) return false;
    qt_handleKeyEvent(window, type, key, modifiers, text);
    if (!GoesOn(in, step)) return false;
  }
  return true;
}

bool Hands::Type(const QPointer<QWidget>& in, const QString& text) {
  if (text.size() > kLongestTyped || text.contains('\n')) {
    QApplication::clipboard()->setText(text);
    return Key(in, Qt::Key_V, Qt::ControlModifier);
  }
  for (const QChar letter : text) {
    const int key =
        letter.isLetter() && letter.unicode() < 128 ? letter.toUpper().unicode() : letter.unicode();
    if (!Key(in, key, Qt::NoModifier, letter)) return false;
  }
  return WindowOf(in) != nullptr;
}

bool Hands::Close(const QPointer<QWidget>& window) {
  QWindow* frame = WindowOf(window);
  if (frame == nullptr || Blocked(*window)) return false;
  const unsigned step = step_;
  QCloseEvent event;
  QCoreApplication::sendEvent(frame, &event);
  return GoesOn(window, step);
}

}  // namespace tvx::monkey
