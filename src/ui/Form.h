// What every form of the program shares.
#pragma once

#include <QPointer>
#include <QPushButton>
#include <QWidget>

namespace tvx {

// A window with a given name. Enter presses the focused button, or else the default one; Escape and the
// window's close button do what the form says. A form never closes by itself: whoever made it unloads it.
class Form : public QWidget {
  Q_OBJECT
 public:
  explicit Form(const char* name, QWidget* parent = nullptr);

  // Takes the form away for good. Safe from within its own slots: it is hidden now and deleted by the event
  // loop.
  void Unload();
  bool Unloading() const { return unloading_; }
  // Shows it above all others, with the focus.
  void BringToFront();

 signals:
  void Ended();  // it was unloaded; it still exists, but is not shown any more

 protected:
  // The user wants the window closed.
  virtual void CloseAsked() = 0;
  virtual void EscapePressed() {}
  void SetDefaultButton(QPushButton* button) { defaultButton_ = button; }

  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPointer<QPushButton> defaultButton_;
  bool unloading_ = false;
};

}  // namespace tvx
