// A label for a number that changes many times a second. Shaping and blending a text is most of what showing
// it costs, so each character is painted once, with the ground that it stands on, and copied from then on.
#pragma once

#include <QHash>
#include <QLabel>
#include <QPixmap>

#include "ui/Look.h"

namespace tvx {

class ReadingLabel : public QLabel {
 public:
  // `ground`: what the label stands on; nothing below the label is painted with it.
  explicit ReadingLabel(look::Ground ground);

  // What `text` takes in the label's font.
  QSize SizeOf(const QString& text) const;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  const QPixmap& Cell(QChar character);

  look::Ground ground_;
  QHash<QChar, QPixmap> cells_;  // in the present font, colours and scale
};

}  // namespace tvx
