// A tray in memory, for desktops with one and without.
#pragma once

#include <string>
#include <vector>

#include "ui/windows/TrayIcon.h"

namespace tvx {

class FakeTray final : public Tray {
 public:
  bool available = true;
  Actions actions;
  View shown;
  std::vector<std::string> told;
  bool up = false;

  bool Available() const override { return available; }
  void PutUp(Actions given) override {
    actions = std::move(given);
    up = true;
  }
  void Show(const View& view) override { shown = view; }
  void Notify(const QString& text, bool) override { told.push_back(text.toStdString()); }
  void TakeDown() override { up = false; }
};

}  // namespace tvx
