// `frmFollow`: the road of one value, live, and in its first line why the value stops.
#pragma once

#include <QTimer>
#include <QTreeWidget>
#include <vector>

#include "follow/Follower.h"
#include "ui/Form.h"
#include "ui/Widgets.h"
#include "ui/search/SearchCombo.h"

namespace tvx {

class FollowForm : public Form {
  Q_OBJECT
 public:
  static constexpr int kRefreshMs = 250;

  explicit FollowForm(const Follower& follower);

  // Follows this value from now on.
  void Choose(const Subject& subject);
  // Takes the road anew, as it does by itself while it is shown.
  void Refresh();
  void ConfigurationReplaced() override { FillSubjects(); }

 private:
  QLayout* MakeHead();
  void MakeStations();
  void FillSubjects();
  void ShowStation(QTreeWidgetItem& line, const Station& station);
  void Copy();

  const Follower& follower_;
  Subject subject_;
  Road road_;
  std::vector<Subject> subjects_;  // as ComboSubject offers them
  QTimer timer_{this};
  SearchCombo* ComboSubject;
  StateLamp* LampDiagnosis;
  QLabel* LabelDiagnosis;
  QTreeWidget* ListStations;
};

}  // namespace tvx
