// `frmCockpit`: everything in use on one page, what is in trouble first; a click follows a value.
#pragma once

#include <QLineEdit>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

#include "follow/CockpitList.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class CockpitForm : public Form {
  Q_OBJECT
 public:
  static constexpr int kRefreshMs = 500;

  // `writeTrace` writes what happened in the last minutes to a file, and says where.
  CockpitForm(const Follower& follower, std::function<void()> writeTrace);

  // Takes all values anew, as it does by itself while it is shown. What is chosen stays so.
  void Refresh();
  void ConfigurationReplaced() override { Refresh(); }

 private:
  void MakeList();
  QLayout* MakeSearch();
  QLayout* MakeButtons();
  void Show();
  void ShowLine(QTreeWidgetItem& item, std::size_t line);
  void Follow();
  void Copy();

  CockpitList list_;
  std::function<void()> writeTrace_;
  QTimer timer_{this};
  QLineEdit* SearchCockpit;
  QLabel* LabelCount;
  QTreeWidget* ListCockpit;
};

}  // namespace tvx
