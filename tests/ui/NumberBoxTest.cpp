// What a hand types into a number box, key by key.
#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "tests/Test.h"
#include "ui/NumberBox.h"

namespace tvx {
namespace {

void Type(QWidget* box, const char* text) {
  for (const char* c = text; *c != 0; ++c) {
    QKeyEvent down(QEvent::KeyPress, *c == '\b' ? Qt::Key_Backspace : 0, Qt::NoModifier, QString(QChar(*c)));
    QApplication::sendEvent(box, &down);
  }
}

TEST(NumberSpin, KeepsItsValueWhereTheTextIsNoNumber) {
  const struct {
    const char* typed;
    int typing, left;  // the value meanwhile, and once the box is left
    bool marked;
  } rows[] = {{"75", 75, 75, false}, {"7,5", 50, 50, true},     {"7.5", 50, 50, true},
              {"7,0", 7, 7, false},  {"1.000,0", 50, 50, true}, {"1 0", 50, 50, true},
              {"101", 50, 50, true}, {"750\b", 75, 75, false},  {"x", 50, 50, true},
              {"-1", 50, 50, true},  {"30 %", 30, 30, false}};
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));  // where Qt drops commas
  for (const auto& row : rows) {
    QWidget window;
    auto* box = new NumberSpin;
    auto* other = new QLineEdit;
    auto* column = new QVBoxLayout(&window);
    column->addWidget(box);
    column->addWidget(other);
    box->setRange(0, 100);
    box->setSuffix(" %");
    box->setValue(50);
    window.show();
    QApplication::setActiveWindow(&window);
    box->setFocus();
    box->selectAll();
    Type(box, row.typed);
    EXPECT_EQ(box->value(), row.typing) << row.typed;
    EXPECT_EQ(box->findChild<QLineEdit*>()->property("wrong").toBool(), row.marked) << row.typed;
    other->setFocus();
    EXPECT_EQ(box->value(), row.left) << row.typed;
    EXPECT_EQ(box->text(), QString::number(row.left) + " %") << row.typed;
    EXPECT_FALSE(box->findChild<QLineEdit*>()->property("wrong").toBool()) << row.typed;
  }
}

TEST(WantWhole, MarksWhatItDoesNotTake) {
  QLineEdit box;
  WantWhole(&box, 0, 255);
  for (const auto& [typed, marked] : {std::pair{"255", false}, {"256", true}, {"1,2", true}, {"1,", false}}) {
    box.clear();
    EXPECT_FALSE(box.property("wrong").toBool()) << "an empty box";
    Type(&box, typed);
    EXPECT_EQ(box.text(), typed) << "nothing is dropped";
    EXPECT_EQ(box.property("wrong").toBool(), marked) << typed;
  }
}

}  // namespace
}  // namespace tvx
