#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QTreeWidget>

#include "tests/Test.h"
#include "ui/search/SearchLine.h"

namespace tvx {
namespace {

const QStringList kLines[] = {
    {"007", "Ground speed"}, {"012", "Oil"}, {"112", "Prop speed"}, {"120", "Fuel"}};

struct Rows {
  const char* typed;
  std::vector<int> shown;
  int byEnter;  // -1: stays where it was
};

template <typename List>
void ExpectRows(List& list, int ticked, const std::vector<Rows>& rows) {
  SearchLine line("Search", {}, &list);
  for (const Rows& row : rows) {
    list.setCurrentIndex({});
    line.setText(row.typed);
    std::vector<int> shown;
    for (int i = 0; i < 4; ++i) {
      const bool hidden = list.visualRect(list.model()->index(i, 0)).isEmpty();
      if (!hidden) shown.push_back(i);
    }
    EXPECT_EQ(shown, row.shown) << row.typed << ", ticked: " << ticked;
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(&line, &enter);
    EXPECT_EQ(list.currentIndex().row(), row.byEnter) << row.typed;
  }
}

TEST(SearchLine, ShowsWhatHoldsTheWordsAndEnterTakesTheFirst) {
  const std::vector<Rows> rows{{"", {0, 1, 2, 3}, 0}, {"SPEED", {0, 2}, 0}, {" oil ", {1}, 1},
                               {"12", {1, 2, 3}, 1},  {"xyz", {}, -1},      {"fuel", {3}, 3}};
  QListWidget list;
  for (const QStringList& line : kLines) list.addItem(line.join("  "));
  list.resize(400, 400);
  list.show();
  ExpectRows(list, -1, rows);
  QTreeWidget tree;
  tree.setColumnCount(2);
  for (const QStringList& line : kLines) tree.addTopLevelItem(new QTreeWidgetItem(line));
  tree.resize(400, 400);
  tree.show();
  ExpectRows(tree, -1, rows);
  // A row that is ticked stays in sight, but is not what was looked for.
  tree.topLevelItem(0)->setCheckState(0, Qt::Checked);
  ExpectRows(tree, 0, {{"oil", {0, 1}, 1}, {"xyz", {0}, -1}});
}

TEST(SearchLine, HoldsForRowsThatAreMadeAnew) {
  QTreeWidget tree;
  tree.setColumnCount(2);
  SearchLine line("Search", {}, &tree);
  line.setText("prop");
  for (const QStringList& made : kLines) tree.addTopLevelItem(new QTreeWidgetItem(made));
  EXPECT_TRUE(tree.isRowHidden(1, {}));
  EXPECT_FALSE(tree.isRowHidden(2, {}));
}

}  // namespace
}  // namespace tvx
