#include "guide/SetUpSearch.h"

#include <algorithm>

namespace tvx {
namespace {

constexpr int kAddresses = 256;
constexpr int kAdaptersShare = 30;  // of the bar, percent

}  // namespace

void SetUpSearch::Start() {
  if (Running()) return;
  adapters_ = hardware_.FreeAdapters();
  adapter_ = 0;
  adapterLines_.clear();
  simulatorTaken_.clear();
  state_ = State::Adapters;
  if (adapters_.empty()) {
    BeginGauges();
  } else {
    hardware_.AskRole(adapters_.front());
  }
}

void SetUpSearch::Cancel() {
  if (state_ == State::Adapters) hardware_.StopAskingRole();
  if (state_ == State::Gauges) hardware_.StopSearch();
  state_ = State::Idle;
}

void SetUpSearch::Tick() {
  if (state_ == State::Adapters && !hardware_.AskingRole()) NextAdapter();
  if (state_ == State::Gauges && !hardware_.SearchingGauges()) End();
}

void SetUpSearch::NextAdapter() {
  const SerialDevice& asked = adapters_[adapter_];
  adapterLines_.push_back(asked.Words() + ' ' + hardware_.TakeRole(asked));
  if (++adapter_ < adapters_.size()) {
    hardware_.AskRole(adapters_[adapter_]);
  } else {
    BeginGauges();
  }
}

void SetUpSearch::BeginGauges() {
  state_ = State::Gauges;
  const bool begun = model_.General.ComPortGS > 0 && hardware_.SearchGauges();
  if (!begun) End();
}

void SetUpSearch::End() {
  state_ = State::Idle;
  done_ = true;
  TakeSimulator();
}

// Only where there is no doubt which one is meant.
void SetUpSearch::TakeSimulator() {
  const FoundSimulator* only = nullptr;
  for (const FoundSimulator& simulator : finder_.Found()) {
    if (!simulator.IsMaster()) continue;
    if (only != nullptr) return;
    only = &simulator;
  }
  if (only == nullptr || only->IsAt(model_.General.RemoteIP, model_.General.RemotePort)) return;
  model_.General.UseSimulator(only->address, only->beacon.port, only->beacon.name);
  model_.ConfigChanged = true;
  simulatorTaken_ = " It is used from now on.";
}

int SetUpSearch::Percent() const {
  if (state_ == State::Idle) return done_ ? 100 : 0;
  if (state_ == State::Gauges)
    return kAdaptersShare + hardware_.SearchedAddresses() * (100 - kAdaptersShare) / kAddresses;
  const auto count = static_cast<int>(std::max<std::size_t>(adapters_.size(), 1));
  return static_cast<int>(adapter_) * kAdaptersShare / count;
}

std::string SetUpSearch::SimulatorWords() const {
  if (!finder_.Trouble().empty()) return "Simulator: " + finder_.Trouble();
  if (finder_.Found().empty()) {
    return "No simulator is heard. It is looked for at " + model_.General.RemoteIP + ", port " +
           model_.General.RemotePort + '.';
  }
  std::string words;
  for (const FoundSimulator& simulator : finder_.Found()) {
    const bool used = simulator.IsAt(model_.General.RemoteIP, model_.General.RemotePort);
    words += (words.empty() ? "" : "\n") + simulator.Words() + (used ? ": in use." : ".");
  }
  return words + simulatorTaken_;
}

std::string SetUpSearch::Words() const {
  std::string words = SimulatorWords();
  for (const std::string& line : adapterLines_) words += '\n' + line;
  if (state_ == State::Adapters && adapter_ < adapters_.size())
    words += '\n' + adapters_[adapter_].Words() + " is being asked what hangs on it...";
  if (state_ == State::Idle && done_ && adapters_.empty() && model_.General.ComPortGS <= 0)
    words += "\nNo serial adapter was found that is free. Plug in the interface module and find again.";
  const std::string gauges = hardware_.GaugesFoundWords();
  if ((state_ == State::Gauges || done_) && !gauges.empty()) words += '\n' + gauges;
  return words;
}

}  // namespace tvx
