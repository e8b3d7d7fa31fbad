#include "tests/forms/FormsRig.h"
#include "ui/search/SearchCombo.h"

namespace tvx {
namespace {

TEST(SearchCombo, TakesWhatIsTypedWhereItMeansOneThing) {
  const struct {
    const char* typed;
    int byEnter, byLeaving;
  } rows[] = {
      {"120", 120, 120}, {"1", 1, 1}, {"prop", 120, 120}, {"AIRSPEED", 1, 1}, {"speed", 1, 7},
      {"xyz", 7, 7},     {"", 7, 7},  {"12", 7, 7},       {"0", 0, 0},        {"007  Ground speed", 7, 7}};
  for (const auto& row : rows) {
    for (const bool enter : {true, false}) {
      QWidget form;
      SearchCombo combo("Combo", {});
      combo.setParent(&form);
      combo.SetItems({{0, "(none)"}, {1, "001  Airspeed"}, {7, "007  Ground speed"}, {120, "120  Prop RPM"}});
      combo.SetValue(7);
      int told = 0;
      combo.SetPicked([&told](int) { ++told; });
      combo.setEditText(row.typed);
      if (enter) {
        Press(&combo, Qt::Key_Return);
      } else {
        QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(&combo, &leave);
      }
      const int value = enter ? row.byEnter : row.byLeaving;
      EXPECT_EQ(combo.Value(), value) << row.typed << enter;
      EXPECT_EQ(told, value == 7 ? 0 : 1) << row.typed << enter;
      EXPECT_EQ(combo.currentData().toInt(), value) << "what is shown is what is chosen";
    }
  }
}

}  // namespace
}  // namespace tvx
