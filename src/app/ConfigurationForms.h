// The configuration: its forms, the logic behind them, and the hardware while they are open.
#pragma once

#include <string>

#include "app/ConfigurationHardware.h"
#include "app/FunctionForms.h"
#include "app/peripherals/EngineClusterPeripheral.h"
#include "config/ModelWatcher.h"
#include "config/plates/forms/CalibrateForm.h"
#include "config/setup/ConfigurationWindows.h"
#include "config/setup/SavePresenter.h"
#include "config/setup/forms/AdaptersForm.h"
#include "config/setup/forms/MainConfigureForm.h"
#include "config/setup/forms/SaveConfigForm.h"
#include "core/StatusPresenter.h"
#include "guide/forms/GuideForm.h"
#include "hwbus/gaugebus/GaugeConsolePresenter.h"
#include "hwbus/gaugebus/forms/TestGaugesForm.h"
#include "instruments/setup/GaugeWork.h"
#include "instruments/setup/InstrumentPresenter.h"
#include "instruments/setup/forms/InstrumentForm.h"
#include "simlink/aircraft/forms/AircraftForm.h"

namespace tvx {

// The program around the configuration.
class ConfigurationHost {
 public:
  virtual ~ConfigurationHost() = default;
  // The header line of a file that is saved now.
  virtual std::string HeaderForSaving() const = 0;
  // The user has closed the main form.
  virtual void ConfigurationClosed() = 0;
};

// While the main configuration form is open, the serial ports are open, and the transmit slot is emptied:
// Tick must be called about every 20 ms.
class ConfigurationForms final : private ModelWatcher, private ConfigurationWindows, private ClusterPlates {
 public:
  struct Parts {
    ConfigModel& model;
    ConfigFile& file;
    MessageBoxes& boxes;
    Serial& serial;
    StatusPresenter& run;
    Peripherals& peripherals;
    SerialDevices& devices;
    AdapterLine& adapterLine;
    const ComPorts& comPorts;
    EngineClusterPeripheral& cluster;
    FunctionForms& functions;
    SimulatorFinder& finder;
    AircraftSwitch& aircraft;
    ConfigurationHost& host;
    std::array<IOModule*, 2> modules;
    const Clock& clock;
  };
  explicit ConfigurationForms(const Parts& parts);

  // Shows the main form; `parent` waits until it is closed.
  void Show(QWidget* parent);
  // Takes every form away, and asks no questions.
  void Unload();
  // After Serial::TickTransmit.
  void Tick();

  // The dialog of a gauge; only while the main form is open.
  void OpenGauge(int gaugeID) override;
  MainConfigureForm* MainForm() const { return main_.Get(); }
  // Saves into the file in use, as the save form does; what that will do, in words.
  void SaveInUse();
  std::string SaveWords() const { return save_.SaveWords(parts_.model.ConfigFileName); }
  // Whether gauges are being looked for.
  bool Searching() { return hardware_.Search().Running(); }
  // The configuration was put back or forward.
  void ConfigurationReplaced();
  // Shows the model anew, after another form has changed it.
  void Refresh();

 private:
  void ModelChanged() override;
  void Open(ConfigurationWindow window) override;
  void OpenCalibration(int gaugeID, int needle) override;
  void OpenClusterPlates(int channel, QWidget* parent) override;

  template <typename FormType, typename... Arguments>
  static void ShowForm(FormHolder<FormType>& form, Arguments&&... arguments);
  void MainFormClosed();
  void OpenAdapters();
  void OpenGuide();
  void OpenPeripheral(PeripheralKind kind);
  void OpenPlates(std::vector<CalibrationTarget> targets, const CalibrationTarget& first, QWidget* parent);
  void ShowSearch();
  void ShowLineTrouble();
  void ShowRole();

  Parts parts_;
  SavePresenter save_;
  ConfigurationHardware hardware_;
  GaugeConsolePresenter console_;
  InstrumentPresenter instrument_;
  InstrumentAdvice advice_{parts_.model};
  Guide guide_;
  Registration searchChanged_, replies_;
  FormHolder<MainConfigureForm> main_;
  FormHolder<GuideForm> guideForm_;
  FormHolder<SaveConfigForm> saveForm_;
  FormHolder<AdaptersForm> adaptersForm_;
  FormHolder<CalibrateForm> calibrateForm_;
  FormHolder<InstrumentForm> instrumentForm_;
  FormHolder<TestGaugesForm> testForm_;
  FormHolder<AircraftForm> aircraftForm_;
};

}  // namespace tvx
