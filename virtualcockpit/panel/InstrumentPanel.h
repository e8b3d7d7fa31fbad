// The panel that holds the instruments: large dials, small dials, and the radio stack, as large as the room
// allows.
#pragma once

#include <QScrollArea>
#include <QWidget>
#include <vector>

#include "drawn/widgets/InstrumentWidget.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/panel/PanelPlan.h"

namespace tvx::vc {

class InstrumentPanel : public QWidget {
  Q_OBJECT
 public:
  explicit InstrumentPanel(QWidget* parent = nullptr);

  // The panel takes the instrument over.
  void Add(InstrumentWidget* instrument);
  const std::vector<InstrumentWidget*>& Instruments() const { return instruments_; }
  // Moves every instrument on.
  void Advance(double seconds);
  // How high the panel has to be in that room for its instruments to be read; `height` where that is enough.
  int HeightFor(int width, int height) const;
  QSize sizeHint() const override { return {1040, 760}; }

 protected:
  void paintEvent(QPaintEvent*) override;
  void resizeEvent(QResizeEvent*) override { Arrange(); }

 private:
  using Group = std::vector<InstrumentWidget*>;
  Group GroupOf(bool large, bool wide) const;
  StackPlan Plan(double width, double height) const;
  // The panel's own colour as seen from `from` pixels below its top.
  QBrush Metal(int from) const;
  void Arrange();
  void ArrangeRounds(const PanelPlan& plan, const QRectF& room);
  void ArrangeStack(const StackPlan& plan, const QRectF& room);
  void Place(const Group& group, const QRectF& block, int columns, double size);

  Group instruments_;
};

// Shows the panel in the room there is, and scrolls where it would be too small to be read.
class PanelScroll : public QScrollArea {
  Q_OBJECT
 public:
  PanelScroll(InstrumentPanel* panel, QWidget* parent);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  InstrumentPanel* panel_;
};

}  // namespace tvx::vc
