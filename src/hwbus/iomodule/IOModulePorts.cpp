#include "hwbus/iomodule/IOModulePorts.h"

#include <algorithm>
#include <cmath>

#include "hwbus/iomodule/IOModuleActions.h"

namespace tvx {
namespace {

constexpr std::int64_t kClicksFollowMs = 500;

}  // namespace

void IOModulePorts::Open() {
  Forget();
  open_ = true;
  Assign();
}

void IOModulePorts::Forget() {
  open_ = false;
  targets_.clear();
  targetOf_.clear();
}

void IOModulePorts::Assign() {
  targetOf_.assign(static_cast<std::size_t>(model_.IOMCount()), kNone);
  if (!open_) return;
  const OpenerScope by(sim_, opener_);
  for (std::size_t i = 0; i < targetOf_.size(); ++i) {
    const IOModuleRecord& definition = model_.IOModuleInputs[i];
    const auto input = IOModuleInputOf(definition.Input);
    if (!input || input->Module != module_ || definition.FunctionNr == 0) continue;
    if (input->Kind == IOModuleKind::Switch && ActionOf(definition) != IOModuleAction::WriteValue) continue;
    const bool reads =
        input->Kind == IOModuleKind::Lamp || (input->Kind == IOModuleKind::Switch && IsRelative(definition));
    targetOf_[i] = OpenTarget(definition, reads);
  }
}

// Definitions that step or light a lamp share the port of their Function, and those that only write, another.
std::size_t IOModulePorts::OpenTarget(const IOModuleRecord& definition, bool reads) {
  const auto found = std::ranges::find_if(targets_, [&](const Target& target) {
    return target.function == definition.FunctionNr && target.sequence == definition.SequenceNr &&
           target.read == reads;
  });
  if (found != targets_.end()) return static_cast<std::size_t>(found - targets_.begin());
  Target& target = targets_.emplace_back();
  target.function = definition.FunctionNr;
  target.sequence = definition.SequenceNr;
  target.read = reads;
  target.port = sim_.OpenSimPort(definition.FunctionNr, definition.SequenceNr);
  if (reads && target.port != kNoPort) sim_.EnableReadSimPort(target.port);
  return targets_.size() - 1;
}

std::size_t IOModulePorts::IndexOf(int definitionNr) const {
  if (definitionNr < 1 || static_cast<std::size_t>(definitionNr) > targetOf_.size()) return kNone;
  return targetOf_[static_cast<std::size_t>(definitionNr - 1)];
}

bool IOModulePorts::Read(int definitionNr, float& value) const {
  const std::size_t target = IndexOf(definitionNr);
  return target != kNone && sim_.GetPort(targets_[target].port, value) && std::isfinite(value);
}

std::optional<double> IOModulePorts::Known(int definitionNr) const {
  float value = 0;
  if (!Read(definitionNr, value)) return std::nullopt;
  const Target& target = targets_[IndexOf(definitionNr)];
  // A macro's value is the program's own: it is there without coming.
  const FunctionRecord* function = model_.FunctionOf(target.function);
  if (!sim_.HasArrived(target.port) && (function == nullptr || !function->IsMacro())) return std::nullopt;
  return static_cast<double>(value);
}

void IOModulePorts::Put(int definitionNr, float value) {
  if (const std::size_t target = IndexOf(definitionNr); target != kNone) {
    sim_.PutPort(targets_[target].port, value);
  }
}

Port IOModulePorts::PortOf(int definitionNr) const {
  const std::size_t target = IndexOf(definitionNr);
  return target == kNone ? kNoPort : targets_[target].port;
}

void IOModulePorts::NoteStep(int definitionNr, float value, std::int64_t nowMs) {
  const std::size_t target = IndexOf(definitionNr);
  if (target == kNone) return;
  targets_[target].written = value;
  targets_[target].writtenMs = nowMs;
}

std::optional<double> IOModulePorts::LastStep(int definitionNr, std::int64_t nowMs) const {
  const std::size_t target = IndexOf(definitionNr);
  if (target == kNone || nowMs - targets_[target].writtenMs > kClicksFollowMs) return std::nullopt;
  return static_cast<double>(targets_[target].written);
}

}  // namespace tvx
