// `frmCockpit`: everything in use on one page, as a list, what is in trouble first, and as a drawn panel; a
// click follows a value.
#pragma once

#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

#include "follow/CockpitList.h"
#include "follow/forms/DrawnPanel.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class CockpitForm : public Form {
  Q_OBJECT
 public:
  static constexpr int kRefreshMs = 500;
  static constexpr int kPictureMs = 200;  // of the drawn panel: faster costs more than it shows

  // `writeTrace` writes what happened in the last minutes to a file, and says where.
  CockpitForm(const Follower& follower, std::function<void()> writeTrace);

  // Takes all values anew, as it does by itself while it is shown. What is chosen stays so.
  void Refresh();
  void ConfigurationReplaced() override { Refresh(); }

 private:
  void MakeList();
  void MakeTabs();
  QLayout* MakeSearch();
  QLayout* MakeButtons();
  void Show();
  bool Drawn() const { return TabsCockpit->currentWidget() == PanelCockpit; }
  void ShowLine(QTreeWidgetItem& item, std::size_t line);
  void Follow();
  void Copy();

  CockpitList list_;
  std::function<void()> writeTrace_;
  QTimer timer_{this}, pictures_{this};
  QLineEdit* SearchCockpit;
  QLabel* LabelCount;
  QTabWidget* TabsCockpit;
  QTreeWidget* ListCockpit;
  DrawnPanel* PanelCockpit;
};

}  // namespace tvx
