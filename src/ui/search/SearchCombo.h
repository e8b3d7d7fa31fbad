// A list of numbered things from which one picks by typing the number or a part of the name. Enter takes the
// first that has the part; leaving the box takes what is typed where it means one thing only.
#pragma once

#include <QComboBox>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tvx {

class SearchCombo : public QComboBox {
 public:
  SearchCombo(const char* name, const QString& toolTip);
  void SetItems(const std::vector<std::pair<int, std::string>>& items);
  // Shows the item with this number; a number that none has is shown as it stands. Does not call what
  // SetPicked gave.
  void SetValue(int value);
  int Value() const { return value_; }
  // Called when the user has picked another item.
  void SetPicked(std::function<void(int)> picked) { picked_ = std::move(picked); }

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Pick(int index);
  void TakeTyped();

  int value_ = 0;
  std::function<void(int)> picked_;
};

}  // namespace tvx
