// What the main configuration form does to the model.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/Model.h"
#include "simlink/beacon/SimulatorFinder.h"

namespace tvx {

// A way to light the faces; the list of ComboLights in its order.
struct LightsMode {
  std::string_view name;
  std::int16_t setting1;  // which lights of the simulator light the faces: bit mask
  std::int16_t setting2;  // 1 always, 2 never, 0 by the mask
};
inline constexpr std::array<LightsMode, 5> kLightsModes{{{"With the instrument lights", 32, 0},
                                                         {"Always lit", 0, 1},
                                                         {"Never lit", 0, 2},
                                                         {"With the navigation lights", 1, 0},
                                                         {"With any light", 63, 0}}};

// The entry whose pair the model holds; std::nullopt where none does.
std::optional<std::size_t> LightsModeIndex(const ConfigModel& model);
void SetLightsMode(ConfigModel& model, std::size_t index);  // index below kLightsModes.size()

// Sets fields 1..10 of the gauges 1..255 to 0.
// ODDITY: GaugeID 0 and every gauge's GaugeSetting6 stay as they are; installations keep notes of theirs
// there.
void ClearAllGauges(ConfigModel& model);

// The UDP settings as the form holds them.
struct UdpSettings {
  std::string remoteIP, remotePort, localPort;
  bool reverseByteOrder = false;
  bool blockUsel = false;
  std::string follow{};  // the host whose X-Plane's address is followed; empty: none
  bool hearAll = false;  // values are taken from any computer
  bool operator==(const UdpSettings&) const = default;
};
UdpSettings UdpOf(const ConfigModel& model);
void SetUdp(ConfigModel& model, const UdpSettings& settings);
// A port as it is typed: a whole number from 1 to 65535.
bool IsUdpPort(std::string_view text);
// What is wrong with them, in words; empty where they are right.
std::string_view UdpFault(const UdpSettings& settings);
// The host whose X-Plane can be followed where `remoteIP` is the address: the one that is followed at this
// address already, or that of the simulator which is heard there. Empty where none is known.
std::string HostToFollow(const ConfigModel& model, const std::vector<FoundSimulator>& found,
                         std::string_view remoteIP);

}  // namespace tvx
