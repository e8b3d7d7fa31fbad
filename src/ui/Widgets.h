// Small widgets and helpers that forms are put together from.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPushButton>
#include <QString>
#include <functional>
#include <string_view>

#include "ui/Look.h"

namespace tvx {

class ReadingLabel;

inline QString ToText(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Sets the text only when it differs, so that nothing is laid out and painted in vain. True when it was set.
bool SetTextIfChanged(QLabel* label, const QString& text);
inline bool SetTextIfChanged(QLabel* label, std::string_view text) {
  return SetTextIfChanged(label, ToText(text));
}

// A label that never takes its text for markup.
QLabel* MakeLabel(const char* name, const QString& text = {}, const char* role = nullptr);
// A button with a tool tip; "&" in its text marks the key that presses it together with Alt.
QPushButton* MakeButton(const char* name, const QString& text, const QString& toolTip);
// The button "cmdTheme" that changes the whole program between night and day colours.
QPushButton* MakeThemeButton();
// A framed group.
QFrame* MakePanel(const char* name);

// The room around a layout and between what stands in it: for a whole form or page, and for a framed group,
// which needs less above its headline and, with a last row that is no list or button, less below.
void SpaceForm(QLayout* layout);
void SpacePanel(QLayout* layout, int below = look::Gap());

// A text that changes many times a second, in the letters of a value. It has the size of the widest text that
// it will show, and asks no layout for room when the text changes, which costs more than painting it.
class Reading : public QWidget {
 public:
  // The label that shows the text gets `name`.
  Reading(const QString& name, const QString& widest, Qt::Alignment alignment, look::Ground ground);
  void SetText(std::string_view text);
  QString Text() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void FitWidest();
  void PlaceLabel();

  QString widest_;
  ReadingLabel* label_;
};

// A value to read from afar: caption above, unit behind. The value's label carries `name`; caption and unit
// are named after it, "BoxIASCaption" and "BoxIASUnit".
class ValueBox : public QFrame {
 public:
  // `widest`: the widest text the value will have, so that the box never changes its size.
  ValueBox(const char* name, const QString& caption, const QString& unit, const QString& widest);

  void SetValue(std::string_view text) { value_->SetText(text); }
  QString Value() const { return value_->Text(); }
  QLabel* Caption() const { return caption_; }
  QLabel* Unit() const { return unit_; }

 private:
  QLabel* caption_;
  Reading* value_;
  QLabel* unit_;
};

// A small round lamp.
class StateLamp : public QWidget {
 public:
  enum class State { Off, Good, Trouble };
  explicit StateLamp(const char* name);
  void SetState(State state);
  State Shown() const { return state_; }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  State state_ = State::Off;
};

// A list whose line is picked by a click, by the cursor keys, or by typing its first letters.
class PickList : public QListWidget {
 public:
  explicit PickList(const char* name);
  void SetPicked(std::function<void(const QString&)> picked) { picked_ = std::move(picked); }
  // Marks the line with this text, or no line where none has it. Does not call what SetPicked gave.
  void Mark(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  std::function<void(const QString&)> picked_;
};

}  // namespace tvx
