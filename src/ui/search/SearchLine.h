// A line to type into that narrows a list.
#pragma once

#include <QAbstractItemView>
#include <QLineEdit>

namespace tvx {

// While something is typed, the list shows the rows that hold it, in whatever column and letters; a row that
// is ticked stays. Enter goes to the first of them.
class SearchLine : public QLineEdit {
 public:
  // `list`: a list or a tree of one level; must outlive the line, or die with the same form.
  SearchLine(const char* name, const QString& toolTip, QAbstractItemView* list);

 private:
  bool Holds(int row) const;
  void ShowRows(int first, int last);
  void GoToFirst();

  QAbstractItemView* list_;
};

}  // namespace tvx
