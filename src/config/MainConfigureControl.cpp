#include "config/MainConfigureControl.h"

#include <algorithm>

namespace tvx {
namespace {

// A text of the file must not hold a double quote.
std::string Plain(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
  return text;
}

}  // namespace

std::optional<std::size_t> LightsModeIndex(const ConfigModel& model) {
  for (std::size_t i = 0; i < kLightsModes.size(); ++i) {
    if (kLightsModes[i].setting1 == model.General.LightsSetting1 &&
        kLightsModes[i].setting2 == model.General.LightsSetting2) {
      return i;
    }
  }
  return std::nullopt;
}

void SetLightsMode(ConfigModel& model, std::size_t index) {
  model.General.LightsSetting1 = kLightsModes[index].setting1;
  model.General.LightsSetting2 = kLightsModes[index].setting2;
  model.ConfigChanged = true;
}

void ClearAllGauges(ConfigModel& model) {
  for (std::size_t gaugeID = 1; gaugeID < model.Gauges.size(); ++gaugeID) {
    GaugeRecord cleared;
    cleared.GaugeSetting6 = model.Gauges[gaugeID].GaugeSetting6;
    model.Gauges[gaugeID] = cleared;
  }
  model.ConfigChanged = true;
}

void SetUdp(ConfigModel& model, const UdpSettings& settings) {
  model.General.RemoteIP = Plain(settings.remoteIP);
  model.General.RemotePort = Plain(settings.remotePort);
  model.General.LocalPort = Plain(settings.localPort);
  model.General.ByteOrderReverse = settings.reverseByteOrder ? -1 : 0;
  model.General.BlockUSEL = settings.blockUsel ? 1 : 0;
  model.ConfigChanged = true;
}

}  // namespace tvx
