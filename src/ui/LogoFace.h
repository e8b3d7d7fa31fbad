// The program's picture: an instrument face with a needle. It can be clicked.
#pragma once

#include <QAbstractButton>

namespace tvx {

class LogoFace : public QAbstractButton {
 public:
  explicit LogoFace(const char* name, QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// The same picture for the window's corner and the task list.
QIcon ProgramIcon();

}  // namespace tvx
