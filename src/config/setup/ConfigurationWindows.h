// The windows that are opened from the main configuration form and from each other.
#pragma once

namespace tvx {

enum class ConfigurationWindow {
  Guide,
  SaveAndLoad,
  Functions,
  Plates,
  GaugeTest,
  Adapters,
  XplaneTest,
  IOModule1,
  IOModule2,
  EngineCluster,
  Yokes,
  Aircraft
};

class ConfigurationWindows {
 public:
  virtual ~ConfigurationWindows() = default;
  virtual void Open(ConfigurationWindow window) = 0;
  virtual void OpenGauge(int gaugeID) = 0;  // the dialog of a gauge, 0..255
  // The Plates, for a needle of a gauge: 1 or 2.
  virtual void OpenCalibration(int gaugeID, int needle) = 0;
};

}  // namespace tvx
