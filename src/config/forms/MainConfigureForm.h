// The main configuration form: the serial ports, the simulator link, the interval, the lights, the gauges.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QTreeWidget>
#include <functional>
#include <string>

#include "config/ConfigFile.h"
#include "platform/Host.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class MainConfigureForm : public Form {
  Q_OBJECT
 public:
  // What the form asks of the program around it.
  struct Surroundings {
    std::function<std::string()> header;       // the header line for a file saved now
    std::function<std::string(int)> deviceOf;  // the device behind a COM number, in words
    std::function<void()> closed;              // the user has closed the form
  };
  // `parent`, if there is one, waits until the form is closed.
  MainConfigureForm(ConfigModel& model, ConfigFile& file, MessageBoxes& boxes, Surroundings surroundings,
                    QWidget* parent);

 protected:
  void CloseAsked() override { CmdClose_Click(); }
  void EscapePressed() override { CmdClose_Click(); }

 private:
  // One hardware group's line: the port in use, the ports to choose from, the button that takes the choice.
  struct ComLine {
    std::int16_t GeneralRecord::*field;
    QLabel* current;
    QComboBox* choice;
    QPushButton* set;
  };

  QWidget* MakeComPanel();
  QWidget* MakeUdpPanel();
  QWidget* MakeTimingPanel();
  QWidget* MakeGaugePanel();
  QLayout* MakeButtons();
  void LoadValues();
  void FillGauges();
  void ShowPort(const ComLine& line);
  void OfferSet(const ComLine& line);
  void SetPort(const ComLine& line);
  void cmdSetUDP_Click();
  void cmdClearConfig_Click();
  void cmdSaveConfig_Click();
  void CmdClose_Click();

  ConfigModel& model_;
  ConfigFile& file_;
  MessageBoxes& boxes_;
  Surroundings surroundings_;
  bool asking_ = false;
  std::vector<ComLine> comLines_;

  QLabel* CurrentConfigFile;
  QLineEdit *boxRemoteIP, *boxRemotePort, *boxLocalPort;
  QRadioButton *OptionByteOrderNormal, *OptionByteOrderReverse;
  QCheckBox* CheckBlockUsel;
  QSlider* SliderXferTtimerProcess;
  QLabel* BoxXferTimerProcess;
  QComboBox* ComboLights;
  QTreeWidget* Configlist;
  QPushButton *cmdClearConfig, *cmdSaveConfig, *CmdClose;
};

}  // namespace tvx
