#include "core/ProcessCycle.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "instruments/kinds/Registry.h"

namespace tvx {
namespace {

constexpr int kGaugetypeIOModule = 10;
constexpr int kModuleTick = 100;  // added to the poll slot for a tick of the IO modules
constexpr std::int16_t kTickCountLimit = 1000;
constexpr int kModeAlwaysLit = 1;

// Entries of StandardPort beside those whose number is their Function's.
enum : std::size_t { kInstrumentLights = 12, kNavigationLights = 13, kVoltage2 = 14 };

// Stages of a tick.
enum : int { kStart = 1, kBoxes = 2, kServing = 3, kSending = 7, kEnd = 8 };

}  // namespace

ProcessCycle::ProcessCycle(const ConfigModel& model, SimCom& sim, Serial& serial, SpecialValues& special)
    : model_(model), sim_(sim), serial_(serial), special_(special) {
  StandardPort.fill(kNoPort);
  gauges_.reserve(kGauges);
}

void ProcessCycle::PrepareGauges() {
  gauges_.clear();
  lighting_ = {};
  ioModuleGaugeCount_ = ioModuleTurn_ = pollSlot_ = 0;
  pollSlotMax_ = -1;
  resend_ = false;
  droppedBatches_ = 0;
  for (int id = 1; id < kGauges; ++id) {
    const GaugeRecord& record = model_.Gauges[static_cast<std::size_t>(id)];
    if (record.GaugeType == 0) continue;
    ActiveGauge& gauge = gauges_.emplace_back();
    gauge.GaugeID = static_cast<Byte>(id);
    gauge.Record = &record;
    gauge.Kind = InstrumentOf(record.GaugeType);
    gauge.Unlit = (record.GaugeSetting5 & kOptionUnlit) != 0;
    if (record.GaugeType == kGaugetypeIOModule) ++ioModuleGaugeCount_;
    if (gauge.Kind == nullptr) continue;
    const OpenerScope by(sim_, static_cast<std::int16_t>(id));
    gauge.Kind->OpenPorts(gauge, model_, sim_);
    if (gauge.Kind->Polled()) gauge.PollSlot = ++pollSlotMax_;
  }
}

void ProcessCycle::StartRun() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Kind != nullptr) gauge.Kind->StartRun(gauge);
  }
  lightingDue_ = true;
}

void ProcessCycle::ResendAll() {
  ForgetGauges();
  lighting_.Repeat();
}

void ProcessCycle::ForgetGauges() {
  for (ActiveGauge& gauge : gauges_) {
    if (gauge.Kind != nullptr) gauge.Kind->Forget(gauge);
  }
}

ActiveGauge* ProcessCycle::GaugeWithID(int gaugeID) {
  const auto found = std::lower_bound(gauges_.begin(), gauges_.end(), gaugeID,
                                      [](const ActiveGauge& gauge, int id) { return gauge.GaugeID < id; });
  return found != gauges_.end() && found->GaugeID == gaugeID ? &*found : nullptr;
}

void ProcessCycle::Tick() {
  try {
    cycleStage_ = kStart;
    ++tickNumber_;
    batchSent_ = false;
    sideFrameSet_ = false;
    serial_.BeginBatch();
    lightingInBatch_ = false;
    if (resend_) {
      resend_ = false;
      ForgetGauges();
    }
    ReadFlightValues();
    if (SendLighting()) return;
    cycleStage_ = kBoxes;
    FillBoxes();
    cycleStage_ = kServing;
    special_.GetTimeAndDate();
    ServeGauges();
    special_.TimeJumped = false;
    boxes_.BoxInstrLights = lighting_.InstrumentLights() ? "ON" : "OFF";
    boxes_.boxNavLights = lighting_.NavigationLights() ? "ON" : "OFF";
    EndPolling();
    SendBatch();
    if (lightingDue_) {
      // Faces that were left lit or dark by an earlier run follow on the tick after the first values.
      lighting_.Repeat();
      lightingDue_ = false;
    }
    if (++TickCount > kTickCountLimit) TickCount = 0;
  } catch (const std::exception&) {
    // One bad value never stops the timer; the next tick starts anew.
  }
  cycleStage_ = kEnd;
}

void ProcessCycle::ReadFlightValues() {
  const auto value = [this](std::size_t entry) { return ValueOf(StandardPort[entry]); };
  flight_.Airspeed = value(1);
  flight_.Altitude = value(2);
  flight_.Heading = value(3);
  flight_.Bank = value(4);
  flight_.Pitch = value(5);
  flight_.VerticalSpeed = value(6);
  flight_.Compass = value(7);
  flight_.AirPressureHg = value(8);
  flight_.Voltage = value(9);
  flight_.InstrumentLights = value(kInstrumentLights);
  flight_.NavigationLights = value(kNavigationLights);
  flight_.Voltage2 = value(kVoltage2);
  flight_.ShownAltitude = std::round(flight_.Altitude);
  if (tickNumber_ >= barometricHeldUntil_) barometricSetting_ = static_cast<float>(flight_.AirPressureHg);
}

bool ProcessCycle::SendLighting() {
  const GeneralRecord& general = model_.General;
  bool changed = lighting_.Update(flight_.InstrumentLights, flight_.Voltage, flight_.Voltage2,
                                  flight_.NavigationLights, general.LightsSetting1, general.LightsSetting2);
  if (!changed) return false;
  const bool alwaysLit = general.LightsSetting2 == kModeAlwaysLit;
  lightingInBatch_ = true;
  int served = -1;
  for (const ActiveGauge& gauge : gauges_) {
    if (gauge.GaugeID == served) continue;
    served = gauge.GaugeID;
    Queue(gauge.GaugeID, kCommandLighting, gauge.Unlit && !alwaysLit ? 0 : lighting_.Word());
  }
  // Faces that are always lit do not cost a tick: the values go out behind the lighting.
  if (alwaysLit) return false;
  boxes_.BoxInstrLights = lighting_.InstrumentLights() ? "ON" : "OFF";
  boxes_.boxNavLights = lighting_.NavigationLights() ? "ON" : "OFF";
  SendBatch();
  cycleStage_ = kEnd;
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
    if (gauge.Kind == nullptr) continue;
    try {
      gauge.Kind->Serve(gauge, *this);
    } catch (const std::exception&) {
      // A value that does not fit costs this gauge its turn, not the others theirs.
    }
  }
}

void ProcessCycle::EndPolling() {
  if (pollSlot_ >= kModuleTick) {
    int turn = 0;
    for (ActiveGauge& gauge : gauges_) {
      if (gauge.Record->GaugeType == kGaugetypeIOModule && turn++ == ioModuleTurn_) {
        gauge.Kind->ServeModuleTurn(gauge, *this);
      }
    }
    ioModuleTurn_ = ioModuleTurn_ + 1 < ioModuleGaugeCount_ ? ioModuleTurn_ + 1 : 0;
    pollSlot_ -= kModuleTick;
    return;
  }
  if (sideFrameSet_) serial_.AppendToBatch(sideFrame_);
  const int highest = pollSlotMax_ >= 0 ? pollSlotMax_ : 1;
  pollSlot_ = pollSlot_ < highest ? pollSlot_ + 1 : 0;
  if (ioModuleGaugeCount_ > 0) pollSlot_ += kModuleTick;
}

void ProcessCycle::SendBatch() {
  cycleStage_ = kSending;
  batchSent_ = true;
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

bool ProcessCycle::PollTurn(const ActiveGauge& gauge) const {
  return gauge.PollSlot == pollSlot_;
}

}  // namespace tvx
