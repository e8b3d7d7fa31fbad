#include "guide/SwitchStep.h"

#include <algorithm>

namespace tvx {
namespace {

constexpr int kTicksBetweenReports = 5;

std::string NameOf(const IOModuleInput& input) {
  std::string name = "Axis " + std::to_string(input.Index + 1);
  if (input.Kind == IOModuleKind::Switch) {
    name = "Switch ";
    name += static_cast<char>('A' + input.Index / kIOModuleGroupSize);
    name += std::to_string(input.Index % kIOModuleGroupSize + 1);
  }
  return name + " of IO module " + std::to_string(input.Module);
}

}  // namespace

bool SwitchStep::AnyModule() const {
  return std::any_of(modules_.begin(), modules_.end(),
                     [](const IOModule* module) { return module != nullptr && module->Configured(); });
}

void SwitchStep::Start() {
  for (std::size_t i = 0; i < modules_.size(); ++i) {
    IOModule* module = modules_[i];
    if (module == nullptr || !module->Configured()) continue;
    touch_[i].emplace(module->Parameters().Number);
    module->TakeDefinitions();
    reports_[i] = module->SetReportObserver([this, i](const IOModuleReport& report) { OnReport(i, report); });
  }
  ticks_ = 0;
}

void SwitchStep::Stop() {
  for (Registration& report : reports_) report.End();
  for (auto& touch : touch_) touch.reset();
}

void SwitchStep::Tick() {
  const bool ask = ++ticks_ % kTicksBetweenReports == 0;
  for (std::size_t i = 0; i < modules_.size(); ++i) {
    if (!touch_[i] || modules_[i]->Running()) continue;
    if (ask && !modules_[i]->TransmitPending()) modules_[i]->ComposeCmd(0, kCommandReportState, 0);
    modules_[i]->WriteCmdDuringConfig_Tick();
  }
}

// A click of an encoder moves one half or the other, by its direction: two neighbours that move one after the
// other are taken for one.
void SwitchStep::OnReport(std::size_t module, const IOModuleReport& report) {
  if (!touch_[module]) return;
  const auto touched = touch_[module]->Take(report);
  if (!touched) return;
  const std::int64_t now = clock_.MonotonicMs();
  const bool switches = chosen_ && chosen_->Kind == IOModuleKind::Switch &&
                        touched->Kind == IOModuleKind::Switch && chosen_->Module == touched->Module;
  const int lower = chosen_ ? std::min(chosen_->Index, touched->Index) : 0;
  const int apart = chosen_ ? std::abs(chosen_->Index - touched->Index) : 0;
  const bool together = switches && now - movedMs_ < kTogetherMs &&
                        chosen_->Index / kIOModuleGroupSize == touched->Index / kIOModuleGroupSize;
  movedMs_ = now;
  if (together && encoder_ && (touched->Index == chosen_->Index || touched->Index == chosen_->Index + 1))
    return;
  encoder_ = together && apart == 1;
  chosen_ = touched;
  if (encoder_) chosen_->Index = lower;
  changed_();
}

std::string SwitchStep::Words() const {
  if (!AnyModule())
    return "No IO module has a port. Find everything first, or give it one in the configuration.";
  if (!chosen_) return "Move a switch, turn an encoder both ways, or move an axis.";
  const IOModuleRecord definition = presenter_.DefinitionOf(*chosen_);
  std::string words = encoder_ ? "An encoder on two switches from " + NameOf(*chosen_).substr(7) + " moved"
                               : NameOf(*chosen_) + " moved";
  if (!presenter_.Defined(*chosen_)) return words + ". What is it for?";
  const std::string use = UseOf(model_, definition);
  const FunctionRecord* function = model_.FunctionOf(definition.FunctionNr);
  words += ": " + (!use.empty() || function == nullptr ? use : function->ShortName);
  return words + '.';
}

std::vector<std::size_t> SwitchStep::Uses() const {
  std::vector<std::size_t> fitting;
  for (std::size_t i = 0; i < UsualUses().size(); ++i) {
    const UseKind kind = UsualUses()[i].kind;
    const bool axis = chosen_ && chosen_->Kind == IOModuleKind::Analogue;
    const bool fits = !chosen_ || (axis ? kind == UseKind::Axis
                                        : kind != UseKind::Axis && (kind == UseKind::Encoder) == encoder_);
    if (fits) fitting.push_back(i);
  }
  return fitting;
}

std::optional<std::size_t> SwitchStep::UseNow() const {
  if (!chosen_ || !presenter_.Defined(*chosen_)) return std::nullopt;
  const std::string name = UseOf(model_, presenter_.DefinitionOf(*chosen_));
  const auto use = std::ranges::find(UsualUses(), name, &UsualUse::name);
  if (use == UsualUses().end()) return std::nullopt;
  return static_cast<std::size_t>(use - UsualUses().begin());
}

bool SwitchStep::Take(std::size_t use) {
  if (!chosen_ || use >= UsualUses().size()) return false;
  const auto definitions = DefinitionsFor(model_, UsualUses()[use], *chosen_);
  if (definitions.empty()) return false;
  // What was there before may forbid it: half an encoder beside a switch.
  for (const IOModuleRecord& definition : definitions) {
    if (const auto input = IOModuleInputOf(definition.Input)) presenter_.Remove(*input);
  }
  const bool stored = std::all_of(definitions.begin(), definitions.end(),
                                  [this](const IOModuleRecord& record) { return presenter_.Store(record); });
  TakeDefinitions();
  changed_();
  return stored;
}

void SwitchStep::TakeDefinitions() {
  for (IOModule* module : modules_) {
    if (module != nullptr) module->TakeDefinitions();
  }
}

}  // namespace tvx
