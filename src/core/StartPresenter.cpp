#include "core/StartPresenter.h"

#include <cmath>

#include "config/FunctionNumbers.h"
#include "config/StartFile.h"
#include "core/StatusPresenter.h"
#include "core/watch/LinkWords.h"

namespace tvx {
namespace {

constexpr int kTicksPerSecond = 20;
constexpr std::string_view kSimulatorName = "X-Plane";
constexpr std::string_view kCountdownText = "Program will autostart with Selected Config in: ";
constexpr std::string_view kWaitingText = "                            Waiting for X-Plane ready: ";

bool IsPort(Port port) {
  return static_cast<std::int16_t>(port) >= 0;
}

}  // namespace

std::string SimulatorVersionText(float version) {
  const std::string digits = FormatNumberText(std::trunc(static_cast<double>(version)), "0");
  const auto pair = [&digits](std::size_t at) {
    return at < digits.size() ? digits.substr(at, 2) : std::string();
  };
  return pair(0) + "." + pair(2) + "." + pair(4);
}

StartPresenter::StartPresenter(ConfigModel& model, ConfigFile& file, SimCom& sim, SimulatorFinder& finder,
                               MessageBoxes& boxes, Shell& shell, const Clock& clock, StatusPresenter& run,
                               Timers timers)
    : model_(model),
      file_(file),
      sim_(sim),
      boxes_(boxes),
      finder_(finder),
      shell_(shell),
      clock_(clock),
      run_(run),
      timers_(timers) {}

void StartPresenter::Activate() {
  const bool first = !firstLoadDone_;
  firstLoadDone_ = true;
  probeState_ = ProbeState::OpenLink;
  probeSinceMs_ = clock_.MonotonicMs();
  if (taken_ && !IsInUse(*taken_)) taken_.reset();  // the user has set another address since
  if (first) model_.ProgramTitle = std::string(kProgramTitle);
  if (!first) ShowCountdown(false);
  view_.Notice.clear();
  view_.FileName = model_.ConfigFileName = ReadStartFile(model_);
  if (first) {
    view_.TextAutostart = std::string(kCountdownText);
    timers_.TimerWaitForFS.SetEnabled(false);
    ShowCountdown(true);
    view_.BoxAutoStartTime = model_.StartDelay;
    Changed();
    file_.LoadConfigFile();
    timers_.WaitForAutostart.SetEnabled(true);
  }
  Changed();
}

void StartPresenter::WaitForAutostart_Tick() {
  // A question about the file that is being loaded holds the countdown.
  if (file_.Loading()) return;
  ++probeTicks_;
  ProbeDuringCountdown();
  if (probeTicks_ < kTicksPerSecond) return;
  probeTicks_ = 0;
  // The port was taken, or the name not known: perhaps it is better now.
  if (probeState_ == ProbeState::ReadVersion && !sim_.UdpOpen()) ProbeAnew();
  if (--view_.BoxAutoStartTime < 1) {
    if (simVersion_ > 0) {
      AutoStartRun();
      return;
    }
    view_.BoxAutoStartTime = 0;
    timers_.TimerWaitForFS.SetEnabled(true);
    // The waiting begins: no further step of the countdown may restart it.
    timers_.WaitForAutostart.SetEnabled(false);
    CloseProbe();
    probeState_ = ProbeState::OpenLink;
  }
  Changed();
}

void StartPresenter::ProbeDuringCountdown() {
  switch (probeState_) {
    case ProbeState::OpenLink:
      sim_.OpenUDP();
      sim_.ClearDataReceived();
      probeState_ = ProbeState::OpenPort;
      break;
    case ProbeState::OpenPort:
      probeState_ = OpenProbePort() ? ProbeState::ReadVersion : ProbeState::CloseLink;
      break;
    case ProbeState::ReadVersion:
      if (!ReadVersion()) break;
      ShowSimulator();
      probeState_ = ProbeState::CloseLink;
      break;
    case ProbeState::CloseLink:
      CloseProbe();
      probeState_ = ProbeState::Done;
      break;
    default:
      break;
  }
}

void StartPresenter::TimerWaitForFS_Tick() {
  if (file_.Loading()) return;
  view_.TextAutostart = std::string(kWaitingText);
  ShowCountdown(true);
  ++view_.BoxAutoStartTime;
  switch (probeState_) {
    case ProbeState::OpenLink:
      sim_.OpenUDP();
      probeState_ = ProbeState::OpenPort;
      break;
    case ProbeState::OpenPort:
      if (OpenProbePort()) {
        probeState_ = ProbeState::ReadVersion;
        break;
      }
      CloseProbe();
      timers_.TimerWaitForFS.SetEnabled(false);
      timers_.WaitForAutostart.SetEnabled(false);
      boxes_.Show("Cannot detect X-Plane status.");
      break;
    case ProbeState::ReadVersion:
      if (ReadVersion()) {
        ShowSimulator();
        AutoStartRun();
        return;
      }
      probeState_ = ProbeState::OpenLink;
      CloseProbe();
      break;
    default:
      probeState_ = ProbeState::OpenLink;
      break;
  }
  Changed();
}

bool StartPresenter::OpenProbePort() {
  const OpenerScope by(sim_, opener::kInternal);
  probePort_ = sim_.OpenSimPort(functions::kSimulatorVersion, 1);
  if (!IsPort(probePort_)) return false;
  sim_.EnableReadSimPort(probePort_);
  return true;
}

bool StartPresenter::ReadVersion() {
  simVersion_ = 0;
  sim_.GetPort(probePort_, simVersion_);
  return simVersion_ > 0;
}

void StartPresenter::ShowSimulator() {
  view_.SimulatorName = std::string(kSimulatorName);
  view_.LabelXplaneVersion = SimulatorVersionText(simVersion_);
}

void StartPresenter::CloseProbe() {
  sim_.ClearAllRREF();
  sim_.CloseAllPorts();
  sim_.CloseUDP();
}

void StartPresenter::ProbeAnew() {
  CloseProbe();
  probeState_ = ProbeState::OpenLink;
}

void StartPresenter::LoadFile() {
  file_.LoadConfigFile();
  if (!taken_ || model_.ConfigLoadFailed) return;
  model_.General.UseSimulator(taken_->address, taken_->beacon.port, taken_->beacon.name);
  model_.ConfigChanged = true;
}

bool StartPresenter::IsInUse(const FoundSimulator& simulator) const {
  return simulator.IsAt(model_.General.RemoteIP, model_.General.RemotePort);
}

void StartPresenter::TakeSimulator(const FoundSimulator& simulator) {
  if (file_.Loading()) return;
  if (sim_.UdpOpen()) CloseProbe();
  probeState_ = ProbeState::OpenLink;
  taken_ = simulator;
  model_.General.UseSimulator(simulator.address, simulator.beacon.port, simulator.beacon.name);
  model_.ConfigChanged = true;
  probeSinceMs_ = clock_.MonotonicMs();
  simVersion_ = 0;
  view_.LabelXplaneVersion.clear();
  view_.SimulatorName.clear();
  Changed();
}

void StartPresenter::UpdateWords() {
  view_.SimulatorTrouble = false;
  if (!timers_.WaitForAutostart.Enabled() && !timers_.TimerWaitForFS.Enabled()) {
    view_.SimulatorWords = "is not looked for now. Press OK to go on, and Run there.";
    return;
  }
  const auto silent = sim_.SilentForMs();
  const bool notAsked = probeState_ == ProbeState::CloseLink || probeState_ == ProbeState::Done;
  if (notAsked && sim_.LinkError().empty()) {
    view_.SimulatorTrouble = true;
    view_.SimulatorWords = "cannot be asked: this configuration lacks Function 300, X-Plane's version.";
    return;
  }
  SimulatorLinkState state;
  state.Running = true;
  state.SocketOpen = sim_.UdpOpen();
  state.SocketError = sim_.LinkError();
  state.EverAnswered = silent.has_value();
  state.SilentMs = silent.value_or(clock_.MonotonicMs() - probeSinceMs_);
  state.RemoteHost = model_.General.RemoteIP;
  state.RemotePort = model_.General.RemotePort;
  state.LocalPort = model_.General.LocalPort;
  view_.SimulatorWords = SimulatorLinkWords(state, view_.SimulatorTrouble);
}

void StartPresenter::butOK_Click() {
  if (file_.Loading()) return;
  view_.SimulatorName = std::string(kSimulatorName);
  Changed();
  if (view_.FileName.empty()) {
    boxes_.Show("No Configuration file selected ");
    return;
  }
  model_.ConfigFileName = view_.FileName;
  LoadFile();
  if (model_.ConfigLoadFailed) return;
  HandOver();
  shell_.UnloadStartForm();
}

void StartPresenter::AutoStartRun() {
  timers_.TimerWaitForFS.SetEnabled(false);
  timers_.WaitForAutostart.SetEnabled(false);
  model_.ConfigFileName = view_.FileName;
  LoadFile();
  if (model_.ConfigLoadFailed) {
    run_.SetCurrentConfig(view_.FileName);
    ShowCountdown(false);
    view_.Notice = "The automatic start did not happen: " + WhyNotLoaded();
    boxes_.Show("No or incorrect Start-Up file.File name is Case sensitive");
    Changed();
    return;
  }
  // ODDITY: a timer that nobody starts is stopped. It is one of the start form's timers and has no effect.
  timers_.TimerCheckForSilence.SetEnabled(false);
  HandOver();
  run_.cmdRun_Click();
  shell_.UnloadStartForm();
}

std::string StartPresenter::WhyNotLoaded() const {
  const std::string& name = view_.FileName;
  switch (file_.LastLoad()) {
    case ConfigReadResult::Unopened:
      return "the file " + name +
             " is not in this folder, or cannot be read. Choose another one, or press "
             "Configure to set up your cockpit.";
    case ConfigReadResult::RefusedTitle:
      return name + " was not made by this program, and was refused. Choose another file.";
    default:
      return name +
             " could be read in part only. Choose another file, or press Configure and load one of "
             "its backups.";
  }
}

void StartPresenter::HandOver() {
  run_.Load();
  run_.SetCurrentConfig(view_.FileName);
  shell_.ShowStatusForm();
  timers_.WaitForAutostart.SetEnabled(false);
  timers_.TimerWaitForFS.SetEnabled(false);
  ShowCountdown(false);
  CloseProbe();
  run_.Form_Activate();
  Changed();
}

void StartPresenter::FileBox_Click(const std::string& name) {
  if (file_.Loading()) return;
  ShowCountdown(false);
  view_.Notice.clear();
  view_.FileName = model_.ConfigFileName = name;
  run_.SetCurrentConfig(name);
  taken_.reset();
  Changed();
  file_.LoadConfigFile();
  Changed();
}

void StartPresenter::FileName_Change(const std::string& name) {
  view_.FileName = name;
}

void StartPresenter::CmdConfigure_Click() {
  timers_.WaitForAutostart.SetEnabled(false);
  timers_.TimerWaitForFS.SetEnabled(false);
  // The configuration may give the link another address; what is tried there opens it anew.
  if (sim_.UdpOpen()) CloseProbe();
  probeState_ = ProbeState::OpenLink;
  shell_.ShowMainConfiguration();
}

void StartPresenter::Exit_Click() {
  timers_.WaitForAutostart.SetEnabled(false);
  timers_.TimerWaitForFS.SetEnabled(false);
  if (sim_.UdpOpen()) CloseProbe();
  shell_.UnloadStartForm();
  shell_.EndProgram();
}

void StartPresenter::ShowCountdown(bool visible) {
  view_.CountdownVisible = visible;
}

void StartPresenter::Changed() {
  UpdateWords();
  changed_();
}

}  // namespace tvx
