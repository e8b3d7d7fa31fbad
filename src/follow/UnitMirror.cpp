#include "follow/UnitMirror.h"

#include <algorithm>

#include "hwbus/iomodule/IOModuleInput.h"

namespace tvx {
namespace {

constexpr double kWholeLoad = 1000;  // of a yoke's reply: tenths of a percent

drawn::YokeState::Motors MotorsOf(const Yoke& yoke) {
  const Byte status = yoke.Line().LastReply().status;
  const bool off =
      (status & yokestatus::kPower) == 0 || (status & (yokestatus::kStopButton | yokestatus::kFading)) != 0;
  if (off || yoke.Opening() <= 0) return drawn::YokeState::Motors::Slack;
  return yoke.Commanded().drive == Drive::Servo ? drawn::YokeState::Motors::Servo
                                                : drawn::YokeState::Motors::Spring;
}

}  // namespace

std::vector<UnitName> UnitMirror::Configured() const {
  std::vector<UnitName> units;
  if (parts_.Model.HasEngineCluster()) units.push_back({UnitName::Kind::Cluster, 1});
  const auto defined = [this](int module) {
    return std::ranges::any_of(parts_.Model.IOModuleInputs, [module](const IOModuleRecord& record) {
      const auto input = IOModuleInputOf(record.Input);
      return input && input->Module == module;
    });
  };
  for (const int module : {1, 2}) {
    if (parts_.Modules[PlaceOf(module)]->Configured() || defined(module))
      units.push_back({UnitName::Kind::Module, module});
  }
  for (const int yoke : {1, 2}) {
    if (parts_.Yokes.Configured(yoke)) units.push_back({UnitName::Kind::Yoke, yoke});
  }
  return units;
}

void UnitMirror::Refresh() {
  RefreshCluster();
  for (const int number : {1, 2}) {
    RefreshModule(number);
    RefreshYoke(number);
  }
}

// The order to sweep stands in a single frame, which the next one has covered long since.
void UnitMirror::RefreshCluster() {
  const std::int64_t now = parts_.Time.MonotonicMs();
  if (const auto& sent = parts_.Cluster.SentFrame()) cluster_.Take(*sent, now);
  if (const auto since = parts_.Cluster.RecalibratedMs()) cluster_.SweepFrom(*since);
  cluster_.Advance(now);
}

void UnitMirror::RefreshModule(int number) {
  const IOModule& module = *parts_.Modules[PlaceOf(number)];
  drawn::IOModuleState& state = modules_[PlaceOf(number)];
  state.StartAnew();
  for (int command = 0; command < drawn::IOModuleState::kCommands; ++command) {
    if (const auto value = module.Sent().Of(command)) state.TakeCommand(command, *value);
  }
  if (!module.SwitchesKnown()) return;
  state.switches = module.SwitchState();
  std::ranges::copy(module.AnalogueValue(), state.axes.begin());
}

void UnitMirror::RefreshYoke(int number) {
  const Yoke& yoke = parts_.Yokes.Of(number);
  const YokeLine& line = yoke.Line();
  drawn::YokeState& state = yokes_[PlaceOf(number)];
  if (line.ReplyAgeMs()) {
    yokeKnown_[PlaceOf(number)] = true;
    const YokeReply& reply = line.LastReply();
    state.position = {line.RollPosition() / static_cast<double>(kYokeTravel),
                      line.PitchPosition() / static_cast<double>(kYokeTravel)};
    state.force = {reply.rollLoad / kWholeLoad, reply.pitchLoad / kWholeLoad};
    state.directed = false;
    state.buttons = reply.buttons;
    state.motors = MotorsOf(yoke);
    state.gripped = yoke.Gripped();
  }
  state.pedals.reset();
  if (const PedalRatios* feet = parts_.Yokes.PedalsOf(number))
    state.pedals = {static_cast<double>(feet->rudder), static_cast<double>(feet->leftBrake),
                    static_cast<double>(feet->rightBrake)};
}

bool UnitMirror::Known(const UnitName& unit) const {
  const std::size_t place = PlaceOf(unit.number);
  switch (unit.kind) {
    case UnitName::Kind::Cluster:
      return parts_.Cluster.SentFrame().has_value();
    case UnitName::Kind::Module:
      return parts_.Modules[place]->SwitchesKnown() || parts_.Modules[place]->Sent().Any();
    case UnitName::Kind::Yoke:
      return yokeKnown_[place];
  }
  return false;
}

}  // namespace tvx
