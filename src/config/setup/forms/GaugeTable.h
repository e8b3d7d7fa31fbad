// The table of all gauges; a click or Enter opens one, and copied lines are those of the gauge list.
#pragma once

#include <QTreeWidget>
#include <functional>

#include "config/Model.h"

namespace tvx {

class GaugeTable : public QTreeWidget {
 public:
  explicit GaugeTable(const char* name);
  void SetOpened(std::function<void(int gaugeID)> opened) { opened_ = std::move(opened); }
  // Fills it anew where something has changed; the chosen line stays chosen.
  void Fill(const ConfigModel& model);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Open(const QTreeWidgetItem* item);
  void CopyChosen();
  void ColourStates();

  std::function<void(int)> opened_;
  QStringList lines_;
};

}  // namespace tvx
