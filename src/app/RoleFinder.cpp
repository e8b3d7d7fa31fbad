#include "app/RoleFinder.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "ffb/YokeSettings.h"

namespace tvx {
namespace {

std::vector<HardwareGroup> GroupsOf(std::optional<AdapterRole> role) {
  if (!role) return {};
  switch (*role) {
    case AdapterRole::GaugeBus:
      return {HardwareGroup::GaugeBus};
    case AdapterRole::IOModule:
      return {HardwareGroup::IOModule1, HardwareGroup::IOModule2};
    case AdapterRole::EngineCluster:
      return {HardwareGroup::EngineCluster};
    case AdapterRole::Yoke:
      return {HardwareGroup::Yoke1, HardwareGroup::Yoke2};
  }
  return {};
}

}  // namespace

void RoleFinder::Ask(const SerialDevice& adapter) {
  serial_.CloseComPorts();
  serial_.Ports().Hold();
  adapter_ = adapter;
  line_.path = adapter.path;
  std::vector<int> gauges;
  for (std::size_t id = 0; id < model_.Gauges.size(); ++id) {
    if (model_.Gauges[id].GaugeType != 0) gauges.push_back(static_cast<int>(id));
  }
  const std::vector<Byte> yokes{ReadYokeSettings(model_.Yoke1).address,
                                ReadYokeSettings(model_.Yoke2).address};
  inquiry_.Start(1, yokes, gauges);
  words_ = inquiry_.Words();
}

void RoleFinder::Cancel() {
  if (!Running()) return;
  inquiry_.Cancel();
  End();
}

void RoleFinder::Tick() {
  if (!Running()) return;
  inquiry_.Tick();
  words_ = inquiry_.Words();
  if (!Running()) End();
}

void RoleFinder::End() {
  words_ = inquiry_.Words();
  if (Serves()) words_ += ", and is in use for that already";
  serial_.OpenComPorts();
}

bool RoleFinder::Changed() {
  return std::exchange(shown_, words_) != words_;
}

bool RoleFinder::Serves() const {
  const auto groups = GroupsOf(inquiry_.Found());
  return std::any_of(groups.begin(), groups.end(), [this](HardwareGroup group) {
    return numbers_.LeadsTo(serial_.Ports().ComNumber(group), adapter_);
  });
}

std::optional<RoleFinder::Offer> RoleFinder::Offered() const {
  const auto groups = GroupsOf(inquiry_.Found());
  if (groups.empty() || Serves()) return std::nullopt;
  const HardwarePorts& ports = serial_.Ports();
  for (const HardwareGroup group : groups) {
    const int number = ports.ComNumber(group);
    if (number > 0 && numbers_.PathOf(number).empty()) return Offer{group, number};
  }
  for (const HardwareGroup group : groups) {
    if (!ports.Configured(group)) return Offer{group, 0};
  }
  return Offer{groups.front(), 0};
}

}  // namespace tvx
