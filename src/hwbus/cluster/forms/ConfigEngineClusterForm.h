// `frmConfigEC`: what each channel of the engine cluster shows, and how; the needles can be tried.
#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QTimer>
#include <array>

#include "hwbus/cluster/EngineClusterPresenter.h"
#include "hwbus/cluster/forms/EngineClusterOptions.h"
#include "hwbus/cluster/forms/EngineClusterWindows.h"
#include "ui/Form.h"
#include "ui/Widgets.h"
#include "ui/search/SearchCombo.h"

namespace tvx {

class ConfigEngineClusterForm : public Form {
  Q_OBJECT
 public:
  ConfigEngineClusterForm(const ConfigModel& model, const EngineCluster& cluster,
                          EngineClusterPresenter& presenter, MessageBoxes& boxes,
                          EngineClusterWindows& windows);
  // After anything was edited, here or elsewhere.
  void Refresh();
  // What moves by itself; called several times a second while the form can be seen.
  void ShowLive();

 protected:
  bool MayEnd() override;

 private:
  using Items = std::vector<std::pair<int, std::string>>;
  struct Row {
    QCheckBox* enabled;
    SearchCombo *function, *plate;
    Items plateItems;
    QLabel *needle, *reading;
    std::array<QPushButton*, 3> tries;
  };
  QWidget* MakeChannels();
  void AddCopying(QHBoxLayout* row);
  void AddRow(QGridLayout* grid, int channel);

  const ConfigModel& model_;
  const EngineCluster& cluster_;
  EngineClusterPresenter& presenter_;
  MessageBoxes& boxes_;
  EngineClusterWindows& windows_;
  std::array<Row, kECChannels> rows_{};
  Items functionItems_;
  QLabel* status_;
  EngineClusterOptions* options_;
  QTimer refresh_{this};
};

}  // namespace tvx
