// Boxes into which a hand types numbers. What they take, base/NumberText.h says: a comma means what a point
// means, and no digits are ever dropped. A text that cannot be taken is marked, and said beside the box; it
// is stored nowhere.
#pragma once

#include <QLineEdit>
#include <QSpinBox>
#include <functional>
#include <optional>

#include "base/NumberText.h"

namespace tvx {

// Frames an edit as wrong, or no more.
void MarkWrong(QLineEdit* edit, bool wrong);

// Marks an edit for as long as it holds something that `fault` has words for, and shows them below the edit
// while it is being typed into. An edit that is empty is not marked.
void MarkAsTyped(QLineEdit* edit, std::function<QString(const QString&)> fault);
// The edit takes a whole number from `lowest` to `highest`; TypedWhole reads it.
void WantWhole(QLineEdit* edit, int lowest, int highest);
// The edit takes any number; TypedReal reads it.
void WantReal(QLineEdit* edit);

// A whole number with arrows. While the text cannot be taken, the value is the one from before the typing
// began, and so is the text once the box is left.
class NumberSpin : public QSpinBox {
 public:
  NumberSpin();

 protected:
  QValidator::State validate(QString& text, int& position) const override;
  int valueFromText(const QString& text) const override;
  QString textFromValue(int value) const override;
  void fixup(QString&) const override {}
  void stepBy(int steps) override;
  void focusInEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  std::optional<int> NumberIn(QString text) const;
  void CheckTyped(const QString& text);
  void Settle();

  int before_ = 0;
};

}  // namespace tvx
