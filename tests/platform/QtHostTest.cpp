#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "platform/qt/QtMessageBoxes.h"
#include "tests/Test.h"
#include "tests/platform/WaitUntil.h"

namespace tvx {
namespace {

QList<QMessageBox*> Standing() {
  QList<QMessageBox*> boxes;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* box = qobject_cast<QMessageBox*>(widget);
    if (box != nullptr && box->isVisible()) boxes.push_back(box);
  }
  return boxes;
}

TEST(QtMessageBoxes, ShowReturnsAtOnceAndNeverDoublesAText) {
  QtMessageBoxes boxes;
  boxes.Show("a <b>text</b>");
  boxes.Show("a <b>text</b>");
  ASSERT_EQ(Standing().size(), 1);
  QMessageBox* box = Standing().front();
  EXPECT_EQ(box->textFormat(), Qt::PlainText);
  EXPECT_EQ(box->windowModality(), Qt::ApplicationModal);
  boxes.Show("another");
  EXPECT_EQ(Standing().size(), 2);
  box->button(QMessageBox::Ok)->click();
  ASSERT_TRUE(WaitUntil([] { return Standing().size() == 1; }));
  boxes.Show("a <b>text</b>");  // closed meanwhile: it may come again
  EXPECT_EQ(Standing().size(), 2);
  for (QMessageBox* open : Standing()) open->close();
}

TEST(QtMessageBoxes, AskGivesTheAnswer) {
  const struct {
    const char* what;
    void (*act)(QMessageBox*);
    int answer;
  } cases[] = {
      {"Yes", [](QMessageBox* b) { b->button(QMessageBox::Yes)->click(); }, kAnswerYes},
      {"No", [](QMessageBox* b) { b->button(QMessageBox::No)->click(); }, kAnswerNo},
      {"closing", [](QMessageBox* b) { b->close(); }, kAnswerNo},
  };
  QtMessageBoxes boxes;
  for (const auto& c : cases) {
    int answered = 0;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
      if (Standing().isEmpty()) return;
      ++answered;
      c.act(Standing().front());
    });
    poll.start(1);
    EXPECT_EQ(boxes.Ask("really?"), c.answer) << c.what;
    EXPECT_EQ(answered, 1) << c.what;
  }
}

}  // namespace
}  // namespace tvx
