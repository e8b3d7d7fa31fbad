// Where the windows stood, how large they were, in which colours, and how they come up, from one start to the
// next: in a small hidden file of the working folder. What cannot be kept there is not kept, without a word.
#pragma once

#include <QSettings>
#include <QWidget>
#include <optional>

#include "ui/Form.h"
#include "ui/Look.h"

namespace tvx {

class WindowMemory {
 public:
  WindowMemory();

  // Puts the window where the user left one of its name, as far as it is on a screen today.
  void Restore(QWidget& window);
  // Keeps the window's place and size, where it is not as it came up.
  void Keep(const QWidget& window);
  std::optional<look::Theme> Theme() const;  // std::nullopt: none was chosen yet
  void KeepTheme(look::Theme theme);
  ComingUp AtStart() const;  // as the user wants it; in front where nothing else was chosen
  void KeepAtStart(ComingUp how);

 private:
  QSettings file_;
};

}  // namespace tvx
