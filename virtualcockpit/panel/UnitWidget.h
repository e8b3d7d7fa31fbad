// A drawn IO module or engine cluster, to be used with the mouse: what they have in common.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <utility>

#include "config/Model.h"
#include "virtualcockpit/lines/UnitLine.h"

namespace tvx::vc {

// A plate with a name, a fault by the menu, and unplugging. What stands still is kept as a picture; only what
// has changed is painted again.
class UnitWidget : public QWidget {
  Q_OBJECT
 public:
  UnitWidget(UnitLine& line, QString caption, QWidget* parent);
  // Repaints what has changed to the eye.
  void Advance();

 protected:
  static constexpr int kHead = 22;  // the height of the name's line
  // What stands still; drawn anew when the size, the name's line or BackVersion() changes.
  virtual void DrawBack(QPainter&) {}
  virtual int BackVersion() const { return 0; }
  // What changes, as far as it lies within the rectangle.
  virtual void Draw(QPainter& painter, const QRectF& within) = 0;
  // Where Draw now draws otherwise than the last time; pixels.
  virtual QRegion TakeChanges() = 0;
  // What hangs on an input or output, from its Function; empty for no Function.
  static QString NameOf(const ConfigModel& model, int function);

  // Keeps the value; true when it is another one.
  template <typename Value>
  static bool Renew(Value& shown, Value now) {
    return std::exchange(shown, now) != now;
  }

  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  struct Look {
    QSize pixels;
    bool plugged = false;
    DeviceFault fault = DeviceFault::None;
    int version = 0;
    bool operator==(const Look&) const = default;
  };
  Look LookNow() const;
  void RenewPicture();

  UnitLine& line_;
  QString caption_;
  QPixmap back_;
  Look drawn_;
};

}  // namespace tvx::vc
