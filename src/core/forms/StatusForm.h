// The status form: the program's main window while it runs.
#pragma once

#include <QSlider>
#include <QTimer>
#include <functional>

#include "core/StatusPresenter.h"
#include "core/forms/BusHealthPanel.h"
#include "ui/Form.h"
#include "ui/Widgets.h"

namespace tvx {

class StatusForm : public Form {
  Q_OBJECT
 public:
  // `showPorts` opens the list of the simulator ports in use, `showCockpit` the cockpit on one page,
  // `showMessages` the list of what was said.
  StatusForm(StatusPresenter& presenter, std::function<void()> showPorts, std::function<void()> showCockpit,
             std::function<void()> showMessages);

  // Shows what the logic holds now, the flight values apart: these are read a few times a second, no faster
  // than an eye follows.
  void ShowView();
  void ShowFlightValues();

  static constexpr int kFlightValuesMs = 200;

 protected:
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void CloseAsked() override { presenter_.cmdExit_Click(); }
  void EscapePressed() override {}

 private:
  QWidget* MakeRunPanel();
  QWidget* MakeLinksPanel();
  QLayout* MakeFindings();
  QLayout* MakeFlightValues();
  QWidget* MakeTransferPanel();
  QLayout* MakeButtons();
  void Connect();
  void ShowRunButtons();
  void ShowBusHealth();
  void GrowToFit();
  void ShowLink(StateLamp* lamp, QLabel* label, const StatusView::Link& link);

  StatusPresenter& presenter_;
  QTimer flightValuesTimer_{this};
  std::int32_t runColour_ = -1;
  bool built_ = false;

  QLabel *BoxRun, *BoxCurrentConfig, *LabelAircraft, *LabelVersion;
  StateLamp *LampSimulator, *LampGaugeBus;
  BusHealthPanel* panelBusHealth_;
  QLabel *LabelSimulator, *LabelFlow, *LabelFindings, *LabelIgnored, *LabelGaugeBus, *LabelNotice;
  QPushButton *cmdDataOutput, *cmdTakeAddress;
  ValueBox *BoxIAS, *BoxAltitude, *BoxHea, *boxBank, *boxPitch, *BoxVS, *boxCompass, *BoxAirPressHg,
      *BoxAirPressmBar, *boxVoltage, *BoxInstrLights, *boxNavLights;
  QSlider* SliderXferTimer;
  QLabel *BoxXferProcessTimer, *LabelIntervalFixed;
  ValueBox *frmXferCount, *boxUDPrate, *boxNrofOffsets;
  QPushButton *cmdRun, *cmdStop, *CmdConfig, *CmdExit, *cmdDumpTVX, *cmdShowPorts, *cmdShowIOM, *cmdShowIOM2,
      *cmdShowECStatus, *cmdShowYokes, *cmdShowBus, *cmdHide, *cmdCockpit, *cmdMessages;
  std::function<void()> showPorts_, showCockpit_, showMessages_;
};

}  // namespace tvx
