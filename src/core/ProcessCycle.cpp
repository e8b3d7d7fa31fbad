#include "core/ProcessCycle.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kGaugetypeIOModule = 10;
constexpr std::int16_t kTickCountLimit = 1000;

}  // namespace

ProcessCycle::ProcessCycle(const ConfigModel& model, SimCom& sim, Serial& serial, SpecialValues& special)
    : model_(model), sim_(sim), serial_(serial), special_(special) {
  gauges_.reserve(kGauges);
}

void ProcessCycle::PrepareGauges() {
  gauges_.clear();
  special_.UseTimePorts(kNoPort, kNoPort);
  special_.UseTemperaturePort(kNoPort);
  lighting_ = {};
  ioModuleGaugeCount_ = ioModuleTurn_ = pollSlot_ = 0;
  pollSlotMax_ = -1;
  moduleTick_ = resend_ = false;
  droppedBatches_ = 0;
  for (int id = 1; id < kGauges; ++id) {
    const GaugeRecord& record = model_.Gauges[static_cast<std::size_t>(id)];
    if (record.GaugeType == 0) continue;
    ActiveGauge& gauge = gauges_.emplace_back();
    gauge.GaugeID = static_cast<Byte>(id);
    gauge.Record = &record;
    gauge.Kind = InstrumentOf(record.GaugeType);
    if (record.GaugeType == kGaugetypeIOModule) ++ioModuleGaugeCount_;
    if (gauge.Kind == nullptr) continue;
    const OpenerScope by(sim_, static_cast<std::int16_t>(id));
    gauge.Driver = gauge.Kind->Activate({gauge.GaugeID, record, model_, sim_});
    if (gauge.Kind->Polled()) gauge.PollSlot = ++pollSlotMax_;
  }
}

void ProcessCycle::StartRun() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Driver != nullptr) gauge.Driver->StartRun();
  }
  lightingDue_ = true;
}

void ProcessCycle::ResendAll() {
  ForgetGauges();
  lighting_.Repeat();
}

void ProcessCycle::ForgetGauges() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Driver != nullptr) gauge.Driver->Forget();
  }
}

ActiveGauge* ProcessCycle::GaugeWithID(int gaugeID) {
  const auto found = std::lower_bound(gauges_.begin(), gauges_.end(), gaugeID,
                                      [](const ActiveGauge& gauge, int id) { return gauge.GaugeID < id; });
  return found != gauges_.end() && found->GaugeID == gaugeID ? &*found : nullptr;
}

void ProcessCycle::Tick() {
  try {
    ++tickNumber_;
    if (serial_.LineOpening()) {
      // What is sent now would be lost, and counted as sent.
      ReadFlightValues();
      FillBoxes();
      return;
    }
    sideFrameSet_ = false;
    serial_.BeginBatch();
    lightingInBatch_ = false;
    if (resend_) {
      resend_ = false;
      ForgetGauges();
    }
    ReadFlightValues();
    if (SendLighting()) return;
    FillBoxes();
    special_.GetTimeAndDate();
    ServeGauges();
    special_.ClearTimeJumped();
    boxes_.BoxInstrLights = lighting_.InstrumentLights() ? "ON" : "OFF";
    boxes_.boxNavLights = lighting_.NavigationLights() ? "ON" : "OFF";
    EndPolling();
    SendBatch();
    if (lightingDue_) {
      // An earlier run may have left the faces lit or dark: the tick after the first values tells them.
      lighting_.Repeat();
      lightingDue_ = false;
    }
    if (++TickCount > kTickCountLimit) TickCount = 0;
  } catch (const std::exception&) {
    // One bad value never stops the timer; the next tick starts anew.
  }
}

void ProcessCycle::ReadFlightValues() {
  using enum StandardValue;
  const auto value = [this](StandardValue which) { return ValueOf(standardPorts_[which]); };
  flight_.Airspeed = value(Airspeed);
  flight_.Altitude = value(Altitude);
  flight_.Heading = value(Heading);
  flight_.Bank = value(Bank);
  flight_.Pitch = value(Pitch);
  flight_.VerticalSpeed = value(VerticalSpeed);
  flight_.Compass = value(Compass);
  flight_.AirPressureHg = value(AirPressure);
  flight_.Voltage = value(Voltage);
  flight_.Voltage2 = value(SecondVoltage);
  flight_.InstrumentLights = value(InstrumentLights);
  flight_.NavigationLights = value(NavigationLights);
  flight_.ShownAltitude = std::round(flight_.Altitude);
  if (tickNumber_ >= barometricHeldUntil_) barometricSetting_ = static_cast<float>(flight_.AirPressureHg);
}

