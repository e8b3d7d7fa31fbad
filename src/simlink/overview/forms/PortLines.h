// The lines of the port list, for a view that shows them live.
#pragma once

#include <QAbstractTableModel>

#include "simlink/overview/PortOverview.h"

namespace tvx {

class PortLines : public QAbstractTableModel {
  Q_OBJECT
 public:
  PortLines(const ConfigModel& model, const SimCom& sim, QObject* parent)
      : QAbstractTableModel(parent), overview_(model, sim) {}

  const PortOverview& Overview() const { return overview_; }
  // The ports that are chosen stay chosen, wherever their lines move.
  void Refresh();
  void Search(const QString& words);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  template <typename Change>
  void Rearrange(Change change);

  PortOverview overview_;
};

}  // namespace tvx
