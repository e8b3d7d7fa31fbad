#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPointer>
#include <QTimer>

#include "tests/Test.h"
#include "ui/Form.h"

namespace tvx {
namespace {

// What a form does at its end, seen from outside: it may be gone when one looks.
struct Seen {
  int ended = 0, closed = 0, atEnd = 0, told = 0, deleted = 0;
};

class Sample final : public Form {
 public:
  Sample(Seen& seen, Callback<>& callback, QWidget* parent = nullptr) : Form("sample", parent), seen_(seen) {
    connect(this, &Form::Ended, [&seen] { ++seen.ended; });
    connect(this, &Form::Closed, [&seen] { ++seen.closed; });
    Keep(callback.Give([&seen] { ++seen.told; }));
    ticks.start(0);
  }
  ~Sample() override { ++seen_.deleted; }
  std::function<bool()> mayEnd = [] { return true; };
  QTimer ticks{this};

 protected:
  bool MayEnd() override { return mayEnd(); }
  void AtEnd() override { ++seen_.atEnd; }

 private:
  Seen& seen_;
};

void Settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void PressEscape(QWidget* widget) {
  QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(widget, &key);
}

TEST(Form, EndsByOneRoadWhateverEndsIt) {
  const struct {
    const char* what;
    bool closed;
    std::function<void(QWidget& parent, Sample& form)> end;
  } ways[] = {
      {"its button", true, [](QWidget&, Sample& form) { form.CloseAsked(); }},
      {"Escape", true, [](QWidget&, Sample& form) { PressEscape(&form); }},
      {"its window", true, [](QWidget&, Sample& form) { form.close(); }},
      {"its maker", false, [](QWidget&, Sample& form) { form.Unload(); }},
      {"the form above", false, [](QWidget& parent, Sample&) { static_cast<Form&>(parent).Unload(); }},
      {"twice", true,
       [](QWidget&, Sample& form) {
         form.close();
         form.Unload();
         form.CloseAsked();
       }},
  };
  for (const auto& way : ways) {
    SCOPED_TRACE(way.what);
    Seen seen, above;
    Callback<> callback, other;
    const QPointer<Sample> parent = new Sample(above, other);
    auto* form = new Sample(seen, callback, parent);
    parent->show();
    form->show();
    callback();
    way.end(*parent, *form);
    EXPECT_FALSE(form->isVisible() || form->ticks.isActive());
    callback();
    EXPECT_EQ(seen.told, 1) << "its callback is taken back";
    EXPECT_EQ((std::tuple{seen.ended, seen.atEnd, seen.closed}), (std::tuple{1, 1, way.closed ? 1 : 0}));
    Settle();
    EXPECT_EQ(seen.deleted, 1);
    if (parent) parent->Unload();
    Settle();
  }
}

TEST(Form, StaysWhereTheUserWantsToStay) {
  Seen seen;
  Callback<> callback;
  auto* form = new Sample(seen, callback);
  int asked = 0;
  form->mayEnd = [&] {
    ++asked;
    form->CloseAsked();  // once more, while the question stands
    return asked > 1;
  };
  form->show();
  EXPECT_FALSE(form->close());
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(asked, 1);
  form->CloseAsked();
  EXPECT_EQ(seen.closed, 1);
  Settle();
}

// A form that ends while a slot of it asks the user must still be there when the answer comes.
TEST(Form, IsNotDeletedUnderItsOwnQuestion) {
  Seen seen;
  Callback<> callback;
  auto* form = new Sample(seen, callback);
  bool stood = false;
  QEventLoop main;
  QTimer::singleShot(0, form, [&] {
    QDialog question(form);
    QTimer::singleShot(0, &question, [&] { form->Unload(); });
    EXPECT_EQ(question.exec(), QDialog::Rejected) << "dismissed with its form";
    stood = seen.deleted == 0 && form->Unloading();
  });
  const QMetaObject::Connection gone =
      QObject::connect(form, &QObject::destroyed, &main, [&main] { main.quit(); });
  QTimer::singleShot(5000, &main, [&main] { main.exit(1); });
  EXPECT_EQ(main.exec(), 0) << "deleted when the loop is the outermost again";
  EXPECT_TRUE(stood);
  EXPECT_EQ(seen.deleted, 1);
}

TEST(FormHolder, MakesAnotherOnceTheFirstHasEndedAndTakesItAlong) {
  Seen seen;
  Callback<> callback;
  {
    FormHolder<Sample> holder;
    const auto make = [&] { return new Sample(seen, callback); };
    Sample* first = &holder.GetOrMake(make);
    EXPECT_EQ(&holder.GetOrMake(make), first);
    holder.Unload();
    EXPECT_EQ(holder.Get(), nullptr);
    EXPECT_NE(&holder.GetOrMake(make), first);
    Settle();
    EXPECT_EQ(seen.deleted, 1);
  }
  EXPECT_EQ(seen.deleted, 2);
}

}  // namespace
}  // namespace tvx
