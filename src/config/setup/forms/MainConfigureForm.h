// The main configuration form: the serial ports, the simulator link, the interval, the lights, the gauges.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QProgressBar>
#include <QSlider>
#include <QTimer>
#include <string>
#include <vector>

#include "config/Model.h"
#include "config/setup/ConfigurationWindows.h"
#include "config/setup/GaugeBusAccess.h"
#include "config/setup/forms/ComPortsPanel.h"
#include "config/setup/forms/GaugeBulkPanel.h"
#include "config/setup/forms/GaugeTable.h"
#include "config/setup/forms/UdpPanel.h"
#include "platform/Host.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class MainConfigureForm : public Form {
  Q_OBJECT
 public:
  // How the search stands.
  struct SearchView {
    bool running = false;
    int done = 0, addresses = 256;
    std::string summary;
    std::vector<std::string> remarks;
  };
  // `parent`, if there is one, waits until the form is closed.
  MainConfigureForm(ConfigModel& model, MessageBoxes& boxes, PortAccess& ports, GaugeBusAccess& bus,
                    ConfigurationWindows& windows, SimulatorFinder& finder, const GaugeAdvice& advice,
                    QWidget* parent);
  void ShowSearch(const SearchView& view);
  // Shows the model as it is now, as on opening.
  void Rebuild();
  // Shows how the serial lines stand, and nothing else anew.
  void ShowLines();

 protected:
  bool MayEnd() override;

 private:
  QWidget* MakeTimingPanel();
  QWidget* MakeGaugePanel();
  QLayout* MakeSearchRow();
  QLayout* MakeOpeners();
  QLayout* MakeButtons();
  void Opener(QBoxLayout* row, const char* name, const QString& text, const QString& tip,
              ConfigurationWindow window);
  void ShowBus();
  void cmdClearConfig_Click();
  void cmdStartTest_Click();

  ConfigModel& model_;
  MessageBoxes& boxes_;
  GaugeBusAccess& bus_;
  ConfigurationWindows& windows_;
  const GaugeAdvice& advice_;
  GaugeBulk bulk_;

  QLabel* CurrentConfigFile;
  ComPortsPanel* PanelCom;
  UdpPanel* PanelUdp;
  QSlider* SliderXferTtimerProcess;
  QLabel* BoxXferTimerProcess;
  QComboBox* ComboLights;
  GaugeTable* Configlist;
  GaugeBulkPanel* PanelBulk;
  QPushButton* cmdStartTest;
  QProgressBar* ProgressBar1;
  QLabel *LabelSearch, *LabelBus;
  bool searching_ = false;
  QTimer Timer1{this};
};

}  // namespace tvx
