// A drawn IO module, engine cluster or yoke: what they have in common.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <utility>

namespace tvx::drawn {

// A plate with a name. What stands still is kept as a picture; only what has changed is painted again.
class UnitFace : public QWidget {
  Q_OBJECT
 public:
  // It is drawn in `natural` pixels, larger or smaller as the room is.
  UnitFace(QString caption, const QSize& natural, QWidget* parent);

  QSize sizeHint() const override { return natural_; }
  // What is wrong with it, said beside its name; empty where all is well.
  void SetTrouble(const QString& words);
  const QString& Caption() const { return caption_; }
  // What it shows, in a few words.
  virtual QString Words() const = 0;
  // The part at a place in its own pixels, by the number that each kind says; -1: none.
  virtual int PartAt(const QPointF&) const { return -1; }
  // What is to be said of that part; empty where there is none.
  virtual QString TipAt(const QPointF&) const { return {}; }

 protected:
  // How much larger than natural it is drawn, and the height of the name's line.
  double Scale() const;
  double Head() const;
  // What stands still; drawn anew when the size changes, and after RenewBack().
  virtual void DrawBack(QPainter&) {}
  void RenewBack();
  // What changes, as far as it touches the region; each part once, since edges are blended.
  virtual void Draw(QPainter& painter, const QRegion& within) = 0;

  // Keeps the value; true when it is another one.
  template <typename Value>
  static bool Renew(Value& shown, Value now) {
    return std::exchange(shown, now) != now;
  }

  void paintEvent(QPaintEvent* event) override;

 private:
  void RenewPicture();

  QString caption_, trouble_;
  QSize natural_;
  QPixmap back_;
  bool stale_ = true;  // the picture
};

}  // namespace tvx::drawn
