// The main configuration form: the serial ports, the simulator link, the interval, the lights, the gauges.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QProgressBar>
#include <QSlider>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "config/Model.h"
#include "config/setup/forms/ComPortsPanel.h"
#include "config/setup/forms/GaugeTable.h"
#include "config/setup/forms/UdpPanel.h"
#include "platform/Host.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class MainConfigureForm : public Form {
  Q_OBJECT
 public:
  // What the form asks of the program around it. Openers of other forms may be empty: their button is hidden.
  struct Surroundings {
    std::function<std::string(int)> deviceOf;   // the device behind a COM number, in words
    std::function<std::string(int)> troubleOf;  // what is wrong with the port of a hardware group, by number
    std::function<void()> lookAgain;            // what is plugged in may have changed
    // Runs its argument, which changes a port's number, while no port is open.
    std::function<void(const std::function<void()>&)> withPortsClosed;
    std::function<std::string()> busWords;  // how the gauge bus stands
    std::function<void()> tick;             // every 50 ms
    std::function<void()> startSearch, cancelSearch;
    std::function<void(int)> openGauge;  // the dialog of a gauge
    std::function<void()> saveConfig, functions, plates, testGauges, adapters, testXplane;
    std::function<void()> ioModule1, ioModule2, engineCluster, yokes;
    std::function<void()> closed;  // the user has closed the form
  };
  // How the search stands.
  struct SearchView {
    bool running = false;
    int done = 0, addresses = 256;
    std::string summary;
    std::vector<std::string> remarks;
  };
  // `parent`, if there is one, waits until the form is closed.
  MainConfigureForm(ConfigModel& model, MessageBoxes& boxes, Surroundings surroundings, QWidget* parent);
  void ShowSearch(const SearchView& view);
  // Shows the model as it is now, as on opening.
  void Rebuild();

 protected:
  void CloseAsked() override { CmdClose_Click(); }
  void EscapePressed() override { CmdClose_Click(); }

 private:
  ComPortsPanel* MakeComPanel();
  QWidget* MakeTimingPanel();
  QWidget* MakeGaugePanel();
  QLayout* MakeSearchRow();
  QLayout* MakeOpeners();
  QLayout* MakeButtons();
  void Opener(QBoxLayout* row, const char* name, const QString& text, const QString& tip,
              const std::function<void()>& open);
  void ShowBus();
  void cmdClearConfig_Click();
  void cmdStartTest_Click();
  void CmdClose_Click();

  ConfigModel& model_;
  MessageBoxes& boxes_;
  Surroundings surroundings_;
  bool asking_ = false;

  QLabel* CurrentConfigFile;
  ComPortsPanel* PanelCom;
  UdpPanel* PanelUdp;
  QSlider* SliderXferTtimerProcess;
  QLabel* BoxXferTimerProcess;
  QComboBox* ComboLights;
  GaugeTable* Configlist;
  QPushButton* cmdStartTest;
  QProgressBar* ProgressBar1;
  QLabel *LabelSearch, *LabelBus;
  bool searching_ = false;
  QTimer Timer1;
};

}  // namespace tvx
