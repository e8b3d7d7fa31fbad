#include "ffb/YokePair.h"

#include <algorithm>
#include <cmath>

namespace tvx {
namespace {

constexpr double kMasterLostSeconds = 1;  // afterwards the other yoke takes over
constexpr double kTrimRate = 0.1;         // of the trim's half range, a second
// So long the autopilot counts as off that was told to let go, since the simulator says so late; it is told
// again every so many cycles.
constexpr double kDisconnectSeconds = 1;
constexpr int kDisconnectAgain = 5;

constexpr std::string_view kModeNames[] = {"Center Mode", "FFB Mode", "Follow AP mode", "Servo Mode",
                                           "OFF mode"};

}  // namespace

YokePair::YokePair(ConfigModel& model, SimCom& sim, SerialPort& yoke1, SerialPort& yoke2, MessageBoxes& boxes,
                   const Clock& clock, JoystickDevice& joystick, Timer& processTimer)
    : model_(model),
      sim_(sim),
      boxes_(boxes),
      clock_(clock),
      timer_(processTimer),
      ports_(model, sim, boxes),
      controls_(sim, ports_),
      joystick_(joystick),
      yoke1_(yoke1, clock),
      yoke2_(yoke2, clock),
      joysticks_(joystick) {
  timer_.SetInterval(kIntervalMs);
}

bool YokePair::Configured(int which) const {
  return which == 2 ? model_.HasYoke2() : model_.HasYoke1();
}

void YokePair::Load() {
  if (Configured(1) && BeginYoke(model_, model_.Yoke1)) model_.ConfigChanged = true;
  if (Configured(2) && BeginYoke(model_, model_.Yoke2)) model_.ConfigChanged = true;
  ClearYoke2Tail(model_);
  DefineFfbFunctions(model_);
  ApplySettings();
  master_ = Configured(settings_.master) ? settings_.master : Configured(1) ? 1 : 2;
  StartModes();
  feel_ = {};
  flown_.GivenBack();
  lastTickMs_ = clock_.MonotonicMs();
  loaded_ = true;
  timer_.SetEnabled(true);
}

void YokePair::StartModes() {
  for (const int which : {1, 2}) {
    Of(which).SelectMode(IsSlave(which) ? YokeMode::Servo : Of(which).Settings().startMode);
  }
}

void YokePair::Unload() {
  if (!loaded_) return;
  cmdStop_Click();
  timer_.SetEnabled(false);
  for (const int which : {1, 2}) {
    if (Configured(which)) Of(which).Release();
  }
  ports_.Forget();
  loaded_ = false;
}

void YokePair::ApplySettings() {
  settings_ = ReadFfbSettings(model_);
  yoke1_.Configure(ReadYokeSettings(model_.Yoke1));
  yoke2_.Configure(ReadYokeSettings(model_.Yoke2));
  if (running_) CheckPedals();
}

void YokePair::OpenPorts() {
  DefineFfbFunctions(model_);
  ports_.Open();
}

void YokePair::cmdRun_Click() {
  if (running_) return;
  running_ = true;
  masterLostFor_ = disconnecting_ = 0;
  autopilot_.reset();
  StartPedals();
}

// The master's joystick, or else the other's; each pilot may have pedals.
const YokeRecord* YokePair::PedalRecord() const {
  const YokeRecord* first = nullptr;
  for (const int which : {master_, OtherThan(master_)}) {
    if (!Configured(which) || !Of(which).Settings().Has(yokeoption::kJoystick)) continue;
    const YokeRecord& record = RecordOf(which);
    if (CheckJoystick(record).empty()) return &record;
    if (first == nullptr) first = &record;
  }
  return first;
}

// A device that nobody has chosen yet is the right one. What is wrong is said once.
void YokePair::StartPedals() {
  pedalState_ = PedalState::Usable;
  CheckPedals();
  if (pedals_ == nullptr) return;
  std::string error;
  if (!pedalsComplete_) {
    boxes_.Show(kJoystickUnusable);
  } else if (!joysticks_.Chosen(pedals_->JoystickNumber) &&
             !joysticks_.Choose(pedals_->JoystickNumber, error)) {
    boxes_.Show(error);
  }
}

void YokePair::CheckPedals() {
  pedals_ = PedalRecord();
  pedalsComplete_ = pedals_ != nullptr && CheckJoystick(*pedals_).empty();
}

void YokePair::cmdStop_Click() {
  running_ = false;
  flew_ = false;
  flown_.GivenBack();
  trim_ = {};
  pedals_ = nullptr;
  controls_.GiveBack();
}

SafetyCause YokePair::CommonCause() const {
  if (!running_) return SafetyCause::Halted;
  const auto silent = sim_.SilentForMs();
  if (!silent || *silent > kSimulatorSilentMs) return SafetyCause::SimulatorSilent;
  if (const auto age = ports_.AgeMs(); !age || *age > kSimulatorSilentMs) return SafetyCause::ValuesOld;
  return ports_.AllFinite() ? SafetyCause::None : SafetyCause::NotANumber;
}

void YokePair::ProcessTimer_Tick() {
  if (!loaded_) return;
  const std::int64_t now = clock_.MonotonicMs();
  const double seconds = static_cast<double>(now - lastTickMs_) / 1000;
  lastTickMs_ = now;
  ports_.ReadAll(now);
  HoldAutopilotOff(seconds);
  MoveTrim(seconds);
  feel_.Advance(ports_.Variables, settings_.forces, seconds);
  WatchRoles(seconds);
  ServeButtons(seconds);
  const SafetyCause cause = CommonCause();
  for (const int which : {1, 2}) {
    if (!Configured(which)) continue;
    Of(which).ProcessTimer_Tick({ports_.Variables, settings_, feel_, cause, PlaceToFollow(which), seconds});
  }
  WriteControls(seconds);
  WritePedals(seconds);
}

// A master that is lost for a moment is followed to where it was last.
std::optional<Ratios> YokePair::PlaceToFollow(int which) {
  if (!IsSlave(which)) return std::nullopt;
  if (Of(master_).Usable()) {
    masterPlace_ = Of(master_).Position();
  } else if (masterLostFor_ > kMasterLostSeconds) {
    masterPlace_.reset();
  }
  return masterPlace_;
}

// As the springs' centres go, so that a yoke that follows its trim is no deflection.
void YokePair::MoveTrim(double seconds) {
  if (!ports_.AllFinite()) return;
  const double step = kCentreSlew * std::clamp(seconds, 0.0, kLongestCycle);
  for (std::size_t i = 0; i < kAxes; ++i) {
    const double goal = Feel::TrimCentre(ports_.Variables, settings_.forces, static_cast<Axis>(i));
    trimCentre_[i] += std::clamp(goal - trimCentre_[i], -step, step);
  }
}

void YokePair::DisconnectAutopilot() {
  disconnecting_ = kDisconnectSeconds;
  disconnectCycles_ = 0;
  ports_.Variables.AutopilotServos = false;
  ports_.PutPortFFB(ffboffset::kAutopilotServos);
}

void YokePair::HoldAutopilotOff(double seconds) {
  if (disconnecting_ <= 0) return;
  disconnecting_ = ports_.Variables.AutopilotServos ? disconnecting_ - seconds : 0;
  if (disconnecting_ <= 0) return;
  ports_.Variables.AutopilotServos = false;
  if (++disconnectCycles_ % kDisconnectAgain == 0) ports_.PutPortFFB(ffboffset::kAutopilotServos);
}

void YokePair::WatchRoles(double seconds) {
  if (!running_) return;
  masterLostFor_ = Of(master_).Usable() ? 0 : masterLostFor_ + seconds;
  if (Of(master_).Mode() == YokeMode::FollowAP && Of(master_).Gripped()) DisconnectAutopilot();
  if (!Paired()) return;
  const int slave = OtherThan(master_);
  const bool gripped = Of(slave).Settings().Has(yokeoption::kHandoverByGrip) && Of(slave).Gripped();
  if (gripped || masterLostFor_ > kMasterLostSeconds) HandOver(slave);
}

void YokePair::HandOver(int which) {
  if (which == master_ || (which != 1 && which != 2) || !Configured(which)) return;
  Yoke& next = Of(which);
  if (running_ && !next.Usable()) return;
  Yoke& before = Of(master_);
  const YokeMode mode = before.Mode();
  master_ = which;
  masterLostFor_ = 0;
  masterPlace_.reset();
  // The simulator's yoke goes on from where it is, and comes to the new master's place by and by.
  flew_ = false;
  next.SelectMode(mode == YokeMode::Servo || mode == YokeMode::Off ? YokeMode::Ffb : mode);
  before.SelectMode(mode == YokeMode::Off ? YokeMode::Off : YokeMode::Servo);
}

// Where the master stands, from the middle that trim gives it: the simulator adds the trim itself.
Ratios YokePair::MasterRatios() const {
  const Yoke& master = Of(master_);
  const bool trimmed =
      master.Settings().Has(yokeoption::kTrimMovesCentre) && master.Mode() != YokeMode::Centre;
  Ratios ratios = master.Position();
  for (std::size_t i = 0; i < kAxes; ++i) ratios[i] = RatioOfPlace(ratios[i], trimmed ? trimCentre_[i] : 0);
  return ratios;
}

// The master's position goes to the simulator, unless the autopilot moves the yoke or the position cannot be
// relied on.
bool YokePair::MayFly() const {
  const Yoke& master = Of(master_);
  if (!running_ || !master.Settings().Has(yokeoption::kSendPositions)) return false;
  if (master.Mode() == YokeMode::Servo) return false;
  return master.Mode() != YokeMode::FollowAP || !ports_.Variables.AutopilotServos;
}

bool YokePair::Flies() const {
  return MayFly() && Of(master_).Usable();
}

// It does not answer for a moment: what it did last goes on.
bool YokePair::MasterMissed() const {
  return MayFly() && !Of(master_).Usable() && masterLostFor_ <= kMasterLostSeconds;
}

void YokePair::WriteControls(double seconds) {
  const bool taken = controls_.YokeTaken();
  if (Flies()) {
    const Ratios own = MasterRatios();
    // What the autopilot did goes on from its place.
    if (!taken) flown_.GivenBack(autopilot_.value_or(Ratios{}));
    if (!flew_) flown_.GoOnWith(own);
    controls_.Yoke(flown_.Follow(own, seconds));
  } else if (taken && (MasterMissed() || (running_ && !flown_.Leave(seconds)))) {
    controls_.Yoke(flown_.Now());
  } else {
    controls_.Yoke(std::nullopt);
  }
  flew_ = Flies();
  const FfbVariables& values = ports_.Variables;
  const bool held = Of(master_).Mode() == YokeMode::FollowAP && values.AutopilotServos && ports_.AllFinite();
  if (held) autopilot_ = Ratios{values.AutopilotRoll, values.AutopilotPitch};
  if (!held) autopilot_.reset();
}

void YokePair::WritePedals(double seconds) {
  if (!running_) return;
  const PedalState before = pedalState_;
  if (pedals_ != nullptr && pedalsComplete_) pedalState_ = joysticks_.Look(*pedals_);
  if (pedals_ == nullptr || !pedalsComplete_ || pedalState_ != PedalState::Usable) {
    controls_.Pedals(std::nullopt);
    pedalRatios_ = {};
    const bool wrong = pedalState_ == PedalState::Other || pedalState_ == PedalState::NoAxis;
    if (wrong && pedalState_ != before) boxes_.Show(joysticks_.Words(*pedals_));
    return;
  }
  joystick_.JoystickID = pedals_->JoystickNumber;
  const PedalRatios feet = ReadPedals(joystick_, *pedals_);
  const double step = FlownRatios::StepOf(seconds);
  for (float PedalRatios::*const ratio :
       {&PedalRatios::rudder, &PedalRatios::leftBrake, &PedalRatios::rightBrake}) {
    const double way = feet.*ratio - pedalRatios_.*ratio;
    pedalRatios_.*ratio += static_cast<float>(std::clamp(way, -step, step));
  }
  controls_.Pedals(pedalRatios_);
}

std::string YokePair::PedalText() {
  const YokeRecord* record = running_ ? pedals_ : PedalRecord();
  if (record == nullptr) return {};
  if (!CheckJoystick(*record).empty()) return std::string(kJoystickUnusable);
  return "Rudder and brakes: " + joysticks_.Words(*record);
}

std::optional<int> YokePair::GripFrom(int which) const {
  const double force = kServoForce * settings_.forces.maximum * Of(which).Settings().forceLevel;
  const auto least = LeastGrip(force, settings_.forces.friction);
  if (!least || settings_.gripThreshold <= 0) return std::nullopt;
  return static_cast<int>(std::ceil(std::max(*least, settings_.gripThreshold)));
}

void YokePair::ServeButtons(double seconds) {
  bool trimming = false;
  for (const int which : {1, 2}) {
    if (!Configured(which)) continue;
    const unsigned pressed = Of(which).TakePressed();
    const unsigned held = Of(which).Held();
    const auto& actions = Of(which).Settings().buttons;
    for (std::size_t button = 0; button < actions.size(); ++button) {
      if ((pressed >> button & 1u) != 0) Press(which, button);
      const ButtonAction action = actions[button];
      if ((held >> button & 1u) == 0 || action < ButtonAction::TrimNoseUp || action > ButtonAction::TrimRight)
        continue;
      trimming = true;
      if (running_ && which == master_) Trim(action, seconds);
    }
  }
  if (!trimming) trim_ = {};
}

void YokePair::Press(int which, std::size_t button) {
  switch (Of(which).Settings().buttons[button]) {
    case ButtonAction::TakeControl:
      HandOver(which);
      break;
    case ButtonAction::ForcesOff:
      Of(which).SelectMode(YokeMode::Off);
      break;
    case ButtonAction::AutopilotOff:
      if (running_) DisconnectAutopilot();
      break;
    case ButtonAction::Command: {
      if (!running_) break;
      sim_.SendCommandPath(RecordOf(which).Buttons[button].Text);
      break;
    }
    default:
      break;
  }
}

// What the simulator says of the trim comes a few cycles late, so a held button counts by itself.
void YokePair::Trim(ButtonAction action, double seconds) {
  const bool roll = action == ButtonAction::TrimLeft || action == ButtonAction::TrimRight;
  const bool up = action == ButtonAction::TrimNoseUp || action == ButtonAction::TrimRight;
  float& variable = roll ? ports_.Variables.AileronTrim : ports_.Variables.ElevatorTrim;
  if (!std::isfinite(variable)) return;
  std::optional<double>& trim = trim_[static_cast<std::size_t>(roll ? Axis::Roll : Axis::Pitch)];
  const double step = (up ? kTrimRate : -kTrimRate) * std::clamp(seconds, 0.0, kLongestCycle);
  trim = std::clamp(trim.value_or(variable) + step, -1.0, 1.0);
  variable = static_cast<float>(*trim);
  ports_.PutPortFFB(roll ? ffboffset::kAileronTrim : ffboffset::kElevatorTrim);
}

std::string YokePair::RoleText(int which) const {
  if (!Configured(which)) return "Not configured";
  const std::string role = which == master_ ? "Master, " : "Slave, ";
  return role + std::string(kModeNames[static_cast<std::size_t>(Of(which).Mode())]);
}

std::string YokePair::StateText(int which) const {
  if (!Configured(which)) return "";
  const Yoke& yoke = Of(which);
  if (yoke.Cause() != SafetyCause::None) {
    std::string words = "No force: " + std::string(SafetyText(yoke.Cause()));
    if (yoke.Cause() != SafetyCause::ValuesOld || ports_.Oldest() < 0) return words;
    return words + ": " + std::string(FfbOffsets()[static_cast<std::size_t>(ports_.Oldest())].name);
  }
  if (yoke.Opening() < 1) return "Forces are rising";
  if ((yoke.Line().LastReply().status & yokestatus::kHot) != 0) return "Its motors are hot";
  return "Forces on";
}

std::string_view YokePair::GroundText() const {
  return feel_.Grounded() ? "On Ground" : "Airborne";
}

}  // namespace tvx
