#include "hwbus/iomodule/IOModule.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "base/Rounding.h"
#include "hwbus/iomodule/IOModuleActions.h"

namespace tvx {
namespace {

constexpr std::size_t kShortestRead = 20;
constexpr int kTransmitInterval = 20;      // ms
constexpr int kOpeningTicks = 100;         // of that
constexpr int kShortestProcessTimer = 10;  // ms
constexpr int kSecond = 1000;              // ms

// The lamps of the command kLampsLow.
constexpr int kLowLampCount = 16;
constexpr std::uint32_t kLowLamps = (1u << kLowLampCount) - 1;
// Of the lighting word.
constexpr int kBrightnessShift = 4, kBrightnessMask = 0xF;

}  // namespace

IOModule::IOModule(const ConfigModel& model, SimCom& sim, HardwarePorts& hardware, Keystrokes& keystrokes,
                   MessageBoxes& boxes, const Clock& clock, const IOModuleParameters& parameters,
                   Timers timers)
    : model_(model),
      sim_(sim),
      hardware_(hardware),
      keystrokes_(keystrokes),
      boxes_(boxes),
      clock_(clock),
      parameters_(parameters),
      timers_(timers),
      ports_(model, sim, parameters.Number, parameters.Opener) {
  events_ = Line().SetHandler([this](SerialEvent event) { MSComm1_OnComm(event); });
  timers_.WriteCmdDuringConfig.SetInterval(kTransmitInterval);
  timers_.TimerSeconds.SetInterval(kSecond);
}

void IOModule::TakeDefinitions() {
  switchDefinitionNr_.fill(0);
  analogueDefinitionNr_.fill(0);
  lampDefinitionNr_.fill(0);
  for (int number = 1; number <= model_.IOMCount(); ++number) {
    const auto input = IOModuleInputOf(Definition(number).Input);
    if (!input || input->Module != parameters_.Number) continue;
    const auto index = static_cast<std::size_t>(input->Index);
    int& slot = input->Kind == IOModuleKind::Switch     ? switchDefinitionNr_[index]
                : input->Kind == IOModuleKind::Analogue ? analogueDefinitionNr_[index]
                                                        : lampDefinitionNr_[index];
    if (slot == 0) slot = number;  // the first definition of an input counts
  }
  ports_.Assign();
}

void IOModule::OpenCommPort() {
  openErrorDue_ = Configured();
  OpenQuietly();
  TellOpenError();
}

void IOModule::OpenQuietly() {
  if (Configured()) hardware_.Open(parameters_.Group);
}

// Once the device has answered, however late that is. Whoever closed the port meanwhile wants no message.
void IOModule::TellOpenError() {
  const SerialState state = Line().State();
  if (!openErrorDue_ || state == SerialState::Opening) return;
  openErrorDue_ = false;
  if (state != SerialState::Open && state != SerialState::Closed) boxes_.Show(parameters_.OpenError);
}

void IOModule::OpenPorts() {
  ports_.Open();
  TakeDefinitions();
}

void IOModule::cmdRun_Click() {
  OpenCommPort();
  running_ = true;
  secondsSilent_ = -1;  // the first tick comes at once
  ForgetTold();
  timers_.WriteCmdDuringConfig.SetEnabled(false);
  timers_.ProcessTimer.SetInterval(std::max<int>(model_.General.TransferInterval, kShortestProcessTimer));
  timers_.ProcessTimer.SetEnabled(true);
  timers_.TimerSeconds.SetEnabled(true);
  TimerSeconds_Tick();
}

void IOModule::cmdStop_Click() {
  running_ = false;
  timers_.ProcessTimer.SetEnabled(false);
  timers_.TimerSeconds.SetEnabled(false);
  timers_.WriteCmdDuringConfig.SetEnabled(true);
}

std::string IOModule::StatusText() const {
  std::string text = running_ ? "Running" : "Halted";
  if (hardware_.InTrouble(parameters_.Group)) return text + "; " + hardware_.WordsOf(parameters_.Group);
  if (running_ && !Answering()) text += "; the module does not answer";
  return text;
}

const FunctionRecord* IOModule::FunctionOf(const IOModuleRecord& definition) const {
  return definition.FunctionNr < 1 ? nullptr : model_.FunctionOf(definition.FunctionNr);
}

// --- reports ---

void IOModule::MSComm1_OnComm(SerialEvent event) {
  SerialPort& port = Line();
  if (event != SerialEvent::Received) {
    port.DiscardInput();
    return;
  }
  std::array<Byte, kReplySize> read{};
  const std::size_t length = port.Read(read);
  if (length < kShortestRead) return;
  if (!IsReplyEnvelope(ByteView(read).first(length))) {
    port.DiscardInput();
    return;
  }
  if (!Answering()) {  // it may have been without power
    ForgetTold();
    sent_ = {};
  }
  secondsSilent_ = 0;
  const IOModuleReport report = ReadIOModuleReport(ReplyView(read));
  observer_(report);
  if (running_) TakeReport(report);
}

void IOModule::TakeReport(const IOModuleReport& report) {
  if (!switchesKnown_ || report.Groups != switchText_) TakeSwitches(report);
  TakeAnalogue(report);
}

void IOModule::TakeSwitches(const IOModuleReport& report) {
  // Remembered first: an action may let the event loop run, and with it the next report.
  switchText_ = report.Groups;
  switchesKnown_ = true;
  for (int i = 0; i < kIOModuleSwitches; ++i) {
    const auto index = static_cast<std::size_t>(i);
    switchState_[index] = report.On(i);
    if (switchState_[index] == lastSwitchState_[index]) continue;
    lastSwitchState_[index] = switchState_[index];
    if (switchDefinitionNr_[index] != 0) RunSwitchAction(switchDefinitionNr_[index], report.On(i));
  }
}

void IOModule::TakeAnalogue(const IOModuleReport& report) {
  analogueValue_ = report.Analogue;
  for (std::size_t j = 0; j < analogueValue_.size(); ++j) {
    const int definitionNr = analogueDefinitionNr_[j];
    const int change = std::abs(analogueValue_[j] - lastAnalogueValue_[j]);
    if (definitionNr == 0 || change == 0) continue;
    // ODDITY: remembered even where it stays within the dead band, so an axis that creeps never sends.
    lastAnalogueValue_[j] = analogueValue_[j];
    const IOModuleRecord& definition = Definition(definitionNr);
    const FunctionRecord* function = FunctionOf(definition);
    if (change <= definition.DeadBand || function == nullptr) continue;
    const float value = tvx::AnalogueValue(definition, *function, analogueValue_[j]);
    if (!std::isfinite(value)) continue;
    analogueOut_ = value;
    ports_.Put(definitionNr, value);
  }
}

// What a step starts from. The clicks of an encoder come faster than the simulator answers: while they follow
// each other, each goes on from what the one before has written.
std::optional<double> IOModule::StepsFrom(int definitionNr) const {
  const auto known = ports_.Known(definitionNr);
  if (!known || !IsEncoder(Definition(definitionNr))) return known;
  const auto step = ports_.LastStep(definitionNr, clock_.MonotonicMs());
  return step ? step : known;
}

void IOModule::RunSwitchAction(int definitionNr, bool on) {
  const IOModuleRecord& definition = Definition(definitionNr);
  const FunctionRecord* function = FunctionOf(definition);
  const auto from = StepsFrom(definitionNr);
  // A step from a value that never came would set the Function to its lowest value.
  if (IsRelative(definition) && !from) return;
  const IOModuleEffect effect = SwitchEffect(definition, function, on, from.value_or(0.0));
  switch (effect.What) {
    case IOModuleEffect::Kind::Keystroke:
      keystrokes_.SendKeystroke(effect.Keystroke);
      break;
    case IOModuleEffect::Kind::Value:
      ports_.Put(definitionNr, effect.Value);
      if (IsEncoder(definition)) ports_.NoteStep(definitionNr, effect.Value, clock_.MonotonicMs());
      break;
    case IOModuleEffect::Kind::Command:
      if (function != nullptr) sim_.SendXplaneCommand(function->FullName, effect.Entry);
      break;
    case IOModuleEffect::Kind::Nothing:
      break;
  }
}

// --- commands ---

bool IOModule::ComposeCmd(int, int command, std::int32_t value) {
  const auto frame = BuildGaugeFrame(kIOModuleBusAddress, command, value);
  if (!frame) throw RangeError("IO module command value " + std::to_string(value) + " does not fit");
  return waiting_.Push(*frame);
}

void IOModule::WriteCmdDuringConfig_Tick() {
  if (waiting_.Empty()) return;
  OpenQuietly();
  // A line that is being opened gets a while. A command to one that stays so is lost, or those behind it
  // would wait.
  if (Line().State() == SerialState::Opening && ++openingTicks_ < kOpeningTicks) return;
  if (Line().IsOpen()) openingTicks_ = 0;
  Send(waiting_.Front());
  waiting_.Pop();
}

// False where the line did not take them.
bool IOModule::Send(ByteView frames) {
  const bool taken = Line().Write(frames);
  if (taken) sent_.Note(frames);
  return taken;
}

void IOModule::ForgetTold() {
  toldLampsLow_ = toldLampsHigh_ = toldBrightness_ = toldLighting_ = std::nullopt;
}

void IOModule::AppendCommand(int command, std::int32_t value) {
  const auto frame = BuildGaugeFrame(kIOModuleBusAddress, command, value);
  if (!frame || batchSize_ + frame->size() > batch_.size()) return;
  std::copy(frame->begin(), frame->end(), batch_.begin() + static_cast<std::ptrdiff_t>(batchSize_));
  batchSize_ += frame->size();
}

void IOModule::AppendIfChanged(Told& told, int command, std::int32_t value) {
  if (told == value) return;
  told = value;
  AppendCommand(command, value);
}

void IOModule::RefreshLamps() {
  lamps_ = 0;
  for (std::size_t i = 0; i < lampDefinitionNr_.size(); ++i) {
    const int definitionNr = lampDefinitionNr_[i];
    if (definitionNr == 0) continue;
    const IOModuleRecord& definition = Definition(definitionNr);
    const FunctionRecord* function = FunctionOf(definition);
    float value = 0;
    // A value that is not known lights no lamp, not even that of "equals its minimum".
    const bool known = ports_.Read(definitionNr, value);
    if (function != nullptr && known && LampLit(definition, *function, static_cast<double>(value))) {
      lamps_ |= 1u << i;
    }
  }
}

void IOModule::ProcessTimer_Tick() {
  if (!running_) return;
  TellOpenError();
  batchSize_ = 0;
  std::ranges::copy(waiting_.Front(), batch_.begin());
  batchSize_ = waiting_.Front().size();
  waiting_.Pop();
  RefreshLamps();
  AppendIfChanged(toldLampsLow_, iom_command::kLampsLow, static_cast<std::int32_t>(lamps_ & kLowLamps));
  AppendIfChanged(toldLampsHigh_, iom_command::kLampsHigh,
                  static_cast<std::int32_t>(lamps_ >> kLowLampCount));
  AppendIfChanged(toldBrightness_, iom_command::kBrightness, lighting_ >> kBrightnessShift & kBrightnessMask);
  AppendIfChanged(toldLighting_, kCommandLighting, lighting_);
  if (batchSize_ == 0) return;
  // The line did not take it, so the module was not told: the next tick sends all of it again.
  if (!Send(ByteView(batch_).first(batchSize_))) ForgetTold();
}

// Asks for a report: a module may have been plugged in late, or a report may have been lost.
void IOModule::TimerSeconds_Tick() {
  if (!running_) return;
  if (secondsSilent_ < kSilentSeconds) ++secondsSilent_;
  if (waiting_.Empty()) ComposeCmd(0, kCommandReportState, 0);
}

}  // namespace tvx
