// A list of text lines, thousands of them.
#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <functional>

#include "ui/FieldGrid.h"

namespace tvx {

// Lines that stay where they are kept: the view asks for those that it paints.
class LineModel : public QAbstractListModel {
 public:
  using Count = std::function<std::size_t()>;
  using Text = std::function<QString(std::size_t)>;
  LineModel(Count count, Text text, QObject* parent)
      : QAbstractListModel(parent), count_(std::move(count)), text_(std::move(text)) {}

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(count_());
  }
  QVariant data(const QModelIndex& index, int role) const override;
  // To be called whenever the lines are others.
  void Refresh() {
    beginResetModel();
    endResetModel();
  }

 private:
  Count count_;
  Text text_;
};

// Shows the lines in letters of one width; Ctrl+C copies those that are chosen.
class LineList : public QListView {
 public:
  LineList(const char* name, LineModel::Count count, LineModel::Text text);

  int Row() const { return currentIndex().row(); }  // -1: none
  void SetRow(int row);
  // Takes the lines anew. A list that showed its end shows the new end; otherwise the chosen row stays.
  void Refresh(bool followEnd = false);
  // No wider than it must be: whoever shows it gives it what room there is.
  QSize sizeHint() const override { return {minimumWidth(), QListView::sizeHint().height()}; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  LineModel* lines_;
};

}  // namespace tvx
