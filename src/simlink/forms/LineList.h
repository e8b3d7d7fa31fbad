// A list of text lines, thousands of them, and what the forms of Functions build their panels from.
#pragma once

#include <QAbstractListModel>
#include <QGridLayout>
#include <QLineEdit>
#include <QListView>
#include <functional>

#include "ui/Widgets.h"

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

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  LineModel* lines_;
};

// A grid in a framed group under a small headline.
QGridLayout* MakeTitledGrid(QFrame* panel, const QString& title);
// A labelled edit in a grid: label at (row, column), edit beside it.
QLineEdit* AddEdit(QGridLayout* grid, int row, int column, const char* name, const QString& caption,
                   const QString& toolTip);
// A label for a control that has the control's name and "Caption".
QLabel* MakeCaption(QWidget* control, const QString& text);

// Keeps a form as wide as all its texts need. To be called once it is laid out.
void KeepWide(QWidget* form);

}  // namespace tvx
