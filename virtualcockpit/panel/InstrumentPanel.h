// The panel that holds the instruments: large ones in the upper rows, small ones below, as large as the room
// allows.
#pragma once

#include <QWidget>
#include <vector>

#include "virtualcockpit/panel/InstrumentWidget.h"

namespace tvx::vc {

// How many rows of equal squares a number of instruments takes in a width, and how many stand in each.
struct PanelRows {
  int rows = 0;
  int perRow = 0;
};
PanelRows RowsFor(int count, double size, double width);

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
  double Place(const std::vector<InstrumentWidget*>& group, double size, double top);

  std::vector<InstrumentWidget*> instruments_;
};

}  // namespace tvx::vc
