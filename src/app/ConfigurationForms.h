// The configuration: its forms, the logic behind them, and the gauge bus while they are open.
#pragma once

#include <QPointer>
#include <array>
#include <functional>

#include "config/plates/forms/CalibrateForm.h"
#include "config/setup/SavePresenter.h"
#include "config/setup/forms/AdaptersForm.h"
#include "config/setup/forms/MainConfigureForm.h"
#include "config/setup/forms/SaveConfigForm.h"
#include "core/StatusPresenter.h"
#include "hwbus/gaugebus/GaugeConsolePresenter.h"
#include "hwbus/gaugebus/GaugeSearch.h"
#include "hwbus/gaugebus/LiveNeedle.h"
#include "hwbus/gaugebus/forms/TestGaugesForm.h"
#include "instruments/setup/InstrumentPresenter.h"
#include "instruments/setup/forms/InstrumentForm.h"

namespace tvx {

// While the main configuration form is open, the serial ports are open, and the transmit slot is emptied:
// Tick must be called about every 20 ms.
class ConfigurationForms {
 public:
  struct Parts {
    ConfigModel& model;
    ConfigFile& file;
    MessageBoxes& boxes;
    Serial& serial;
    StatusPresenter& run;
    Peripherals& peripherals;
    SerialDevices& devices;
    std::function<std::string()> header;  // the header line of a file saved now
    std::function<void()> closed;         // the user has closed the main form
  };
  explicit ConfigurationForms(Parts parts);

  // Set before Show; without one its button is hidden.
  std::function<void()> OpenFunctions, OpenXplaneTest;
  // Moves the needle of a channel of the engine cluster; told when a form has changed the model.
  std::function<void(int channel, int position)> MoveClusterNeedle;
  std::function<void()> ModelChanged;

  // Shows the main form; `parent` waits until it is closed.
  void Show(QWidget* parent);
  // Takes every form away, asking nothing.
  void Unload();
  // After Serial::TickTransmit.
  void Tick();

  // The dialog of a gauge; only while the main form is open.
  void OpenGauge(int gaugeID);
  // The Plates, for a channel of the engine cluster: the other channels can be chosen too, no gauge.
  void OpenClusterPlates(int channel, QWidget* parent);

  MainConfigureForm* MainForm() const { return main_; }
  // Shows the model anew, after another form has changed it.
  void Refresh();

 private:
  MainConfigureForm::Surroundings MainSurroundings();
  std::function<void()> PeripheralOpener(PeripheralKind kind);
  template <typename FormType, typename... Arguments>
  void ShowForm(QPointer<FormType>& form, Arguments&&... arguments);
  static bool LeadsTo(int comNumber, const SerialDevice& device);
  std::string DeviceOf(int comNumber) const;
  std::vector<int> ComNumbersOf(const SerialDevice& device) const;
  std::string TroubleOf(HardwareGroup group) const;
  std::array<int, kHardwareGroups> PortNumbers() const;
  void ReopenPorts();
  void FileChanged();
  std::string BusWords() const;
  void OpenPlates(std::vector<CalibrationTarget> targets, const CalibrationTarget& first, QWidget* parent);
  void ShowSearch();
  void LeaveBus();

  Parts parts_;
  SavePresenter save_;
  GaugeSearch search_;
  GaugeConsolePresenter console_;
  LiveNeedle needle_;
  InstrumentPresenter instrument_;
  std::vector<SerialDevice> listed_;           // as they were when the main form was last built
  std::array<int, kHardwareGroups> opened_{};  // the COM numbers that the ports were opened with
  QPointer<MainConfigureForm> main_;
  QPointer<SaveConfigForm> saveForm_;
  QPointer<AdaptersForm> adaptersForm_;
  QPointer<CalibrateForm> calibrateForm_;
  QPointer<InstrumentForm> instrumentForm_;
  QPointer<TestGaugesForm> testForm_;
};

}  // namespace tvx