bool ProcessCycle::SendLighting() {
  const GeneralRecord& general = model_.General;
  const bool changed =
      lighting_.Update(flight_.InstrumentLights, flight_.Voltage, flight_.Voltage2, flight_.NavigationLights,
                       general.LightsSetting1, general.LightsSetting2);
  if (!changed) return false;
  const bool alwaysLit = general.LightsSetting2 == kLightsAlways;
  lightingInBatch_ = true;
  for (const ActiveGauge& gauge : gauges_) {
    const bool unlit = !alwaysLit && (gauge.Record->GaugeSetting5 & kOptionUnlit) != 0;
    Queue(gauge.GaugeID, kCommandLighting, unlit ? 0 : lighting_.Word());
  }
  // Faces that are always lit do not cost a tick: the values go out behind the lighting.
  if (alwaysLit) return false;
  boxes_.BoxInstrLights = lighting_.InstrumentLights() ? "ON" : "OFF";
  boxes_.boxNavLights = lighting_.NavigationLights() ? "ON" : "OFF";
  SendBatch();
  return true;
}

void ProcessCycle::FillBoxes() {
  boxes_.BoxIAS = FormatNumber(flight_.Airspeed, "000.00");
  boxes_.BoxAltitude = FormatNumber(flight_.Altitude, "####0");
  boxes_.BoxHea = FormatNumber(flight_.Heading, "000.00");
  boxes_.boxBank = FormatNumber(flight_.Bank, "###.0");
  boxes_.boxPitch = FormatNumber(flight_.Pitch, "###.#0");
  boxes_.BoxVS = FormatNumber(flight_.VerticalSpeed, "#####.0");
  boxes_.boxCompass = FormatNumber(flight_.Compass, "###.#0");
  boxes_.BoxAirPressHg = FormatNumber(flight_.AirPressureHg, "##0.00");
  boxes_.BoxAirPressmBar = FormatNumber(flight_.AirPressureHg * kMillibarPerInchHg, "0000");
  boxes_.boxVoltage = FormatNumber(flight_.Voltage, "00.0");
}

void ProcessCycle::ServeGauges() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Driver == nullptr) continue;
    try {
      if (!moduleTick_ && gauge.PollSlot == pollSlot_) gauge.Driver->Poll(*this);
      gauge.Driver->Serve(*this);
    } catch (const std::exception&) {
      // A value that does not fit costs this gauge its turn, not the others theirs.
    }
  }
}

void ProcessCycle::EndPolling() {
  if (moduleTick_) {
    ServeModule();
    moduleTick_ = false;
    return;
  }
  if (sideFrameSet_) serial_.AppendToBatch(sideFrame_);
  const int highest = pollSlotMax_ >= 0 ? pollSlotMax_ : 1;
  pollSlot_ = pollSlot_ < highest ? pollSlot_ + 1 : 0;
  moduleTick_ = ioModuleGaugeCount_ > 0;
}

void ProcessCycle::ServeModule() {
  int turn = 0;
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Record->GaugeType != kGaugetypeIOModule || turn++ != ioModuleTurn_) continue;
    gauge.Driver->ServeModuleTurn(*this);
  }
  ioModuleTurn_ = ioModuleTurn_ + 1 < ioModuleGaugeCount_ ? ioModuleTurn_ + 1 : 0;
}

void ProcessCycle::SendBatch() {
  const Serial::BatchResult result = serial_.SendBatch();
  if (result == Serial::BatchResult::Sent) return;
  ++droppedBatches_;
  // A dead line gets everything again when it comes back. A line that is full gets what it missed on the next
  // tick, from the newest values; the lighting only behind them, or it could hold up the values for ever.
  if (result == Serial::BatchResult::Closed) return;
  resend_ = true;
  if (lightingInBatch_) lightingDue_ = true;
}

bool ProcessCycle::Queue(int gaugeID, int command, std::int32_t value) {
  const auto frame = BuildGaugeFrame(gaugeID, command, value);
  return frame && serial_.AppendToBatch(*frame);
}

bool ProcessCycle::PrepareSide(int gaugeID, int command, std::int32_t value) {
  const auto frame = BuildGaugeFrame(gaugeID, command, value);
  if (!frame) return false;
  sideFrame_[0] = 0xFF;
  std::copy(frame->begin(), frame->end(), sideFrame_.begin() + 1);
  sideFrameSet_ = true;
  return true;
}

std::uint32_t ProcessCycle::TicksPerSecond() const {
  return static_cast<std::uint32_t>(1000 / std::clamp<int>(model_.General.TransferInterval, 10, 1000));
}

}  // namespace tvx
