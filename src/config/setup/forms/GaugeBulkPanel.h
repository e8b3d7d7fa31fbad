// What can be done to the gauges that are ticked in the list; hidden while none is.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "config/setup/GaugeBulk.h"
#include "ui/Widgets.h"
#include "ui/search/SearchCombo.h"

namespace tvx {

class GaugeBulkPanel : public QWidget {
  Q_OBJECT
 public:
  // `changed` is called after every change of the model.
  GaugeBulkPanel(const ConfigModel& model, GaugeBulk& bulk, std::function<void()> changed);
  void ShowFor(const std::vector<int>& ticked);

 private:
  QPushButton* Command(const char* name, const QString& text, const QString& tip,
                       std::function<int(const std::vector<int>&)> command);
  void Tell(int count);

  const ConfigModel& model_;
  GaugeBulk& bulk_;
  std::function<void()> changed_;
  std::vector<int> ticked_;
  QLabel* LabelTicked;
  SearchCombo *ComboBulkPlate, *ComboBulkFunction;
  QPushButton* cmdPasteSettings;
};

}  // namespace tvx
