// The table of all gauges; a click or Enter opens one, and copied lines are those of the gauge list.
#pragma once

#include <QTreeWidget>
#include <functional>
#include <vector>

#include "config/Model.h"
#include "config/setup/GaugeAdvice.h"

namespace tvx {

class GaugeTable : public QTreeWidget {
 public:
  // A value that was chosen in a row: the Function or the Plate of a needle, 1 or 2.
  struct Edit {
    int gaugeID, needle;
    bool plate;
    int value;
  };
  GaugeTable(const char* name, const ConfigModel& model, const GaugeAdvice& advice);
  void SetOpened(std::function<void(int gaugeID)> opened) { opened_ = std::move(opened); }
  void SetTicked(std::function<void()> ticked) { ticked_ = std::move(ticked); }
  void SetEdited(std::function<void(const Edit&)> edited) { edited_ = std::move(edited); }
  // Fills it anew where something has changed; the chosen line and the ticks stay.
  void Fill();
  // The GaugeIDs that are ticked, rising.
  std::vector<int> Ticked() const;
  // The GaugeID of the chosen line, -1: none; and choosing one.
  int Current() const;
  void Choose(int gaugeID);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class Delegate;
  QStringList RowOf(const QString& line) const;
  void Open(const QTreeWidgetItem* item);
  void EditCell(const QModelIndex& index);
  void CopyChosen();
  void ColourStates();

  const ConfigModel& model_;
  const GaugeAdvice& advice_;
  std::function<void(int)> opened_;
  std::function<void()> ticked_;
  std::function<void(const Edit&)> edited_;
  QStringList lines_;  // as they are copied
  QList<QStringList> rows_;
};

}  // namespace tvx
