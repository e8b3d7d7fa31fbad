#include "core/StatusPresenter.h"

#include <algorithm>
#include <ctime>
#include <exception>
#include <utility>

#include "config/NameTables.h"
#include "core/Dump.h"
#include "core/watch/LinkFindings.h"
#include "core/watch/LinkWords.h"
#include "platform/AtomicFile.h"

namespace tvx {
namespace {

constexpr std::int16_t kYokeInterval = 40;  // ms, whatever the configuration says
constexpr int kShortestInterval = 10;       // ms; less would leave no time for anything else
constexpr std::int64_t kStrangerShownMs = 10000;
constexpr std::int64_t kResendAgainMs = 2000;
constexpr std::int64_t kDropShownMs = 10000;  // so long the user reads of a batch that was dropped

std::size_t IndexOf(PeripheralKind kind) {
  return static_cast<std::size_t>(kind);
}

}  // namespace

StatusPresenter::StatusPresenter(ConfigModel& model, SimCom& sim, Serial& serial, MessageBoxes& boxes,
                                 Shell& shell, const Clock& clock, Peripherals& peripherals, Timers timers)
    : model_(model),
      sim_(sim),
      serial_(serial),
      boxes_(boxes),
      shell_(shell),
      clock_(clock),
      peripherals_(peripherals),
      timers_(timers),
      special_(sim, boxes, clock),
      cycle_(model, sim, serial, special_),
      receiver_(model, serial, cycle_, sim, special_) {
  socketErrors_ = sim_.SetSocketErrorHandler([this](int code) {
    DumpTVX("UDP Error, Stopcode: ", static_cast<std::int16_t>(std::clamp(code, -32768, 32767)), "0");
    cmdStop_Click();
  });
  busEvents_ = serial_.Line().SetHandler([this](SerialEvent event) { MSComm1_OnComm(event); });
  lineChanged_ = serial_.SetLineChanged([this](bool cameBack) { OnLineChanged(cameBack); });
}

// Gauges that had no power take a moment until they hear.
void StatusPresenter::OnLineChanged(bool cameBack) {
  if (cameBack) {
    cycle_.ResendAll();
    resendAgainAtMs_ = clock_.MonotonicMs() + kResendAgainMs;
  }
  if (!activated_) return;
  UpdateLinkWords();
  Changed();
}

void StatusPresenter::Load() {
  activated_ = running_ = false;
  EditingConfiguration = false;
  StatusView anew;
  anew.BoxCurrentConfig = view_.BoxCurrentConfig;
  anew.AircraftWords = view_.AircraftWords;
  view_ = std::move(anew);
  view_.Caption = model_.ProgramTitle;
  view_.LabelVersion = "Version: " + std::string(kProgramVersion);
  view_.UdpRateVisible = model_.ProgramTitle == kProgramTitle;
  FillNameTables(model_);
  timers_.Timer1.SetEnabled(true);
  Changed();
}

void StatusPresenter::SetCurrentConfig(const std::string& name) {
  view_.BoxCurrentConfig = name;
  Changed();
}

void StatusPresenter::Form_Activate() {
  if (activated_) return;
  activated_ = true;
  // ODDITY: the standard ports are opened, closed, and opened again below. The simulator and the peripherals
  // have always been asked twice.
  OpenStandardPorts();
  sim_.ClearAllRREF();
  sim_.CloseAllPorts();
  sim_.CloseUDP();
  cycle_.ClearStandardPorts();
  LoadPeripherals();
  if (HasYokes()) {
    model_.General.TransferInterval = kYokeInterval;
    view_.IntervalFixed = "Fixed at 40 ms: the yokes' forces are computed in this step";
  }
  view_.Notice = model_.HasIOModule1() || model_.HasIOModule2() ? keystrokeTrouble_ : std::string();
  view_.TransferInterval = EffectiveInterval();
  timers_.ProcessTimer.SetInterval(EffectiveInterval());
  serial_.OpenComPorts();
  sim_.OpenSimCom();
  linkOpenedMs_ = clock_.MonotonicMs();
  OpenStandardPorts();
  cycle_.PrepareGauges();
  view_.boxNrofOffsets = sim_.PortCount();
  timers_.WriteCmdDuringConfig.SetEnabled(true);
  UpdateLinkWords();
  Changed();
}

void StatusPresenter::OpenStandardPorts() {
  try {
    const OpenerScope by(sim_, opener::kInternal);
    cycle_.OpenStandardPorts();
    ForEachConfigured({PeripheralKind::Yokes, PeripheralKind::EngineCluster, PeripheralKind::IOModule1,
                       PeripheralKind::IOModule2},
                      [](Peripheral& peripheral) { peripheral.OpenPorts(); });
  } catch (const std::exception&) {
    boxes_.Show("Error Opening Standard Ports");
  }
}

template <typename Operation>
void StatusPresenter::ForEachConfigured(std::initializer_list<PeripheralKind> kinds, Operation operation) {
  for (const PeripheralKind kind : kinds) {
    Peripheral* peripheral = peripherals_[IndexOf(kind)];
    if (peripheral != nullptr && peripheral->Configured()) operation(*peripheral);
  }
}

void StatusPresenter::LoadPeripherals() {
  const auto load = [this](PeripheralKind kind) {
    Peripheral* peripheral = peripherals_[IndexOf(kind)];
    if (peripheral == nullptr) return false;
    if (peripheral->Configured()) {
      peripheral->Load();
    } else {
      peripheral->Unload();
    }
    return peripheral->Configured();
  };
  view_.ShowEngineCluster = load(PeripheralKind::EngineCluster);
  view_.ShowIOModule1 = load(PeripheralKind::IOModule1);
  view_.ShowIOModule2 = load(PeripheralKind::IOModule2);
  view_.ShowYokes = load(PeripheralKind::Yokes);
}

void StatusPresenter::UnloadPeripherals() {
  for (Peripheral* peripheral : peripherals_) {
    if (peripheral != nullptr) peripheral->Unload();
  }
}

void StatusPresenter::cmdRun_Click() {
  if (running_) return;
  shell_.UnloadConfigurationForms();
  view_.BoxRun = "Running";
  view_.BoxRunColour = kColourRunning;
  timers_.WriteCmdDuringConfig.SetEnabled(false);
  serial_.OpenComPorts();
  serial_.TickTransmit();
  timers_.ProcessTimer.SetEnabled(true);
  running_ = true;
  load_ = {};
  cycle_.StartRun();
  latency_.Clear();
  sim_.TakeArrivalMs();
  ForEachConfigured({PeripheralKind::EngineCluster, PeripheralKind::IOModule1, PeripheralKind::IOModule2,
                     PeripheralKind::Yokes},
                    [](Peripheral& peripheral) { peripheral.Run(); });
  view_.TransferInterval = EffectiveInterval();
  sim_.RunSimcom();
  sim_.ClearDataReceived();
  linkOpenedMs_ = clock_.MonotonicMs();
  UpdateLinkWords();
  Changed();
}

void StatusPresenter::cmdStop_Click() {
  if (!running_) return;
  running_ = false;
  sim_.StopSimcom();
  timers_.ProcessTimer.SetEnabled(false);
  view_.BoxRun = "Halted";
  view_.BoxRunColour = kColourHalted;
  timers_.WriteCmdDuringConfig.SetEnabled(true);
  StopPeripherals();
  UpdateLinkWords();
  Changed();
}

// The yokes still have to be told to let go while their lines are open, and the simulator to take its
// controls back.
void StatusPresenter::StopPeripherals() {
  ForEachConfigured({PeripheralKind::EngineCluster, PeripheralKind::IOModule1, PeripheralKind::IOModule2,
                     PeripheralKind::Yokes},
                    [](Peripheral& peripheral) { peripheral.Stop(); });
}

void StatusPresenter::SetAircraftWords(const std::string& words) {
  if (view_.AircraftWords == words) return;
  view_.AircraftWords = words;
  Changed();
}

void StatusPresenter::PutAway() {
  Close();
  UnloadPeripherals();
  sim_.CloseUDP();
}

void StatusPresenter::TakeUp(const std::string& currentConfig, bool run) {
  Load();
  SetCurrentConfig(currentConfig);
  Form_Activate();
  if (run) cmdRun_Click();
}

// The yokes are told to let go while their lines are open.
void StatusPresenter::Close() {
  if (running_) StopPeripherals();
  sim_.ClearAllRREF();
  sim_.CloseAllPorts();
  serial_.CloseComPorts();
  cmdStop_Click();
  timers_.Timer1.SetEnabled(false);
}

void StatusPresenter::CmdConfig_Click() {
  Close();
  EditingConfiguration = true;
  shell_.ShowStartForm();
  shell_.ShowMainConfiguration();
  UnloadPeripherals();
  shell_.UnloadStatusForm();
}

void StatusPresenter::cmdExit_Click() {
  if (running_) StopPeripherals();
  running_ = false;
  timers_.ProcessTimer.SetEnabled(false);
  timers_.Timer1.SetEnabled(false);
  timers_.WriteCmdDuringConfig.SetEnabled(false);
  serial_.CloseComPorts();
  UnloadPeripherals();
  shell_.UnloadStatusForm();
  sim_.ClearAllRREF();
  sim_.CloseAllPorts();
  serial_.CloseComPorts();
  sim_.CloseUDP();
  shell_.EndProgram();
}

bool StatusPresenter::HasYokes() const {
  return model_.HasYoke1() || model_.HasYoke2();
}

void StatusPresenter::SliderXferTimer_Change(int milliseconds) {
  if (HasYokes()) {
    Changed();  // the slider goes back
    return;
  }
  model_.General.TransferInterval =
      static_cast<std::int16_t>(std::clamp(milliseconds, kShortestInterval, 32767));
  view_.TransferInterval = EffectiveInterval();
  timers_.ProcessTimer.SetInterval(EffectiveInterval());
  Changed();
}

void StatusPresenter::MSComm1_OnComm(SerialEvent event) {
  receiver_.OnComm(event, running_);
}

void StatusPresenter::DumpTVX(const std::string& module, std::int16_t code, const std::string& value) {
  std::string error;
  const std::string text = DumpText({module, code, value, activated_, running_}, model_, sim_);
  boxes_.Show(ReplaceFile(std::string(kDumpFileName), text, error)
                  ? "A dump is generated; File name: " + std::string(kDumpFileName)
                  : "Error writing Dump");
}

// Date and time in the system's short formats.
void StatusPresenter::cmdDumpTVX_Click() {
  const std::tm now = clock_.LocalTime();
  char date[64] = "", time[64] = "";
  std::strftime(date, sizeof date, "%x", &now);
  std::strftime(time, sizeof time, "%X", &now);
  DumpTVX("Dump on User Request, Date: " + std::string(date) + ", Time: " + time, 0, "0");
}

void StatusPresenter::ShowPeripheral(PeripheralKind kind) {
  ForEachConfigured({kind}, [](Peripheral& peripheral) { peripheral.Show(); });
}

void StatusPresenter::ProcessTimer_Tick() {
  if (!running_) return;
  const auto arrival = sim_.TakeArrivalMs();
  cycle_.Tick();
  const std::int64_t now = clock_.MonotonicMs();
  if (arrival && cycle_.SentFrames()) latency_.Note(now - *arrival, now);
}

void StatusPresenter::Timer1_Tick() {
  view_.frmXferCount = cycle_.TickCount;
  view_.boxUDPrate = sim_.TakePacketsReceived();
  view_.boxNrofOffsets = sim_.PortCount();
  cycle_.TickCount = 0;
  WatchLinks();
  load_ = cycle_.TakeLoad();
  UpdateLinkWords();
  UpdateBusHealth();
  Changed();
}

void StatusPresenter::UpdateBusHealth() {
  view_.BusLoad = running_ ? BusLoadWords(load_, cycle_.DroppedBatches()) : std::string();
  view_.AskedGauges.clear();
  if (running_) view_.AskedGauges = AskedGauges(model_, cycle_.Health(), clock_.MonotonicMs());
}

void StatusPresenter::WriteCmdDuringConfig_Tick() {
  serial_.TickTransmit();
}

int StatusPresenter::EffectiveInterval() const {
  return std::max<int>(model_.General.TransferInterval, kShortestInterval);
}

// An unattended run comes back by itself: after an adapter was unplugged, and after another program gave the
// local port free.
void StatusPresenter::WatchLinks() {
  if (!activated_) return;
  serial_.WatchLines();
  if (resendAgainAtMs_ && clock_.MonotonicMs() >= *resendAgainAtMs_) {
    resendAgainAtMs_.reset();
    cycle_.ResendAll();
  }
  if (running_ && !sim_.UdpOpen()) sim_.OpenUDP();
}

void StatusPresenter::UpdateIgnored() {
  const Stranger* stranger = sim_.Strangers().Loudest(clock_.MonotonicMs(), kStrangerShownMs);
  view_.Ignored = view_.IgnoredAddress = {};
  if (stranger == nullptr) return;
  view_.IgnoredAddress = AddressText(stranger->address);
  view_.Ignored = std::to_string(stranger->datagrams) +
                  (stranger->datagrams == 1 ? " datagram from " : " datagrams from ") + view_.IgnoredAddress +
                  " ignored";
}

void StatusPresenter::UpdateFindings() {
  view_.Findings = view_.Flow = {};
  view_.OfferDataOutput = false;
  if (!running_) return;
  const std::int64_t now = clock_.MonotonicMs();
  LinkFindings findings = FindMissingValues(model_, sim_, now);
  view_.Findings = std::move(findings.Text);
  view_.OfferDataOutput = findings.GroupsMissing;
  view_.Flow = FlowWords(latency_.OfLastMinute(now), sim_.ValuesLost(), sim_.GivenUpDatagrams().datagrams);
}

void StatusPresenter::cmdDataOutput_Click() {
  sim_.SendDataOutputHere();
}

void StatusPresenter::cmdTakeAddress_Click() {
  if (view_.IgnoredAddress.empty()) return;
  model_.General.RemoteIP = view_.IgnoredAddress;
  model_.ConfigChanged = true;
  if (sim_.UdpOpen()) sim_.OpenUDP();
  UpdateLinkWords();
  Changed();
}

void StatusPresenter::UpdateLinkWords() {
  UpdateIgnored();
  UpdateFindings();
  const auto silent = sim_.SilentForMs();
  SimulatorLinkState state;
  state.Running = running_;
  state.SocketOpen = sim_.UdpOpen();
  state.SocketError = sim_.LinkError();
  state.EverAnswered = silent.has_value();
  state.SilentMs = silent.value_or(clock_.MonotonicMs() - linkOpenedMs_);
  state.RemoteHost = model_.General.RemoteIP;
  state.RemotePort = model_.General.RemotePort;
  state.LocalPort = model_.General.LocalPort;
  view_.Simulator.Text = SimulatorLinkWords(state, view_.Simulator.Trouble);
  view_.GaugeBus.Text = serial_.LineWords();
  view_.GaugeBus.Trouble = serial_.LineInTrouble();
  const std::int64_t now = clock_.MonotonicMs();
  const bool carries = running_ && serial_.Line().IsOpen();
  if (carries) view_.GaugeBus.Text += ", " + std::to_string(load_.percent) + " % busy";
  const std::uint64_t dropped = cycle_.DroppedBatches();
  if (std::exchange(droppedBefore_, dropped) != dropped) dropShownUntilMs_ = now + kDropShownMs;
  if (dropped > 0 && now < dropShownUntilMs_ && serial_.Line().IsOpen()) {
    view_.GaugeBus.Text +=
        ", " + std::to_string(dropped) + (dropped == 1 ? " batch dropped" : " batches dropped");
  }
  if (!carries) return;
  const std::string trouble = BusTroubleWords(model_, cycle_.Health(), load_, now);
  if (trouble.empty()) return;
  view_.GaugeBus.Text += "; " + trouble;
  view_.GaugeBus.Trouble = true;
}

void StatusPresenter::Changed() {
  changed_();
}

}  // namespace tvx
