// The gauge bus's own health on the status form: what the line carries, and each instrument that is asked.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QTreeWidget>

#include "core/StatusPresenter.h"

namespace tvx {

class BusHealthPanel : public QFrame {
  Q_OBJECT
 public:
  BusHealthPanel();
  void Show(const StatusView& view);

 private:
  QLabel* LabelBusLoad;
  QTreeWidget* ListBusHealth;
  std::vector<AskedGauge> shown_;
};

}  // namespace tvx
