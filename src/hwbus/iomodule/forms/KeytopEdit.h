// Chooses a keystroke: a key by name or a character, with Ctrl and Shift.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <functional>

namespace tvx {

// Its combo box carries the given name (`KeytopKeyOn`); the others are named after it: ...Char, ...Ctrl,
// ...Shift.
class KeytopEdit : public QWidget {
 public:
  explicit KeytopEdit(const QString& name);
  void SetCode(std::int16_t code);
  // 0 where no key is chosen, or "character" is chosen and its box is empty.
  std::int16_t Code() const;
  void SetChanged(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  void ShowCharacter();

  QComboBox* key_;
  QLineEdit* character_;
  QCheckBox *ctrl_, *shift_;
  std::function<void()> changed_;
};

}  // namespace tvx
