#include "hwbus/cluster/EngineCluster.h"

#include <algorithm>
#include <cmath>

#include "base/Rounding.h"
#include "config/plates/PlateLookup.h"

namespace tvx {
namespace {

constexpr int kHoldSeconds = 5;
constexpr int kShortestProcessTimer = 10;  // ms
constexpr int kSecond = 1000;              // ms
constexpr Byte kKeptOfOneShot = kECBacklightAlwaysOn;

}  // namespace

EngineCluster::EngineCluster(const ConfigModel& model, SimCom& sim, HardwarePorts& hardware,
                             MessageBoxes& boxes, const Clock& clock, Timers timers)
    : model_(model), sim_(sim), hardware_(hardware), boxes_(boxes), clock_(clock), timers_(timers) {
  ports_.fill(kNoPort);
  events_ = Line().SetHandler([this](SerialEvent event) { MSComm1_OnComm(event); });
  timers_.Timer1000ms.SetInterval(kSecond);
}

void EngineCluster::OpenCommPort() {
  if (Line().IsOpen() || !Configured()) return;
  openErrorDue_ = true;
  hardware_.Open(HardwareGroup::EngineCluster);
  TellOpenError();
}

// Once the device has answered, however late that is. Whoever closed the port meanwhile wants no message.
void EngineCluster::TellOpenError() {
  const SerialState state = Line().State();
  if (!openErrorDue_ || state == SerialState::Opening) return;
  openErrorDue_ = false;
  if (state != SerialState::Open && state != SerialState::Closed) {
    boxes_.Show("Comm Port for Engine Cluster not found");
  }
}

void EngineCluster::OpenPorts() {
  ReadOptions();
  ForgetPorts();
  portsOpen_ = true;
  FollowFunctions();
}

void EngineCluster::ForgetPorts() {
  portsOpen_ = false;
  ports_.fill(kNoPort);
  portFunction_.fill(0);
}

// The port of a former Function stays open until all ports are closed: others may read the same data group.
void EngineCluster::FollowFunctions() {
  if (!portsOpen_) return;
  const OpenerScope by(sim_, opener::kEngineCluster);
  for (int k = 0; k < kECChannels; ++k) {
    const auto index = static_cast<std::size_t>(k);
    const std::int16_t function = Channel(k).Value2;
    if (!ChannelEnabled(k) || function == portFunction_[index]) continue;
    portFunction_[index] = function;
    ports_[index] = function == 0 ? kNoPort : sim_.OpenSimPort(function, 1);
    if (ports_[index] != kNoPort) sim_.EnableReadSimPort(ports_[index]);
  }
}

void EngineCluster::TakeSettings() {
  ReadOptions();
  if (running_) FollowFunctions();
}

void EngineCluster::ReadOptions() {
  const EngineClusterRecord& options = model_.EngineCluster[kOptionsSetting];
  lighting_.Extra = static_cast<Byte>(options.Value3 & 0xFF);
  lighting_.OneShot = static_cast<Byte>((lighting_.OneShot & ~kKeptOfOneShot) |
                                        (options.Value2 != 0 ? kECBacklightAlwaysOn : 0));
}

bool EngineCluster::ChannelEnabled(int channel) const {
  return Channel(channel).Value1 != 0;
}

bool EngineCluster::DualEngine() const {
  return model_.EngineCluster[kOptionsSetting].Value1 == 1;
}

void EngineCluster::cmdRun_Click() {
  OpenCommPort();
  running_ = true;
  TakeSettings();
  timers_.ProcessTimer.SetInterval(std::max<int>(model_.General.TransferInterval, kShortestProcessTimer));
  timers_.ProcessTimer.SetEnabled(true);
  timers_.Timer1000ms.SetEnabled(true);
}

void EngineCluster::cmdStop_Click() {
  running_ = false;
  timers_.ProcessTimer.SetEnabled(false);
}

std::string EngineCluster::StatusText() const {
  std::string text = running_ ? "Running" : "Halted";
  if (hardware_.InTrouble(HardwareGroup::EngineCluster)) {
    return text + "; " + hardware_.WordsOf(HardwareGroup::EngineCluster);
  }
  if (Recalibrating()) text += "; recalibrating";
  return text;
}

void EngineCluster::SetLighting(bool instrumentLights, bool powered) {
  lighting_.FlagA = instrumentLights;
  lighting_.FlagB = !powered;
}

void EngineCluster::MoveSingleNeedle(int needle, int value) {
  const auto raw = static_cast<std::uint16_t>(std::clamp(value, 0, 65535));
  const auto frame = SingleNeedleFrame(needle, raw, lighting_);
  if (!frame) return;
  OpenCommPort();
  Send(*frame);
}

// False where the line did not take it.
bool EngineCluster::Send(const ECFrame& frame) {
  if (!Line().Write(frame)) return false;
  sent_ = frame;
  return true;
}

void EngineCluster::Recalibrate() {
  ecMode_ = ECMode::RecalibrationRequested;
}

int EngineCluster::PositionOf(int channel, double value) const {
  const PlateRecord* plate = model_.PlateOf(Channel(channel).Value3);
  if (plate != nullptr) return NeedlePosition(*plate, value);
  return static_cast<int>(RoundHalfEven(std::clamp(value, 0.0, kNeedlePositions - 1.0)));
}

std::optional<double> EngineCluster::Value(int channel) const {
  float read = 0;
  const bool live = running_ && ChannelEnabled(channel);
  if (!live || !sim_.GetPort(ports_[static_cast<std::size_t>(channel)], read) || !std::isfinite(read)) {
    return std::nullopt;
  }
  return static_cast<double>(read);
}

void EngineCluster::FillNeedles(ECFrame& frame) {
  for (int k = 0; k < kECChannels; ++k) {
    if (!ChannelEnabled(k)) continue;
    const auto index = static_cast<std::size_t>(k);
    const double value = Value(k).value_or(0.0);
    boxValue_[index] = FormatNumber(value, "###00.00");
    position_[index] = PositionOf(k, value);
    PutECNeedle(frame, NeedleOf(k), static_cast<std::uint16_t>(position_[index]));
  }
}

void EngineCluster::ProcessTimer_Tick() {
  if (!running_) return;
  TellOpenError();
  if (ecVersion_.length == 2) {
    boxUnitReply_.assign("Version: ")
        .append(1, ecVersion_.chars[0])
        .append(".")
        .append(1, ecVersion_.chars[1]);
  }
  ECFrame frame = EmptyECFrame();
  FillNeedles(frame);
  const ECMode mode = ecMode_;
  if (mode == ECMode::Recalibrating) {
    frame = EmptyECFrame();
    ecMode_ = ECMode::Normal;
  } else if (mode == ECMode::RecalibrationRequested) {
    frame = RecalibrationECFrame();
    ecMode_ = ECMode::Recalibrating;
    hold_ = kHoldSeconds;
  }
  FinishECFrame(frame, lighting_);
  input_.DiscardRest(Line(), clock_.MonotonicMs());
  if (!Send(frame)) {
    ecMode_ = mode;  // a step of a recalibration that did not leave is taken again
    return;
  }
  if (mode == ECMode::RecalibrationRequested) recalibratedMs_ = clock_.MonotonicMs();
  lighting_.OneShot &= kKeptOfOneShot;
}

void EngineCluster::Timer1000ms_Tick() {
  if (hold_ > 0) --hold_;
}

void EngineCluster::MSComm1_OnComm(SerialEvent event) {
  SerialPort& port = Line();
  input_.NoteRead();
  if (event != SerialEvent::Received) {
    port.DiscardInput();
    return;
  }
  std::array<Byte, kECReplySize> read{};
  const std::size_t length = port.Read(read);
  ecVersion_ = {};
  const auto version = ReadECVersion(ByteView(read).first(length));
  if (!version) return;
  ecVersion_ = *version;
  port.DiscardOutput();
}

}  // namespace tvx
