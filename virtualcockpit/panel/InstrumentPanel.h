// The panel that holds the instruments: large ones in the upper rows, small ones below, as large as the room
// allows.
#pragma once

#include <QWidget>
#include <vector>

#include "virtualcockpit/panel/InstrumentWidget.h"

namespace tvx::vc {

// How the instruments are set out: a block of large ones and a block of small ones, above or beside each
// other.
struct PanelPlan {
  double size = 0;  // of a large instrument, in pixels
  int largeColumns = 0, smallColumns = 0;
  bool beside = false;
};
// Of all plans the one with the largest instruments that fits into the room.
PanelPlan PlanPanel(int larges, int smalls, double width, double height);

class InstrumentPanel : public QWidget {
  Q_OBJECT
 public:
  explicit InstrumentPanel(QWidget* parent = nullptr);

  // The panel takes the instrument over.
  void Add(InstrumentWidget* instrument);
  const std::vector<InstrumentWidget*>& Instruments() const { return instruments_; }
  // Moves every instrument on.
  void Advance(double seconds);
  QSize sizeHint() const override { return {1040, 760}; }

 protected:
  void paintEvent(QPaintEvent*) override;
  void resizeEvent(QResizeEvent*) override { Arrange(); }

 private:
  void Arrange();
  void Place(const std::vector<InstrumentWidget*>& group, const QRectF& block, int columns, double size);

  std::vector<InstrumentWidget*> instruments_;
};

}  // namespace tvx::vc
