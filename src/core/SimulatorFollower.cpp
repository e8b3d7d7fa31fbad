#include "core/SimulatorFollower.h"

#include "platform/HostName.h"

namespace tvx {

void SimulatorFollower::Tick(bool mayFollow) {
  const std::string host = model_.General.Setting(kFollowSetting);
  if (host.empty() == listens_) {
    listens_ = !host.empty();
    listening_ = listens_ ? finder_.Listen() : Registration();
  }
  if (host.empty() || !mayFollow) return;
  const FoundSimulator* moved = Moved(host);
  if (moved == nullptr) return;
  model_.General.UseSimulator(moved->address, moved->beacon.port, host);
  model_.ConfigChanged = true;
  if (sim_.UdpOpen()) sim_.OpenUDP();
}

const FoundSimulator* SimulatorFollower::Moved(const std::string& host) const {
  if (!ParseIPv4(model_.General.RemoteIP)) return nullptr;
  if (sim_.SilentForMs().value_or(kLinkSilentMs) < kLinkSilentMs) return nullptr;
  const FoundSimulator* moved = nullptr;
  for (const FoundSimulator& simulator : finder_.Found()) {
    if (simulator.address == model_.General.RemoteIP) return nullptr;
    if (simulator.beacon.name != host || !simulator.IsMaster()) continue;
    if (moved != nullptr) return nullptr;  // which of the two nobody can tell
    moved = &simulator;
  }
  if (moved == nullptr || clock_.MonotonicMs() - moved->sinceMs < kSettledMs) return nullptr;
  return moved;
}

}  // namespace tvx
