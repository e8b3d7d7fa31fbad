#include "ui/search/SearchLine.h"

#include <QListView>
#include <QTreeView>

namespace tvx {

SearchLine::SearchLine(const char* name, const QString& toolTip, QAbstractItemView* list) : list_(list) {
  setObjectName(QString::fromLatin1(name));
  setPlaceholderText(tr("Number or part of the name"));
  setToolTip(toolTip);
  setAccessibleName(tr("Search"));
  setClearButtonEnabled(true);
  connect(this, &QLineEdit::textChanged, this, [this] { ShowRows(0, list_->model()->rowCount() - 1); });
  connect(this, &QLineEdit::returnPressed, this, &SearchLine::GoToFirst);
  // The rows may be made anew while something stands here.
  connect(list->model(), &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex&, int first, int last) { ShowRows(first, last); });
  connect(list->model(), &QAbstractItemModel::dataChanged, this,
          [this](const QModelIndex& first, const QModelIndex& last) { ShowRows(first.row(), last.row()); });
}

bool SearchLine::Holds(int row) const {
  const QAbstractItemModel& model = *list_->model();
  const QString typed = text().trimmed();
  for (int column = 0; column < model.columnCount(); ++column) {
    if (model.index(row, column).data().toString().contains(typed, Qt::CaseInsensitive)) return true;
  }
  return false;
}

void SearchLine::ShowRows(int first, int last) {
  auto* tree = qobject_cast<QTreeView*>(list_);
  auto* list = qobject_cast<QListView*>(list_);
  for (int row = first; row <= last; ++row) {
    const bool ticked = list_->model()->index(row, 0).data(Qt::CheckStateRole) == Qt::Checked;
    const bool hidden = !ticked && !Holds(row);
    if (tree != nullptr) tree->setRowHidden(row, {}, hidden);
    if (list != nullptr) list->setRowHidden(row, hidden);
  }
}

void SearchLine::GoToFirst() {
  for (int row = 0; row < list_->model()->rowCount(); ++row) {
    if (!Holds(row)) continue;
    list_->setCurrentIndex(list_->model()->index(row, 0));
    list_->setFocus();
    return;
  }
}

}  // namespace tvx
