// What every form of the program shares, above all how it ends.
#pragma once

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QWidget>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/Registration.h"
#include "base/Subject.h"

namespace tvx {

// How a form comes up that the program shows: above all others; as an entry of the task bar; or not at all,
// until somebody wants to see it.
enum class ComingUp { Front, Minimised, Hidden };

// A window with a given name. Enter presses the focused button, or else the default one; Escape does what the
// window's close button does. A form that does not fit the screen scrolls inside; its foot stays in sight. It
// cannot be made smaller than its controls and, at its width, its wrapped words need; where these get more,
// it grows as far as the screen has room.
//
// A form ends by one road, Unload, whatever ends it: the user, who closes it; its maker; the end of the form
// above it; the end of the program. From then on it is hidden, its timers stand still, the callbacks that it
// keeps are taken back, and the dialogs over it are dismissed. It is deleted when no event loop runs within
// another one: a slot that has put a question to the user finds its form still there when the answer comes,
// and asks Unloading() whether there is anything left to do.
class Form : public QWidget {
  Q_OBJECT
 public:
  explicit Form(const char* name, QWidget* parent = nullptr);
  ~Form() override;

  void Unload();
  bool Unloading() const { return unloading_; }
  // Shows it above all others, with the focus; see SetComingUp.
  void BringToFront();
  // From now on every form that is shown comes up so. Whoever brings one back from the task bar wants to see
  // the next ones, too: they come in front again then.
  static void SetComingUp(ComingUp how) { comingUp_ = how; }
  static ComingUp ComesUp() { return comingUp_; }
  // Takes it off the screen, until Reveal. To whoever asks, it counts as minimised meanwhile.
  void HoldBack();
  bool HeldBack() const { return heldBack_; }
  // Puts it on the screen if it was held back or minimised. Before that: SetComingUp(ComingUp::Front).
  void Reveal();
  void setVisible(bool visible) override;
  // One line at the foot of the form, on what is wrong around it; gone again with an empty text.
  void ShowNotice(const QString& text);
  // Puts a widget below everything else, over the whole width. The form grows by it.
  void AddFoot(QWidget* foot);
  // The configuration was put back or forward: what the form shows of it is to be read anew. What the user
  // has typed and not stored stays.
  virtual void ConfigurationReplaced() {}
  // Closes the form for the user. Unloads it, unless MayEnd objects; other forms hide, or tell the program.
  virtual void CloseAsked();

 signals:
  void Closed();  // the user has closed it; comes after Ended
  void Ended();   // it was unloaded; it still exists, but is not shown any more
  void FollowAsked(const tvx::Subject& subject);  // the user wants to see this value's road

 protected:
  // False: the user wants to stay, having been asked what to do with unsaved edits.
  virtual bool MayEnd() { return true; }
  // What the form has to stop or give back, once, before Ended.
  virtual void AtEnd() {}
  virtual void EscapePressed() { CloseAsked(); }
  // The program has shown the form; not where the user brings it back, and also where it is held back.
  virtual void CameUp() {}
  void SetDefaultButton(QPushButton* button) { defaultButton_ = button; }
  // A button "cmdFollow" that asks for the road of what `subject` gives then.
  QPushButton* MakeFollowButton(std::function<Subject()> subject);
  // Keeps a callback for as long as the form is not unloaded.
  void Keep(Registration registration) { kept_.push_back(std::move(registration)); }

  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void DeleteWhenIdle();
  QSize Least() const;
  void FitScreen(QEvent::Type why);
  void ScrollInside();
  void KeepWithin(const QSize& room, bool mayMove);

  QPointer<QPushButton> defaultButton_;
  std::vector<Registration> kept_;
  QWidget* foot_ = nullptr;   // the same
  QLabel* notice_ = nullptr;  // made when there is something to say
  bool scrolls_ = false;
  bool unloading_ = false;
  bool closing_ = false;
  bool heldBack_ = false;
  inline static ComingUp comingUp_ = ComingUp::Front;  // one desktop, so one for all
};

// A form as its maker holds it: made when it is first wanted, and gone with its maker at the latest.
template <typename FormType>
class FormHolder {
  static_assert(std::is_base_of_v<Form, FormType>);

 public:
  FormHolder() = default;
  ~FormHolder() { delete form_.data(); }
  FormHolder(const FormHolder&) = delete;
  FormHolder& operator=(const FormHolder&) = delete;

  // The form; nullptr while there is none, and once it is unloaded.
  FormType* Get() const { return form_ && !form_->Unloading() ? form_.data() : nullptr; }
  FormType* operator->() const { return Get(); }
  explicit operator bool() const { return Get() != nullptr; }

  // The form, made by `make` unless there is one.
  template <typename Make>
  FormType& GetOrMake(Make&& make) {
    if (Get() == nullptr) form_ = make();
    return *form_;
  }
  void Unload() {
    if (FormType* form = Get()) form->Unload();
  }

 private:
  QPointer<FormType> form_;
};

}  // namespace tvx
