#include "config/setup/MainConfigurePresenter.h"

#include <algorithm>

#include "base/NumberText.h"
#include "platform/HostName.h"

namespace tvx {
namespace {

constexpr int kHighestPort = 65535;

// A text of the file must not hold a double quote.
std::string Plain(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
  return text;
}

bool IsAddress(std::string_view text) {
  return ParseIPv4(text) || IsHostName(text);
}

// The number alone, without what was typed around it.
std::string PortText(const std::string& text) {
  return std::to_string(TypedWhole(text, 1, kHighestPort).value_or(0));
}

}  // namespace

// No decimal sign, as "49,000" is not meant as 49.
bool IsUdpPort(std::string_view text) {
  return text.find_first_of(".,") == std::string_view::npos && TypedWhole(text, 1, kHighestPort);
}

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

UdpSettings UdpOf(const ConfigModel& model) {
  const GeneralRecord& general = model.General;
  return {general.RemoteIP,
          general.RemotePort,
          general.LocalPort,
          general.ByteOrderReverse != 0,
          general.BlockUSEL == 1,
          general.Setting(kFollowSetting),
          !general.Setting(kHearAllSetting).empty()};
}

std::string_view UdpFault(const UdpSettings& settings) {
  if (!IsAddress(settings.remoteIP))
    return "The address is four numbers, each 0 to 255, with points between, or a computer's name.";
  if (!IsUdpPort(settings.remotePort)) return "The simulator's port is a number from 1 to 65535.";
  if (!IsUdpPort(settings.localPort)) return "The port on which we listen is a number from 1 to 65535.";
  return {};
}

void SetUdp(ConfigModel& model, const UdpSettings& settings) {
  model.General.RemoteIP = Plain(settings.remoteIP);
  model.General.RemotePort = PortText(settings.remotePort);
  model.General.LocalPort = PortText(settings.localPort);
  model.General.ByteOrderReverse = settings.reverseByteOrder ? -1 : 0;
  model.General.BlockUSEL = settings.blockUsel ? 1 : 0;
  model.General.SetSetting(kFollowSetting, settings.follow);
  model.General.SetSetting(kHearAllSetting, settings.hearAll ? "yes" : "");
  model.ConfigChanged = true;
}

std::string HostToFollow(const ConfigModel& model, const std::vector<FoundSimulator>& found,
                         std::string_view remoteIP) {
  std::string followed = model.General.Setting(kFollowSetting);
  if (!followed.empty() && model.General.RemoteIP == remoteIP) return followed;
  for (const FoundSimulator& simulator : found) {
    if (simulator.address == remoteIP && simulator.IsMaster()) return simulator.beacon.name;
  }
  return {};
}

}  // namespace tvx
